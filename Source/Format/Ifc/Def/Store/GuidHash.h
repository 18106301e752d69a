/// The hash of tables whose keys are GUIDs of documents.
///
///     HashTable<kiv::Guid, xml::Def, GuidHash> defs;
///
/// Nobody can choose GUIDs that all meet in one place: it begins with numbers that are drawn once per process.
///
/// Threads: any number of threads.
/// Errors:  the first use of all passes on what std::random_device throws when the system has no random source.
#pragma once

#include "Base/HashKeys.h"
#include "kiv/Host/Id/KivId.h"

#include <cstdint>

namespace kiv::ifc::def {

struct GuidHash {
    std::uint64_t operator()(const kiv::Guid& guid) const noexcept;

    HashKeys keys = hashKeys();
};

} // namespace kiv::ifc::def
