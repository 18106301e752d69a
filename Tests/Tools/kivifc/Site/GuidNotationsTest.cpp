#include "kivifc/Site/GuidNotations.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::site {

namespace {

GuidNotations notationsOf(const std::string& digits) {
    Guid guid;
    EXPECT_TRUE(guid.boSet(digits));
    return GuidNotations(guid);
}

struct NotationsRow {
    std::string digits;
    std::string hyphenated;
    std::string globalId;
};

TEST(GuidNotations, AreTheThreeThatAreInUse) {
    const NotationsRow rows[] = {
        {"00000000000000000000000000000001", "00000000-0000-0000-0000-000000000001",
         "0000000000000000000001"},
        // 63 is the last digit to the base of 64; one more carries.
        {"0000000000000000000000000000003f", "00000000-0000-0000-0000-00000000003f",
         "000000000000000000000$"},
        {"00000000000000000000000000000040", "00000000-0000-0000-0000-000000000040",
         "0000000000000000000010"},
        // Digits 10, 36, 62: the first upper-case letter, the first lower-case one, the underscore.
        {"0000000000000000000000000000a93e", "00000000-0000-0000-0000-00000000a93e",
         "0000000000000000000Aa_"},
        // The first digit has two bits only.
        {"ffffffffffffffffffffffffffffffff", "ffffffff-ffff-ffff-ffff-ffffffffffff",
         "3$$$$$$$$$$$$$$$$$$$$$"},
        {"40000000000000000000000000000000", "40000000-0000-0000-0000-000000000000",
         "1000000000000000000000"},
    };
    for (const auto& row : rows) {
        const auto written = notationsOf(row.digits);
        EXPECT_EQ(written.digits, row.digits);
        EXPECT_EQ(written.hyphenated, row.hyphenated);
        EXPECT_EQ(written.globalId, row.globalId) << row.digits;
    }
}

TEST(GuidNotations, ReadBackAsTheSameGuid) {
    for (int round = 0; round < 100; ++round) {
        const auto guid = Guid::generate();
        const GuidNotations written(guid);
        for (const auto& text : {written.digits, written.hyphenated, written.globalId}) {
            Guid read;
            EXPECT_TRUE(read.boSet(text)) << text;
            EXPECT_EQ(read, guid) << text;
        }
    }
}

} // namespace

} // namespace kiv::kivifc::site
