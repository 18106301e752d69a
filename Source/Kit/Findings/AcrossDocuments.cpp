#include "kiv/Kit/Findings/AcrossDocuments.h"

#include "Kit/Findings/LibraryReports.h"
#include "Kit/Findings/Rules/AcrossRules.h"
#include "Kit/Findings/SetOutline.h"
#include "kiv/Kit/Documents/SetDocument.h"

#include <algorithm>

namespace kiv::kit {

namespace {

/// Where types and what they are made of are found to be wrong, in the order of the text.
std::vector<TextPosition> faultsIn(std::span<const Finding> findings) {
    std::vector<TextPosition> faults;
    for (const auto& finding : findings) {
        const bool isOfTypes = finding.code.starts_with('T') || finding.code.starts_with('S');
        if (isOfTypes && finding.severity != Severity::Note)
            faults.push_back(finding.place.position);
    }
    std::ranges::sort(faults);
    return faults;
}

} // namespace

struct AcrossDocuments::Data {
    AcrossRun run;
};

AcrossDocuments::AcrossDocuments() : data_(std::make_unique<Data>()) {}

AcrossDocuments::~AcrossDocuments() = default;
AcrossDocuments::AcrossDocuments(AcrossDocuments&&) noexcept = default;
AcrossDocuments& AcrossDocuments::operator=(AcrossDocuments&&) noexcept = default;

void AcrossDocuments::vAdd(const SetDocument& document, std::string_view context,
                           std::span<const Finding> findings) {
    // A document without a set has nothing that could be in the way of another.
    if (document.failure)
        return;
    const auto vPositionsAdd = [&](const XmlPositions& positions) {
        data_->run.vAdd(document.path, SetOutline(positions, OutlineParts::WithoutAliases), context,
                        {boMayHaveUnknownType(document), faultsIn(findings)});
    };
    if (document.positions)
        vPositionsAdd(*document.positions);
    else
        vPositionsAdd(XmlPositions(document.text));
}

std::vector<Finding> AcrossDocuments::getFindings() const {
    return data_->run.getFindings();
}

} // namespace kiv::kit
