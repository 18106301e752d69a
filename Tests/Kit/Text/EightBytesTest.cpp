#include "Kit/Text/EightBytes.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

std::uint64_t bytesOf(std::string_view text) {
    EXPECT_EQ(text.size(), EightBytes);
    return eightBytesAt(text.data());
}

TEST(EightBytes, AreOfAsciiWhenEachOneIs) {
    for (std::size_t place = 0; place != EightBytes; ++place) {
        for (unsigned byte = 0; byte != 0x100U; ++byte) {
            std::string text(EightBytes, '\x7F');
            text[place] = static_cast<char>(byte);
            EXPECT_EQ(isAsciiBytes(bytesOf(text)), byte < 0x80U) << place << ' ' << byte;
        }
    }
}

TEST(EightBytes, ContinuationsAreTheBytesFrom80ToBf) {
    for (unsigned byte = 0; byte != 0x100U; ++byte) {
        const bool isContinuation = byte >= 0x80U && byte <= 0xBFU;
        const std::string all(EightBytes, static_cast<char>(byte));
        EXPECT_EQ(continuationsIn(bytesOf(all)), isContinuation ? EightBytes : 0U) << byte;
        // Whatever is beside it.
        for (const char other : {'a', '\x7F', '\xC3', '\xFF'}) {
            std::string text(EightBytes, other);
            text[3] = static_cast<char>(byte);
            EXPECT_EQ(continuationsIn(bytesOf(text)), isContinuation ? 1U : 0U) << byte;
        }
    }
}

} // namespace

} // namespace kiv::kit
