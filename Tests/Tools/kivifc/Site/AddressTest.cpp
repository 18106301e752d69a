#include "kivifc/Site/Address.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::site {

namespace {

TEST(Address, OfAPageHasItsNameAlone) {
    const Address page(PageName("entities.html"));
    EXPECT_EQ(page.getPath(), "entities.html");
    EXPECT_EQ(page.getAnchor(), "");
}

TEST(Address, OfARowIsOnTheSamePage) {
    const Address page(PageName("entities.html"));
    const auto row = page.row("PredefinedType");
    EXPECT_EQ(row.getPath(), "entities.html");
    EXPECT_EQ(row.getAnchor(), "PredefinedType");
    EXPECT_EQ(row.row("WR1").getAnchor(), "WR1"); // of the page, not of the row
    EXPECT_EQ(page.getAnchor(), "");
}

// Whatever a name is, it is the value of an attribute and a part of an address.
TEST(Address, RowsOfOddNamesHaveSafeAnchors) {
    for (const auto* name : {"", " ", "a b", "\"><script>", "a#b", "a/../b", "\xE5\xA2\x99", "'&"}) {
        const auto anchor = Address(PageName("entities.html")).row(name).getAnchor();
        EXPECT_FALSE(anchor.empty());
        EXPECT_EQ(
            anchor.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_~"),
            std::string::npos)
            << anchor;
        EXPECT_EQ(anchor, sAnchor(name));
    }
}

} // namespace

} // namespace kiv::kivifc::site
