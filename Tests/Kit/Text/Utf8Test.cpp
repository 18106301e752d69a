#include "Kit/Text/Utf8.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

TEST(Utf8, CodePointsAreCountedByTheirFirstBytes) {
    EXPECT_EQ(codePointsIn({}), 0U);
    EXPECT_EQ(codePointsIn("wall"), 4U);
    EXPECT_EQ(codePointsIn("m\xC2\xB2"), 2U);
    EXPECT_EQ(codePointsIn("\xE2\x82\xAC"), 1U);
    EXPECT_EQ(codePointsIn("\xF0\x9D\x84\x9E!"), 2U);
    EXPECT_EQ(codePointsIn("\xEF\xBB\xBF"), 1U);
    EXPECT_EQ(codePointsIn({"\0\0", 2}), 2U);
}

TEST(Utf8, LongTextsAreCountedAsTheirPieces) {
    const std::string piece = "m\xC2\xB2, \xE2\x82\xAC and \xF0\x9D\x84\x9E"; // 11 code points in 17 bytes
    ASSERT_EQ(piece.size(), 17U);
    std::string text;
    for (std::size_t pieces = 0; pieces != 20; ++pieces, text += piece)
        EXPECT_EQ(codePointsIn(text), 11 * pieces);
    // From each byte on, a code point that is begun before it does not count.
    for (std::size_t from = 0; from != piece.size(); ++from) {
        const auto begun = std::string_view(piece).substr(0, from);
        EXPECT_EQ(codePointsIn(std::string_view(text).substr(from)),
                  codePointsIn(text) - codePointsIn(begun));
    }
}

TEST(Utf8, ATextIsOfAsciiWhenEachByteIs) {
    EXPECT_TRUE(isAsciiOnly({}));
    for (std::size_t size = 1; size != 20; ++size) {
        std::string text(size, '\x7F');
        EXPECT_TRUE(isAsciiOnly(text)) << size;
        for (std::size_t place = 0; place != size; ++place) {
            text[place] = '\x80';
            EXPECT_FALSE(isAsciiOnly(text)) << size << ' ' << place;
            EXPECT_EQ(asciiAtFront(text), place) << size;
            text[place] = '\0';
        }
    }
}

TEST(Utf8, AnyBytesAreCounted) {
    EXPECT_EQ(codePointsIn("\x80\xBF"), 0U); // parts of nothing
    EXPECT_EQ(codePointsIn("\xC3\xC3"), 2U); // begun and not ended
    EXPECT_EQ(codePointsIn("\xFF\xFE"), 2U);
}

TEST(Utf8, ContinuationsAreTheBytesFrom80ToBf) {
    for (int byte = 0; byte < 0x100; ++byte)
        EXPECT_EQ(isContinuation(static_cast<char>(byte)), byte >= 0x80 && byte <= 0xBF) << byte;
}

TEST(Utf8, CodePointsAreDecoded) {
    struct {
        std::string_view text;
        std::size_t offset;
        char32_t value;
        std::size_t size;
    } const rows[] = {
        {"ab", 1, 'b', 1},
        {"m\xC2\xB2", 1, 0xB2, 2},
        {"\xE2\x80\x8B.", 0, 0x200B, 3},
        {"\xF0\x9F\x98\x80", 0, 0x1F600, 4},
        {"\xF3\xA0\x81\x81", 0, 0xE0041, 4},
        // Cut short, and in the middle of one.
        {"\xE2\x80", 0, 0x80, 2},
        {"\xC2", 0, 0xC2, 1},
        {"\xC2\xB2", 1, 0xB2, 1},
    };
    for (const auto& row : rows) {
        const auto [value, size] = codePointAt(row.text, row.offset);
        EXPECT_EQ(value, row.value);
        EXPECT_EQ(size, row.size);
    }
}

} // namespace

} // namespace kiv::kit
