/// @file
/// Numbers of things by their names: a hash table that takes few bytes for each, and none of its own for the
/// names.
///
///     NameIndex index;
///     index.vClear(names.size());
///     const auto isSame = [&](std::size_t number) { return names[number] == names[0]; };
///     index.add(hash, 0, isSame);  // 0
///     index.find(hash, isSame);    // 0
///
/// Private to the kit.
///
/// Ownership: knows numbers alone; what they stand for is compared by the caller.
/// Threads:   filled by one thread; any number of threads may read it.
/// Errors:    std::bad_alloc from `vClear` alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kiv::kit {

class NameIndex {
public:
    static constexpr std::size_t None = static_cast<std::uint32_t>(-1);

    /// Forgets all, and has room for that many then, fewer than 2^32: no text of less than 8 GiB has more
    /// names. The memory is used again.
    void vClear(std::size_t count) {
        // About a third stays empty, so that each search ends soon.
        slots_.assign(count + count / 2 + 1, static_cast<std::uint32_t>(None));
    }

    /// The number of that hash for which `isSame` is true; `None` when there is none.
    template <class IsSame>
    std::size_t find(std::size_t hash, IsSame isSame) const {
        return slots_.empty() ? None : slots_[slotOf(hash, isSame)];
    }

    /// The same, once the number is added in the place of none. No more names than `vClear` has been given
    /// room for.
    template <class IsSame>
    std::size_t add(std::size_t hash, std::size_t number, IsSame isSame) noexcept {
        auto& slot = slots_[slotOf(hash, isSame)];
        if (slot == None)
            slot = static_cast<std::uint32_t>(number);
        return slot;
    }

private:
    template <class IsSame>
    std::size_t slotOf(std::size_t hash, IsSame isSame) const {
        // The upper half of the hash as a fraction of all such numbers is the place as a fraction of the
        // table.
        auto slot = (hash >> 32U) * slots_.size() >> 32U;
        while (slots_[slot] != None && !isSame(std::size_t{slots_[slot]}))
            slot = slot + 1 == slots_.size() ? 0 : slot + 1;
        return slot;
    }

    std::vector<std::uint32_t> slots_;
};

} // namespace kiv::kit
