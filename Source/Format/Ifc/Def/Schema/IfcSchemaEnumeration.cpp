#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEnumeration.h"

#include "Base/Arena.h"
#include "Base/Words8.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"

#include <algorithm>
#include <cstddef>

namespace kiv::ifc::def::schema {

namespace {

/// Up to this many out-of-order items are inserted one by one; beyond that, all are sorted.
constexpr std::ptrdiff_t FewUnordered = 8;

} // namespace

/// The items that a caller gave, and what else lies in the memory of the type itself.
struct DataTypeEnum::Copies {
    explicit Copies(const std::vector<std::string>& given) :
        texts(given), items(texts.begin(), texts.end()), ordered(items.size()) {}

    std::vector<std::string> texts;
    std::vector<std::string_view> items;
    std::vector<const std::string_view*> ordered;
};

DataTypeEnum::DataTypeEnum(std::string_view) {}

DataTypeEnum::DataTypeEnum(const std::vector<std::string>& items) :
    copies_(std::make_unique<Copies>(items)), items_(copies_->items) {
    vIndexBuild(copies_->ordered);
}

DataTypeEnum::DataTypeEnum(ReadLineHelper& line, std::size_t pos, std::istream& stream) :
    items_(line.getNamesKept(pos, stream)) {
    vIndexBuild({line.getArena().pMakeArray<const std::string_view*>(items_.size()), items_.size()});
}

DataTypeEnum::~DataTypeEnum() = default;

/// Orders the items in `places`, of which there is one for each item.
void DataTypeEnum::vIndexBuild(std::span<const std::string_view*> places) {
    std::transform(items_.begin(), items_.end(), places.begin(), [](const auto& item) { return &item; });
    // Of equal items the one that was read first is kept: they lie in that order.
    const auto isBefore = [](const auto* a, const auto* b) {
        return boLessText(*a, *b) || (a < b && *a == *b);
    };
    // Most enumerations are in order but for the last items.
    auto sortedEnd = std::is_sorted_until(places.begin(), places.end(), isBefore);
    if (places.end() - sortedEnd > FewUnordered) {
        std::sort(places.begin(), places.end(), isBefore);
        sortedEnd = places.end();
    }
    for (; sortedEnd != places.end(); ++sortedEnd)
        std::rotate(std::upper_bound(places.begin(), sortedEnd, *sortedEnd, isBefore), sortedEnd,
                    sortedEnd + 1);
    const auto last = std::unique(places.begin(), places.end(),
                                  [](const auto* a, const auto* b) { return isSameText(*a, *b); });
    ordered_ = places.first(static_cast<std::size_t>(last - places.begin()));
}

bool DataTypeEnum::isConstructed() const {
    return true;
}

bool DataTypeEnum::boContains(std::string_view item) const {
    const auto found =
        std::lower_bound(ordered_.begin(), ordered_.end(), item,
                         [](const auto* entry, std::string_view wanted) { return *entry < wanted; });
    return found != ordered_.end() && **found == item;
}

} // namespace kiv::ifc::def::schema
