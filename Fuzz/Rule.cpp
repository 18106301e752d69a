// Rules of a WHERE clause: a tree that is printed parses to an equal tree.
#include "FuzzTarget.h"
#include "SampleSchema.h"

#include "Support/ExpressionJson.h"
#include "kiv/Format/Ifc/Def/IfcLimits.h"
#include "kiv/Format/Ifc/Def/Schema/ExpressParser.h"
#include "kiv/Kit/Express/ExpressionText.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace kiv::ifc::def::schema;
using kiv::fuzz::vLaw;

/// The rules before the first error.
std::vector<ParsedRule> rulesOf(std::string_view text, const Schema& schema) {
    std::vector<ParsedRule> rules;
    try {
        ExpressTokenizer tokenizer(text);
        ExpressParser parser(tokenizer, schema);
        while (parser.boParseRule(rules)) {
        }
    } catch (const ExpressParser::SyntaxError&) {
        return rules;
    } catch (const std::out_of_range&) {
        return rules;
    }
    return rules;
}

/// Printing adds parentheses, one for each operator at most, so that a tree close to the limit may print
/// beyond it.
bool boNestsFarFromLimit(const std::string& text) {
    constexpr std::string_view nesting = "([{+-Nn"; // N: NOT
    const auto count = std::ranges::count_if(
        text, [&](char character) { return nesting.find(character) != std::string_view::npos; });
    return static_cast<std::size_t>(count) < kiv::ifc::def::limits::ExpressionNestingMax;
}

void vReadsBack(const ParsedRule& rule, const Schema& schema) {
    const auto text = std::string(rule.label) + " : " + kiv::kit::sExpression(*rule.expression) + ";\n";
    if (!boNestsFarFromLimit(text))
        return;
    const auto again = rulesOf(text, schema);
    vLaw(again.size() == 1, "a printed rule is one rule");
    vLaw(again.front().label == rule.label.getView(), "of the same label");
    vLaw(kiv::kivifc::expressionJson(*again.front().expression) ==
             kiv::kivifc::expressionJson(*rule.expression),
         "with an equal tree");
}

} // namespace

void kiv::fuzz::vRun(std::string_view input) {
    static const auto schema = sampleSchema();
    for (const auto& rule : rulesOf(input, *schema))
        vReadsBack(rule, *schema);
}
