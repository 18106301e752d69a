#include "kiv/Base/Exception.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace {

TEST(KivException, HasAnEmptyMessageByDefault) {
    EXPECT_STREQ(kiv::exception().what(), "");
}

TEST(KivException, KeepsItsMessage) {
    EXPECT_STREQ(kiv::exception("No schema new callback registered").what(),
                 "No schema new callback registered");
}

TEST(KivException, IsCopiedWithItsMessage) {
    const kiv::exception original("message");
    const kiv::exception copy(
        original); // NOLINT(performance-unnecessary-copy-initialization): the copy is the test
    EXPECT_STREQ(copy.what(), "message");
    EXPECT_NE(copy.what(), original.what());
}

TEST(KivException, IsAssignedWithItsMessage) {
    kiv::exception changed("before");
    changed = kiv::exception("after");
    EXPECT_STREQ(changed.what(), "after");
}

TEST(KivException, IsCaughtAsStandardException) {
    try {
        throw kiv::exception("thrown");
    } catch (const std::exception& caught) {
        EXPECT_STREQ(caught.what(), "thrown");
    }
}

} // namespace
