#include "Host/Xml/KivXmlRecords.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::xml {
namespace {

TEST(KivXmlRecordsTest, CopiesStayWhereTheyAre) {
    DocumentArena arena;
    const std::string_view first = arena.getCopy("first");
    for (int i = 0; i != 10000; ++i)
        arena.getCopy("some more text that needs another block sooner or later");
    EXPECT_EQ(first, "first");
}

TEST(KivXmlRecordsTest, LastTextGrowsInPlace) {
    DocumentArena arena;
    const std::string_view kept = arena.getCopy("ab");
    bool isRoomy = false;
    const std::string_view joined = arena.getJoined(kept, "cd", isRoomy);
    EXPECT_EQ(joined, "abcd");
    EXPECT_EQ(joined.data(), kept.data());
    EXPECT_FALSE(isRoomy) << "what lies after it is not its own";
}

TEST(KivXmlRecordsTest, OtherTextIsJoinedElsewhere) {
    DocumentArena arena;
    const std::string_view kept = arena.getCopy("ab");
    const std::string_view between = arena.getCopy("xy");
    bool isRoomy = false;
    EXPECT_EQ(arena.getJoined(kept, "cd", isRoomy), "abcd");
    EXPECT_EQ(between, "xy");
}

TEST(KivXmlRecordsTest, JoinedTextGrowsInPlaceUpToTheNextPowerOfTwo) {
    DocumentArena arena;
    bool isRoomy = false;
    const std::string_view kept = arena.getCopy("ab");
    arena.getCopy("xy");
    const std::string_view joined = arena.getJoined(kept, "cde", isRoomy);
    const std::string_view between = arena.getCopy("xy");
    const std::string_view full = arena.getJoined(joined, "fgh", isRoomy);
    EXPECT_EQ(full, "abcdefgh");
    EXPECT_EQ(full.data(), joined.data());
    EXPECT_EQ(arena.getJoined(full, "i", isRoomy), "abcdefghi");
    EXPECT_EQ(between, "xy");
}

TEST(KivXmlRecordsTest, TextGrowsBeyondABlock) {
    DocumentArena arena;
    std::string expected = "start";
    std::string_view text = arena.getCopy(expected);
    bool isRoomy = false;
    for (int i = 0; i != 100000; ++i) {
        text = arena.getJoined(text, "0123456789", isRoomy);
        expected += "0123456789";
    }
    EXPECT_TRUE(text == expected);
}

TEST(KivXmlRecordsTest, RecordsAreAlignedAfterOddTexts) {
    DocumentArena arena;
    for (int i = 0; i != 1000; ++i) {
        arena.getCopy("odd");
        const auto* const record = arena.pMake<NodeRecord>();
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(record) % alignof(NodeRecord), 0U);
    }
}

} // namespace
} // namespace kiv::xml
