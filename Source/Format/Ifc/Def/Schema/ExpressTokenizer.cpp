#include "Format/Ifc/Def/Schema/ExpressTokenizer.h"

#include "Format/Ifc/Def/Schema/ExpressParser.h"
#include "Format/Ifc/Def/Schema/IfcSchemaText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <istream>
#include <iterator>
#include <stdexcept>

namespace kiv::ifc::def::schema {

namespace {

using ascii::isDigit;
using ascii::isLetter;
using Kind = ExpressTokenKind;

constexpr std::array<std::string_view, 75> KindNames = {"BEGIN",
                                                        "END",
                                                        "CASE",
                                                        "END_CASE",
                                                        "IF",
                                                        "END_IF",
                                                        "REPEAT",
                                                        "END_REPEAT",
                                                        "AND",
                                                        "ARRAY",
                                                        "BINARY",
                                                        "BOOLEAN",
                                                        "ENUMERATION",
                                                        "ESCAPE",
                                                        "FALSE",
                                                        "FOR",
                                                        "FIXED",
                                                        "GENERIC",
                                                        "IN",
                                                        "INTEGER",
                                                        "LIST",
                                                        "LOCAL",
                                                        "LOGICAL",
                                                        "MOD",
                                                        "NOT",
                                                        "NUMBER",
                                                        "OF",
                                                        "OR",
                                                        "OTHERWISE",
                                                        "QUERY",
                                                        "REAL",
                                                        "RETURN",
                                                        "SELECT",
                                                        "SELF",
                                                        "SET",
                                                        "STRING",
                                                        "THEN",
                                                        "TO",
                                                        "TRUE",
                                                        "UNKNOWN",
                                                        "XOR",
                                                        "IDENTIFIER",
                                                        "STRING_LITERAL",
                                                        "INTEGER_LITERAL",
                                                        "REAL_LITERAL",
                                                        "LEFT_PAREN",
                                                        "RIGHT_PAREN",
                                                        "LEFT_BRACKET",
                                                        "RIGHT_BRACKET",
                                                        "LEFT_BRACE",
                                                        "RIGHT_BRACE",
                                                        "COMMA",
                                                        "QUESTION",
                                                        "DOT",
                                                        "SLASH",
                                                        "BACKSLASH",
                                                        "ADD",
                                                        "SUBTRACT",
                                                        "SEMICOLON",
                                                        "SEMI_EQUAL",
                                                        "SEMI_NOT_EQUAL",
                                                        "ASSIGN",
                                                        "COLON",
                                                        "POWER",
                                                        "ASTERISK",
                                                        "OR_SIGN",
                                                        "BITWISE_OR",
                                                        "GREATER_OR_EQUAL",
                                                        "GREATER",
                                                        "QUERY_OPERATOR",
                                                        "LESS_OR_EQUAL",
                                                        "NOT_EQUAL",
                                                        "LESS",
                                                        "EQUAL",
                                                        "END_OF_FILE"};

struct Keyword {
    std::string_view word;
    Kind kind;
};

/// The keywords as the scanner knows them, by first letter. Two are off on purpose, as they have always been:
/// INTEGER and STRING are identifiers, while IINTEGER is LIST and SRING is STRING.
constexpr Keyword Keywords[] = {{"AND", Kind::AND},
                                {"ARRAY", Kind::ARRAY},
                                {"BEGIN", Kind::BEGIN},
                                {"BINARY", Kind::BINARY},
                                {"BOOLEAN", Kind::BOOLEAN},
                                {"CASE", Kind::CASE},
                                {"END", Kind::END},
                                {"END_CASE", Kind::END_CASE},
                                {"END_IF", Kind::END_IF},
                                {"END_REPEAT", Kind::END_REPEAT},
                                {"ENUMERATION", Kind::ENUMERATION},
                                {"ESCAPE", Kind::ESCAPE},
                                {"FALSE", Kind::FALSE},
                                {"FIXED", Kind::FIXED},
                                {"FOR", Kind::FOR},
                                {"GENERIC", Kind::GENERIC},
                                {"IF", Kind::IF},
                                {"IINTEGER", Kind::LIST},
                                {"IN", Kind::IN},
                                {"LIST", Kind::LIST},
                                {"LOCAL", Kind::LOCAL},
                                {"LOGICAL", Kind::LOGICAL},
                                {"MOD", Kind::MOD},
                                {"NOT", Kind::NOT},
                                {"NUMBER", Kind::NUMBER},
                                {"OF", Kind::OF},
                                {"OR", Kind::OR},
                                {"OTHERWISE", Kind::OTHERWISE},
                                {"QUERY", Kind::QUERY},
                                {"REAL", Kind::REAL},
                                {"REPEAT", Kind::REPEAT},
                                {"RETURN", Kind::RETURN},
                                {"SELECT", Kind::SELECT},
                                {"SELF", Kind::SELF},
                                {"SET", Kind::SET},
                                {"SRING", Kind::STRING},
                                {"THEN", Kind::THEN},
                                {"TO", Kind::TO},
                                {"TRUE", Kind::TRUE},
                                {"UNKNOWN", Kind::UNKNOWN},
                                {"XOR", Kind::XOR}};

/// Where the keywords of each first letter begin; the entry behind Z is the number of keywords.
constexpr auto KeywordStarts = [] {
    std::array<std::uint8_t, 27> starts{};
    for (std::size_t letter = 0; letter < starts.size(); ++letter) {
        std::uint8_t before = 0;
        for (const auto& keyword : Keywords)
            before = static_cast<std::uint8_t>(before +
                                               (static_cast<std::size_t>(keyword.word[0] - 'A') < letter));
        starts[letter] = before;
    }
    return starts;
}();

constexpr bool isWordByte(char byte) {
    return isLetter(byte) || isDigit(byte) || byte == '_';
}

bool boEqualsUpper(std::string_view text, std::string_view upper) {
    if (text.size() != upper.size())
        return false;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (ascii::getUpper(text[index]) != upper[index])
            return false;
    }
    return true;
}

/// The keyword's kind, IDENTIFIER when the word is none.
Kind kindOfWord(std::string_view word) {
    const auto letter = static_cast<std::size_t>(ascii::getUpper(word.front()) - 'A');
    for (std::size_t index = KeywordStarts[letter]; index < KeywordStarts[letter + 1]; ++index) {
        if (boEqualsUpper(word, Keywords[index].word))
            return Keywords[index].kind;
    }
    return Kind::IDENTIFIER;
}

/// Behind the end of what a comment or literal that begins at `begin` needs to be closed; npos when a zero
/// byte or the end of the text comes first.
std::size_t closedEnd(std::string_view text, std::size_t begin, std::string_view closer) {
    const auto found = text.find(closer, begin);
    const auto zero = text.substr(0, found).find('\0', begin);
    return found == std::string_view::npos || zero != std::string_view::npos ? std::string_view::npos
                                                                             : found + closer.size();
}

/// The text up to the first comment or literal that is never closed.
std::string_view closedText(std::string_view text) {
    std::size_t pos = 0;
    while (pos < text.size()) {
        const char byte = text[pos];
        const char next = pos + 1 < text.size() ? text[pos + 1] : '\0';
        auto end = pos + 1;
        if (byte == '\0')
            break;
        if (byte == '\'')
            end = closedEnd(text, pos + 1, "'");
        else if (byte == '(' && next == '*')
            end = closedEnd(text, pos + 2, "*)");
        else if (byte == '-' && next == '-')
            end = closedEnd(text, pos + 2, "\n");
        if (end == std::string_view::npos)
            return text.substr(0, pos);
        pos = end;
    }
    return text;
}

int integerFromText(std::string_view digits) {
    int value = 0;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), value).ec ==
        std::errc::result_out_of_range)
        throw std::out_of_range("stoi argument out of range");
    return value;
}

/// Numbers too small for full precision are taken as they come out; only what becomes no number at all is
/// refused.
double realFromText(std::string_view text) {
    double value = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc::result_out_of_range)
        throw std::out_of_range("stod argument out of range");
    return value;
}

Kind kindOfSingle(char byte) {
    switch (byte) {
    case '(':
        return Kind::LEFT_PAREN;
    case ')':
        return Kind::RIGHT_PAREN;
    case '+':
        return Kind::ADD;
    case ',':
        return Kind::COMMA;
    case '.':
        return Kind::DOT;
    case '/':
        return Kind::SLASH;
    case ';':
        return Kind::SEMICOLON;
    case '=':
        return Kind::EQUAL;
    case '?':
        return Kind::QUESTION;
    case '[':
        return Kind::LEFT_BRACKET;
    case '\\':
        return Kind::BACKSLASH;
    case ']':
        return Kind::RIGHT_BRACKET;
    case '{':
        return Kind::LEFT_BRACE;
    case '}':
        return Kind::RIGHT_BRACE;
    default:
        throw ExpressParser::SyntaxError(std::string("ExpressTokenizer didn't expect the character ") + byte +
                                         " here...");
    }
}

} // namespace

std::string sTokenKindName(ExpressTokenKind kind) {
    const auto index = static_cast<std::size_t>(kind);
    return index < KindNames.size() ? std::string(KindNames[index]) : std::string();
}

ExpressTokenizer::ExpressTokenizer(std::istream& stream) :
    owned_(std::istreambuf_iterator<char>(stream), {}), text_(closedText(owned_)) {}

ExpressTokenizer::ExpressTokenizer(std::string_view text) : text_(closedText(text)) {}

char ExpressTokenizer::lookAhead() const {
    return pos_ < text_.size() ? text_[pos_] : '\0';
}

char ExpressTokenizer::consume() {
    ++count_;
    const char consumed = lookAhead();
    // A zero byte ends the input: nothing is read any more.
    if (consumed != '\0')
        ++pos_;
    return consumed;
}

bool ExpressTokenizer::boMatch(char wanted) {
    if (lookAhead() != wanted)
        return false;
    consume();
    return true;
}

/// Consumes the bytes that satisfy the test.
std::string_view ExpressTokenizer::consumeWhile(bool (*test)(char)) {
    const auto begin = pos_;
    while (pos_ < text_.size() && test(text_[pos_]))
        ++pos_;
    count_ += pos_ - begin;
    return text_.substr(begin, pos_ - begin);
}

/// Moves back, counted from behind the look-ahead, so that the first of the characters is dropped and the
/// others come back; at the end of the input, where there is no look-ahead, all of them come back. Tokens
/// depend on this.
void ExpressTokenizer::vGiveBack(std::size_t count) {
    const auto behindLookAhead = std::min(pos_ + 1, text_.size());
    pos_ = behindLookAhead - count;
    // The look-ahead is counted again.
    count_ = count_ - count + 1;
}

ExpressToken ExpressTokenizer::token(Kind kind) const {
    return {kind, line_, count_ - lineStart_, {}};
}

ExpressToken ExpressTokenizer::getToken() {
    for (;;) {
        const char byte = consume();
        switch (byte) {
        case '\0':
            return token(Kind::END_OF_FILE);
        case '\t':
        case '\r':
        case ' ':
            continue;
        case '\n':
            vNewLineCount();
            continue;
        case '(':
            if (!boMatch('*'))
                return token(Kind::LEFT_PAREN);
            vBlockCommentSkip();
            continue;
        case '-':
            if (!boMatch('-'))
                return token(Kind::SUBTRACT);
            vLineCommentSkip();
            // A line comment ends a rule just as ';' does.
            return token(Kind::SEMICOLON);
        case '\'':
            return stringLiteral();
        case '*':
            return token(boMatch('*') ? Kind::POWER : Kind::ASTERISK);
        case '|':
            return token(boMatch('|') ? Kind::OR_SIGN : Kind::BITWISE_OR);
        case '>':
            return token(boMatch('=') ? Kind::GREATER_OR_EQUAL : Kind::GREATER);
        case '<':
            return lessToken();
        case ':':
            return colonToken();
        default:
            if (isLetter(byte))
                return identifierOrKeyword();
            if (isDigit(byte))
                return number();
            return token(kindOfSingle(byte));
        }
    }
}

void ExpressTokenizer::vNewLineCount() {
    ++line_;
    lineStart_ = count_;
}

ExpressToken ExpressTokenizer::lessToken() {
    if (boMatch('*'))
        return token(Kind::QUERY_OPERATOR);
    if (boMatch('='))
        return token(Kind::LESS_OR_EQUAL);
    return token(boMatch('>') ? Kind::NOT_EQUAL : Kind::LESS);
}

ExpressToken ExpressTokenizer::colonToken() {
    if (boMatch('='))
        return token(boMatch(':') ? Kind::SEMI_EQUAL : Kind::ASSIGN);
    if (!boMatch('<'))
        return token(Kind::COLON);
    if (!boMatch('>')) {
        vGiveBack(1);
        return token(Kind::COLON);
    }
    if (boMatch(':'))
        return token(Kind::SEMI_NOT_EQUAL);
    vGiveBack(2);
    return token(Kind::COLON);
}

void ExpressTokenizer::vBlockCommentSkip() {
    for (;;) {
        const char byte = consume();
        if (byte == '\n')
            vNewLineCount();
        if (byte == '*' && boMatch(')'))
            return;
    }
}

void ExpressTokenizer::vLineCommentSkip() {
    consumeWhile([](char byte) { return byte != '\n'; });
}

ExpressToken ExpressTokenizer::stringLiteral() {
    std::string text(consumeWhile([](char byte) { return byte != '\''; }));
    consume();
    auto result = token(Kind::STRING_LITERAL);
    result.value = std::move(text);
    return result;
}

ExpressToken ExpressTokenizer::identifierOrKeyword() {
    const auto begin = pos_ - 1;
    consumeWhile(isWordByte);
    const auto word = text_.substr(begin, pos_ - begin);
    auto result = token(kindOfWord(word));
    if (result.kind == Kind::IDENTIFIER)
        result.value = std::string(word);
    return result;
}

ExpressToken ExpressTokenizer::number() {
    const auto begin = pos_ - 1;
    consumeWhile(isDigit);
    const bool isReal = boMatch('.');
    if (isReal)
        consumeWhile(isDigit);
    std::string text(text_.substr(begin, pos_ - begin));
    if (isReal)
        vExponentCollect(text);
    auto result = token(isReal ? Kind::REAL_LITERAL : Kind::INTEGER_LITERAL);
    if (isReal)
        result.value = realFromText(text);
    else
        result.value = integerFromText(text);
    return result;
}

/// An exponent needs a digit; without one the number ends before it.
void ExpressTokenizer::vExponentCollect(std::string& text) {
    if (!boMatch('e') && !boMatch('E'))
        return;
    const char sign = lookAhead();
    const bool isSigned = boMatch('+') || boMatch('-');
    if (!isDigit(lookAhead())) {
        vGiveBack(isSigned ? 2 : 1);
        return;
    }
    text += 'e';
    // The conversion wants no plus sign.
    if (sign == '-')
        text += sign;
    text += consumeWhile(isDigit);
}

} // namespace kiv::ifc::def::schema
