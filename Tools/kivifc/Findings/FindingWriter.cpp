#include "kivifc/Findings/FindingWriter.h"

#include "kivifc/Program/OneLine.h"

#include <fmt/format.h>

namespace kiv::kivifc {

FindingWriter::~FindingWriter() = default;

void FindingWriter::vBegin(const std::vector<kit::Finding>&, const CheckResult&) {}

std::string_view severityText(kit::Severity severity) {
    switch (severity) {
    case kit::Severity::Error:
        return "error";
    case kit::Severity::Warning:
        return "warning";
    default:
        return "note";
    }
}

std::string sPlace(const kit::Place& place) {
    auto text = sOneLine(place.path);
    if (place.position.line != 0)
        text += fmt::format(":{}", place.position.line);
    if (place.position.line != 0 && place.position.column != 0)
        text += fmt::format(":{}", place.position.column);
    return text;
}

} // namespace kiv::kivifc
