#include "Format/Ifc/Def/Reports/IfcReports.h"

#include "kiv/Host/Assert/KivAssert.h"

namespace kiv::ifc::def {

namespace {

/// Whether the table has one row for each enumerator, in their order, so that they can be its indices.
template <class Id, class Row, std::size_t Size>
constexpr bool boRowPerEnumerator(const Row (&rows)[Size], Id Row::*id) {
    for (std::size_t index = 0; index < Size; ++index) {
        if (rows[index].*id != static_cast<Id>(index))
            return false;
    }
    return Size == static_cast<std::size_t>(Id::Count);
}

static_assert(boRowPerEnumerator(ReportPlaces, &ReportPlace::report));
static_assert(boRowPerEnumerator(RecordMessages, &MessageText<RecordMessage>::id));
static_assert(boRowPerEnumerator(SyntaxMessages, &MessageText<SyntaxMessage>::id));

} // namespace

void vReport(Report report) noexcept {
    vReport(report, placeOf(report).message);
}

void vReport(Report report, std::string_view message) noexcept {
    if (!assert::Assert::isEnabled())
        return;
    const auto& place = placeOf(report);
    assert::Assert::addAssert(assert::AssertInfo{0, message, place.function, place.file, place.line});
}

} // namespace kiv::ifc::def
