#include "kiv/Format/Ifc/Def/Schema/ExpressTokenizer.h"

#include "Format/Ifc/Def/Schema/SchemaTestTools.h"
#include "kiv/Format/Ifc/Def/Schema/ExpressParser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

namespace {

using namespace kiv::ifc::def::schema;
using namespace kiv::test;
using testing::ElementsAre;

// The names of all kinds, by their numbers.
constexpr std::array<std::string_view, 75> KindNames{"BEGIN",
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

constexpr std::size_t KeywordCount = 41;

/// The token as a row shows it: its kind, and its value if it has one.
std::string sToken(const ExpressToken& token) {
    std::ostringstream text;
    text << sTokenKindName(token.kind);
    if (const auto* string = std::get_if<std::string>(&token.value))
        text << ' ' << *string;
    if (const auto* integer = std::get_if<int>(&token.value))
        text << ' ' << *integer;
    if (const auto* real = std::get_if<double>(&token.value))
        text << ' ' << *real;
    return text.str();
}

std::string sTokenAndPlace(const ExpressToken& token) {
    return sToken(token) + " at " + std::to_string(token.line) + ':' + std::to_string(token.column);
}

/// All tokens before the end of the input, each through `show`.
Strings tokensOf(std::string_view text, std::string (*show)(const ExpressToken&) = sToken) {
    ExpressTokenizer tokenizer(text);
    Strings tokens;
    for (auto token = tokenizer.getToken(); token.kind != ExpressTokenKind::END_OF_FILE;
         token = tokenizer.getToken())
        tokens.push_back(show(token));
    return tokens;
}

/// All tokens with their places, the end of the input included.
Strings placesOf(std::string_view text) {
    ExpressTokenizer tokenizer(text);
    Strings tokens;
    for (;;) {
        const auto token = tokenizer.getToken();
        tokens.push_back(sTokenAndPlace(token));
        if (token.kind == ExpressTokenKind::END_OF_FILE)
            return tokens;
    }
}

struct Row {
    std::string_view text;
    Strings tokens;
};

void vTokensCheck(std::initializer_list<Row> rows) {
    for (const auto& row : rows)
        EXPECT_EQ(tokensOf(row.text), row.tokens) << row.text;
}

void vPlacesCheck(std::initializer_list<Row> rows) {
    for (const auto& row : rows)
        EXPECT_EQ(placesOf(row.text), row.tokens) << row.text;
}

std::string sLower(std::string_view text) {
    std::string lower(text);
    for (auto& byte : lower)
        if (byte >= 'A' && byte <= 'Z')
            byte = static_cast<char>(byte + 32);
    return lower;
}

std::string sAlternating(std::string_view text) {
    auto mixed = sLower(text);
    for (std::size_t i = 1; i < mixed.size(); i += 2)
        mixed[i] = text[i];
    return mixed;
}

// ---- Kinds and their names

TEST(TokenKindTest, EveryKindHasItsNumberAndItsName) {
    for (std::size_t kind = 0; kind < KindNames.size(); ++kind)
        EXPECT_EQ(sTokenKindName(static_cast<ExpressTokenKind>(kind)), KindNames[kind]) << kind;
}

TEST(TokenKindTest, ThereAre75Kinds) {
    EXPECT_EQ(static_cast<std::uint32_t>(ExpressTokenKind::BEGIN), 0U);
    EXPECT_EQ(static_cast<std::uint32_t>(ExpressTokenKind::LIST), 20U);
    EXPECT_EQ(static_cast<std::uint32_t>(ExpressTokenKind::STRING), 35U);
    EXPECT_EQ(static_cast<std::uint32_t>(ExpressTokenKind::XOR), 40U);
    EXPECT_EQ(static_cast<std::uint32_t>(ExpressTokenKind::IDENTIFIER), 41U);
    EXPECT_EQ(static_cast<std::uint32_t>(ExpressTokenKind::REAL_LITERAL), 44U);
    EXPECT_EQ(static_cast<std::uint32_t>(ExpressTokenKind::LEFT_PAREN), 45U);
    EXPECT_EQ(static_cast<std::uint32_t>(ExpressTokenKind::EQUAL), 73U);
    EXPECT_EQ(static_cast<std::uint32_t>(ExpressTokenKind::END_OF_FILE), 74U);
    static_assert(std::is_same_v<std::underlying_type_t<ExpressTokenKind>, std::uint32_t>);
}

TEST(TokenKindTest, ValueBeyondTheKindsHasAnEmptyName) {
    for (const std::uint32_t value : {75U, 76U, 1000U, 0x80000000U, 0xFFFFFFFFU})
        EXPECT_EQ(sTokenKindName(static_cast<ExpressTokenKind>(value)), "") << value;
}

// ---- Keywords

/// Kinds whose word is not their name. Hosts compare tokens with those of the rules they keep, so the words
/// stay.
bool isMisspelt(std::string_view word) {
    return word == "INTEGER" || word == "STRING";
}

TEST(ExpressTokenizerTest, KeywordsAreRecognisedInAnyLetterCase) {
    for (std::size_t kind = 0; kind < KeywordCount; ++kind) {
        const auto word = KindNames[kind];
        if (isMisspelt(word))
            continue;
        for (const auto& text : {std::string(word), sLower(word), sAlternating(word)})
            EXPECT_THAT(tokensOf(text), ElementsAre(std::string(word))) << text;
    }
}

TEST(ExpressTokenizerTest, KeywordsCarryNoValue) {
    for (std::size_t kind = 0; kind < KeywordCount; ++kind) {
        if (isMisspelt(KindNames[kind]))
            continue;
        const auto token = ExpressTokenizer(KindNames[kind]).getToken();
        EXPECT_EQ(static_cast<std::size_t>(token.kind), kind);
        EXPECT_TRUE(std::holds_alternative<std::monostate>(token.value));
    }
}

TEST(ExpressTokenizerTest, SelfIsAKeywordInAnyLetterCaseAndSelfishIsNone) {
    vTokensCheck({{"self Self SELF", {"SELF", "SELF", "SELF"}}, {"Selfish", {"IDENTIFIER Selfish"}}});
}

TEST(ExpressTokenizerTest, IntegerAndStringAreIdentifiers) {
    vTokensCheck({
        {"INTEGER", {"IDENTIFIER INTEGER"}},
        {"integer", {"IDENTIFIER integer"}},
        {"Integer", {"IDENTIFIER Integer"}},
        {"STRING", {"IDENTIFIER STRING"}},
        {"string", {"IDENTIFIER string"}},
        {"String", {"IDENTIFIER String"}},
    });
}

TEST(ExpressTokenizerTest, IintegerIsListAndSringIsString) {
    vTokensCheck({
        {"iinteger", {"LIST"}},
        {"IINTEGER", {"LIST"}},
        {"IInteger", {"LIST"}},
        {"SRING", {"STRING"}},
        {"sring", {"STRING"}},
        {"Sring", {"STRING"}},
        {"LIST", {"LIST"}},
    });
}

TEST(ExpressTokenizerTest, WordsNextToKeywordsAreIdentifiers) {
    for (std::size_t kind = 0; kind < KeywordCount; ++kind) {
        const std::string word(KindNames[kind]);
        if (isMisspelt(word))
            continue;
        for (const auto& other : {word + 'X', word + '1', word + '_', 'Z' + word})
            EXPECT_THAT(tokensOf(other), ElementsAre("IDENTIFIER " + other)) << other;
    }
}

TEST(ExpressTokenizerTest, BeginningsOfKeywordsAreIdentifiers) {
    for (const auto* word : {"B", "EN", "END_", "END_I",   "CAS",  "SEL",   "SE",      "S",  "QUER", "X", "I",
                             "O", "N",  "T",    "IINTEGE", "SRIN", "ENDIF", "END_FOR", "AN", "LIS"})
        EXPECT_THAT(tokensOf(word), ElementsAre("IDENTIFIER " + std::string(word))) << word;
}

// ---- Identifiers

TEST(ExpressTokenizerTest, IdentifiersKeepTheirLetterCase) {
    vTokensCheck({
        {"a", {"IDENTIFIER a"}},
        {"IfcWall", {"IDENTIFIER IfcWall"}},
        {"z9_A_", {"IDENTIFIER z9_A_"}},
        {"AZaz09_", {"IDENTIFIER AZaz09_"}},
        {"a b", {"IDENTIFIER a", "IDENTIFIER b"}},
        {"a.b", {"IDENTIFIER a", "DOT", "IDENTIFIER b"}},
        {"9a", {"INTEGER_LITERAL 9", "IDENTIFIER a"}},
    });
}

// ---- Punctuation and operators

TEST(ExpressTokenizerTest, EachPunctuationHasItsKind) {
    vTokensCheck({
        {"(", {"LEFT_PAREN"}},
        {")", {"RIGHT_PAREN"}},
        {"[", {"LEFT_BRACKET"}},
        {"]", {"RIGHT_BRACKET"}},
        {"{", {"LEFT_BRACE"}},
        {"}", {"RIGHT_BRACE"}},
        {",", {"COMMA"}},
        {"?", {"QUESTION"}},
        {".", {"DOT"}},
        {"/", {"SLASH"}},
        {"\\", {"BACKSLASH"}},
        {"+", {"ADD"}},
        {"-", {"SUBTRACT"}},
        {";", {"SEMICOLON"}},
        {":=:", {"SEMI_EQUAL"}},
        {":<>:", {"SEMI_NOT_EQUAL"}},
        {":=", {"ASSIGN"}},
        {":", {"COLON"}},
        {"**", {"POWER"}},
        {"*", {"ASTERISK"}},
        {"||", {"OR_SIGN"}},
        {"|", {"BITWISE_OR"}},
        {">=", {"GREATER_OR_EQUAL"}},
        {">", {"GREATER"}},
        {"<*", {"QUERY_OPERATOR"}},
        {"<=", {"LESS_OR_EQUAL"}},
        {"<>", {"NOT_EQUAL"}},
        {"<", {"LESS"}},
        {"=", {"EQUAL"}},
    });
}

TEST(ExpressTokenizerTest, OperatorsStandBetweenNamesWithoutBlanks) {
    vTokensCheck({
        {"a<=b", {"IDENTIFIER a", "LESS_OR_EQUAL", "IDENTIFIER b"}},
        {"a<*b", {"IDENTIFIER a", "QUERY_OPERATOR", "IDENTIFIER b"}},
        {"a:<>:b", {"IDENTIFIER a", "SEMI_NOT_EQUAL", "IDENTIFIER b"}},
        {"a:=:b", {"IDENTIFIER a", "SEMI_EQUAL", "IDENTIFIER b"}},
        {"-1", {"SUBTRACT", "INTEGER_LITERAL 1"}},
        {"- - 1", {"SUBTRACT", "SUBTRACT", "INTEGER_LITERAL 1"}},
    });
}

TEST(ExpressTokenizerTest, TheLongestOperatorIsTaken) {
    vTokensCheck({
        {"***", {"POWER", "ASTERISK"}},
        {"|||", {"OR_SIGN", "BITWISE_OR"}},
        {">==", {"GREATER_OR_EQUAL", "EQUAL"}},
        {"<=>", {"LESS_OR_EQUAL", "GREATER"}},
        {"<>=", {"NOT_EQUAL", "EQUAL"}},
        {"<*>", {"QUERY_OPERATOR", "GREATER"}},
        {"<<=", {"LESS", "LESS_OR_EQUAL"}},
        {":=:=", {"SEMI_EQUAL", "EQUAL"}},
        {":==", {"ASSIGN", "EQUAL"}},
        {":=x", {"ASSIGN", "IDENTIFIER x"}},
        {":= :", {"ASSIGN", "COLON"}},
        {"::", {"COLON", "COLON"}},
        {":>", {"COLON", "GREATER"}},
        {"* *", {"ASTERISK", "ASTERISK"}},
        {"> =", {"GREATER", "EQUAL"}},
        {":<>::", {"SEMI_NOT_EQUAL", "COLON"}},
    });
}

TEST(ExpressTokenizerTest, LessAfterAColonIsDropped) {
    vTokensCheck({
        {":<x", {"COLON", "IDENTIFIER x"}},
        {":< x", {"COLON", "IDENTIFIER x"}},
        {":<=", {"COLON", "EQUAL"}},
        {":<*", {"COLON", "ASTERISK"}},
        {":<<x", {"COLON", "LESS", "IDENTIFIER x"}},
        {":<:", {"COLON", "COLON"}},
        {":<:=", {"COLON", "ASSIGN"}},
        {":<1.5", {"COLON", "REAL_LITERAL 1.5"}},
    });
}

TEST(ExpressTokenizerTest, OfNotEqualAfterAColonTheGreaterIsReadAgain) {
    vTokensCheck({
        {":<>x", {"COLON", "GREATER", "IDENTIFIER x"}},
        {":<>>", {"COLON", "GREATER", "GREATER"}},
        {":<>=", {"COLON", "GREATER_OR_EQUAL"}},
        {":<> :", {"COLON", "GREATER", "COLON"}},
        {":<>'s'", {"COLON", "GREATER", "STRING_LITERAL s"}},
    });
}

TEST(ExpressTokenizerTest, LessAfterAColonAtTheVeryEndComesBack) {
    vTokensCheck({{":<", {"COLON", "LESS"}}, {"a :<", {"IDENTIFIER a", "COLON", "LESS"}}});
}

TEST(ExpressTokenizerTest, NotEqualAfterAColonAtTheVeryEndComesBack) {
    vTokensCheck({{":<>", {"COLON", "NOT_EQUAL"}}});
}

// ---- White space and comments

TEST(ExpressTokenizerTest, SkipsTabsCarriageReturnsBlanksAndLineFeeds) {
    vTokensCheck({{"", {}}, {" \t\r\n \n", {}}, {"\ta\r\n b \n", {"IDENTIFIER a", "IDENTIFIER b"}}});
}

TEST(ExpressTokenizerTest, SkipsBlockComments) {
    vTokensCheck({
        {"(* note *)", {}},
        {"(**)x", {"IDENTIFIER x"}},
        {"(***)x", {"IDENTIFIER x"}},
        {"(****)x", {"IDENTIFIER x"}},
        {"(* ** ) * *)x", {"IDENTIFIER x"}},
        {"a(* -- ' *)b", {"IDENTIFIER a", "IDENTIFIER b"}},
        {"(*\n*\n)\n*)x", {"IDENTIFIER x"}},
        {"(*)*)x", {"IDENTIFIER x"}},
        {"( * a *)", {"LEFT_PAREN", "ASTERISK", "IDENTIFIER a", "ASTERISK", "RIGHT_PAREN"}},
    });
}

TEST(ExpressTokenizerTest, BlockCommentsDoNotNest) {
    vTokensCheck(
        {{"(* (* *) x", {"IDENTIFIER x"}}, {"(* (* *) x *)", {"IDENTIFIER x", "ASTERISK", "RIGHT_PAREN"}}});
}

TEST(ExpressTokenizerTest, LineCommentIsASemicolon) {
    vTokensCheck({
        {"x -- note\ny", {"IDENTIFIER x", "SEMICOLON", "IDENTIFIER y"}},
        {"--\n", {"SEMICOLON"}},
        {"---\nx", {"SEMICOLON", "IDENTIFIER x"}},
        {"-- a\n-- b\n", {"SEMICOLON", "SEMICOLON"}},
        {"a; -- b; (* ' \nc", {"IDENTIFIER a", "SEMICOLON", "SEMICOLON", "IDENTIFIER c"}},
        {"-- a\r\nb", {"SEMICOLON", "IDENTIFIER b"}},
        {"1--2\n", {"INTEGER_LITERAL 1", "SEMICOLON"}},
    });
}

// ---- String literals

TEST(ExpressTokenizerTest, StringLiteralIsTheTextBetweenTheQuotes) {
    vTokensCheck({
        {"'a'", {"STRING_LITERAL a"}},
        {"''", {"STRING_LITERAL "}},
        {"' (* x *) -- ;'", {"STRING_LITERAL  (* x *) -- ;"}},
        {"'a\\n\"b'", {"STRING_LITERAL a\\n\"b"}},
        {"'\x80\x01\t'", {"STRING_LITERAL \x80\x01\t"}},
        {"'IFC4.IFCWALL' IN", {"STRING_LITERAL IFC4.IFCWALL", "IN"}},
    });
}

TEST(ExpressTokenizerTest, DoubledQuoteEndsOneLiteralAndBeginsAnother) {
    vTokensCheck({{"'it''s'", {"STRING_LITERAL it", "STRING_LITERAL s"}},
                  {"''''", {"STRING_LITERAL ", "STRING_LITERAL "}}});
}

TEST(ExpressTokenizerTest, LineFeedInAStringLiteralIsKeptAndCountsNoLine) {
    EXPECT_THAT(placesOf("'a\nb' x\ny"), ElementsAre("STRING_LITERAL a\nb at 1:6", "IDENTIFIER x at 1:8",
                                                     "IDENTIFIER y at 2:1", "END_OF_FILE at 2:2"));
}

// ---- Numbers

TEST(ExpressTokenizerTest, DigitsAreAnInteger) {
    vTokensCheck({
        {"0", {"INTEGER_LITERAL 0"}},
        {"42", {"INTEGER_LITERAL 42"}},
        {"007", {"INTEGER_LITERAL 7"}},
        {"010", {"INTEGER_LITERAL 10"}},
        {"2147483647", {"INTEGER_LITERAL 2147483647"}},
        {"0000000000000000000000000000000001", {"INTEGER_LITERAL 1"}},
        {"1,2", {"INTEGER_LITERAL 1", "COMMA", "INTEGER_LITERAL 2"}},
        {"0x10", {"INTEGER_LITERAL 0", "IDENTIFIER x10"}},
    });
}

TEST(ExpressTokenizerTest, IntegerHasNoExponent) {
    vTokensCheck({{"1e5", {"INTEGER_LITERAL 1", "IDENTIFIER e5"}},
                  {"1E+5", {"INTEGER_LITERAL 1", "IDENTIFIER E", "ADD", "INTEGER_LITERAL 5"}}});
}

TEST(ExpressTokenizerTest, DigitsWithAPointAreAReal) {
    vTokensCheck({
        {"2.", {"REAL_LITERAL 2"}},
        {"2.5", {"REAL_LITERAL 2.5"}},
        {"0.001", {"REAL_LITERAL 0.001"}},
        {"00.50", {"REAL_LITERAL 0.5"}},
        {".5", {"DOT", "INTEGER_LITERAL 5"}},
        {"1.5.6", {"REAL_LITERAL 1.5", "DOT", "INTEGER_LITERAL 6"}},
        {"1..2", {"REAL_LITERAL 1", "DOT", "INTEGER_LITERAL 2"}},
        {"2147483648.", {"REAL_LITERAL 2.14748e+09"}},
        {"1.x", {"REAL_LITERAL 1", "IDENTIFIER x"}},
    });
}

TEST(ExpressTokenizerTest, RealMayHaveAnExponent) {
    vTokensCheck({
        {"1.5E+3", {"REAL_LITERAL 1500"}},
        {"1.5e3", {"REAL_LITERAL 1500"}},
        {"1.5E-3", {"REAL_LITERAL 0.0015"}},
        {"1.E2", {"REAL_LITERAL 100"}},
        {"1.e5", {"REAL_LITERAL 100000"}},
        {"1.0E2.5", {"REAL_LITERAL 100", "DOT", "INTEGER_LITERAL 5"}},
        {"1.0E2E3", {"REAL_LITERAL 100", "IDENTIFIER E3"}},
        {"1.0E0003", {"REAL_LITERAL 1000"}},
        {"1.0E+2-1", {"REAL_LITERAL 100", "SUBTRACT", "INTEGER_LITERAL 1"}},
    });
}

TEST(ExpressTokenizerTest, RealsAreConvertedExactly) {
    EXPECT_EQ(std::get<double>(ExpressTokenizer("0.1").getToken().value), 0.1);
    EXPECT_EQ(std::get<double>(ExpressTokenizer("1.7976931348623157E308").getToken().value),
              1.7976931348623157E308);
    EXPECT_EQ(std::get<double>(ExpressTokenizer("2.2250738585072014E-308").getToken().value),
              2.2250738585072014E-308);
    EXPECT_EQ(std::get<double>(ExpressTokenizer("123456789.123456789").getToken().value),
              123456789.123456789);
    EXPECT_EQ(std::get<double>(ExpressTokenizer("0.0").getToken().value), 0.0);
    EXPECT_EQ(std::get<double>(ExpressTokenizer("0.E999").getToken().value), 0.0);
}

TEST(ExpressTokenizerTest, ExponentWithoutDigitsLosesItsLetter) {
    vTokensCheck({
        {"2.0E-x", {"REAL_LITERAL 2", "SUBTRACT", "IDENTIFIER x"}},
        {"2.0E+x", {"REAL_LITERAL 2", "ADD", "IDENTIFIER x"}},
        {"2.0Ex", {"REAL_LITERAL 2", "IDENTIFIER x"}},
        {"2.0e;", {"REAL_LITERAL 2", "SEMICOLON"}},
        {"2.0E -1", {"REAL_LITERAL 2", "SUBTRACT", "INTEGER_LITERAL 1"}},
        {"2.0E- 1", {"REAL_LITERAL 2", "SUBTRACT", "INTEGER_LITERAL 1"}},
        {"2.0E--x\n", {"REAL_LITERAL 2", "SEMICOLON"}},
        {"2.Ee1", {"REAL_LITERAL 2", "IDENTIFIER e1"}},
    });
}

TEST(ExpressTokenizerTest, ExponentWithoutDigitsAtTheVeryEndComesBack) {
    vTokensCheck({{"2.0E", {"REAL_LITERAL 2", "IDENTIFIER E"}},
                  {"2.0e-", {"REAL_LITERAL 2", "IDENTIFIER e", "SUBTRACT"}},
                  {"2.0E+", {"REAL_LITERAL 2", "IDENTIFIER E", "ADD"}}});
}

/// The message of the std::out_of_range that the first token raises; "none" when it raises nothing.
std::string sOutOfRange(std::string_view text) {
    ExpressTokenizer tokenizer(text);
    try {
        tokenizer.getToken();
    } catch (const std::out_of_range& error) {
        return error.what();
    }
    return "none";
}

TEST(ExpressTokenizerTest, IntegerBeyond32BitsIsOutOfRange) {
    for (const auto& text :
         {std::string("2147483648"), std::string("4294967296"), std::string("9223372036854775808"),
          std::string("18446744073709551616"), std::string(1000, '9')})
        EXPECT_EQ(sOutOfRange(text), "stoi argument out of range") << text;
    EXPECT_EQ(sOutOfRange("2147483647"), "none");
}

TEST(ExpressTokenizerTest, RealBeyondADoubleIsOutOfRange) {
    for (const auto& text :
         {std::string("1.0E309"), std::string("1.0E400"), std::string("1.0E99999999999999999999"),
          std::string(400, '9') + '.', std::string("1.0E-400")})
        EXPECT_EQ(sOutOfRange(text), "stod argument out of range") << text;
    EXPECT_EQ(sOutOfRange("1.7E308"), "none");
}

// ---- Values

TEST(ExpressTokenTest, TheValueHasFourAlternatives) {
    EXPECT_EQ(ExpressTokenizer("(").getToken().value.index(), 0U);
    EXPECT_EQ(ExpressTokenizer("a").getToken().value.index(), 1U);
    EXPECT_EQ(ExpressTokenizer("'a'").getToken().value.index(), 1U);
    EXPECT_EQ(ExpressTokenizer("1").getToken().value.index(), 2U);
    EXPECT_EQ(ExpressTokenizer("1.").getToken().value.index(), 3U);
    EXPECT_EQ(ExpressTokenizer("").getToken().value.index(), 0U);
}

TEST(ExpressTokenTest, ReadingTheWrongAlternativeIsABadVariantAccess) {
    const auto token = ExpressTokenizer("a").getToken();
    EXPECT_THROW(std::get<int>(token.value), std::bad_variant_access);
    EXPECT_THROW(std::get<double>(token.value), std::bad_variant_access);
    EXPECT_THROW(std::get<std::string>(ExpressTokenizer("1").getToken().value), std::bad_variant_access);
}

TEST(ExpressTokenTest, IsAValue) {
    static_assert(std::is_copy_constructible_v<ExpressToken> && std::is_copy_assignable_v<ExpressToken>);
    static_assert(std::is_nothrow_move_constructible_v<ExpressToken>);
    const ExpressToken none;
    EXPECT_EQ(sTokenAndPlace(none), "END_OF_FILE at 0:0");
}

// ---- Lines and columns

TEST(ExpressTokenizerTest, ColumnIsThatOfTheLastCharacterAndOneGreaterOnTheFirstLine) {
    vPlacesCheck({
        {"(\n(", {"LEFT_PAREN at 1:2", "LEFT_PAREN at 2:1", "END_OF_FILE at 2:2"}},
        {"ab\nab", {"IDENTIFIER ab at 1:3", "IDENTIFIER ab at 2:2", "END_OF_FILE at 2:3"}},
        {"  12.5 <=\n  12.5 <=",
         {"REAL_LITERAL 12.5 at 1:7", "LESS_OR_EQUAL at 1:10", "REAL_LITERAL 12.5 at 2:6",
          "LESS_OR_EQUAL at 2:9", "END_OF_FILE at 2:10"}},
        {"\n\n'abc' :=:", {"STRING_LITERAL abc at 3:5", "SEMI_EQUAL at 3:9", "END_OF_FILE at 3:10"}},
        {"\n:<>:", {"SEMI_NOT_EQUAL at 2:4", "END_OF_FILE at 2:5"}},
        {"\ta\r\n\tb", {"IDENTIFIER a at 1:3", "IDENTIFIER b at 2:2", "END_OF_FILE at 2:3"}},
        {"1.5E+3\n1.5E+3", {"REAL_LITERAL 1500 at 1:7", "REAL_LITERAL 1500 at 2:6", "END_OF_FILE at 2:7"}},
    });
}

TEST(ExpressTokenizerTest, EndOfTheInputIsOneColumnAfterTheLastCharacter) {
    vPlacesCheck({{"", {"END_OF_FILE at 1:2"}},
                  {" ", {"END_OF_FILE at 1:3"}},
                  {"\n", {"END_OF_FILE at 2:1"}},
                  {"a", {"IDENTIFIER a at 1:2", "END_OF_FILE at 1:3"}}});
}

TEST(ExpressTokenizerTest, CommentsCountLinesAndColumns) {
    vPlacesCheck({
        {"(* a *) b", {"IDENTIFIER b at 1:10", "END_OF_FILE at 1:11"}},
        {"(* a\n b\n*) c", {"IDENTIFIER c at 3:4", "END_OF_FILE at 3:5"}},
        {"x -- note\ny",
         {"IDENTIFIER x at 1:2", "SEMICOLON at 1:10", "IDENTIFIER y at 2:1", "END_OF_FILE at 2:2"}},
        {"\n--\n--\n", {"SEMICOLON at 2:2", "SEMICOLON at 3:2", "END_OF_FILE at 4:1"}},
    });
}

TEST(ExpressTokenizerTest, TokensAfterWhatWasGivenBackKeepTheirColumns) {
    // The column of the token itself includes the character that is dropped after it.
    vPlacesCheck({
        {":<x", {"COLON at 1:3", "IDENTIFIER x at 1:4", "END_OF_FILE at 1:5"}},
        {"\n:<x", {"COLON at 2:2", "IDENTIFIER x at 2:3", "END_OF_FILE at 2:4"}},
        {":<>x", {"COLON at 1:3", "GREATER at 1:4", "IDENTIFIER x at 1:5", "END_OF_FILE at 1:6"}},
        {":<\nx", {"COLON at 1:3", "IDENTIFIER x at 2:1", "END_OF_FILE at 2:2"}},
        {"2.0E-x", {"REAL_LITERAL 2 at 1:5", "SUBTRACT at 1:6", "IDENTIFIER x at 1:7", "END_OF_FILE at 1:8"}},
        {"2.0Ex", {"REAL_LITERAL 2 at 1:5", "IDENTIFIER x at 1:6", "END_OF_FILE at 1:7"}},
        {"\n2.0E\nx", {"REAL_LITERAL 2 at 2:4", "IDENTIFIER x at 3:1", "END_OF_FILE at 3:2"}},
    });
}

TEST(ExpressTokenizerTest, TokensGivenBackAtTheVeryEndAreOneColumnFurther) {
    // There the look-ahead counts as a character that was read, so what comes back is counted once more.
    vPlacesCheck({
        {":<", {"COLON at 1:3", "LESS at 1:4", "END_OF_FILE at 1:5"}},
        {":<>", {"COLON at 1:3", "NOT_EQUAL at 1:5", "END_OF_FILE at 1:6"}},
        {"2.0E", {"REAL_LITERAL 2 at 1:5", "IDENTIFIER E at 1:6", "END_OF_FILE at 1:7"}},
    });
}

// ---- The end of the input

TEST(ExpressTokenizerTest, AfterTheLastTokenComesTheEndAgainAndAgain) {
    ExpressTokenizer tokenizer("a");
    EXPECT_EQ(tokenizer.getToken().kind, ExpressTokenKind::IDENTIFIER);
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(tokenizer.getToken().kind, ExpressTokenKind::END_OF_FILE);
}

TEST(ExpressTokenizerTest, EachEndOfTheInputCountsAsOneMoreCharacter) {
    ExpressTokenizer tokenizer("a");
    tokenizer.getToken();
    EXPECT_EQ(sTokenAndPlace(tokenizer.getToken()), "END_OF_FILE at 1:3");
    EXPECT_EQ(sTokenAndPlace(tokenizer.getToken()), "END_OF_FILE at 1:4");
    EXPECT_EQ(sTokenAndPlace(tokenizer.getToken()), "END_OF_FILE at 1:5");
}

TEST(ExpressTokenizerTest, ZeroByteEndsTheInput) {
    vTokensCheck({
        {std::string_view("\0", 1), {}},
        {std::string_view("a\0b", 3), {"IDENTIFIER a"}},
        {std::string_view("a \0 b", 5), {"IDENTIFIER a"}},
        {std::string_view("1\0002", 3), {"INTEGER_LITERAL 1"}},
        {std::string_view("1.\0005", 4), {"REAL_LITERAL 1"}},
        {std::string_view("<\0=", 3), {"LESS"}},
    });
}

TEST(ExpressTokenizerTest, CommentOrLiteralThatIsNotClosedEndsTheInputWhereItBegins) {
    vTokensCheck({
        {"a (* b", {"IDENTIFIER a"}},
        {"a (*", {"IDENTIFIER a"}},
        {"a (*)", {"IDENTIFIER a"}},
        {"a (* b *", {"IDENTIFIER a"}},
        {"a (* b\n\n", {"IDENTIFIER a"}},
        {"a (* b *) c (* d", {"IDENTIFIER a", "IDENTIFIER c"}},
        {"a 'b", {"IDENTIFIER a"}},
        {"a '", {"IDENTIFIER a"}},
        {"a 'b\nc", {"IDENTIFIER a"}},
        {"'a'' b", {"STRING_LITERAL a"}},
        {"a -- b", {"IDENTIFIER a"}},
        {"a --", {"IDENTIFIER a"}},
        {"a --b\n--c", {"IDENTIFIER a", "SEMICOLON"}},
        {std::string_view("a (* \0 *) b", 11), {"IDENTIFIER a"}},
        {std::string_view("a '\0' b", 7), {"IDENTIFIER a"}},
    });
}

TEST(ExpressTokenizerTest, AfterWhatIsNotClosedComesTheEndAgainAndAgain) {
    for (const std::string_view text : {"a 'b c", "a (* b c", "a -- b c"}) {
        ExpressTokenizer tokenizer(text);
        EXPECT_EQ(tokenizer.getToken().kind, ExpressTokenKind::IDENTIFIER) << text;
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(tokenizer.getToken().kind, ExpressTokenKind::END_OF_FILE) << text;
    }
}

// ---- Characters that begin no token

constexpr std::string_view Beginners = "\t\n\r ()*+,-./:;<=>?[\\]{|}'";

bool isBeginner(char byte) {
    return byte == '\0' || (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= 'a' && byte <= 'z') || Beginners.find(byte) != std::string_view::npos;
}

TEST(ExpressTokenizerTest, EveryOtherCharacterIsASyntaxError) {
    int errors = 0;
    for (int value = 0; value < 256; ++value) {
        const std::string text(1, static_cast<char>(value));
        if (isBeginner(text[0])) {
            EXPECT_NO_THROW(ExpressTokenizer(text).getToken()) << value;
            continue;
        }
        ++errors;
        try {
            ExpressTokenizer(text).getToken();
            ADD_FAILURE() << "no error for byte " << value;
        } catch (const ExpressParser::SyntaxError& error) {
            EXPECT_EQ(error.what(), "ExpressTokenizer didn't expect the character " + text + " here...")
                << value;
        }
    }
    // 256 bytes without zero, 62 letters and digits, and the beginners.
    EXPECT_EQ(errors, 256 - 1 - 62 - static_cast<int>(Beginners.size()));
}

TEST(ExpressTokenizerTest, UnderscoreBeginsNoIdentifier) {
    ExpressTokenizer tokenizer("_a");
    try {
        tokenizer.getToken();
        FAIL() << "no error";
    } catch (const ExpressParser::SyntaxError& error) {
        EXPECT_STREQ(error.what(), "ExpressTokenizer didn't expect the character _ here...");
    }
}

TEST(ExpressTokenizerTest, UnexpectedCharacterHasBeenConsumed) {
    ExpressTokenizer tokenizer("_a%b");
    EXPECT_THROW(tokenizer.getToken(), ExpressParser::SyntaxError);
    EXPECT_EQ(sTokenAndPlace(tokenizer.getToken()), "IDENTIFIER a at 1:3");
    EXPECT_THROW(tokenizer.getToken(), ExpressParser::SyntaxError);
    EXPECT_EQ(sTokenAndPlace(tokenizer.getToken()), "IDENTIFIER b at 1:5");
}

TEST(ExpressTokenizerTest, ByteAbove0x7FEndsAnIdentifierAndIsAnError) {
    ExpressTokenizer tokenizer("ab\xC3\xA4");
    EXPECT_EQ(sToken(tokenizer.getToken()), "IDENTIFIER ab");
    EXPECT_THROW(tokenizer.getToken(), ExpressParser::SyntaxError);
    EXPECT_THROW(tokenizer.getToken(), ExpressParser::SyntaxError);
    EXPECT_EQ(sToken(tokenizer.getToken()), "END_OF_FILE");
}

// ---- Streams

TEST(ExpressTokenizerTest, ReadsAStreamAsItReadsAText) {
    for (const auto* text : {"", "a <= 'b' -- c\n 2.0E-x (* d *) :<>y", ":<", ":<>", "2.0E", "\n\n"}) {
        std::istringstream stream{std::string(text)};
        ExpressTokenizer tokenizer(stream);
        Strings tokens;
        do
            tokens.push_back(sTokenAndPlace(tokenizer.getToken()));
        while (tokens.back().rfind("END_OF_FILE", 0) != 0);
        EXPECT_EQ(tokens, placesOf(text)) << text;
    }
}

TEST(ExpressTokenizerTest, StartsAtThePositionOfTheStream) {
    std::istringstream stream("skipped a");
    stream.ignore(8);
    ExpressTokenizer tokenizer(stream);
    EXPECT_EQ(sTokenAndPlace(tokenizer.getToken()), "IDENTIFIER a at 1:2");
}

TEST(ExpressTokenizerTest, ReadsLongTokens) {
    const std::string name(1000000, 'a');
    EXPECT_THAT(tokensOf(name), ElementsAre("IDENTIFIER " + name));
    EXPECT_THAT(tokensOf('\'' + name + '\''), ElementsAre("STRING_LITERAL " + name));
    EXPECT_THAT(tokensOf("(*" + name + "*)b"), ElementsAre("IDENTIFIER b"));
}

} // namespace
