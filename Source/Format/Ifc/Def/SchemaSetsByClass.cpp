#include "Format/Ifc/Def/SchemaSetsByClass.h"

#include <bit>
#include <utility>

namespace kiv::ifc::def {

SetsByClass::Classes SetsByClass::classesOf(std::string_view upperName, const xml::SetDef& set) {
    Classes classes;
    for (const auto& applicable : set.getApplicableClasses())
        classes[{applicable.getClassNameHash(), applicable.getClassName()}].emplace(upperName, &set);
    return classes;
}

void SetsByClass::vReserve(std::size_t count) {
    const auto bucketCount = std::bit_ceil(size_ + count);
    if (bucketCount <= buckets_.size())
        return;
    std::vector<Classes> former(bucketCount);
    former.swap(buckets_);
    for (auto& bucket : former) {
        while (!bucket.empty()) {
            auto entry = bucket.extract(bucket.begin());
            buckets_[bucketOf(entry.key().hash)].insert(std::move(entry));
        }
    }
}

void SetsByClass::vMerge(Classes&& classes) noexcept {
    while (!classes.empty()) {
        auto entry = classes.extract(classes.begin());
        auto placed = buckets_[bucketOf(entry.key().hash)].insert(std::move(entry));
        if (placed.inserted)
            ++size_;
        else
            placed.position->second.merge(placed.node.mapped());
    }
}

const SetsByClass::SetsByName* SetsByClass::pFind(std::uint32_t hash, std::string_view name) const {
    if (buckets_.empty())
        return nullptr;
    const auto& bucket = buckets_[bucketOf(hash)];
    const auto found = bucket.find({hash, name});
    return found == bucket.end() ? nullptr : &found->second;
}

} // namespace kiv::ifc::def
