/// Hashes for tables whose keys come from documents.
///
/// They begin with a number that is drawn once per process, so that nobody can choose keys that all meet in one bucket.
///
/// Threads: any number of threads.
/// Errors:  the first use of all passes on what std::random_device throws when the system has no random source.
#pragma once

#include "Format/Ifc/Def/Schema/IfcSchemaText.h"
#include "Host/Id/KivId.h"

#include <cstdint>
#include <string_view>

namespace kiv::ifc::def {

/// The number that is drawn.
std::uint64_t hashSeed();

/// Of a text, byte by byte.
struct TextHash {
    std::uint64_t operator()(std::string_view text) const noexcept {
        return schema::textHash(text, ~std::uint64_t{0}, seed);
    }

    std::uint64_t seed = hashSeed();
};

struct GuidHash {
    std::uint64_t operator()(const kiv::Guid& guid) const noexcept;

    std::uint64_t seed = hashSeed();
};

} // namespace kiv::ifc::def
