#include "kivifc/Findings/Excerpt.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::test {

namespace {

struct ExcerptRow {
    std::string_view line;
    std::size_t column;
    std::size_t length;
    std::string_view source;
    std::string_view caret;
};

TEST(Excerpt, CaretIsBelowItsLetter) {
    const ExcerptRow rows[] = {
        {"<Name>A</Name>", 7, 1, "<Name>A</Name>", "      ^"},
        {"<Name>Wall</Name>", 7, 4, "<Name>Wall</Name>", "      ^~~~"},
        // The length is unknown.
        {"<Name/>", 2, 0, "<Name/>", " ^"},
        // A tab is one column of the text and stays a tab, so both lines are indented alike.
        {"\t\t<A b=\"c\"/>", 9, 1, "\t\t<A b=\"c\"/>", "\t\t      ^"},
        // W\u00E4nde: two bytes, one column.
        {"W\xC3\xA4nde x", 7, 1, "W\xC3\xA4nde x", "      ^"},
        // A wide letter takes two columns of the terminal, before the caret and below it.
        {"\xE5\xA3\x81 x", 3, 1, "\xE5\xA3\x81 x", "   ^"},
        {"x\xE5\xA3\x81\xE5\xA3\x81y", 2, 2, "x\xE5\xA3\x81\xE5\xA3\x81y", " ^~~~"},
        // A mark that is drawn onto the letter before it takes none.
        {"e\xCC\x81x", 3, 1, "e\xCC\x81x", " ^"},
        // Just after the end: something is missing there.
        {"<A>", 4, 0, "<A>", "   ^"},
        {"abc", 2, 9, "abc", " ^~"},
        // A byte order mark is no column.
        {"\xEF\xBB\xBF<A/>", 2, 1, "<A/>", " ^"},
    };
    for (const auto& row : rows) {
        const auto excerpt = excerptOf(row.line, {1, row.column, row.length});
        EXPECT_EQ(excerpt.source, row.source);
        EXPECT_EQ(excerpt.caret, row.caret) << row.line;
    }
}

TEST(Excerpt, WhatTerminalsObeyIsEscapedAndTheCaretFollows) {
    const ExcerptRow rows[] = {
        {"a\x1B[31mb", 7, 1, "a\\x1B[31mb", "         ^"},
        // What cannot be seen has a place that can.
        {"a\xE2\x80\x8B"
         "b",
         2, 1, "a\\u{200B}b", " ^~~~~~~~"},
        // U+202E turns the text that follows it.
        {"a\xE2\x80\xAE"
         "b",
         3, 1, "a\\u{202E}b", "         ^"},
        // The whole of what is shown for it is underlined.
        {"a\xE2\x80\xA8"
         "b",
         2, 1, "a\\u{2028}b", " ^~~~~~~~"},
        // Bytes that are not UTF-8 are one column each.
        {"\xE4 x", 3, 1, "\\xE4 x", "     ^"},
    };
    for (const auto& row : rows) {
        const auto excerpt = excerptOf(row.line, {1, row.column, row.length});
        EXPECT_EQ(excerpt.source, row.source);
        EXPECT_EQ(excerpt.caret, row.caret) << row.source;
    }
}

TEST(Excerpt, LongLineIsCutOnBothSides) {
    const auto line = std::string(500, 'a') + "HERE" + std::string(500, 'b');
    const auto excerpt = excerptOf(line, {1, 501, 4});
    // 40 columns before the place, and 110 in all between the marks.
    EXPECT_EQ(excerpt.source, "..." + std::string(40, 'a') + "HERE" + std::string(66, 'b') + "...");
    EXPECT_EQ(excerpt.caret, std::string(43, ' ') + "^~~~");
}

TEST(Excerpt, PartOfALineShowsWhatTheWholeShows) {
    // Escapes, wide letters and marks that combine before and after each place.
    std::string line;
    for (int count = 0; count < 300; ++count)
        line += "<a b='" + std::to_string(count) + "'>e\xCC\x81\t\xE5\xA3\x81\x1B</a>";
    const LinedText text(line);
    for (std::size_t column = 1; column < 6000; column += 37) {
        const kit::TextPosition position{1, column, 5};
        const auto whole = excerptOf(line, position);
        const auto part = excerptOf(text.part(1, column), position);
        EXPECT_EQ(part.source, whole.source) << column;
        EXPECT_EQ(part.caret, whole.caret) << column;
    }
}

TEST(Excerpt, UnderlineEndsWithTheShownPiece) {
    const auto excerpt = excerptOf(std::string(300, 'a'), {1, 1, 300});
    EXPECT_EQ(excerpt.source, std::string(110, 'a') + "...");
    EXPECT_EQ(excerpt.caret, '^' + std::string(109, '~'));
}

TEST(Excerpt, NothingIsShownOfWhatIsNotThere) {
    EXPECT_EQ(excerptOf("", {1, 1, 1}).source, "");
    EXPECT_EQ(excerptOf("abc", {1, 9, 1}).source, "");
    EXPECT_EQ(excerptOf("abc", {1, 0, 0}).caret, "");
}

} // namespace

} // namespace kiv::kivifc::test
