#include "kiv/Base/Exception.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace {

TEST(ExceptionTest, HasAnEmptyMessageByDefault) {
    EXPECT_STREQ(kiv::exception().what(), "");
}

TEST(ExceptionTest, KeepsItsMessage) {
    EXPECT_STREQ(kiv::exception("No schema new callback registered").what(),
                 "No schema new callback registered");
}

TEST(ExceptionTest, IsCopiedWithItsMessage) {
    const kiv::exception original("message");
    const kiv::exception copy(
        original); // NOLINT(performance-unnecessary-copy-initialization): the copy is the test
    EXPECT_STREQ(copy.what(), "message");
    EXPECT_NE(copy.what(), original.what());
}

TEST(ExceptionTest, IsAssignedWithItsMessage) {
    kiv::exception changed("before");
    changed = kiv::exception("after");
    EXPECT_STREQ(changed.what(), "after");
}

TEST(ExceptionTest, IsCaughtAsStandardException) {
    try {
        throw kiv::exception("thrown");
    } catch (const std::exception& caught) {
        EXPECT_STREQ(caught.what(), "thrown");
    }
}

} // namespace
