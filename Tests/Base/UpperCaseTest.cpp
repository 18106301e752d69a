#include "Base/UpperCase.h"
#include "Base/Arena.h"
#include "Base/Ascii.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kiv {
namespace {

TEST(UpperCaseTest, ChangesTheLettersAToZAndNoOtherByte) {
    for (int value = 0; value < 256; ++value) {
        const auto byte = static_cast<char>(value);
        const auto expected = value >= 'a' && value <= 'z' ? static_cast<char>(value - 32) : byte;
        EXPECT_EQ(kiv::ascii::getUpper(byte), expected) << value;
    }
}

TEST(UpperCaseTest, OfATextTakesEachByteOnItsOwn) {
    EXPECT_EQ(sUpper(""), "");
    EXPECT_EQ(sUpper("IfcWall_2x3"), "IFCWALL_2X3");
    EXPECT_EQ(sUpper(" a\tz{`@["), " A\tZ{`@[");
    EXPECT_EQ(sUpper("gr\xFCn \xC3\xA4"), "GR\xFCN \xC3\xA4");
    EXPECT_EQ(sUpper(std::string_view("a\0b", 3)), std::string("A\0B", 3));
}

TEST(UpperCaseTest, InAnArenaIsTheTextItselfWhenNothingChanges) {
    Arena arena;
    for (const std::string_view text : {"", "A", "IFC_2X3", "IFC_4X3_", "IFCWALL_2X3{`@[", "\xFC\xC3"})
        EXPECT_EQ(upperIn(arena, text).data(), text.data()) << text;
}

TEST(UpperCaseTest, InAnArenaIsACopyWhereALetterChanges) {
    Arena arena;
    // Shorter than a word, as long as one, and longer.
    for (const std::string text :
         {"a", "IfcWall", "IfcWalls", "IFCWALLs", "IfcWallStandardCase", "IFCWALL_2x"}) {
        const auto upper = upperIn(arena, text);
        EXPECT_NE(upper.data(), text.data()) << text;
        EXPECT_EQ(upper, sUpper(text));
    }
}

} // namespace
} // namespace kiv
