#include "kiv/Host/Id/KivId.h"

#include <gtest/gtest.h>
#include <ostream>
#include <random>
#include <set>
#include <thread>
#include <vector>

namespace kiv {

/// Shown by a test that fails.
void PrintTo(const Guid& guid, std::ostream* stream) {
    *stream << guid.toString(true);
}

namespace {

constexpr Guid sample(0xE098E980, 0xD1BC, 0x11E1, {0x80, 0x00, 0x00, 0x21, 0x5A, 0xD4, 0xEF, 0xDF});

TEST(KivIdTest, DefaultIsNull) {
    const Guid guid;
    EXPECT_TRUE(guid.isNull());
    EXPECT_EQ(guid, Guid(0, 0, 0, {}));
    EXPECT_EQ(guid.toString(false), "00000000000000000000000000000000");
    EXPECT_FALSE(sample.isNull());
    EXPECT_FALSE(Guid(0, 0, 0, {0, 0, 0, 0, 0, 0, 0, 1}).isNull());
}

TEST(KivIdTest, TextIsThirtyTwoLowerCaseDigits) {
    EXPECT_EQ(sample.toString(false), "e098e980d1bc11e1800000215ad4efdf");
}

TEST(KivIdTest, BracedTextIsHyphenated) {
    EXPECT_EQ(sample.toString(true), "{e098e980-d1bc-11e1-8000-00215ad4efdf}");
}

TEST(KivIdTest, PartsAreTakenFromTheTextInOrder) {
    Guid guid;
    ASSERT_TRUE(guid.boSet("0123456789abcdeffedcba9876543210"));
    EXPECT_EQ(guid.getPart1(), 0x01234567U);
    EXPECT_EQ(guid.getPart2(), 0x89ABU);
    EXPECT_EQ(guid.getPart3(), 0xCDEFU);
    EXPECT_EQ(guid.getPart4(), (std::array<std::uint8_t, 8>{0xFE, 0xDC, 0xBA, 0x98, 0x76, 0x54, 0x32, 0x10}));
}

struct FormRow {
    std::string_view text;
    std::string_view digits;
};

TEST(KivIdTest, ReadsEveryForm) {
    constexpr std::string_view digits = "e098e980d1bc11e1800000215ad4efdf";
    const FormRow rows[] = {
        {"e098e980d1bc11e1800000215ad4efdf", digits},
        {"E098E980D1BC11E1800000215AD4EFDF", digits},
        {"e098E980d1bc11e1800000215ad4EFdf", digits},
        {"{e098e980d1bc11e1800000215ad4efdf}", digits},
        {"e098e980-d1bc-11e1-8000-00215ad4efdf", digits},
        {"E098E980-D1BC-11E1-8000-00215AD4EFDF", digits},
        {"{e098e980-d1bc-11e1-8000-00215ad4efdf}", digits},
        {"3WcEc0qRmHuO00025QrE$V", digits},
        {"018qLdYQlDx$xSkfXsL38G", "0123456789abcdeffedcba9876543210"},
        {"0000000000000000000000", "00000000000000000000000000000000"},
        {"1000000000000000000000", "40000000000000000000000000000000"},
        {"000000000000000000000_", "0000000000000000000000000000003e"},
        {"3$$$$$$$$$$$$$$$$$$$$$", "ffffffffffffffffffffffffffffffff"},
    };
    for (const FormRow& row : rows) {
        Guid guid;
        EXPECT_TRUE(guid.boSet(row.text)) << row.text;
        EXPECT_EQ(guid.toString(false), row.digits) << row.text;
    }
}

TEST(KivIdTest, RefusesEverythingElseAndChangesNothing) {
    const std::string_view texts[] = {
        "",
        "abc",
        "e098e980d1bc11e1800000215ad4efd",    // a digit short
        "e098e980d1bc11e1800000215ad4efdf0",  // a digit more
        "g098e980d1bc11e1800000215ad4efdf",   // not hexadecimal
        "e098e980d1bc11e1800000215ad4efd ",   //
        " e098e980d1bc11e1800000215ad4efdf",  //
        "e098e980d1bc11e1800000215ad4efdf\n", //
        "{e098e980d1bc11e1800000215ad4efdf",
        "e098e980d1bc11e1800000215ad4efdf}",
        "}e098e980d1bc11e1800000215ad4efdf{",
        "{{098e980d1bc11e1800000215ad4efdf}}",
        "(e098e980d1bc11e1800000215ad4efdf)",
        "e098e980-d1bc-11e1-8000-00215ad4efd",
        "e098e980-d1bc-11e1-800000215ad4efdf",
        "e098e980-d1bc-11e1-80000-0215ad4efdf", // a hyphen in the wrong place
        "e098e980_d1bc_11e1_8000_00215ad4efdf",
        "e098e980-d1bc-11e1-8000-00215ad4ef-f",
        "{}",
        "{3WcEc0qRmHuO00025QrE$V}", // braces belong to hexadecimal forms
        "4000000000000000000000",   // more than 128 bits
        "$000000000000000000000",
        "000000000000000000000-",
        "00000000000000000000 0",
        "000000000000000000000",
        "00000000000000000000000",
    };
    for (const std::string_view text : texts) {
        Guid guid = sample;
        EXPECT_FALSE(guid.boSet(text)) << "\"" << text << "\"";
        EXPECT_EQ(guid, sample) << "\"" << text << "\"";
    }
}

TEST(KivIdTest, EveryTextItWritesIsReadBack) {
    std::mt19937_64 random(1);
    for (int i = 0; i != 1000; ++i) {
        std::array<std::uint8_t, 8> part4{};
        for (std::uint8_t& byte : part4)
            byte = static_cast<std::uint8_t>(random());
        const Guid guid(static_cast<std::uint32_t>(random()), static_cast<std::uint16_t>(random()),
                        static_cast<std::uint16_t>(random()), part4);
        for (const bool braced : {false, true}) {
            Guid read;
            EXPECT_TRUE(read.boSet(guid.toString(braced)));
            EXPECT_EQ(read, guid);
        }
    }
}

TEST(KivIdTest, LastByteIsOrderedUnsigned) {
    const Guid low(1, 2, 3, {0, 0, 0, 0, 0, 0, 0, 0x7F});
    const Guid high(1, 2, 3, {0, 0, 0, 0, 0, 0, 0, 0x80});
    EXPECT_LT(low, high);
    EXPECT_NE(low, high);
}

TEST(KivIdTest, OrderedPartByPartUnsigned) {
    const Guid ascending[] = {
        Guid(),
        Guid(0, 0, 0, {0, 0, 0, 0, 0, 0, 0, 0xFF}),
        Guid(0, 0, 0, {0, 0, 0, 0, 0, 0, 1, 0}),
        Guid(0, 0, 0, {0x80, 0, 0, 0, 0, 0, 0, 0}),
        Guid(0, 0, 1, {}),
        Guid(0, 0, 0x8000, {}),
        Guid(0, 1, 0, {}),
        Guid(0, 0x8000, 0, {}),
        Guid(1, 0, 0, {}),
        Guid(0x7FFFFFFF, 0xFFFF, 0xFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}),
        Guid(0x80000000, 0, 0, {}),
    };
    for (std::size_t left = 0; left != std::size(ascending); ++left)
        for (std::size_t right = 0; right != std::size(ascending); ++right)
            EXPECT_EQ(ascending[left] <=> ascending[right], left <=> right) << left << " and " << right;
}

TEST(KivIdTest, GeneratedAreRandomOnesOfVersionFour) {
    for (int i = 0; i != 100; ++i) {
        const Guid guid = Guid::generate();
        EXPECT_EQ(guid.getPart3() >> 12, 4) << guid.toString(true);
        EXPECT_EQ(guid.getPart4()[0] >> 6, 2) << guid.toString(true);
        EXPECT_FALSE(guid.isNull());
    }
}

TEST(KivIdTest, GeneratedAreAllDifferentOnSeveralThreads) {
    constexpr std::size_t perThread = 2000;
    std::vector<std::vector<Guid>> made(4);
    {
        std::vector<std::jthread> threads;
        for (std::vector<Guid>& guids : made)
            threads.emplace_back([&guids] {
                for (std::size_t i = 0; i != perThread; ++i)
                    guids.push_back(Guid::generate());
            });
    }
    std::set<Guid> all;
    for (const std::vector<Guid>& guids : made)
        all.insert(guids.begin(), guids.end());
    EXPECT_EQ(all.size(), made.size() * perThread);
}

} // namespace
} // namespace kiv
