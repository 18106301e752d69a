#include "Kit/Text/AsciiText.h"

#include <gtest/gtest.h>
#include <string_view>

namespace kiv::kit {

namespace {

TEST(AsciiText, EveryByteHasItsKind) {
    for (int value = 0; value < 0x100; ++value) {
        const auto byte = static_cast<char>(value);
        const bool isUpper = value >= 0x41 && value <= 0x5A;
        const bool isLower = value >= 0x61 && value <= 0x7A;
        EXPECT_EQ(isWhiteSpace(byte), value == 9 || value == 10 || value == 13 || value == 32) << value;
        EXPECT_EQ(isDigit(byte), value >= 0x30 && value <= 0x39) << value;
        EXPECT_EQ(isLetter(byte), isUpper || isLower) << value;
        EXPECT_EQ(isAscii(byte), value < 0x80) << value;
        EXPECT_EQ(getLower(byte), static_cast<char>(isUpper ? value + 0x20 : value)) << value;
        EXPECT_EQ(getUpper(byte), static_cast<char>(isLower ? value - 0x20 : value)) << value;
    }
}

TEST(AsciiText, TextsChangeLetterCaseInAsciiOnly) {
    EXPECT_EQ(sUpperCase("IfcWall_2x\xC3\xA9"), "IFCWALL_2X\xC3\xA9");
    EXPECT_EQ(sLowerCase("IfcWall_2x\xC3\x89"), "ifcwall_2x\xC3\x89");
    EXPECT_EQ(sUpperCase({}), "");
    EXPECT_EQ(sLowerCase({}), "");
}

TEST(AsciiText, EqualIgnoringCase) {
    EXPECT_TRUE(isEqualIgnoringCase("IFCWALL", "IfcWall"));
    EXPECT_TRUE(isEqualIgnoringCase({}, ""));
    EXPECT_FALSE(isEqualIgnoringCase("IfcWall", "IfcWalls"));
    EXPECT_FALSE(isEqualIgnoringCase("IfcWalls", "IfcWall"));
    EXPECT_FALSE(isEqualIgnoringCase("[", "{")); // the same but for the bit of the letter case
    EXPECT_FALSE(isEqualIgnoringCase("\xC3\xA9", "\xC3\x89"));
}

TEST(AsciiText, StartsIgnoringCase) {
    EXPECT_TRUE(startsWithIgnoringCase("IfcWall", "IFC"));
    EXPECT_TRUE(startsWithIgnoringCase("ifc", "IFC"));
    EXPECT_TRUE(startsWithIgnoringCase("ifc", ""));
    EXPECT_TRUE(startsWithIgnoringCase({}, {}));
    EXPECT_FALSE(startsWithIgnoringCase("if", "IFC"));
    EXPECT_FALSE(startsWithIgnoringCase(" ifc", "IFC"));
}

TEST(AsciiText, TrimmedIsAPartOfTheText) {
    EXPECT_EQ(trimmed("  IfcWall\t"), "IfcWall");
    EXPECT_EQ(trimmed("\r\n a b \r\n"), "a b");
    EXPECT_EQ(trimmed("a"), "a");
    EXPECT_EQ(trimmed("\v\f\xA0"), "\v\f\xA0"); // no white space of XML
    EXPECT_EQ(trimmed({"\0 ", 2}), std::string_view("\0", 1));
    EXPECT_EQ(trimmed({}), "");
}

TEST(AsciiText, OfBlanksAnEmptyViewIsLeftInTheText) {
    constexpr std::string_view Blanks = " \t\r\n";
    EXPECT_TRUE(trimmed(Blanks).empty());
    EXPECT_EQ(trimmed(Blanks).data(), Blanks.data());
}

} // namespace

} // namespace kiv::kit
