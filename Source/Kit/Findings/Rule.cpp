#include "kiv/Kit/Findings/Rule.h"

#include "Kit/Findings/Rules/AcrossRules.h"
#include "Kit/Findings/Rules/ClassRules.h"
#include "Kit/Findings/Rules/DocumentationRules.h"
#include "Kit/Findings/Rules/ReleaseRules.h"
#include "Kit/Findings/Rules/Rules.h"
#include "Kit/Findings/Rules/SchemaRules.h"
#include "Kit/Findings/Rules/TypeRules.h"
#include "Kit/Text/AsciiText.h"

#include <algorithm>
#include <vector>

namespace kiv::kit {

namespace {

/// One table of all families. A copy of a rule has views only.
std::vector<Rule> allRules() {
    std::vector<Rule> rules;
    for (const auto family : {
             getAcrossGuidRules(),
             getAcrossRules(),
             getClassRules(),
             getCommentRules(),
             getDocumentationRules(),
             getGuidRules(),
             getLanguageRules(),
             getNameRules(),
             getReleaseRules(),
             getReportRules(),
             getSchemaRules(),
             getStructureRules(),
             getTypeRules(),
         })
        rules.insert(rules.end(), family.begin(), family.end());
    std::ranges::stable_sort(rules, {}, &Rule::code);
    return rules;
}

} // namespace

std::span<const Rule> getRules() {
    static const std::vector<Rule> rules = allRules();
    return rules;
}

const Rule* pRuleFind(std::string_view code) {
    const auto rules = getRules();
    const auto isBefore = [](std::string_view left, std::string_view right) {
        return std::ranges::lexicographical_compare(left, right, {}, getUpper, getUpper);
    };
    const auto found = std::ranges::lower_bound(rules, code, isBefore, &Rule::code);
    return found == rules.end() || !isEqualIgnoringCase(found->code, code) ? nullptr : &*found;
}

} // namespace kiv::kit
