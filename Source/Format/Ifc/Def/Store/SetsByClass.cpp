#include "Format/Ifc/Def/Store/SetsByClass.h"

#include <algorithm>
#include <utility>

namespace kiv::ifc::def {

namespace {

/// How many bits the filter has for each class.
constexpr std::size_t BitsPerClass = 16;

/// The number by which the filter knows a class. Both halves of the hash count, as the filter looks at the
/// lowest bits.
std::size_t filterNumberOf(std::uint32_t hash) {
    return hash ^ hash >> 16;
}

} // namespace

std::vector<SetsByClass::ClassName> SetsByClass::classesOf(const xml::SetDef& set) {
    std::vector<ClassName> classes;
    for (const auto& applicable : set.getApplicableClasses()) {
        if (!applicable.getClassName().empty())
            classes.push_back({applicable.getClassNameHash(), applicable.getClassName()});
    }
    const auto isBefore = [](const ClassName& left, const ClassName& right) {
        return left.name < right.name;
    };
    const auto isSame = [](const ClassName& left, const ClassName& right) { return left.name == right.name; };
    std::sort(classes.begin(), classes.end(), isBefore);
    classes.erase(std::unique(classes.begin(), classes.end(), isSame), classes.end());
    return classes;
}

SetsByClass& SetsByClass::operator=(SetsByClass&& other) noexcept {
    // The former classes go before the arena that they lie in.
    prepared_ = std::move(other.prepared_);
    classes_ = std::move(other.classes_);
    arena_ = std::move(other.arena_);
    table_ = std::move(other.table_);
    filter_ = std::move(other.filter_);
    return *this;
}

void SetsByClass::vReserve(std::string_view upperName, const std::vector<ClassName>& classes) {
    std::size_t newCount = 0;
    for (const auto& [hash, name] : classes) {
        if (auto* const known = table_.pFind(name)) {
            known->sets.vReserve(upperName);
            continue;
        }
        ++newCount;
    }
    // Some may be left from when memory ran out; the last ones are taken.
    while (prepared_.size() < newCount)
        prepared_.push_back(pMake());
    for (auto index = prepared_.size() - newCount; index < prepared_.size(); ++index)
        prepared_[index]->sets.vReserve(upperName);
    // As many at once as there are, so that they are moved a few times only.
    if (classes_.capacity() < classes_.size() + newCount)
        classes_.reserve(std::max(2 * classes_.size(), classes_.size() + newCount));
    table_.vReserve(newCount);
    vFilterReserve(classes_.size() + newCount);
}

ArenaPtr<SetsByClass::Class> SetsByClass::pMake() {
    if (!arena_)
        arena_ = std::make_unique<Arena>();
    return arena_->pMakeOwned<Class>(*arena_);
}

void SetsByClass::vAdd(std::string_view upperName, const xml::SetDef& set,
                       const std::vector<ClassName>& classes) noexcept {
    for (const auto& [hash, name] : classes) {
        auto* found = table_.pFind(name);
        if (!found) {
            found = prepared_.back().get();
            found->hash = hash;
            classes_.push_back(std::move(prepared_.back()));
            prepared_.pop_back();
            table_.vAdd(name, *found);
            filter_.vAdd(filterNumberOf(hash));
        }
        found->sets.vAdd(upperName, set);
    }
}

const OrderedSets* SetsByClass::pFind(std::uint32_t hash, std::string_view name) const {
    if (!filter_.isPossible(filterNumberOf(hash)))
        return nullptr;
    const auto* const found = table_.pFind(name);
    return found ? &found->sets : nullptr;
}

void SetsByClass::vFilterReserve(std::size_t classCount) {
    if (!filter_.boReserve(classCount * BitsPerClass))
        return;
    for (const auto& known : classes_)
        filter_.vAdd(filterNumberOf(known->hash));
}

} // namespace kiv::ifc::def
