#include "Kit/Positions/TextCursor.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

/// "LINE:COLUMN" of each byte in turn.
std::string sPositions(std::string_view text) {
    TextCursor cursor(text);
    std::string all;
    for (std::size_t offset = 0; offset <= text.size(); ++offset) {
        const auto position = cursor.at(offset);
        all.append(all.empty() ? "" : " ");
        all.append(std::to_string(position.line)).append(":").append(std::to_string(position.column));
    }
    return all;
}

/// The same when only that byte is asked for.
std::string sPosition(std::string_view text, std::size_t offset) {
    const auto position = TextCursor(text).at(offset);
    return std::to_string(position.line) + ':' + std::to_string(position.column);
}

TEST(TextCursor, LinesEndWithLineFeedsReturnsOrBoth) {
    EXPECT_EQ(sPositions(""), "1:1");
    EXPECT_EQ(sPositions("ab"), "1:1 1:2 1:3");
    EXPECT_EQ(sPositions("a\nb"), "1:1 1:2 2:1 2:2");
    EXPECT_EQ(sPositions("\n\n"), "1:1 2:1 3:1");
    EXPECT_EQ(sPositions("a\r\nb"), "1:1 1:2 1:3 2:1 2:2");
    EXPECT_EQ(sPositions("a\rb"), "1:1 1:2 2:1 2:2");
    EXPECT_EQ(sPositions("\r\r\n\n"), "1:1 2:1 2:2 3:1 4:1");
    EXPECT_EQ(sPositions("a\r"), "1:1 1:2 2:1");
}

TEST(TextCursor, ColumnsCountCodePoints) {
    // The bytes after the first of a code point are where the next one is.
    EXPECT_EQ(sPositions("\xC3\xA9x"), "1:1 1:2 1:2 1:3");
    EXPECT_EQ(sPositions("\tx"), "1:1 1:2 1:3");
    // With a lone return, which is another way through the text.
    EXPECT_EQ(sPositions("\r\xC3\xA9x"), "1:1 2:1 2:2 2:2 2:3");
}

TEST(TextCursor, ASkipEndsWhereSmallStepsDo) {
    for (const std::string_view text :
         {"a\nbc\r\n\xC3\xA9t\xC3\xA9\n\nend", "a\rbc\r\n\xC3\xA9t\xC3\xA9\n\nend",
          // Lines that are longer than what is looked at at once.
          "a line of thirty bytes, "
          "\xE2\x82\xAC\r\n0123456\n01234567\n012345678\xC3\xA9\xC3\xA9\xC3\xA9\nend"}) {
        const auto all = sPositions(text);
        std::string each;
        for (std::size_t offset = 0; offset <= text.size(); ++offset)
            each.append(each.empty() ? "" : " ").append(sPosition(text, offset));
        EXPECT_EQ(each, all);
    }
}

TEST(TextCursor, TheSamePlaceMayBeAskedForAgain) {
    TextCursor cursor("ab\ncd");
    EXPECT_EQ(cursor.at(4), (TextPosition{2, 2, 0}));
    EXPECT_EQ(cursor.at(4), (TextPosition{2, 2, 0}));
}

TEST(TextCursor, LengthIsInCodePointsAndEndsWithTheLine) {
    EXPECT_EQ(TextCursor("\xC3\xA9t\xC3\xA9 x").at(0, 5), (TextPosition{1, 1, 3}));
    EXPECT_EQ(TextCursor("ab\ncd").at(1, 4), (TextPosition{1, 2, 1}));
    EXPECT_EQ(TextCursor("ab\r\ncd").at(0, 6), (TextPosition{1, 1, 2}));
    EXPECT_EQ(TextCursor("ab\rcd").at(0, 5), (TextPosition{1, 1, 2}));
    EXPECT_EQ(TextCursor("ab").at(1, 100), (TextPosition{1, 2, 1}));
    EXPECT_EQ(TextCursor("ab").at(2, 1), (TextPosition{1, 3, 0}));
    EXPECT_EQ(TextCursor("0123456789 \xC3\xA9t\xC3\xA9 x\nab").at(0, 20), (TextPosition{1, 1, 16}));
    EXPECT_EQ(TextCursor("0123456\n89").at(0, 10), (TextPosition{1, 1, 7}));
    EXPECT_EQ(TextCursor("01234567\r9").at(0, 10), (TextPosition{1, 1, 8}));
    EXPECT_EQ(TextCursor::codePoints({}), 0U);
    EXPECT_EQ(TextCursor::codePoints("\nab"), 0U);
}

} // namespace

} // namespace kiv::kit
