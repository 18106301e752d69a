#include "Kit/Positions/ExpressScanner.h"

#include "kiv/Kit/Text/ByteOrderMark.h"
#include "kiv/Kit/Text/TextLines.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

/// Each token with its kind, W, N, S or Y, and its text, one blank between them.
std::string sTokens(ExpressScanner scanner) {
    std::string all;
    for (auto token = scanner.next(); token.kind != ExpressTokenKind::End; token = scanner.next()) {
        all.append(all.empty() ? "" : " ").append(1, "WNSY"[static_cast<int>(token.kind)]).append(1, ':');
        all.append(token.text);
    }
    return all;
}

std::string sTokens(std::string_view text) {
    return sTokens(ExpressScanner(text));
}

/// Where each token is: "LINE:COLUMN+LENGTH".
std::string sPlaces(std::string_view text) {
    ExpressScanner scanner(text);
    const TextLines lines(withoutByteOrderMark(text));
    std::string all;
    for (auto token = scanner.next(); token.kind != ExpressTokenKind::End; token = scanner.next()) {
        const auto position = lines.of(token.text);
        all.append(all.empty() ? "" : " ")
            .append(std::to_string(position.line))
            .append(":")
            .append(std::to_string(position.column))
            .append("+")
            .append(std::to_string(position.length));
    }
    return all;
}

TEST(ExpressScanner, Tokens) {
    struct Row {
        std::string_view text, tokens;
    };
    const Row rows[] = {
        {"", ""},
        {" \t\r\n\v\f", ""},
        {"ENTITY IfcWall;", "W:ENTITY W:IfcWall Y:;"},
        {"_a1_ \xC3\xA9t\xC3\xA9", "W:_a1_ W:\xC3\xA9t\xC3\xA9"},
        {"12 1.5 1. 1.2.3", "N:12 N:1.5 N:1. N:1.2 Y:. N:3"},
        {"1.5E3 1E+3", "N:1.5E3 N:1E Y:+ N:3"},
        {".5", "Y:. N:5"},
        {"'a b' \"0041\"", "S:'a b' S:\"0041\""},
        {"'it''s'", "S:'it' S:'s'"},
        {"'open\nnext", "S:'open W:next"},
        {"'open\rnext", "S:'open W:next"},
        {"'a\"b'", "S:'a\"b'"},
        {"'", "S:'"},
        {":= : :=: :<>: :< <>", "Y::= Y:: Y::=: Y::<>: Y:: Y:< Y:< Y:>"},
        {"a**b", "W:a Y:* Y:* W:b"},
        {"\xEF\xBB\xBFSCHEMA", "W:SCHEMA"},
        {"a--b\nc -- d", "W:a W:c"},
        {"a-b - - c", "W:a Y:- W:b Y:- Y:- W:c"},
        {"a(*b*)c", "W:a W:c"},
        {"a(* (* b *) c *)d", "W:a W:d"},
        {"a(*)b*)c", "W:a W:c"},
        {"a(**)b", "W:a W:b"},
        {"a -- (*\nb", "W:a W:b"},
        {"a (* -- *) b", "W:a W:b"},
        {"a ( * b *)", "W:a Y:( Y:* W:b Y:* Y:)"},
        {"'(*' a", "S:'(*' W:a"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sTokens(row.text), row.tokens) << row.text;
}

TEST(ExpressScanner, PlacesCountLinesOfAllKindsAndCodePoints) {
    EXPECT_EQ(sPlaces("ab c\n d"), "1:1+2 1:4+1 2:2+1");
    EXPECT_EQ(sPlaces("a\rb\r\nc\n\nd"), "1:1+1 2:1+1 3:1+1 5:1+1");
    EXPECT_EQ(sPlaces("\xC3\xA9t\xC3\xA9 x"), "1:1+3 1:5+1");
    EXPECT_EQ(sPlaces("\xEF\xBB\xBF a"), "1:2+1");
    EXPECT_EQ(sPlaces("(* \xC3\xA9\n *) a"), "2:5+1");
    EXPECT_EQ(sPlaces("'\xC3\xA9' b"), "1:1+3 1:5+1");
}

/// The tokens that begin lines, one blank between them.
std::string sLineStarts(std::string_view text) {
    ExpressScanner scanner(text);
    std::string all;
    for (auto token = scanner.next(); token.kind != ExpressTokenKind::End; token = scanner.next()) {
        if (token.startsLine)
            all.append(all.empty() ? "" : " ").append(token.text);
    }
    return all;
}

TEST(ExpressScanner, TokensKnowWhetherALineEndsBeforeThem) {
    EXPECT_EQ(sLineStarts(" a b\n c d\r\n\r\ne f\rg\th"), "a c e g");
    EXPECT_EQ(sLineStarts("a -- x\nb (* \n *) c (* *) d"), "a b c");
    EXPECT_EQ(sLineStarts("a (* open\nb 'open\nc d"), "a b c");
    EXPECT_TRUE(ExpressScanner("").next().startsLine);
    ExpressScanner scanner("a\n");
    scanner.next();
    EXPECT_TRUE(scanner.next().startsLine);
    EXPECT_FALSE(scanner.next().startsLine);
}

TEST(ExpressScanner, TheEndHasAPlaceAndStays) {
    constexpr std::string_view Text = "a\n b ";
    ExpressScanner scanner(Text);
    scanner.next();
    scanner.next();
    for (int time = 0; time < 2; ++time) {
        const auto end = scanner.next();
        EXPECT_EQ(end.kind, ExpressTokenKind::End);
        EXPECT_EQ(end.text, "");
        EXPECT_EQ(TextLines(Text).of(end.text), (TextPosition{2, 4, 0}));
    }
    EXPECT_FALSE(scanner.next().isSymbol('\0'));
}

TEST(ExpressScanner, SymbolsAreOfOneCharacter) {
    ExpressScanner scanner("; := ':'");
    const auto semicolon = scanner.next();
    EXPECT_TRUE(semicolon.isSymbol(';'));
    EXPECT_FALSE(semicolon.isSymbol(':'));
    EXPECT_FALSE(scanner.next().isSymbol(':'));
    EXPECT_FALSE(scanner.next().isSymbol('\''));
}

TEST(ExpressScanner, ACommentThatNothingClosesEndsWithItsLine) {
    constexpr std::string_view Text = "a (* b\nc (* d\ne";
    const TextLines lines(Text);
    ExpressScanner scanner(Text);
    EXPECT_EQ(scanner.getOpenComment(), "");
    EXPECT_EQ(scanner.next().text, "a");
    EXPECT_EQ(scanner.next().text, "c");
    EXPECT_EQ(lines.of(scanner.getOpenComment()), (TextPosition{1, 3, 2}));
    EXPECT_EQ(scanner.next().text, "e");
    EXPECT_EQ(lines.of(scanner.getOpenComment()), (TextPosition{1, 3, 2})); // the first one
}

// One "*)" for two "(*": the outer one is open, and from there on the first "*)" closes.
TEST(ExpressScanner, CommentsNoLongerNestAfterAnOpenOne) {
    constexpr std::string_view Text = "a\n(* (* b *) c (* (* d *) e";
    ExpressScanner scanner(Text);
    EXPECT_EQ(sTokens(scanner), "W:a W:c W:e");
    scanner.next();
    scanner.next();
    EXPECT_EQ(TextLines(Text).of(scanner.getOpenComment()), (TextPosition{2, 1, 2}));
}

TEST(ExpressScanner, AClosedCommentIsNotOpen) {
    ExpressScanner scanner("(* (* *) *) a *)");
    EXPECT_EQ(scanner.next().text, "a");
    EXPECT_EQ(scanner.getOpenComment(), "");
}

TEST(ExpressScanner, ScansOnFromAByte) {
    constexpr std::string_view Text = "a\nbc de f";
    ExpressScanner part(Text.substr(0, 6), 4); // in the middle of "de"
    const auto token = part.next();
    EXPECT_EQ(token.text, "d");
    EXPECT_EQ(TextLines(Text).of(token.text), (TextPosition{2, 4, 1}));
    EXPECT_EQ(part.next().kind, ExpressTokenKind::End);
    EXPECT_EQ(sTokens(ExpressScanner(Text, 4)), "W:de W:f");
    EXPECT_EQ(sTokens(ExpressScanner(Text, Text.size())), "");
}

TEST(ExpressScanner, WhateverIsBeforeThatByteIsNotLookedAt) {
    constexpr std::string_view Text = "'a\n(* b";
    ExpressScanner scanner(Text, 6);
    const auto token = scanner.next();
    EXPECT_EQ(token.text, "b");
    EXPECT_EQ(TextLines(Text).of(token.text), (TextPosition{2, 4, 1}));
    EXPECT_EQ(scanner.getOpenComment(), "");
    // A byte order mark is one at the beginning of a text alone.
    EXPECT_EQ(sTokens(ExpressScanner("\xEF\xBB\xBFx", 0)), "W:\xEF\xBB\xBFx");
}

TEST(ExpressScanner, TheEndIsReachedWhateverTheBytesAre) {
    for (int first = 0; first < 0x100; ++first) {
        for (const char second : {'\0', '*', '\'', '\x80', '\n'}) {
            const std::string text{static_cast<char>(first), second};
            ExpressScanner scanner(text);
            std::size_t count = 0;
            while (count < 10 && scanner.next().kind != ExpressTokenKind::End)
                ++count;
            EXPECT_LE(count, text.size()) << first;
        }
    }
}

} // namespace

} // namespace kiv::kit
