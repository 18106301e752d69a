/// A table from keys of documents to what bears them, which only grows.
///
///     HashTable<kiv::Guid, xml::Def, GuidHash> defs;
///     defs.vReserve(1);       // all that can fail
///     defs.vAdd(guid, def);   // cannot
///     const auto* def = defs.pFind(guid);
///
/// Keys lie in the table itself, side by side: in a large collection a question waits for one place in memory, where a table
/// of nodes would wait for three.
///
/// Ownership: refers to what bears the keys, which must outlive it.
/// Threads:   one thread while it is filled; then readable from any number of threads.
/// Errors:    a key that is not there is null.
#pragma once

#include "Base/HashKeys.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace kiv {

/// `Hash` gives 64 bits for a key, of which the highest are the best.
template <class Key, class Bearer, class Hash>
class HashTable {
public:
    HashTable() = default;
    HashTable(HashTable&& other) noexcept :
        hash_(other.hash_), slots_(std::exchange(other.slots_, {})), size_(std::exchange(other.size_, 0)) {}
    HashTable& operator=(HashTable&& other) noexcept {
        hash_ = other.hash_;
        slots_ = std::exchange(other.slots_, {});
        size_ = std::exchange(other.size_, 0);
        return *this;
    }
    ~HashTable() = default;

    /// Makes place for so many more keys. When it throws, nothing has changed.
    void vReserve(std::size_t count) {
        const auto slotCount = slotCountFor(size_ + count);
        if (slotCount <= slots_.size())
            return;
        std::vector<Slot> former(slotCount);
        former.swap(slots_);
        for (const auto& slot : former) {
            if (slot.bearer)
                slots_[indexOf(slot.hash, slot.key)] = slot;
        }
    }

    /// Adds what bears a key, for which there must be place; the first bearer of a key stays.
    void vAdd(const Key& key, const Bearer& bearer) noexcept {
        const auto hash = hash_(key);
        auto& slot = slots_[indexOf(hash, key)];
        if (slot.bearer)
            return;
        slot = {hash, key, &bearer};
        ++size_;
    }

    const Bearer* pFind(const Key& key) const {
        return slots_.empty() ? nullptr : slots_[indexOf(hash_(key), key)].bearer;
    }

private:
    struct Slot {
        std::uint64_t hash = 0;
        Key key{};
        // Null in an empty slot.
        const Bearer* bearer = nullptr;
    };

    /// The slot of the key, or the empty one where it belongs.
    std::size_t indexOf(std::uint64_t hash, const Key& key) const {
        auto index = static_cast<std::size_t>(hash >> (64 - std::countr_zero(slots_.size())));
        while (slots_[index].bearer && !(slots_[index].hash == hash && slots_[index].key == key))
            index = (index + 1) & (slots_.size() - 1);
        return index;
    }

    Hash hash_;
    // None, or a power of two.
    std::vector<Slot> slots_;
    std::size_t size_ = 0;
};

} // namespace kiv
