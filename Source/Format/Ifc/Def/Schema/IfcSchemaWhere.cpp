#include "kiv/Format/Ifc/Def/Schema/IfcSchemaWhere.h"

#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/Schema/IfcSchemaKeyword.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Host/Assert/KivAssert.h"

#include <istream>

namespace kiv::ifc::def::schema {

namespace {

/// Most clauses have no more rules.
constexpr std::size_t FewRules = 2;

} // namespace

Where::Where(Schema&, ReadLineHelper& line, std::size_t, std::istream& stream) : rules_(line.getArena()) {
    auto& lines = line.getEmptyLines();
    constexpr Keyword end("END_", 3);
    bool open = false;
    while (line.boNextLine(stream)) {
        const std::string_view text = line.getLine();
        open = open || text.find(':') != std::string_view::npos;
        if (open) {
            line.vLineAddTo(lines);
            // Nearly all rules end where their line does.
            open = !text.ends_with(';') && text.find(';') == std::string_view::npos;
        }
        if (end.isIn(text))
            break;
    }
    text_ = line.getKept(lines);
}

void Where::parseRules(Schema& schema) {
    try {
        vRulesParse(schema);
    } catch (const ExpressParser::SyntaxError& error) {
        if (!assert::Assert::isEnabled())
            return;
        std::string message(placeOf(Report::RuleRefused).message);
        message.append(error.what()).append("\n\nRule: ").append(text_);
        vReport(Report::RuleRefused, message);
    }
}

void Where::vRulesParse(Schema& schema) {
    ExpressTokenizer tokenizer(text_);
    ExpressParser parser(tokenizer, schema, *schema.arena_);
    const auto before = rules_.size();
    if (rules_.empty())
        rules_.reserve(FewRules);
    while (parser.boParseRule(rules_)) {
    }
    if (rules_.size() == before)
        parser.vFail(std::string(textOf(SyntaxMessage::RuleExpected)));
}

} // namespace kiv::ifc::def::schema
