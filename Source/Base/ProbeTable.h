/// @file
/// A hash table with linear probing that only grows; what lies in a slot, and what it is found by, is a
/// policy.
///
///     ProbeTable<NameSlot<Object>> objects;
///     objects.vReserve(1);                                         // all that can fail
///     objects.boAdd(NameKey<Unchanged>(name, hashKeys()), object); // cannot
///     Object* found = objects.pFind(NameKey<UpperCased>(asked, hashKeys()));
///
/// A slot holds its key itself, so that a look-up waits for one place in memory, where a table of nodes would
/// wait for three. The policy:
///   - `Slot` has a pointer `value`, null in an empty slot, is made of a key and a value, and gives its key
///     with `getKey()`;
///   - a key has `getHash()`, 64 bits of which the highest are the best, and `isOf(slot)`. Keys of several
///     types may ask one table.
///
/// Ownership: refers to the values, which must outlive it.
/// Threads:   one thread while it is filled; then readable from any number of threads.
/// Errors:    std::bad_alloc from `vReserve` alone. A key that is not there is null.
#pragma once

#include "Base/Metered.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace kiv {

template <class Slot>
class ProbeTable {
public:
    /// A pointer.
    using Value = decltype(Slot::value);

    ProbeTable() = default;
    ProbeTable(ProbeTable&& other) noexcept :
        slots_(std::exchange(other.slots_, {})), size_(std::exchange(other.size_, 0)) {}
    ProbeTable& operator=(ProbeTable&& other) noexcept {
        slots_ = std::exchange(other.slots_, {});
        size_ = std::exchange(other.size_, 0);
        return *this;
    }
    ~ProbeTable() = default;

    /// Makes place for that many more keys. When it throws, nothing has changed. A meter hears of the memory
    /// and is asked again and again whether to go on.
    void vReserve(std::size_t count, WorkMeter* meter = nullptr) {
        const auto slotCount = slotCountFor(size_ + count);
        if (slotCount <= slots_.size())
            return;
        // At least twice as many, so that keys may be added one by one.
        auto former = emptySlots(std::max(slotCount, 2 * slots_.size()), meter);
        former.swap(slots_);
        for (const auto& slot : former) {
            if (slot.value)
                slots_[indexOf(slot.getKey())] = slot;
        }
        if (meter)
            meter->vMemoryGiveBack(former.size() * sizeof(Slot));
    }

    /// Adds a key, for which there must be place. False when the key is there already: its first value stays.
    template <class Key>
    bool boAdd(const Key& key, Value value) noexcept {
        auto& slot = slots_[indexOf(key)];
        if (slot.value)
            return false;
        slot = Slot(key, value);
        ++size_;
        return true;
    }

    /// The value of the key; null when it is not there.
    template <class Key>
    Value pFind(const Key& key) const {
        return slots_.empty() ? nullptr : slots_[indexOf(key)].value;
    }

private:
    /// About a third stays empty: every search ends, and soon.
    static constexpr std::size_t slotCountFor(std::size_t keys) {
        return std::max<std::size_t>(keys + keys / 2, 4);
    }

    static std::vector<Slot> emptySlots(std::size_t count, WorkMeter* meter) {
        if (!meter)
            return std::vector<Slot>(count);
        constexpr std::size_t AtOnce = 1024;
        std::vector<Slot> slots;
        vRoomFor(slots, count, meter);
        while (slots.size() < count) {
            slots.resize(std::min(slots.size() + AtOnce, count));
            meter->vLook();
        }
        return slots;
    }

    /// The slot of the key, or the empty one where it belongs.
    template <class Key>
    std::size_t indexOf(const Key& key) const {
        // The hash as a fraction of all hashes is the place as a fraction of the table. Any number of slots
        // will do for that, so that a table whose size is known takes no more than it needs.
        __extension__ using Product = unsigned __int128;
        auto index = static_cast<std::size_t>(static_cast<Product>(key.getHash()) * slots_.size() >> 64);
        while (slots_[index].value && !key.isOf(slots_[index]))
            index = index + 1 == slots_.size() ? 0 : index + 1;
        return index;
    }

    std::vector<Slot> slots_;
    std::size_t size_ = 0;
};

} // namespace kiv
