#include "Kit/Text/NameKeys.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <unordered_set>

namespace kiv::kit {

namespace {

TEST(NameKeys, TheCaseOfLettersDoesNotCount) {
    const std::unordered_set<std::string_view, HashIgnoringCase, SameIgnoringCase> names{"IfcWall", "a_1"};
    EXPECT_TRUE(names.contains("IFCWALL"));
    EXPECT_TRUE(names.contains("ifcwall"));
    EXPECT_TRUE(names.contains("A_1"));
    EXPECT_FALSE(names.contains("IfcWal"));
    EXPECT_FALSE(names.contains("IfcWallx"));
    EXPECT_FALSE(names.contains(""));
}

TEST(NameKeys, OnlyAsciiHasTwoCases) {
    EXPECT_FALSE(SameIgnoringCase()("\xC3\xA4", "\xC3\x84"));
    // '@' and '`', '[' and '{' differ by the bit that letters of either case differ by.
    EXPECT_FALSE(SameIgnoringCase()("@[", "`{"));
}

TEST(NameKeys, EveryByteCounts) {
    // Of all lengths around what is looked at at once: each byte changed alone, and one byte less.
    for (std::size_t size = 1; size != 30; ++size) {
        const auto name = std::string("IfcRelConnectsPathElementsOfWalls").substr(0, size);
        std::unordered_set<std::size_t> hashes{HashIgnoringCase()(name), HashIgnoringCase()(name.substr(1))};
        for (std::size_t at = 0; at != size; ++at) {
            auto other = name;
            other[at] = '_';
            hashes.insert(HashIgnoringCase()(other));
            EXPECT_FALSE(SameIgnoringCase()(name, other));
            auto upper = name;
            upper[at] = getUpper(upper[at]);
            EXPECT_EQ(HashIgnoringCase()(name), HashIgnoringCase()(upper));
        }
        EXPECT_EQ(hashes.size(), size + 2);
    }
}

} // namespace

} // namespace kiv::kit
