#include "kivifc/Site/Elements.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::site::test {

namespace {

TEST(Short, TextThatFitsIsWhole) {
    EXPECT_EQ(sShort("IfcWall"), "IfcWall");
    EXPECT_EQ(sShort(std::string(200, 'x')), std::string(200, 'x'));
}

TEST(Short, OfALongTextTheBeginningIsKept) {
    EXPECT_EQ(sShort(std::string(201, 'x')), std::string(160, 'x') + "...");
    EXPECT_EQ(sShort("abcdefghijk", 10), "abcdefgh...");
}

/// Each of these letters has two bytes, so that the cut would be within one.
TEST(Short, CodePointsStayWhole) {
    EXPECT_EQ(sShort("abcdefg\xC3\xA4\xC3\xA4\xC3\xA4", 10), "abcdefg...");
}

TEST(Elements, SectionsHaveTheirNumber) {
    Html html("");
    vSectionBegin(html, "items", "Items", 3);
    vSectionEnd(html);
    EXPECT_EQ(html.getText(),
              "<section id=\"items\">\n<h2>Items <span class=\"count\">3</span></h2>\n</section>\n");
}

TEST(Elements, RowLinkSaysWhatItLeadsTo) {
    Html html("");
    vRowLinkWrite(html, "Name");
    EXPECT_EQ(html.getText(), "<a class=\"anchor\" href=\"#Name\" aria-label=\"Link to Name\">#</a>");
}

} // namespace

} // namespace kiv::kivifc::site::test
