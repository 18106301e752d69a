#include "kivifc/Site/Anchors.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

namespace kiv::kivifc::site {

namespace {

TEST(Anchors, AreEachThereOnce) {
    Anchors anchors;
    EXPECT_EQ(anchors.sTake("Medium"), "Medium");
    EXPECT_EQ(anchors.sTake("Medium"), "Medium~2");
    EXPECT_EQ(anchors.sTake("Medium"), "Medium~3");
    EXPECT_EQ(anchors.sTake("Width"), "Width");
}

TEST(Anchors, NamesThatAreOddDoNotMeetThem) {
    Anchors anchors;
    std::set<std::string> taken;
    const char* names[] = {"A", "A", "A~2", "A~2", "a", "a", "a~", "", "", "<b>", "<b>"};
    for (const auto* name : names)
        EXPECT_TRUE(taken.insert(anchors.sTake(name)).second) << name;
}

} // namespace

} // namespace kiv::kivifc::site
