#include "kivifc/Site/RowIds.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

namespace kiv::kivifc::site {

namespace {

TEST(RowIds, AreEachThereOnce) {
    RowIds ids;
    EXPECT_EQ(ids.take("Medium").getText(), "Medium");
    EXPECT_EQ(ids.take("Medium").getText(), "Medium~~2");
    EXPECT_EQ(ids.take("Medium").getText(), "Medium~~3");
    EXPECT_EQ(ids.take("Width").getText(), "Width");
}

TEST(RowIds, NamesThatAreOddDoNotMeetThem) {
    RowIds ids;
    std::set<std::string> taken;
    const char* names[] = {"A", "A", "A~~2", "A~~2", "a", "a", "a~", "", "", "<b>", "<b>"};
    for (const auto* name : names)
        EXPECT_TRUE(taken.insert(ids.take(name).getText()).second) << name;
}

/// Links to the first row are made of its name alone.
TEST(RowIds, FirstOneIsTheOneThatTheNameLeadsTo) {
    const Address page(PageName("sets.html"));
    RowIds ids;
    for (const auto* name : {"Medium", "PredefinedType", "attributes", "a b", ""}) {
        const auto first = ids.take(name);
        EXPECT_EQ(page.row(first).getAnchor(), page.row(name).getAnchor());
        EXPECT_NE(page.row(ids.take(name)).getAnchor(), page.row(name).getAnchor());
    }
}

} // namespace

} // namespace kiv::kivifc::site
