#include "kivifc/Findings/JoinedFindings.h"

#include "kivifc/Program/AsciiText.h"

#include <algorithm>
#include <cstddef>
#include <fmt/format.h>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace kiv::kivifc {

namespace {

using kit::Finding;

/// What the schema lacks for a kind of property is said once, at the first document that has one.
void vLacksJoin(std::vector<Finding>& findings) {
    static constexpr std::string_view Lack = "R011";
    std::set<std::string> said;
    std::erase_if(findings, [&said](const Finding& finding) {
        return finding.code == Lack && !said.insert(finding.message).second;
    });
}

/// Of a schema that cannot be read no name is known: that is one mistake, and those in documents are none.
void vUnknownNamesLeaveOut(std::vector<Finding>& findings) {
    static constexpr std::string_view NothingRead = "E001";
    static constexpr std::string_view UnknownNames[] = {"C001", "R011", "R013", "T001"};
    const auto isNothingRead = [](const Finding& finding) {
        return finding.code == NothingRead && finding.severity == kit::Severity::Error;
    };
    if (std::ranges::none_of(findings, isNothingRead))
        return;
    std::erase_if(findings, [](const Finding& finding) {
        return std::ranges::find(UnknownNames, finding.code) != std::end(UnknownNames);
    });
}

/// A name that stands in the text of the schema and that the schema lacks.
struct LostName {
    std::string name;
    /// The place in the list of the finding that says why.
    std::size_t finding = 0;
    /// Of the documents that use it.
    std::set<std::string> paths;
};

/// By their upper-cased names. A finding that is no error would not show that something is wrong.
std::map<std::string, LostName> lostNamesOf(const std::vector<Finding>& findings) {
    std::map<std::string, LostName> lost;
    for (std::size_t index = 0; index != findings.size(); ++index) {
        const auto& finding = findings[index];
        if (!finding.code.starts_with('E') || finding.severity != kit::Severity::Error)
            continue;
        for (const auto& name : finding.missingNames)
            lost.try_emplace(ascii::sUpperCase(name), LostName{name, index, {}});
    }
    return lost;
}

/// That a document uses what the schema lost is no mistake of the document: it is said with the loss.
void vLostNamesJoin(std::vector<Finding>& findings) {
    auto lost = lostNamesOf(findings);
    if (lost.empty())
        return;
    const auto pLost = [&lost](const Finding& finding) {
        const bool isUse = !finding.code.starts_with('E') && !finding.missingNames.empty();
        const auto found = isUse ? lost.find(ascii::sUpperCase(finding.missingNames.front())) : lost.end();
        return found == lost.end() ? nullptr : &found->second;
    };
    for (const auto& finding : findings) {
        if (auto* const name = pLost(finding))
            name->paths.insert(finding.place.path);
    }
    for (const auto& [key, name] : lost) {
        const auto count = name.paths.size();
        if (count != 0)
            findings[name.finding].notes.push_back(
                {fmt::format("\"{}\" is used in {} document{}", name.name, count, count == 1 ? "" : "s"),
                 {}});
    }
    std::erase_if(findings, [&pLost](const Finding& finding) { return pLost(finding) != nullptr; });
}

} // namespace

void vFindingsJoin(std::vector<Finding>& findings) {
    vUnknownNamesLeaveOut(findings);
    vLostNamesJoin(findings);
    vLacksJoin(findings);
}

} // namespace kiv::kivifc
