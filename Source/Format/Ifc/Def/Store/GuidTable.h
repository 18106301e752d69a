/// @file
/// A table from GUIDs of documents to their owners, which only grows.
///
///     GuidTable<const xml::Def> defs;
///     defs.vReserve(1);      // all that can fail
///     defs.vAdd(guid, def);  // cannot
///     const auto* def = defs.pFind(guid);
///
/// Nobody can choose GUIDs that all meet in one place: the hashes begin with numbers that are drawn once per
/// process.
///
/// Ownership: refers to the owners of the GUIDs, which must outlive it.
/// Threads:   one thread while it is filled; then readable from any number of threads.
/// Errors:    std::bad_alloc from `vReserve` alone. A GUID that is not there is null.
#pragma once

#include "Base/HashKeys.h"
#include "Base/ProbeTable.h"
#include "kiv/Host/Id/KivId.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace kiv::ifc::def {

template <class Value>
struct GuidSlot;

/// A GUID to be looked for in a `ProbeTable`.
class GuidKey {
public:
    GuidKey(const kiv::Guid& guid, const HashKeys& keys) :
        words_(std::bit_cast<Words>(guid)), hash_(getFolded(words_[0] ^ keys[0], words_[1] ^ keys[1])) {}

    std::uint64_t getHash() const { return hash_; }
    kiv::Guid getGuid() const { return std::bit_cast<kiv::Guid>(words_); }

    template <class Value>
    bool isOf(const GuidSlot<Value>& slot) const {
        return words_ == std::bit_cast<Words>(slot.guid);
    }

private:
    using Words = std::array<std::uint64_t, 2>;

    Words words_;
    std::uint64_t hash_;
};

/// The slot of a GUID in a `ProbeTable`. Aligned so that none lies in two cache lines.
template <class Value>
struct alignas(32) GuidSlot {
    GuidSlot() = default;
    GuidSlot(const GuidKey& key, Value* owner) : guid(key.getGuid()), value(owner) {}

    GuidKey getKey() const { return {guid, hashKeys()}; }

    kiv::Guid guid;
    // Null in an empty slot.
    Value* value = nullptr;
};

template <class Value>
class GuidTable {
public:
    /// Makes place for that many more GUIDs. When it throws, nothing has changed.
    void vReserve(std::size_t count) { table_.vReserve(count); }

    /// Adds the owner of a GUID, for which there must be place; the first owner of a GUID stays.
    void vAdd(const kiv::Guid& guid, Value& value) noexcept { table_.boAdd(GuidKey(guid, keys_), &value); }

    /// The owner of the GUID; null when there is none.
    Value* pFind(const kiv::Guid& guid) const { return table_.pFind(GuidKey(guid, keys_)); }

private:
    // A copy: the shared ones are only reached through a check whether they are drawn already.
    HashKeys keys_ = hashKeys();
    ProbeTable<GuidSlot<Value>> table_;
};

} // namespace kiv::ifc::def
