#include "kivifc/Commands/NumberText.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc {

namespace {

TEST(NumberText, NumbersAreDecimalDigitsWithinTheRange) {
    struct Row {
        std::string text;
        NumberRange range;
        /// Empty for what is refused.
        std::string number;
    };
    const Row rows[] = {{"0", {}, "0"},
                        {"1", {1, 3}, "1"},
                        {"3", {1, 3}, "3"},
                        {"010", {}, "10"},
                        {"18446744073709551615", {}, "18446744073709551615"},
                        {"0", {1, 3}, ""},
                        {"4", {1, 3}, ""},
                        {"18446744073709551616", {}, ""},
                        {"99999999999999999999", {}, ""},
                        {"-1", {}, ""},
                        {"-0", {}, ""},
                        {"+1", {}, ""},
                        {" 1", {}, ""},
                        {"1 ", {}, ""},
                        {"0x10", {}, ""},
                        {"1K", {}, ""},
                        {"1.5", {}, ""},
                        {"", {}, ""}};
    for (const auto& row : rows) {
        auto text = row.text;
        const auto failure = numberCheck(row.range)(text);
        EXPECT_EQ(failure.empty(), !row.number.empty()) << row.text;
        EXPECT_EQ(text, row.number.empty() ? row.text : row.number);
    }
}

TEST(NumberText, SizesMayHaveAUnit) {
    struct Row {
        std::string text;
        /// Empty for what is refused.
        std::string bytes;
    };
    const Row rows[] = {{"0", "0"},
                        {"5000", "5000"},
                        {"7b", "7"},
                        {"1k", "1024"},
                        {"2KB", "2048"},
                        {"1Ki", "1024"},
                        {"1kIb", "1024"},
                        {"64M", "67108864"},
                        {"64 M", "67108864"},
                        {"3g", "3221225472"},
                        {"1T", "1099511627776"},
                        {"1P", "1125899906842624"},
                        {"15E", "17293822569102704640"},
                        {"18446744073709551615", "18446744073709551615"},
                        {"16E", ""},
                        {"18014398509481984K", ""},
                        {"18446744073709551616", ""},
                        {"-1", ""},
                        {"-5k", ""},
                        {"1X", ""},
                        {"1Kx", ""},
                        {"1kk", ""},
                        {"1.5G", ""},
                        {"K", ""},
                        {"", ""}};
    for (const auto& row : rows) {
        auto text = row.text;
        const auto failure = sizeCheck()(text);
        EXPECT_EQ(failure.empty(), !row.bytes.empty()) << row.text;
        EXPECT_EQ(text, row.bytes.empty() ? row.text : row.bytes);
    }
}

TEST(NumberText, FailuresRepeatWhatWasWritten) {
    std::string text = "-5k";
    EXPECT_EQ(sizeCheck()(text),
              "Value -5k is no number of bytes up to 18446744073709551615, such as 5000, 64K or 1G");
    EXPECT_EQ(numberCheck({1, 1024})(text), "Value -5k not in range 1 to 1024");
}

} // namespace

} // namespace kiv::kivifc
