#include "kiv/Kit/Text/ByteOrderMark.h"

#include <gtest/gtest.h>

namespace kiv::kit {

namespace {

TEST(ByteOrderMark, IsTakenOffTheBeginningOnce) {
    EXPECT_EQ(withoutByteOrderMark("\xEF\xBB\xBF<A/>"), "<A/>");
    EXPECT_EQ(withoutByteOrderMark("\xEF\xBB\xBF\xEF\xBB\xBF"), "\xEF\xBB\xBF");
    EXPECT_EQ(withoutByteOrderMark("<A/>\xEF\xBB\xBF"), "<A/>\xEF\xBB\xBF");
    EXPECT_EQ(withoutByteOrderMark("\xEF\xBB"), "\xEF\xBB");
    EXPECT_EQ(withoutByteOrderMark(""), "");
}

} // namespace

} // namespace kiv::kit
