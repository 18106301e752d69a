#include "kivifc/Site/ExpressKeywords.h"

#include <gtest/gtest.h>

namespace kiv::kivifc::site::test {

namespace {

TEST(ExpressKeywords, AreKnownInUpperCase) {
    // The first, the last, and words that others begin with.
    for (const auto* word :
         {"ABS", "XOR", "END", "END_IF", "LOG", "LOG10", "LOG2", "CONST_E", "VALUE", "VALUE_IN"})
        EXPECT_TRUE(isExpressKeyword(word)) << word;
    for (const auto* word : {"", " ", "abs", "EN", "END_", "LOG3", "ABS ABSTRACT", "IFCWALL", "ZZZ"})
        EXPECT_FALSE(isExpressKeyword(word)) << word;
}

} // namespace

} // namespace kiv::kivifc::site::test
