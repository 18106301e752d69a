#include "Kit/Findings/Rules/Types/EnumerationItems.h"

#include "Kit/Findings/FindingLines.h"
#include "Kit/Findings/Rules/Types/TypeCases.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kit {

namespace {

using test::sSetOf;
using test::TypeCase;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// The items of an enumeration, or what else is in its list; the first begins in column 55.
std::string sItems(std::string_view items, std::string_view constants = {}) {
    return sSetOf("<TypePropertyEnumeratedValue><EnumList name=\"PEnum_A\">" + std::string(items) +
                  "</EnumList>" + std::string(constants) + "</TypePropertyEnumeratedValue>");
}

/// A list of one constant.
std::string sConstant(const std::string& name) {
    return "<ConstantList><ConstantDef><Name>" + name + "</Name></ConstantDef></ConstantList>";
}

class EnumerationItemsTest : public testing::TestWithParam<TypeCase> {};

TEST_P(EnumerationItemsTest, FindsExactly) {
    EXPECT_EQ(test::findingLines(GetParam().document), GetParam().findings);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, EnumerationItemsTest,
    testing::ValuesIn<std::vector<TypeCase>>({
        {"an empty item",
         sItems("<EnumItem>A</EnumItem><EnumItem/>"),
         {"5:78+8 warning T020 the enumeration has an item without text, which is ignored"}},
        {"items in two letter cases",
         sItems("<EnumItem>A</EnumItem><EnumItem>a</EnumItem>"),
         {"5:87+1 warning T021 the items \"A\" and \"a\" differ in letter case only | the first one is here "
          "@5:65"}},
        {"a constant twice",
         sItems("<EnumItem>A</EnumItem>", "<ConstantList><ConstantDef><Name>A</Name></"
                                          "ConstantDef><ConstantDef><Name>A</Name></ConstantDef>"
                                          "</ConstantList>"),
         {"5:162+1 warning T022 the constant \"A\" is described twice | the first one is here @5:121"}},
        {"a blank before an item",
         sItems("<EnumItem> A</EnumItem>"),
         {"5:66+1 note T023 there is white space around the item \"A\""}},
        {"an enumeration without items",
         sSetOf("<TypePropertyEnumeratedValue><EnumList name=\"E\"/></TypePropertyEnumeratedValue>"),
         {"5:31+8 warning T009 the enumeration has no items"}},
        {"an enumeration with blank items",
         sSetOf("<TypePropertyEnumeratedValue><EnumList name=\"E\"><EnumItem> </EnumItem></EnumList>"
                "</TypePropertyEnumeratedValue>"),
         {"5:31+8 warning T009 the enumeration has no items"}},
        {"an enumeration without a list",
         sSetOf("<TypePropertyEnumeratedValue/>"),
         {"5:2+27 warning T009 the enumeration has no items: there is no \"EnumList\""}},
        {"an item twice",
         sSetOf("<TypePropertyEnumeratedValue><EnumList name=\"E\"><EnumItem>X</EnumItem>"
                "<EnumItem> X </EnumItem></EnumList></TypePropertyEnumeratedValue>"),
         {"5:82+1 warning T010 the enumeration has the item \"X\" twice | it is here already @5:59"}},
        {"a constant that is no item",
         sSetOf("<TypePropertyEnumeratedValue><EnumList "
                "name=\"E\"><EnumItem>X</EnumItem></EnumList><ConstantList>"
                "<ConstantDef><Name>x</Name></ConstantDef></ConstantList></TypePropertyEnumeratedValue>"),
         {"5:115+1 warning T011 the constant \"x\" is no item of the enumeration | the item is written "
          "\"X\""}},
    }));

/// Nothing but the constant is wrong in these: no other rule finds what tells its name from that of the item.
TEST(EnumerationItems, ConstantsThatLookLikeAnItemAreStillNone) {
    struct {
        std::string item;
        std::string constant;
    } const rows[] = {
        {"A\u2013B", "A-B"},           // a dash
        {"\u0422\u041E\u0420", "TOP"}, // a word of Cyrillic
        {"A\u00A0B", "A B"},           // a blank that is no space
        {"1\u20442", "1/2"},           // a slash
        {"\uFF21\uFF22", "AB"},        // wide forms
    };
    for (const auto& row : rows)
        EXPECT_THAT(
            test::findingLines(sItems("<EnumItem>" + row.item + "</EnumItem>", sConstant(row.constant))),
            ElementsAre(HasSubstr(" warning T011 the constant \"" + row.constant + "\"")));
}

TEST(EnumerationItems, ItemsThatLookAlikeAreTwo) {
    // Were one of them repeated, the constant could be the one that was to be in its place.
    EXPECT_THAT(
        test::findingLines(sItems("<EnumItem>A\u2013B</EnumItem><EnumItem>A-B</EnumItem>", sConstant("C"))),
        ElementsAre(HasSubstr(" warning T011 the constant \"C\"")));
}

TEST(EnumerationItems, AnItemThatIsFoundAsSuchIsThatOfItsConstant) {
    EXPECT_THAT(test::findingLines(sItems("<EnumItem>A\u200BB</EnumItem>", sConstant("AB"))),
                ElementsAre(HasSubstr(" warning N005 ")));
    EXPECT_THAT(test::findingLines(sItems("<EnumItem>\u0410B</EnumItem>", sConstant("AB"))),
                ElementsAre(HasSubstr(" warning N008 ")));
}

TEST(EnumerationItems, BlanksAroundAnItemAreMended) {
    const auto mended = test::sMended(sItems("<EnumItem>\n A </EnumItem>"));
    EXPECT_NE(mended.find("<EnumItem>A</EnumItem>"), std::string::npos) << mended;
    EXPECT_THAT(test::findingLines(mended), IsEmpty());
}

} // namespace

} // namespace kiv::kit
