#include "Format/Ifc/Def/Schema/IfcSchemaUnsigned.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string_view>

namespace {

using kiv::ifc::def::schema::unsignedFromText;

TEST(UnsignedTest, IsReadUpToTheFirstByteThatIsNoDigit) {
    struct Row {
        std::string_view text;
        std::uint32_t value;
    };
    const Row rows[] = {
        {"255)", 255}, {"0", 0},    {"007", 7}, {" \t\n\v\f\r12", 12},
        {"+5", 5},     {"1 2", 1},  {"1.9", 1}, {"12e3", 12},
        {"", 0},       {"   ", 0},  {"?", 0},   {"+", 0},
        {"-", 0},      {"+ 5", 0},  {"+-5", 0}, {"--5", 0},
        {"/0", 0}, // just before and after the digits
        {":0", 0},     {"\xB2", 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(unsignedFromText<std::uint32_t>(row.text), row.value) << row.text;
}

TEST(UnsignedTest, TooLargeANumberIsTheLargest) {
    EXPECT_EQ(unsignedFromText<std::uint32_t>("4294967294"), 4294967294U);
    EXPECT_EQ(unsignedFromText<std::uint32_t>("4294967295"), 4294967295U);
    EXPECT_EQ(unsignedFromText<std::uint32_t>("4294967296"), 4294967295U);
    EXPECT_EQ(unsignedFromText<std::uint32_t>("99999999999999999999999"), 4294967295U);
    EXPECT_EQ(unsignedFromText<std::uint64_t>("18446744073709551615"), 18446744073709551615U);
    EXPECT_EQ(unsignedFromText<std::uint64_t>("18446744073709551616"), 18446744073709551615U);
    EXPECT_EQ(unsignedFromText<std::uint8_t>("256"), 255U);
}

TEST(UnsignedTest, ANegativeNumberWrapsAround) {
    EXPECT_EQ(unsignedFromText<std::uint32_t>("-1"), 4294967295U);
    EXPECT_EQ(unsignedFromText<std::uint32_t>("-4294967295"), 1U);
    EXPECT_EQ(unsignedFromText<std::uint32_t>("-0"), 0U);
    EXPECT_EQ(unsignedFromText<std::uint32_t>("-4294967296"), 4294967295U); // too large
    EXPECT_EQ(unsignedFromText<std::uint8_t>("-1"), 255U);
}

} // namespace
