/// @file
/// Sets in the order of their upper-cased names.
///
///     OrderedSets sets;
///     sets.vReserve("PSET_A");  // all that can fail
///     sets.vAdd("PSET_A", set); // cannot
///     OrderedSets::vMergedAppend(sets, others, answer);
///
/// They lie in blocks, side by side and in order, so listing them all is a plain copy; blocks are short
/// enough to add one anywhere at hardly any cost, however many there are.
///
/// Ownership: refers to the sets, to the texts of the names and to the arena, if there is one, which must
///            outlive it.
/// Threads:   one thread while it is filled; then readable from any number of threads.
/// Errors:    std::bad_alloc from `vReserve`, and from the lists that are appended to.
#pragma once

#include "Base/Arena.h"
#include "kiv/Format/Ifc/Def/IfcDefBase.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace kiv::ifc::def {

class OrderedSets {
public:
    OrderedSets() = default;
    /// Keeps its blocks in an arena.
    explicit OrderedSets(Arena& arena) : first_(arena) {}

    /// Makes place for a set of this name. When it throws, nothing has changed.
    void vReserve(std::string_view upperName);

    /// Adds a set, for whose name place was made last; none of this name must be there.
    void vAdd(std::string_view upperName, const xml::SetDef& set) noexcept;

    /// Appends the sets of both in the order of their names, which must all be different.
    static void vMergedAppend(const OrderedSets& left, const OrderedSets& right,
                              std::vector<const xml::SetDef*>& sets);

    /// Appends all sets.
    void vAppend(std::vector<const xml::SetDef*>& sets) const;

    bool isEmpty() const { return first_.empty(); }

private:
    struct Entry {
        std::string_view upperName;
        const xml::SetDef* set;
    };
    using Block = ArenaVector<Entry>;
    class Walk;

    /// A block with this many entries is split before another one is added.
    static constexpr std::size_t BlockMax = 64;

    Block& getBlock(std::size_t index) { return index == 0 ? first_ : further_[index - 1]; }
    const Block& getBlock(std::size_t index) const { return index == 0 ? first_ : further_[index - 1]; }
    std::size_t blockOf(std::string_view upperName) const;
    void vSplit(std::size_t index);

    // Most entities have so few sets that there are no others.
    Block first_;
    std::vector<Block> further_;
};

} // namespace kiv::ifc::def
