#include "kivifc/Site/Elements.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

namespace kiv::kivifc::site {

namespace {

TEST(RowIds, AreEachThereOnce) {
    RowIds ids;
    EXPECT_EQ(ids.sTake("Medium"), "Medium");
    EXPECT_EQ(ids.sTake("Medium"), "Medium~~2");
    EXPECT_EQ(ids.sTake("Medium"), "Medium~~3");
    EXPECT_EQ(ids.sTake("Width"), "Width");
}

TEST(RowIds, NamesThatAreOddDoNotMeetThem) {
    RowIds ids;
    std::set<std::string> taken;
    const char* names[] = {"A", "A", "A~~2", "A~~2", "a", "a", "a~", "", "", "<b>", "<b>"};
    for (const auto* name : names)
        EXPECT_TRUE(taken.insert(ids.sTake(name)).second) << name;
}

} // namespace

} // namespace kiv::kivifc::site
