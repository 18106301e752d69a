#include "Kit/Positions/XmlChildren.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kit {

namespace {

std::string sNames(const XmlPositions& xml, XmlIndex parent) {
    std::string names;
    for (const auto child : XmlChildren(xml, parent))
        names.append(xml.getElement(child).name).append(" ");
    return names;
}

TEST(XmlChildren, AreThoseOfTheElementAloneInOrder) {
    const XmlPositions xml("<r><a><deep/></a>text<b/><!-- c --><a x='1'/></r>");
    EXPECT_EQ(sNames(xml, 0), "a b a ");
    EXPECT_EQ(sNames(xml, 1), "deep ");
    EXPECT_EQ(sNames(xml, 2), "");
}

TEST(XmlChildren, NoElementHasNone) {
    const XmlPositions empty("");
    EXPECT_EQ(sNames(empty, NoXmlElement), "");
    EXPECT_EQ(childOf(empty, NoXmlElement, "a"), NoXmlElement);
}

TEST(XmlChildren, TheFirstOfItsNameIsFound) {
    const XmlPositions xml("<r><a><c/></a><b/><b><d/></b><p:e/></r>");
    EXPECT_EQ(childOf(xml, 0, "a"), 1U);
    EXPECT_EQ(childOf(xml, 0, "b"), 3U);
    EXPECT_EQ(childOf(xml, 0, "c"), NoXmlElement); // of a child
    EXPECT_EQ(childOf(xml, 0, "e"), NoXmlElement); // as it is written, with its prefix
    EXPECT_EQ(childOf(xml, 0, "p:e"), 6U);
    EXPECT_EQ(childOf(xml, 0, "B"), NoXmlElement);
    EXPECT_EQ(childOf(xml, 3, "b"), NoXmlElement);
}

TEST(XmlChildren, AllOfANameAreFound) {
    const XmlPositions xml("<r><a><b/></a><b/>text<B/><b><d/></b></r>");
    EXPECT_EQ(childrenOf(xml, 0, "b"), (std::vector<XmlIndex>{3, 5}));
    EXPECT_EQ(childrenOf(xml, 0, "d"), std::vector<XmlIndex>());
    EXPECT_EQ(childrenOf(xml, NoXmlElement, "b"), std::vector<XmlIndex>());
}

TEST(XmlChildren, OfATextThatBreaksOffAreThoseUpToThere) {
    const XmlPositions xml("<r><a/><b>");
    EXPECT_EQ(sNames(xml, 0), "a b ");
}

} // namespace

} // namespace kiv::kit
