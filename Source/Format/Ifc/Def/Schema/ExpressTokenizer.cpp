#include "kiv/Format/Ifc/Def/Schema/ExpressTokenizer.h"

#include "Base/Words8.h"
#include "kiv/Format/Ifc/Def/Schema/ExpressParser.h"

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

struct ScannerKeyword {
    constexpr ScannerKeyword(std::string_view wordText, Kind wordKind) :
        word(wordText), bytes(word.size() < LongText ? getShortText(word) : 0), kind(wordKind) {}

    /// Whether the word, which has as many letters, is this one. `shortText` is that of the word in upper
    /// case.
    bool isWord(std::string_view other, std::uint64_t shortText) const {
        return word.size() < LongText ? shortText == bytes : isUpperOf(other, word);
    }

    std::string_view word;
    std::uint64_t bytes;
    Kind kind;
};

/// The keywords as the scanner knows them, by first letter and length. Hosts compare these tokens with those
/// of the rules they keep, so two words stay misspelt: INTEGER and STRING are identifiers here, IINTEGER is
/// LIST and SRING is STRING.
constexpr ScannerKeyword Keywords[] = {{"AND", Kind::AND},
                                       {"ARRAY", Kind::ARRAY},
                                       {"BEGIN", Kind::BEGIN},
                                       {"BINARY", Kind::BINARY},
                                       {"BOOLEAN", Kind::BOOLEAN},
                                       {"CASE", Kind::CASE},
                                       {"END", Kind::END},
                                       {"END_IF", Kind::END_IF},
                                       {"ESCAPE", Kind::ESCAPE},
                                       {"END_CASE", Kind::END_CASE},
                                       {"END_REPEAT", Kind::END_REPEAT},
                                       {"ENUMERATION", Kind::ENUMERATION},
                                       {"FOR", Kind::FOR},
                                       {"FALSE", Kind::FALSE},
                                       {"FIXED", Kind::FIXED},
                                       {"GENERIC", Kind::GENERIC},
                                       {"IF", Kind::IF},
                                       {"IN", Kind::IN},
                                       {"IINTEGER", Kind::LIST},
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
                                       {"SET", Kind::SET},
                                       {"SELF", Kind::SELF},
                                       {"SRING", Kind::STRING},
                                       {"SELECT", Kind::SELECT},
                                       {"TO", Kind::TO},
                                       {"THEN", Kind::THEN},
                                       {"TRUE", Kind::TRUE},
                                       {"UNKNOWN", Kind::UNKNOWN},
                                       {"XOR", Kind::XOR}};

static_assert(std::is_sorted(std::begin(Keywords), std::end(Keywords),
                             [](const ScannerKeyword& left, const ScannerKeyword& right) {
                                 return std::pair(left.word[0], left.word.size()) <
                                        std::pair(right.word[0], right.word.size());
                             }));

constexpr std::size_t LongestKeyword = 11;

/// The place of words of a first letter and a length among all such places, in the order of the table.
constexpr std::size_t keywordPlace(char upperLetter, std::size_t size) {
    return static_cast<std::size_t>(upperLetter - 'A') * (LongestKeyword + 1) + size;
}

/// Where the keywords of each place begin; the entry after the last place is the number of keywords.
constexpr auto KeywordStarts = [] {
    std::array<std::uint8_t, keywordPlace('Z', LongestKeyword) + 2> starts{};
    for (const auto& keyword : Keywords)
        ++starts[keywordPlace(keyword.word[0], keyword.word.size()) + 1];
    for (std::size_t place = 1; place < starts.size(); ++place)
        starts[place] = static_cast<std::uint8_t>(starts[place] + starts[place - 1]);
    return starts;
}();

/// The keyword's kind, IDENTIFIER when the word is none.
Kind kindOfWord(std::string_view word) {
    if (word.size() > LongestKeyword)
        return Kind::IDENTIFIER;
    const auto place = keywordPlace(ascii::getUpper(word.front()), word.size());
    const std::size_t end = KeywordStarts[place + 1];
    std::size_t index = KeywordStarts[place];
    if (index == end)
        return Kind::IDENTIFIER;
    const auto shortText = word.size() < LongText ? getUpper8(getShortText(word)) : 0;
    while (index != end && !Keywords[index].isWord(word, shortText))
        ++index;
    return index != end ? Keywords[index].kind : Kind::IDENTIFIER;
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

/// The bytes that are a token of their own whatever follows; END_OF_FILE for all others.
constexpr auto SingleKinds = [] {
    std::array<Kind, 256> kinds{};
    kinds.fill(Kind::END_OF_FILE);
    const auto set = [&kinds](char byte, Kind kind) { kinds[static_cast<unsigned char>(byte)] = kind; };
    set(')', Kind::RIGHT_PAREN);
    set('+', Kind::ADD);
    set(',', Kind::COMMA);
    set('.', Kind::DOT);
    set('/', Kind::SLASH);
    set(';', Kind::SEMICOLON);
    set('=', Kind::EQUAL);
    set('?', Kind::QUESTION);
    set('[', Kind::LEFT_BRACKET);
    set('\\', Kind::BACKSLASH);
    set(']', Kind::RIGHT_BRACKET);
    set('{', Kind::LEFT_BRACE);
    set('}', Kind::RIGHT_BRACE);
    return kinds;
}();

} // namespace

std::string sTokenKindName(ExpressTokenKind kind) {
    const auto index = static_cast<std::size_t>(kind);
    return index < KindNames.size() ? std::string(KindNames[index]) : std::string();
}

ExpressTokenizer::ExpressTokenizer(std::istream& stream) :
    owned_(std::istreambuf_iterator<char>(stream), {}), text_(owned_) {}

ExpressTokenizer::ExpressTokenizer(std::string_view text) : text_(text) {}

char ExpressTokenizer::lookAhead() const {
    return pos_ < text_.size() ? text_[pos_] : '\0';
}

char ExpressTokenizer::consume() {
    const char consumed = lookAhead();
    // A zero byte ends the input: nothing is read any more.
    if (consumed != '\0')
        ++pos_;
    else
        ++uncounted_;
    return consumed;
}

bool ExpressTokenizer::boMatch(char wanted) {
    if (!boNext(wanted))
        return false;
    consume();
    return true;
}

/// Consumes digits.
std::string_view ExpressTokenizer::digitsConsume() {
    const auto begin = pos_;
    while (pos_ < text_.size() && isDigit(text_[pos_]))
        ++pos_;
    return text_.substr(begin, pos_ - begin);
}

/// Moves back, counted from after the look-ahead, so that the first of the characters is dropped and the
/// others come back; at the end of the input, where there is no look-ahead, all of them come back. The
/// columns that hosts are given, and the tokens after an incomplete operator or exponent, depend on this.
void ExpressTokenizer::vGiveBack(std::size_t count) {
    const auto afterLookAhead = std::min(pos_ + 1, text_.size());
    // The look-ahead is counted again.
    const auto counted = getCount() - count + 1;
    pos_ = afterLookAhead - count;
    uncounted_ = counted - pos_;
}

ExpressToken ExpressTokenizer::getToken() {
    ExpressTokenView view;
    vTokenRead(view);
    ExpressToken token{view.kind, view.line, view.column, {}};
    switch (view.kind) {
    case Kind::IDENTIFIER:
    case Kind::STRING_LITERAL:
        token.value = std::string(view.text);
        break;
    case Kind::INTEGER_LITERAL:
        token.value = view.integer;
        break;
    case Kind::REAL_LITERAL:
        token.value = view.real;
        break;
    default:
        break;
    }
    return token;
}

void ExpressTokenizer::vTokenRead(ExpressTokenView& token) {
    token.kind = kindRead(token);
    token.line = line_;
    token.column = getCount() - lineStart_;
}

ExpressTokenKind ExpressTokenizer::kindRead(ExpressTokenView& token) {
    for (;;) {
        vBlanksSkip();
        const char byte = consume();
        if (isLetter(byte))
            return wordRead(token);
        const auto single = SingleKinds[static_cast<unsigned char>(byte)];
        if (single != Kind::END_OF_FILE)
            return single;
        switch (byte) {
        case '\0':
            return Kind::END_OF_FILE;
        case '(':
            if (!boNext('*'))
                return Kind::LEFT_PAREN;
            if (!boBlockCommentSkip())
                return Kind::END_OF_FILE;
            continue;
        case '-':
            if (!boNext('-'))
                return Kind::SUBTRACT;
            // A line comment ends a rule just as ';' does.
            return boLineCommentSkip() ? Kind::SEMICOLON : Kind::END_OF_FILE;
        case '\'':
            return stringLiteralRead(token);
        case '*':
            return boMatch('*') ? Kind::POWER : Kind::ASTERISK;
        case '|':
            return boMatch('|') ? Kind::OR_SIGN : Kind::BITWISE_OR;
        case '>':
            return boMatch('=') ? Kind::GREATER_OR_EQUAL : Kind::GREATER;
        case '<':
            return lessRead();
        case ':':
            return colonRead();
        default:
            if (isDigit(byte))
                return numberRead(token);
            throw ExpressParser::SyntaxError(std::string("ExpressTokenizer didn't expect the character ") +
                                             byte + " here...");
        }
    }
}

void ExpressTokenizer::vBlanksSkip() {
    while (pos_ < text_.size() && ascii::isOneOf(text_[pos_], " \n\t\r")) {
        if (text_[pos_++] == '\n')
            vNewLineCount();
    }
}

void ExpressTokenizer::vNewLineCount() {
    ++line_;
    lineStart_ = getCount();
}

ExpressTokenKind ExpressTokenizer::lessRead() {
    if (boMatch('*'))
        return Kind::QUERY_OPERATOR;
    if (boMatch('='))
        return Kind::LESS_OR_EQUAL;
    return boMatch('>') ? Kind::NOT_EQUAL : Kind::LESS;
}

ExpressTokenKind ExpressTokenizer::colonRead() {
    if (boMatch('='))
        return boMatch(':') ? Kind::SEMI_EQUAL : Kind::ASSIGN;
    if (!boMatch('<'))
        return Kind::COLON;
    if (!boMatch('>')) {
        vGiveBack(1);
        return Kind::COLON;
    }
    if (boMatch(':'))
        return Kind::SEMI_NOT_EQUAL;
    vGiveBack(2);
    return Kind::COLON;
}

/// The position of what closes a comment or literal; npos when a zero byte or the end of the text comes
/// first.
std::size_t ExpressTokenizer::closerFind(std::string_view closer, std::size_t pos) const {
    const auto found = text_.find(closer, pos);
    if (found == std::string_view::npos)
        return found;
    const auto isCut = text_.substr(pos, found - pos).find('\0') != std::string_view::npos;
    return isCut ? std::string_view::npos : found;
}

/// Makes the input end where what is never closed begins, whose first byte was consumed already.
void ExpressTokenizer::vInputEnd() {
    --pos_;
    ++uncounted_;
    text_ = text_.substr(0, pos_);
}

/// False when the comment is never closed.
bool ExpressTokenizer::boBlockCommentSkip() {
    constexpr std::string_view closer = "*)";
    const auto close = closerFind(closer, pos_ + 1);
    if (close == std::string_view::npos) {
        vInputEnd();
        return false;
    }
    for (++pos_; pos_ < close;) {
        if (text_[pos_++] == '\n')
            vNewLineCount();
    }
    pos_ = close + closer.size();
    return true;
}

/// False when the comment is never closed.
bool ExpressTokenizer::boLineCommentSkip() {
    const auto close = closerFind("\n", pos_ + 1);
    if (close == std::string_view::npos) {
        vInputEnd();
        return false;
    }
    pos_ = close;
    return true;
}

ExpressTokenKind ExpressTokenizer::stringLiteralRead(ExpressTokenView& token) {
    const auto close = closerFind("'", pos_);
    if (close == std::string_view::npos) {
        vInputEnd();
        return Kind::END_OF_FILE;
    }
    token.text = text_.substr(pos_, close - pos_);
    pos_ = close + 1;
    return Kind::STRING_LITERAL;
}

ExpressTokenKind ExpressTokenizer::wordRead(ExpressTokenView& token) {
    const auto* const begin = text_.data() + pos_ - 1;
    const std::string_view word(
        begin, static_cast<std::size_t>(pWordEnd(begin, text_.data() + text_.size()) - begin));
    pos_ += word.size() - 1;
    token.text = word;
    return kindOfWord(word);
}

ExpressTokenKind ExpressTokenizer::numberRead(ExpressTokenView& token) {
    const auto begin = pos_ - 1;
    digitsConsume();
    if (!boMatch('.')) {
        token.integer = integerFromText(text_.substr(begin, pos_ - begin));
        return Kind::INTEGER_LITERAL;
    }
    digitsConsume();
    std::string text(text_.substr(begin, pos_ - begin));
    vExponentCollect(text);
    token.real = realFromText(text);
    return Kind::REAL_LITERAL;
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
    text += digitsConsume();
}

} // namespace kiv::ifc::def::schema
