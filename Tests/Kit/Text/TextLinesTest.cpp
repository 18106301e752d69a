#include "kiv/Kit/Text/TextLines.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

/// "LINE:COLUMN" of each byte in turn.
std::string sPositions(std::string_view text) {
    const TextLines lines(text);
    std::string all;
    for (std::size_t offset = 0; offset <= text.size(); ++offset) {
        const auto position = lines.at(offset);
        all.append(all.empty() ? "" : " ");
        all.append(std::to_string(position.line)).append(":").append(std::to_string(position.column));
    }
    return all;
}

TEST(TextLines, LinesEndWithLineFeedsReturnsOrBoth) {
    EXPECT_EQ(sPositions(""), "1:1");
    EXPECT_EQ(sPositions("ab"), "1:1 1:2 1:3");
    EXPECT_EQ(sPositions("a\nb"), "1:1 1:2 2:1 2:2");
    EXPECT_EQ(sPositions("\n\n"), "1:1 2:1 3:1");
    EXPECT_EQ(sPositions("a\r\nb"), "1:1 1:2 1:3 2:1 2:2");
    EXPECT_EQ(sPositions("a\rb"), "1:1 1:2 2:1 2:2");
    EXPECT_EQ(sPositions("\r\r\n\n"), "1:1 2:1 2:2 3:1 4:1");
    EXPECT_EQ(sPositions("a\r"), "1:1 1:2 2:1");
}

TEST(TextLines, ColumnsCountCodePoints) {
    // The bytes after the first of a code point are where the next one is.
    EXPECT_EQ(sPositions("\xC3\xA9x"), "1:1 1:2 1:2 1:3");
    EXPECT_EQ(sPositions("\tx"), "1:1 1:2 1:3");
    EXPECT_EQ(sPositions("\r\xC3\xA9x"), "1:1 2:1 2:2 2:2 2:3");
}

TEST(TextLines, LengthIsInCodePointsAndEndsWithTheLine) {
    EXPECT_EQ(TextLines("\xC3\xA9t\xC3\xA9 x").at(0, 5), (TextPosition{1, 1, 3}));
    EXPECT_EQ(TextLines("ab\ncd").at(1, 4), (TextPosition{1, 2, 1}));
    EXPECT_EQ(TextLines("ab\r\ncd").at(0, 6), (TextPosition{1, 1, 2}));
    EXPECT_EQ(TextLines("ab\rcd").at(0, 5), (TextPosition{1, 1, 2}));
    EXPECT_EQ(TextLines("ab").at(1, 100), (TextPosition{1, 2, 1}));
    EXPECT_EQ(TextLines("ab").at(2, 1), (TextPosition{1, 3, 0}));
    EXPECT_EQ(TextLines("0123456789 \xC3\xA9t\xC3\xA9 x\nab").at(0, 20), (TextPosition{1, 1, 16}));
    EXPECT_EQ(codePointsOfLine({}), 0U);
    EXPECT_EQ(codePointsOfLine("\nab"), 0U);
    EXPECT_EQ(codePointsOfLine("\xC3\xA9t\xC3\xA9\r\nab"), 3U);
}

TEST(TextLines, APartIsWhereItsViewPoints) {
    constexpr std::string_view Text = "one\ntwo three";
    EXPECT_EQ(TextLines(Text).of(Text.substr(8, 5)), (TextPosition{2, 5, 5}));
    EXPECT_EQ(TextLines(Text).of(Text.substr(4, 0)), (TextPosition{2, 1, 0}));
}

TEST(TextLines, OfNoTextThereIsTheBeginning) {
    EXPECT_EQ(TextLines().at(0), (TextPosition{1, 1, 0}));
    EXPECT_EQ(TextLines().of({}), (TextPosition{1, 1, 0}));
    // No place is after the end.
    EXPECT_EQ(TextLines("ab\nc").at(100, 1), (TextPosition{2, 2, 0}));
}

/// Places are looked for from the beginning of a block: each end of a line there is, and the bytes of a code
/// point, are put at each place around the end of one.
TEST(TextLines, BlocksMakeNoDifference) {
    constexpr auto End = TextLines::BlockSize;
    for (const std::string_view mark : {"\n", "\r\n", "\r", "\n\r", "\xE2\x82\xAC", "x"}) {
        for (std::size_t before = End - 3; before != End + 3; ++before) {
            // The mark, and what a reader counts after it.
            auto text = "ab\n" + std::string(before - 3, '-');
            text.append(mark).append("cd").append(std::string(2 * End, '.')).append("e");
            const TextLines lines(text);
            const std::size_t ends = mark == "\n\r" ? 2 : mark == "x" || mark.size() == 3 ? 0 : 1;
            const auto column = ends == 0 ? before - 3 + 1 : 0;
            EXPECT_EQ(lines.at(before + mark.size(), 1), (TextPosition{2 + ends, column + 1, 1}));
            EXPECT_EQ(lines.at(text.size() - 1, 1), (TextPosition{2 + ends, column + 3 + 2 * End, 1}));
        }
    }
}

TEST(TextLines, MemoryIsThatOfItsBlocks) {
    EXPECT_EQ(TextLines::memoryFor(0), 2 * sizeof(std::size_t));
    EXPECT_EQ(TextLines::memoryFor(10 * TextLines::BlockSize), 22 * sizeof(std::size_t));
}

} // namespace

} // namespace kiv::kit
