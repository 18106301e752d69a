#include "Base/Words8.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kiv {
namespace {

char byteOf(int value) {
    return static_cast<char>(static_cast<unsigned char>(value));
}

// Long enough for a place in each of the eight bytes that are looked at together, and after them.
constexpr std::size_t Places = 18;

TEST(Words8Test, WordEndsAtTheFirstByteThatIsNoLetterNoDigitAndNoUnderscore) {
    constexpr std::string_view wordBytes = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
    for (int value = 0; value < 256; ++value) {
        for (std::size_t place = 0; place < Places; ++place) {
            const auto text = std::string(place, 'q') + byteOf(value) + std::string(9, '7');
            const auto end = wordBytes.find(byteOf(value)) == std::string_view::npos ? place : text.size();
            EXPECT_EQ(pWordEnd(text.data(), text.data() + text.size()), text.data() + end)
                << value << ' ' << place;
        }
    }
}

TEST(Words8Test, OrderedBytesAreInTheOrderOfTheirFirstDifference) {
    const std::string middle(LongText, '\x80');
    for (std::size_t place = 0; place < LongText; ++place) {
        // What follows the first difference does not count.
        auto smaller = middle;
        auto larger = middle;
        smaller[place] = '\x7F';
        larger[place] = '\x81';
        if (place + 1 < LongText) {
            smaller.back() = '\xFF';
            larger.back() = '\x00';
        }
        const auto ordered = [](const std::string& text) { return getOrdered8(getBytes8(text.data())); };
        EXPECT_LT(ordered(smaller), ordered(middle)) << place;
        EXPECT_GT(ordered(larger), ordered(middle)) << place;
    }
}

TEST(Words8Test, OnlyTheUpperCasedNameIsUpperOfIt) {
    for (int value = 0; value < 256; ++value) {
        const bool isLower = value >= 'a' && value <= 'z';
        for (std::size_t size = 1; size < Places; ++size) {
            for (std::size_t place = 0; place < size; ++place) {
                auto name = std::string(size, 'q');
                auto upper = std::string(size, 'Q');
                name[place] = byteOf(value);
                upper[place] = byteOf(isLower ? value - 'a' + 'A' : value);
                EXPECT_TRUE(isUpperOf(name, upper)) << value << ' ' << size << ' ' << place;
                upper[place] = byteOf(value ^ 0x80);
                EXPECT_FALSE(isUpperOf(name, upper)) << value << ' ' << size << ' ' << place;
                EXPECT_FALSE(isUpperOf(name + 'q', upper)) << value << ' ' << size << ' ' << place;
            }
        }
    }
    EXPECT_TRUE(isUpperOf("", ""));
    EXPECT_FALSE(isUpperOf("a", "a")) << "what is compared with must be upper-case";
}

} // namespace
} // namespace kiv
