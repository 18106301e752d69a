/// @file
/// Splits the text of EXPRESS expressions into tokens.
///
///     ExpressTokenizer tokenizer("a <= b");
///     for (auto token = tokenizer.getToken(); token.kind != ExpressTokenKind::END_OF_FILE;)
///         token = tokenizer.getToken();
///
/// Ownership: the tokenizer refers to the text it was given as a view; of a stream it keeps a copy.
/// Threads:   one tokenizer, one thread.
/// Errors:    a character that begins no token raises `ExpressParser::SyntaxError`; a number that fits no
///            32-bit integer or no double raises std::out_of_range.
#pragma once

#include "kiv/Base/Export.h"

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <variant>

namespace kiv::ifc::def::schema {

/// The kinds of tokens. The names are those that error messages show; 0 to 40 are keywords.
enum class ExpressTokenKind : std::uint32_t {
    BEGIN,
    END,
    CASE,
    END_CASE,
    IF,
    END_IF,
    REPEAT,
    END_REPEAT,
    AND,
    ARRAY,
    BINARY,
    BOOLEAN,
    ENUMERATION,
    ESCAPE,
    FALSE,
    FOR,
    FIXED,
    GENERIC,
    IN,
    INTEGER,
    LIST,
    LOCAL,
    LOGICAL,
    MOD,
    NOT,
    NUMBER,
    OF,
    OR,
    OTHERWISE,
    QUERY,
    REAL,
    RETURN,
    SELECT,
    SELF,
    SET,
    STRING,
    THEN,
    TO,
    TRUE,
    UNKNOWN,
    XOR,
    IDENTIFIER,
    STRING_LITERAL,
    INTEGER_LITERAL,
    REAL_LITERAL,
    LEFT_PAREN,
    RIGHT_PAREN,
    LEFT_BRACKET,
    RIGHT_BRACKET,
    LEFT_BRACE,
    RIGHT_BRACE,
    COMMA,
    QUESTION,
    DOT,
    SLASH,
    BACKSLASH,
    ADD,
    SUBTRACT,
    SEMICOLON,
    SEMI_EQUAL,
    SEMI_NOT_EQUAL,
    ASSIGN,
    COLON,
    POWER,
    ASTERISK,
    OR_SIGN,
    BITWISE_OR,
    GREATER_OR_EQUAL,
    GREATER,
    QUERY_OPERATOR,
    LESS_OR_EQUAL,
    NOT_EQUAL,
    LESS,
    EQUAL,
    END_OF_FILE
};

/// The kind's name, such as "LEFT_PAREN"; empty for a value beyond the kinds.
KIV_EXPORT std::string sTokenKindName(ExpressTokenKind kind);

/// One token.
struct ExpressToken {
    ExpressTokenKind kind = ExpressTokenKind::END_OF_FILE;
    /// 1-based; 0 before anything was read.
    std::uint64_t line = 0;
    /// Of the token's last character: 1-based on every line but the first, where it is one greater.
    std::uint64_t column = 0;
    /// Identifiers and string literals carry a text, number literals their number, all others nothing.
    std::variant<std::monostate, std::string, int, double> value;
};

/// One token whose text is a view of what the tokenizer reads.
struct ExpressTokenView {
    ExpressTokenKind kind = ExpressTokenKind::END_OF_FILE;
    /// As in `ExpressToken`.
    std::uint64_t line = 0;
    std::uint64_t column = 0;
    /// Of a word, or between the quotes of a string literal.
    std::string_view text;
    /// Of an integer literal.
    int integer = 0;
    /// Of a real literal.
    double real = 0;
};

class KIV_EXPORT ExpressTokenizer {
public:
    /// Reads all that the stream's buffer gives, at once; its state flags are neither looked at nor set.
    explicit ExpressTokenizer(std::istream& stream);
    /// Over a text that outlives the tokenizer.
    explicit ExpressTokenizer(std::string_view text);
    ExpressTokenizer(const ExpressTokenizer&) = delete;
    ExpressTokenizer& operator=(const ExpressTokenizer&) = delete;

    /// The next token; END_OF_FILE again and again after the last one.
    ///
    /// A zero byte ends the input. So does a comment or a string literal that is never closed: the input ends
    /// where it begins, as skipping it would never end.
    ExpressToken getToken();

    /// The same without a copy of the token's text.
    void vTokenRead(ExpressTokenView& token);

private:
    char consume();
    bool boMatch(char wanted);
    bool boNext(char wanted) const { return lookAhead() == wanted; }
    std::string_view digitsConsume();
    void vGiveBack(std::size_t count);
    char lookAhead() const;

    /// What a token is, with its value where it has one; the position is the caller's to add.
    ExpressTokenKind kindRead(ExpressTokenView& token);
    ExpressTokenKind colonRead();
    ExpressTokenKind lessRead();
    ExpressTokenKind wordRead(ExpressTokenView& token);
    ExpressTokenKind numberRead(ExpressTokenView& token);
    ExpressTokenKind stringLiteralRead(ExpressTokenView& token);
    void vInputEnd();
    void vExponentCollect(std::string& text);
    bool boBlockCommentSkip();
    bool boLineCommentSkip();
    std::size_t closerFind(std::string_view closer, std::size_t pos) const;
    void vNewLineCount();
    void vBlanksSkip();
    std::uint64_t getCount() const { return pos_ + uncounted_; }

    std::string owned_;
    std::string_view text_;
    // Of the look-ahead, the next character that is not consumed.
    std::size_t pos_ = 0;
    // How many characters more than `pos_` count as consumed: the one that reading begins with, those
    // consumed at the end of the input, where there are none, and those counted again when they were given
    // back.
    std::uint64_t uncounted_ = 1;
    std::uint64_t line_ = 1;
    std::uint64_t lineStart_ = 0;
};

} // namespace kiv::ifc::def::schema
