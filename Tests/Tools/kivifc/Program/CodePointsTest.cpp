#include "kivifc/Program/CodePoints.h"

#include <gtest/gtest.h>
#include <string_view>

namespace kiv::kivifc::test {

namespace {

using namespace std::string_view_literals;

struct CodePointsRow {
    std::string_view text;
    char32_t value;
    std::size_t bytes;
    bool isValid;
};

TEST(CodePoints, ACharacterIsCutBeforeItsFirstByte) {
    EXPECT_EQ(characterBegin("a\u00E9b", 2), 1U);
    EXPECT_EQ(characterBegin("a\u00E9b", 3), 3U);
    EXPECT_EQ(characterBegin("\xA9", 0), 0U);
    EXPECT_EQ(characterBegin("a\u00E9", 3), 3U);
}

TEST(CodePoints, AreTakenOneByOne) {
    const CodePointsRow rows[] = {
        {"ab", 'a', 1, true},
        {"\0"sv, 0, 1, true},
        {"\xC3\xA4z", 0xE4, 2, true},
        {"\xE2\x82\xAC", 0x20AC, 3, true},
        {"\xF0\x9F\x98\x80", 0x1F600, 4, true},
        // Cut short, continued wrongly, overlong, a surrogate, beyond Unicode, no first byte.
        {"\xC3", 0xC3, 1, false},
        {"\xE2\x82", 0xE2, 1, false},
        {"\xC3z", 0xC3, 1, false},
        {"\xC0\x80", 0xC0, 1, false},
        {"\xE0\x80\x80", 0xE0, 1, false},
        {"\xED\xA0\x80", 0xED, 1, false},
        {"\xF4\x90\x80\x80", 0xF4, 1, false},
        {"\x80", 0x80, 1, false},
        {"\xFF", 0xFF, 1, false},
    };
    for (const auto& row : rows) {
        auto rest = row.text;
        const auto point = codePointTake(rest);
        EXPECT_EQ(point.value, row.value);
        EXPECT_EQ(point.bytes.size(), row.bytes);
        EXPECT_EQ(point.isValid, row.isValid);
        EXPECT_EQ(rest.size(), row.text.size() - row.bytes);
    }
}

CodePoint point(char32_t value) {
    return {value, {}, true};
}

TEST(CodePoints, HaveTheWidthOfATerminal) {
    EXPECT_EQ(displayWidth(point('a')), 1U);
    EXPECT_EQ(displayWidth(point(0xE4)), 1U);
    EXPECT_EQ(displayWidth(point(0x58C1)), 2U);
    EXPECT_EQ(displayWidth(point(0x1F600)), 2U);
    EXPECT_EQ(displayWidth(point(0x0301)), 0U);
    EXPECT_EQ(displayWidth(point(0x200D)), 0U);
}

TEST(CodePoints, ThoseThatTerminalsObeyAreEscaped) {
    struct Escape {
        std::string_view text;
        std::string_view escaped;
    };
    const Escape rows[] = {{"\x1B", "\\x1B"},
                           {"\t", "\\t"},
                           {"\xC2\x85", "\\xC2\\x85"},
                           {"\xE2\x80\xAE", "\\u{202E}"},
                           {"\xE2\x80\xA8", "\\u{2028}"},
                           {"\xE2\x81\xA6", "\\u{2066}"},
                           {"\xD8\x9C", "\\u{061C}"}};
    for (auto row : rows) {
        const auto first = codePointTake(row.text);
        EXPECT_TRUE(isUnsafe(first)) << row.escaped;
        EXPECT_EQ(sEscaped(first), row.escaped);
    }
    EXPECT_FALSE(isUnsafe(point('a')));
    EXPECT_FALSE(isUnsafe(point(0xA0)));
    EXPECT_FALSE(isUnsafe(point(0x200D)));
}

} // namespace

} // namespace kiv::kivifc::test
