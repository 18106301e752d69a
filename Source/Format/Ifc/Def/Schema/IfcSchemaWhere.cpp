#include "kiv/Format/Ifc/Def/Schema/IfcSchemaWhere.h"

#include "Base/Arena.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/Schema/IfcSchemaBuilder.h"
#include "Format/Ifc/Def/Schema/IfcSchemaKeyword.h"
#include "kiv/Format/Ifc/Def/Schema/ExpressParser.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"
#include "kiv/Host/Assert/KivAssert.h"

#include <algorithm>
#include <istream>
#include <memory>
#include <string>
#include <utility>

namespace kiv::ifc::def::schema {

namespace {

/// Most clauses have no more rules.
constexpr std::size_t FewRules = 2;

} // namespace

Where::Where(Schema&, ReadLineHelper& line, std::size_t, std::istream& stream) {
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

std::vector<std::string_view> Where::getLines() const {
    return linesOfText(text_);
}

void Where::parseRules(Schema& schema) {
    try {
        vRulesParse(schema);
    } catch (const ExpressParser::SyntaxError& error) {
        if (!assert::Assert::isEnabled())
            return;
        std::string message(placeOf(Report::RuleRefused).message);
        message.append(error.what()).append("\n\nRule: ").append(text_);
        SchemaBuilder::vReport(schema, Report::RuleRefused, message);
    }
}

void Where::vRulesParse(Schema& schema) {
    ExpressTokenizer tokenizer(text_);
    auto& arena = SchemaBuilder::arenaOf(schema);
    ExpressParser parser(tokenizer, schema, arena);
    const auto before = count_;
    while (auto rule = parser.parseRule())
        vRuleAdd(std::move(*rule), arena);
    if (count_ == before)
        parser.vFail(std::string(textOf(SyntaxMessage::RuleExpected)));
}

void Where::vRuleAdd(ParsedRule&& rule, Arena& arena) {
    if (count_ == room_) {
        const auto room = std::max(FewRules, 2 * room_);
        auto* const rules = static_cast<ParsedRule*>(arena.pAllocateFor<ParsedRule>(room));
        std::uninitialized_move_n(rules_, count_, rules);
        rules_ = rules;
        room_ = room;
    }
    std::construct_at(rules_ + count_, std::move(rule));
    ++count_;
}

} // namespace kiv::ifc::def::schema
