#include "Base/UpperCase.h"
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

} // namespace
} // namespace kiv
