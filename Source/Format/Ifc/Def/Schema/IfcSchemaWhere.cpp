#include "kiv/Format/Ifc/Def/Schema/IfcSchemaWhere.h"

#include "Base/Arena.h"
#include "Base/ScratchList.h"
#include "Base/Size32.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/Schema/IfcSchemaBuilder.h"
#include "Format/Ifc/Def/Schema/IfcSchemaKeyword.h"
#include "kiv/Format/Ifc/Def/Schema/ExpressParser.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"
#include "kiv/Host/Assert/KivAssert.h"

#include <istream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace kiv::ifc::def::schema {

namespace {

/// Most clauses have at most this many rules.
constexpr std::size_t FewRules = 8;

} // namespace

/// What was wrong with the text, and the report of it, which is made when it is needed.
struct Where::Refused {
    std::string_view reason;
    std::string_view report;
};

/// The rules of a clause while it is parsed.
class Where::Parsing {
public:
    /// Begins with the rules that the clause has already. Only those that were parsed last can be there
    /// several times; others are stored that often.
    Parsing(Where& clause, Arena& arena, WorkMeter* meter) : clause_(clause), arena_(arena), rules_(meter) {
        for (const auto& rule : clause.getRules())
            // The tree is the arena's, and the pointer destroys nothing.
            vRuleAdd({ExpressionText(rule.label, &arena), ExpressionPtr(rule.expression.get())});
        clause.parsed_.again = size32(rules_.getValues().size());
        clause.parsed_.times = 1;
        clause.parsed_.schema = nullptr;
        clause.parsed_.refused = nullptr;
    }

    void vRuleAdd(ParsedRule&& rule) { rules_.add(std::move(rule)); }
    std::size_t getCount() { return rules_.getValues().size(); }

    /// Gives the clause the rules that there are, also when no more could be parsed.
    void vEnd() {
        const auto rules = rules_.movedTo(arena_);
        clause_.parsed_.rules = rules.data();
        clause_.parsed_.count = size32(rules.size());
    }

private:
    Where& clause_;
    Arena& arena_;
    ScratchList<ParsedRule, FewRules> rules_;
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

Where* Where::pRead(Where* former, Schema& schema, ReadLineHelper& line, std::size_t pos,
                    std::istream& stream) {
    static_assert(std::is_trivially_destructible_v<Where>);
    auto* const place = former ? former : static_cast<Where*>(line.getArena().pAllocateFor<Where>(1));
    return std::construct_at(place, schema, line, pos, stream);
}

std::vector<std::string_view> Where::getLines() const {
    return linesOfText(text_);
}

ParsedRules Where::getRules() const {
    return {parsed_.rules, parsed_.count, parsed_.again, parsed_.times};
}

/// All the rules are added, or none are.
void Where::parseRules(Schema& schema) {
    const auto before = parsed_;
    try {
        vParse(schema);
    } catch (const std::out_of_range&) { // says something of the text; the rules before it stay
        throw;
    } catch (...) {
        parsed_ = before;
        throw;
    }
}

void Where::vParse(Schema& schema) {
    auto& arena = SchemaBuilder::arenaOf(schema);
    // A schema gives the same rules each time. A type is resolved once for each type that is made of it, and
    // there may be many of these.
    if (parsed_.schema == &schema) {
        ++parsed_.times;
        return vRefusedReport(schema);
    }
    try {
        vRulesParse(schema);
    } catch (const ExpressParser::SyntaxError& error) {
        parsed_.refused = arena.pMake<Refused>();
        parsed_.refused->reason = arena.getCopy(error.what());
    }
    parsed_.schema = &schema;
    vRefusedReport(schema);
}

void Where::vRulesParse(Schema& schema) {
    auto& arena = SchemaBuilder::arenaOf(schema);
    Parsing parsing(*this, arena, SchemaBuilder::pMeter(schema));
    const auto before = parsing.getCount();
    try {
        ExpressTokenizer tokenizer(text_);
        ExpressParser parser(tokenizer, schema, arena);
        while (auto rule = parser.parseRule())
            parsing.vRuleAdd(std::move(*rule));
        if (parsing.getCount() == before)
            parser.vFail(std::string(textOf(SyntaxMessage::RuleExpected)));
    } catch (const ExpressParser::SyntaxError&) {
        parsing.vEnd();
        throw;
    } catch (const std::out_of_range&) {
        parsing.vEnd();
        throw;
    }
    parsing.vEnd();
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
    if (!parsed_.refused || !assert::Assert::isEnabled())
        return;
    if (parsed_.refused->report.empty())
        parsed_.refused->report = refusedReport(parsed_.refused->reason, SchemaBuilder::arenaOf(schema));
    SchemaBuilder::vReport(schema, Report::RuleRefused, parsed_.refused->report);
}

} // namespace kiv::ifc::def::schema
