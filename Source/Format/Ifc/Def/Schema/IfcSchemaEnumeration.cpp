#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEnumeration.h"

#include "Base/Arena.h"
#include "Base/Size32.h"
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

DataTypeEnum::DataTypeEnum(const std::vector<std::string>& items) : copies_(std::make_unique<Copies>(items)) {
    vItemsSet(copies_->items, copies_->ordered.data());
}

DataTypeEnum::DataTypeEnum(ReadLineHelper& line, std::size_t pos, std::istream& stream) {
    const auto items = line.getNamesKept(pos, stream);
    vItemsSet(items, line.getArena().pMakeArray<const std::string_view*>(items.size()));
}

DataTypeEnum::~DataTypeEnum() = default;

/// Takes the items and orders them in a place that has room for one pointer for each.
void DataTypeEnum::vItemsSet(std::span<const std::string_view> items, const std::string_view** place) {
    items_ = items.data();
    count_ = size32(items.size());
    ordered_ = place;
    const std::span places(place, items.size());
    std::transform(items.begin(), items.end(), places.begin(), [](const auto& item) { return &item; });
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
    orderedCount_ = static_cast<std::uint32_t>(last - places.begin());
}

bool DataTypeEnum::isConstructed() const {
    return true;
}

bool DataTypeEnum::boContains(std::string_view item) const {
    const auto ordered = getItemsOrdered();
    const auto found =
        std::lower_bound(ordered.begin(), ordered.end(), item,
                         [](const auto* entry, std::string_view wanted) { return *entry < wanted; });
    return found != ordered.end() && **found == item;
}

} // namespace kiv::ifc::def::schema
