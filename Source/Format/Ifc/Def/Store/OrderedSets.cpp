#include "Format/Ifc/Def/Store/OrderedSets.h"

#include <algorithm>
#include <utility>

namespace kiv::ifc::def {

/// Goes over the entries in their order.
class OrderedSets::Walk {
public:
    explicit Walk(const OrderedSets& sets) : sets_(sets) {}

    /// Null after the last.
    const Entry* pEntry() const {
        const auto& block = sets_.getBlock(block_);
        return index_ < block.size() ? &block[index_] : nullptr;
    }

    void vNext() {
        ++index_;
        if (index_ == sets_.getBlock(block_).size() && block_ < sets_.further_.size()) {
            ++block_;
            index_ = 0;
        }
    }

private:
    const OrderedSets& sets_;
    std::size_t block_ = 0;
    std::size_t index_ = 0;
};

/// The last block that begins with this name or one before it, else the first.
std::size_t OrderedSets::blockOf(std::string_view upperName) const {
    const auto after = std::upper_bound(
        further_.begin(), further_.end(), upperName,
        [](std::string_view name, const Block& block) { return name < block.front().upperName; });
    return static_cast<std::size_t>(after - further_.begin());
}

void OrderedSets::vReserve(std::string_view upperName) {
    const auto index = blockOf(upperName);
    if (getBlock(index).size() == BlockMax)
        return vSplit(index);
    auto& block = getBlock(index);
    if (block.size() == block.capacity())
        block.reserve(std::max<std::size_t>(1, std::min(2 * block.size(), BlockMax)));
}

/// Puts the second half of a full block into a new one; either has place then.
void OrderedSets::vSplit(std::size_t index) {
    Block second(first_.get_allocator());
    second.reserve(BlockMax);
    if (further_.size() == further_.capacity())
        further_.reserve(std::max<std::size_t>(1, 2 * further_.size()));
    auto& block = getBlock(index);
    const auto middle = block.begin() + BlockMax / 2;
    second.assign(middle, block.end());
    block.erase(middle, block.end());
    further_.insert(further_.begin() + static_cast<std::ptrdiff_t>(index), std::move(second));
}

void OrderedSets::vAdd(std::string_view upperName, const xml::SetDef& set) noexcept {
    auto& block = getBlock(blockOf(upperName));
    const auto place =
        std::lower_bound(block.begin(), block.end(), upperName,
                         [](const Entry& entry, std::string_view name) { return entry.upperName < name; });
    block.insert(place, {upperName, &set});
}

void OrderedSets::vAppend(std::vector<const xml::SetDef*>& sets) const {
    for (std::size_t index = 0; index <= further_.size(); ++index) {
        for (const auto& entry : getBlock(index))
            sets.push_back(entry.set);
    }
}

void OrderedSets::vMergedAppend(const OrderedSets& left, const OrderedSets& right,
                                std::vector<const xml::SetDef*>& sets) {
    if (right.isEmpty())
        return left.vAppend(sets);
    Walk first(left);
    Walk second(right);
    while (first.pEntry() || second.pEntry()) {
        const auto* const a = first.pEntry();
        const auto* const b = second.pEntry();
        const bool takeFirst = !b || (a && a->upperName < b->upperName);
        sets.push_back((takeFirst ? a : b)->set);
        (takeFirst ? first : second).vNext();
    }
}

} // namespace kiv::ifc::def
