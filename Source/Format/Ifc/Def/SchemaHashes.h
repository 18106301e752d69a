/// Hashes for tables whose keys come from documents.
///
/// They begin with a number that is drawn once per process, so that nobody can choose keys that all meet in one bucket.
///
/// Threads: any number of threads.
/// Errors:  the first use of all passes on what std::random_device throws when the system has no random source.
#pragma once

#include "Format/Ifc/Def/Schema/IfcSchemaText.h"
#include "Host/Id/KivId.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kiv::ifc::def {

/// The number that is drawn.
std::uint64_t hashSeed();

/// Of a text, byte by byte. Not noexcept, because the standard library of GCC keeps the hash of a key beside it only then,
/// and walks along a bucket without a look at the keys of others.
struct TextHash {
    std::size_t operator()(std::string_view text) const {
        return static_cast<std::size_t>(schema::textHash(text, ~std::uint64_t{0}, seed));
    }

    std::uint64_t seed = hashSeed();
};

struct GuidHash {
    std::size_t operator()(const kiv::Guid& guid) const noexcept;

    std::uint64_t seed = hashSeed();
};

/// Makes place for so many more entries, so that adding them cannot fail; seldom, as places are made for as many again.
template <class Table>
void vPlaceReserve(Table& table, std::size_t count) {
    // An empty table tells a bucket that it does not have yet; so there is always one more than needed.
    if (table.size() + count >= table.bucket_count())
        table.reserve(2 * (table.size() + count));
}

} // namespace kiv::ifc::def
