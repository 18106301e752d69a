// The text of a WHERE clause and of what follows it: collecting and parsing it ends in rules, in a report or
// in std::out_of_range; all ways of reading its tokens agree, lines never go back, and the end stays the end.
#include "FuzzTarget.h"
#include "SampleSchema.h"

#include "kiv/Format/Ifc/Def/Schema/ExpressParser.h"
#include "kiv/Format/Ifc/Def/Schema/ExpressTokenizer.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaWhere.h"
#include "kiv/Host/Assert/KivAssert.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <variant>

namespace {

using namespace kiv::ifc::def::schema;
using kiv::fuzz::vLaw;

/// Nothing, and what is wrong, where the tokenizer raises an error.
template <class Read>
std::optional<ExpressToken> tokenOf(const Read& read, std::string& error) {
    try {
        return read();
    } catch (const ExpressParser::SyntaxError& syntax) {
        error = syntax.what();
    } catch (const std::out_of_range& range) {
        error = range.what();
    }
    return std::nullopt;
}

ExpressToken kept(const ExpressTokenView& view) {
    ExpressToken token{view.kind, view.line, view.column, {}};
    if (view.kind == ExpressTokenKind::IDENTIFIER || view.kind == ExpressTokenKind::STRING_LITERAL)
        token.value = std::string(view.text);
    if (view.kind == ExpressTokenKind::INTEGER_LITERAL)
        token.value = view.integer;
    if (view.kind == ExpressTokenKind::REAL_LITERAL)
        token.value = view.real;
    return token;
}

bool boSame(const ExpressToken& left, const ExpressToken& right) {
    return left.kind == right.kind && left.line == right.line && left.column == right.column &&
           left.value == right.value;
}

/// Reads both to the end and compares them token by token; goes on after an error.
void vTokensAgree(std::string_view text) {
    std::istringstream stream{std::string(text)};
    ExpressTokenizer ofStream(stream);
    ExpressTokenizer ofText(text);
    std::uint64_t line = 0;
    for (std::optional<ExpressToken> token; !token || token->kind != ExpressTokenKind::END_OF_FILE;) {
        std::string error;
        std::string errorOfView;
        token = tokenOf([&] { return ofStream.getToken(); }, error);
        const auto view = tokenOf(
            [&] {
                ExpressTokenView read;
                ofText.vTokenRead(read);
                return kept(read);
            },
            errorOfView);
        vLaw(error == errorOfView && token.has_value() == view.has_value(), "both ways meet the same errors");
        if (!token)
            continue;
        vLaw(boSame(*token, *view), "both ways read the same tokens");
        vLaw(token->line >= line, "lines never go back");
        line = token->line;
    }
    vLaw(ofText.getToken().kind == ExpressTokenKind::END_OF_FILE, "the end stays the end");
}

std::string sJoined(const std::vector<std::string_view>& lines) {
    std::string text;
    for (const auto line : lines)
        text.append(line).append("\n");
    return text;
}

/// A new one now and then: the trees of all clauses stay in the memory of the schema that they are parsed
/// for.
kiv::ifc::def::SchemaPset& sharedSchema() {
    static auto schema = kiv::fuzz::sampleSchema();
    static std::size_t uses = 0;
    if (++uses % 256 == 0)
        schema = kiv::fuzz::sampleSchema();
    return *schema;
}

} // namespace

void kiv::fuzz::vRun(std::string_view input) {
    auto& schema = sharedSchema();
    kiv::assert::CollectingSink sink;
    const kiv::assert::ScopedSink installed(sink);

    std::istringstream stream{std::string(input)};
    ReadLineHelper line;
    Where where(schema, line, 0, stream);
    vLaw(sJoined(where.getLines()) == where.getText(), "the lines make up the text");
    vTokensAgree(where.getText());
    vTokensAgree(input);

    std::string error;
    ExpressTokenizer tokenizer(where.getText());
    try {
        std::vector<ParsedRule> rules;
        ExpressParser parser(tokenizer, schema);
        while (parser.boParseRule(rules)) {
        }
    } catch (const ExpressParser::SyntaxError&) {
        error = "syntax";
    } catch (const std::out_of_range&) {
        error = "range";
    }
    try {
        where.parseRules(schema);
        vLaw(error != "range", "a literal out of range leaves the clause");
    } catch (const std::out_of_range&) {
        vLaw(error == "range", "nothing else leaves the clause");
    }
    if (error == "syntax")
        vLaw(sink.getRecords().size() == 1, "a syntax error is one report");
    if (error.empty())
        vLaw(sink.getRecords().empty() == !where.getRules().empty(),
             "no rule at all is a report, rules are none");
}
