#include "kivifc/Program/AsciiText.h"

#include <gtest/gtest.h>

namespace kiv::kivifc::ascii {

namespace {

TEST(Ascii, EveryByteHasItsKind) {
    for (int value = 0; value < 0x100; ++value) {
        const auto byte = static_cast<char>(value);
        const bool isUpper = value >= 0x41 && value <= 0x5A;
        const bool isLower = value >= 0x61 && value <= 0x7A;
        EXPECT_EQ(isAscii(byte), value < 0x80) << value;
        EXPECT_EQ(isLetter(byte), isUpper || isLower) << value;
        EXPECT_EQ(isDigit(byte), value >= 0x30 && value <= 0x39) << value;
        EXPECT_EQ(isBlank(byte), value == 0x09 || value == 0x0A || value == 0x0D || value == 0x20) << value;
        EXPECT_EQ(getLower(byte), static_cast<char>(isUpper ? value + 0x20 : value)) << value;
        EXPECT_EQ(getUpper(byte), static_cast<char>(isLower ? value - 0x20 : value)) << value;
    }
}

TEST(Ascii, TextsAreComparedAndLoweredInAsciiOnly) {
    EXPECT_TRUE(isEqualIgnoringCase(".XML", ".xml"));
    EXPECT_TRUE(isEqualIgnoringCase("", ""));
    EXPECT_FALSE(isEqualIgnoringCase(".xml", ".xm"));
    EXPECT_FALSE(isEqualIgnoringCase("@", "`"));
    EXPECT_FALSE(isEqualIgnoringCase("\xC3\x89", "\xC3\xA9"));
    EXPECT_EQ(sLowerCase("IFC\xC3\x89"), "ifc\xC3\x89");
}

TEST(Ascii, TrimmedOfTheGivenBytes) {
    EXPECT_EQ(trimmed("  a b\t ", " \t"), "a b");
    EXPECT_EQ(trimmed("--a--", "-"), "a");
    EXPECT_EQ(trimmed("a", " "), "a");
    EXPECT_EQ(trimmed("   ", " "), "");
    EXPECT_EQ(trimmed("", " "), "");
    EXPECT_EQ(trimmed(" a ", ""), " a ");
}

} // namespace

} // namespace kiv::kivifc::ascii
