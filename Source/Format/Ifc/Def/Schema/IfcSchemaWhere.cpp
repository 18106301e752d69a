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
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace kiv::ifc::def::schema {

namespace {

/// Most clauses have no more rules.
constexpr std::size_t FewRules = 2;

} // namespace

/// What became of the text.
struct Where::Parsed {
    ParsedRule* rules = nullptr;
    std::size_t count = 0;
    std::size_t room = 0;
    // Where the rules begin that the text was parsed into last, and how many times that happened.
    std::size_t again = 0;
    std::size_t times = 0;
    // For which schema that was; null when parsing did not come to an end.
    const Schema* schema = nullptr;
    // What was wrong with the text, and the report of it, which is made when it is needed. Null for nothing.
    const char* refused = nullptr;
    std::string_view report;
};

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

ParsedRules Where::getRules() const {
    if (!parsed_)
        return {};
    return {parsed_->rules, parsed_->count, parsed_->again, parsed_->times};
}

void Where::parseRules(Schema& schema) {
    const auto before = parsed_ ? *parsed_ : Parsed();
    try {
        vParse(schema);
    } catch (const std::out_of_range&) { // says something of the text; the rules before it stay
        throw;
    } catch (...) {
        vParsingTakeBack(before);
        throw;
    }
}

void Where::vParse(Schema& schema) {
    auto& arena = SchemaBuilder::arenaOf(schema);
    // A schema gives the same rules each time. A type is resolved once for each type that is made of it, and
    // there may be many of these.
    if (parsed_ && parsed_->schema == &schema) {
        ++parsed_->times;
        return vRefusedReport(schema);
    }
    vParsingBegin(arena);
    try {
        vRulesParse(schema);
    } catch (const ExpressParser::SyntaxError& error) {
        // With the byte that ends it.
        const std::string_view what = error.what();
        parsed_->refused = arena.getCopy({what.data(), what.size() + 1}).data();
    }
    parsed_->schema = &schema;
    vRefusedReport(schema);
}

/// What is listed is what it was. The rules may have moved to another place, in which there are more.
void Where::vParsingTakeBack(const Parsed& before) noexcept {
    if (!parsed_)
        return;
    const auto rules = parsed_->rules;
    const auto room = parsed_->room;
    *parsed_ = before;
    parsed_->rules = rules;
    parsed_->room = room;
}

/// Only the rules that were parsed last can be there several times; others are stored that often.
void Where::vParsingBegin(Arena& arena) {
    if (!parsed_)
        parsed_ = arena.pMake<Parsed>();
    const auto again = parsed_->again;
    const auto count = parsed_->count;
    while (parsed_->times > 1) {
        for (auto index = again; index < count; ++index) {
            const auto& rule = parsed_->rules[index];
            // The tree is the arena's, and the pointer destroys nothing.
            vRuleAdd({ExpressionText(rule.label, &arena), ExpressionPtr(rule.expression.get())}, arena);
        }
        --parsed_->times;
    }
    parsed_->again = parsed_->count;
    parsed_->times = 1;
    parsed_->schema = nullptr;
    parsed_->refused = nullptr;
    parsed_->report = {};
}

void Where::vRulesParse(Schema& schema) {
    ExpressTokenizer tokenizer(text_);
    auto& arena = SchemaBuilder::arenaOf(schema);
    ExpressParser parser(tokenizer, schema, arena);
    const auto before = parsed_->count;
    while (auto rule = parser.parseRule())
        vRuleAdd(std::move(*rule), arena);
    if (parsed_->count == before)
        parser.vFail(std::string(textOf(SyntaxMessage::RuleExpected)));
}

void Where::vRuleAdd(ParsedRule&& rule, Arena& arena) {
    auto& parsed = *parsed_;
    if (parsed.count == parsed.room) {
        const auto room = std::max(FewRules, 2 * parsed.room);
        auto* const rules = static_cast<ParsedRule*>(arena.pAllocateFor<ParsedRule>(room));
        std::uninitialized_move_n(parsed.rules, parsed.count, rules);
        parsed.rules = rules;
        parsed.room = room;
    }
    std::construct_at(parsed.rules + parsed.count, std::move(rule));
    ++parsed.count;
}

/// Made where it stays, so that a long clause is copied once.
std::string_view Where::refusedReport(std::string_view reason, Arena& arena) const {
    const std::string_view pieces[] = {placeOf(Report::RuleRefused).message, reason, "\n\nRule: ", text_};
    std::size_t size = 0;
    for (const auto piece : pieces)
        size += piece.size();
    auto* const report = static_cast<char*>(arena.pAllocateFor<char>(size));
    auto* end = report;
    for (const auto piece : pieces)
        end += piece.copy(end, piece.size());
    return {report, size};
}

void Where::vRefusedReport(Schema& schema) {
    if (!parsed_->refused || !assert::Assert::isEnabled())
        return;
    if (parsed_->report.empty()) {
        parsed_->report = refusedReport(parsed_->refused, SchemaBuilder::arenaOf(schema));
    }
    SchemaBuilder::vReport(schema, Report::RuleRefused, parsed_->report);
}

} // namespace kiv::ifc::def::schema
