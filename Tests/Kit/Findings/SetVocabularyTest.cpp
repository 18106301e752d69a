#include "Kit/Findings/SetVocabulary.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The name of the rule of an element; "-" for none.
std::string_view ruleOf(const SetVocabulary& vocabulary, XmlIndex element) {
    const auto* rule = vocabulary.pRuleOf(element);
    return rule ? rule->name : "-";
}

std::string sRules(std::string_view text, SetKind kind) {
    const XmlPositions xml{std::string(text)};
    const SetVocabulary vocabulary(xml, kind);
    std::string all;
    for (XmlIndex element = 0; element != xml.getElements().size(); ++element)
        all.append(ruleOf(vocabulary, element)).append(" ");
    return all;
}

TEST(SetVocabulary, EachElementHasTheRuleOfItsPlace) {
    EXPECT_EQ(sRules("<PropertySetDef><Name/><PropertyDefs><PropertyDef><Name/></PropertyDef></PropertyDefs>"
                     "</PropertySetDef>",
                     SetKind::PropertySet),
              "PropertySetDef Name PropertyDefs PropertyDef Name ");
    EXPECT_EQ(
        sRules("<QtoSetDef><QtoDefs><QtoDef><QtoType/></QtoDef></QtoDefs></QtoSetDef>", SetKind::QuantitySet),
        "QtoSetDef QtoDefs QtoDef QtoType ");
}

TEST(SetVocabulary, WhatIsUnknownOrInAnotherPlaceHasNone) {
    EXPECT_EQ(sRules("<PropertySetDef><PropertyDef/><Nam><Name/></Nam><QtoDefs><QtoDef/></QtoDefs>"
                     "<Name><Name/></Name></PropertySetDef>",
                     SetKind::PropertySet),
              "PropertySetDef - - - - - Name - ");
    EXPECT_EQ(sRules("<PropertySetDef><Name/></PropertySetDef>", SetKind::None), "- - ");
    EXPECT_EQ(sRules("", SetKind::PropertySet), "");
}

TEST(SetVocabulary, OfATypeTheFirstElementAloneIsRead) {
    EXPECT_EQ(sRules("<PropertySetDef><PropertyDefs><PropertyDef><PropertyType><TypePropertySingleValue/>"
                     "<TypePropertyListValue/></PropertyType></PropertyDef></PropertyDefs></PropertySetDef>",
                     SetKind::PropertySet),
              "PropertySetDef PropertyDefs PropertyDef PropertyType TypePropertySingleValue - ");
}

// Its items are read whatever their tags are.
TEST(SetVocabulary, AKindOfWhichReadersMakeNothingIsNotOffered) {
    const XmlPositions xml("<PropertySetDef><PropertyDefs><PropertyDef><PropertyType/></PropertyDef></"
                           "PropertyDefs></PropertySetDef>");
    const SetVocabulary vocabulary(xml, SetKind::PropertySet);
    const auto& rule = *vocabulary.pRuleOf(3);
    EXPECT_THAT(SetVocabulary::childNames(rule), testing::Contains("TypeSimpleProperty"));
    EXPECT_THAT(SetVocabulary::offeredNames(rule), testing::Not(testing::Contains("TypeSimpleProperty")));
    EXPECT_EQ(SetVocabulary::offeredNames(rule).size(), 7U);
}

TEST(SetVocabulary, AnItemOfAListIsReadUnderAnyName) {
    EXPECT_EQ(sRules("<PropertySetDef><PropertyDefs><PropertyDef><PropertyType><TypePropertyEnumeratedValue>"
                     "<EnumList><Item/></EnumList></TypePropertyEnumeratedValue></PropertyType></PropertyDef>"
                     "</PropertyDefs></PropertySetDef>",
                     SetKind::PropertySet),
              "PropertySetDef PropertyDefs PropertyDef PropertyType TypePropertyEnumeratedValue EnumList "
              "EnumItem ");
}

TEST(SetVocabulary, ComplexPropertiesContainProperties) {
    EXPECT_EQ(sRules("<PropertySetDef><PropertyDefs><PropertyDef><PropertyType><TypeComplexProperty>"
                     "<PropertyDef><Name/></PropertyDef></TypeComplexProperty></PropertyType></PropertyDef>"
                     "</PropertyDefs></PropertySetDef>",
                     SetKind::PropertySet),
              "PropertySetDef PropertyDefs PropertyDef PropertyType TypeComplexProperty PropertyDef Name ");
}

class SetVocabularyTest : public testing::Test {
protected:
    // 0 QtoSetDef, 1 QtoDefs, 2 QtoDef, 3 Name, 4 ApplicableClasses
    XmlPositions xml_{
        "<QtoSetDef><QtoDefs><QtoDef><Name/></QtoDef></QtoDefs><ApplicableClasses/></QtoSetDef>"};
    SetVocabulary vocabulary_{xml_, SetKind::QuantitySet};

    const ElementRule& rule(XmlIndex element) const { return *vocabulary_.pRuleOf(element); }
};

TEST_F(SetVocabularyTest, ChildrenOfARule) {
    EXPECT_THAT(SetVocabulary::childNames(rule(1)), ElementsAre("QtoDef"));
    EXPECT_THAT(SetVocabulary::childNames(rule(3)), IsEmpty());
    ASSERT_NE(SetVocabulary::pChild(rule(2), "Name"), nullptr);
    EXPECT_EQ(SetVocabulary::pChild(rule(2), "Name")->count, ChildCount::LastOnly);
    EXPECT_TRUE(SetVocabulary::pChild(rule(2), "Name")->isNeeded);
    EXPECT_FALSE(SetVocabulary::pChild(rule(2), "NameAliases")->isNeeded);
    EXPECT_EQ(SetVocabulary::pChild(rule(2), "name"), nullptr);
    EXPECT_EQ(SetVocabulary::pChild(rule(2), "QtoDef"), nullptr);
}

TEST_F(SetVocabularyTest, AnElementMayBeTwoLevelsDeep) {
    EXPECT_TRUE(SetVocabulary::boContains(rule(0), "QtoDefs"));
    EXPECT_TRUE(SetVocabulary::boContains(rule(0), "QtoDef"));
    EXPECT_FALSE(SetVocabulary::boContains(rule(0), "QtoType"));
    EXPECT_FALSE(SetVocabulary::boContains(rule(0), "PropertyDefs"));
}

TEST_F(SetVocabularyTest, TheOwnerOfAMisplacedElement) {
    EXPECT_EQ(vocabulary_.ownerOf(0, "QtoDef"), "QtoDefs");              // one inside
    EXPECT_EQ(vocabulary_.ownerOf(2, "ApplicableClasses"), "QtoSetDef"); // one around it
    EXPECT_EQ(vocabulary_.ownerOf(4, "QtoType"), "QtoDef");              // one that is elsewhere
    EXPECT_EQ(vocabulary_.ownerOf(0, "PropertyType"), "");               // of the other kind
    EXPECT_EQ(vocabulary_.ownerOf(0, "Nothing"), "");
}

TEST_F(SetVocabularyTest, WhatOnlyOneKindHasIsKnownOfTheOther) {
    EXPECT_TRUE(SetVocabulary::boOfOther(SetKind::QuantitySet, "PropertyDefs"));
    EXPECT_FALSE(SetVocabulary::boOfOther(SetKind::QuantitySet, "QtoDefs"));
    EXPECT_FALSE(SetVocabulary::boOfOther(SetKind::PropertySet, "Name"));
    EXPECT_EQ(SetVocabulary::counterpart("QtoDefs"), "PropertyDefs");
    EXPECT_EQ(SetVocabulary::counterpart("PropertyType"), "QtoType");
    EXPECT_EQ(SetVocabulary::counterpart("QtoDefinitionAliases"), "PsetDefinitionAliases");
    EXPECT_EQ(SetVocabulary::counterpart("Name"), "");
}

TEST_F(SetVocabularyTest, ElementNamesAreThoseBelowTheRootOnceEach) {
    for (const auto kind : {SetKind::PropertySet, SetKind::QuantitySet}) {
        const auto names = SetVocabulary::elementNames(kind);
        const auto count = [&](std::string_view name) { return std::ranges::count(names, name); };
        const bool isQuantity = kind == SetKind::QuantitySet;
        EXPECT_EQ(count("Name"), 1);
        EXPECT_EQ(count("QtoType"), isQuantity ? 1 : 0);
        EXPECT_EQ(count("EnumItem"), isQuantity ? 0 : 1);
        EXPECT_EQ(count("TypeComplexProperty"), isQuantity ? 0 : 1);
        EXPECT_EQ(count("QtoSetDef") + count("PropertySetDef"), 0);
    }
}

} // namespace

} // namespace kiv::kit
