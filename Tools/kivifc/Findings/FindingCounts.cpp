#include "kivifc/Findings/FindingCounts.h"

#include <fmt/format.h>
#include <string_view>

namespace kiv::kivifc {

namespace {

std::string sCount(std::size_t count, std::string_view one) {
    return fmt::format("{} {}{}", count, one, count == 1 ? "" : "s");
}

/// "3 errors, 1 warning"; only what there is.
std::string sFindings(const FindingCounts& counts) {
    std::string text;
    const auto vAppend = [&](kit::Severity severity, std::string_view one) {
        const auto count = counts.getCount(severity);
        if (count != 0)
            text.append(text.empty() ? "" : ", ").append(sCount(count, one));
    };
    vAppend(kit::Severity::Error, "error");
    vAppend(kit::Severity::Warning, "warning");
    vAppend(kit::Severity::Note, "note");
    return text;
}

} // namespace

void FindingCounts::vAdd(const kit::Finding& finding, bool isInSchema) {
    ++counts_[static_cast<std::size_t>(finding.severity)];
    if (isInSchema)
        hasSchemaFindings_ = true;
    else
        documents_.insert(finding.place.path);
}

std::string sSummary(const FindingCounts& counts) {
    const auto findings = sFindings(counts);
    const auto all = sCount(counts.documentsChecked, "document");
    std::string text;
    if (findings.empty())
        text = fmt::format("no findings in {}", all);
    else if (counts.documentsChecked == 0)
        text = fmt::format("{} in the schema; no document was checked", findings);
    else if (counts.getDocuments() == 0)
        text = fmt::format("{} in the schema, none in {}", findings, all);
    else
        text = fmt::format("{} in {} of {}{}", findings, counts.getDocuments(), all,
                           counts.hasSchemaFindings() ? " and in the schema" : "");
    if (counts.hidden != 0)
        text += fmt::format("; {} hidden by the baseline", counts.hidden);
    return text;
}

} // namespace kiv::kivifc
