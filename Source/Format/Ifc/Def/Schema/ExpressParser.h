/// @file
/// Parses the rules of a WHERE clause into expression trees.
///
///     ExpressTokenizer tokenizer("WR1 : SIZEOF(Items) >= 1;");
///     ExpressParser parser(tokenizer, schema);
///     std::vector<ParsedRule> rules;
///     while (parser.boParseRule(rules)) {}
///
/// Ownership: refers to the tokenizer and the schema, which must outlive it; the trees are the caller's,
///            unless they are made in an arena.
/// Threads:   one parser, one thread.
/// Errors:    `ExpressParser::SyntaxError` with the line and column of the place; what the tokenizer raises
///            passes.
#pragma once

#include "kiv/Base/WorkMeter.h"
#include "kiv/Format/Ifc/Def/Schema/ExpressExpression.h"
#include "kiv/Format/Ifc/Def/Schema/ExpressTokenizer.h"

#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::schema {

class Schema;

class KIV_EXPORT ExpressParser {
public:
    class KIV_EXPORT SyntaxError : public std::exception {
    public:
        explicit SyntaxError(std::string message);
        SyntaxError(const SyntaxError& other);
        SyntaxError& operator=(const SyntaxError& other);
        ~SyntaxError() override;

        const char* what() const noexcept override;

    private:
        std::string message_;
    };

    /// Reads the first token. By the schema, function calls and enumeration values are distinguished from
    /// plain names.
    ExpressParser(ExpressTokenizer& tokenizer, const Schema& schema);

    /// The same for trees that are made in an arena; the tokenizer's text lives as long as that.
    ExpressParser(ExpressTokenizer& tokenizer, const Schema& schema, Arena& arena);

    /// Appends the next rule; false, with nothing consumed, when the next token is no identifier.
    bool boParseRule(std::vector<ParsedRule>& rules);

    /// The next rule; nothing, with nothing consumed, when the next token is no identifier.
    std::optional<ParsedRule> parseRule();

    /// The next expression; never null.
    ExpressionPtr parseExpression();

    /// Raises a SyntaxError: the message, then " at ", the line, ":" and the column of the next token.
    [[noreturn]] void vFail(const std::string& message) const;

private:
    class NestingGuard;

    ExpressParser(ExpressTokenizer& tokenizer, const Schema& schema, Arena* arena);

    /// Makes a node where this parser makes them.
    template <class Node, class... Arguments>
    ExpressionPtr pMake(Arguments&&... arguments);

    void vNext() { tokenizer_.vTokenRead(current_); }
    bool isNext(ExpressTokenKind kind) const { return current_.kind == kind; }
    bool boAccept(ExpressTokenKind kind);
    std::string_view expect(ExpressTokenKind kind);
    bool isNextSchemaObject() const;

    ExpressionPtr parseSimpleExpression();
    ExpressionPtr parseTermRest(ExpressionPtr first);
    ExpressionPtr parseFactorRest(ExpressionPtr base);
    ExpressionPtr parseSimpleFactor();
    ExpressionPtr parseAggregateInitializer();
    ExpressionPtr parseElement();
    ExpressionPtr parseSchemaObject();
    ExpressionPtr parseCall(std::string_view name);
    ExpressionPtr parseInterval();
    IntervalOperator parseIntervalOperator();
    ExpressionPtr parseQuery();
    ExpressionPtr parseParenthesised();
    ExpressionPtr parseUnary(UnaryOperator op);
    ExpressionPtr pParseLiteral();
    ExpressionPtr pLiteral();
    ExpressionPtr parsePrimary();
    ExpressionPtr parseQualifiers(ExpressionPtr base);
    ExpressionPtr parseIndex(ExpressionPtr base);

    ExpressTokenizer& tokenizer_;
    const Schema& schema_;
    // Null when nodes are on their own.
    Arena* arena_;
    // Null when no budget is set.
    WorkMeter* meter_;
    // Read ahead, not consumed yet.
    ExpressTokenView current_;
    // How many expressions enclose the one being parsed.
    std::size_t nesting_ = 0;
};

} // namespace kiv::ifc::def::schema
