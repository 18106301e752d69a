#include "Kit/Findings/Rules/Structure/ElementTexts.h"

#include "Kit/Findings/FindingLines.h"
#include "Kit/Findings/Rules/Structure/StructureTexts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

using test::findingLines;
using test::property;
using test::setWith;
using test::setWithSingle;
using test::setWithType;
using test::Single;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(ElementTextsTest, TextBetweenElementsIsFound) {
    EXPECT_THAT(findingLines(setWith(property("") + "\n  stray\n")),
                ElementsAre("8:3+5 error S016 there is text inside \"PropertyDefs\", where elements belong"));
}

TEST(ElementTextsTest, WhereTheTextBelongsIsSaid) {
    EXPECT_THAT(
        findingLines(setWithSingle("IfcLabel")),
        ElementsAre("8:40+8 error S016 there is text inside \"TypePropertySingleValue\", where elements "
                    "belong | the type belongs in an element \"DataType\""));
    EXPECT_THAT(
        findingLines(setWithType("<PropertyType><TypePropertyReferenceValue>IfcPerson"
                                 "</TypePropertyReferenceValue></PropertyType>")),
        ElementsAre("8:43+9 error S016 there is text inside \"TypePropertyReferenceValue\", where elements "
                    "belong | its value belongs in the attribute \"reftype\""));
    EXPECT_THAT(
        findingLines(setWithType("<PropertyType><TypePropertyEnumeratedValue><EnumList name=\"A\">X, Y"
                                 "</EnumList></TypePropertyEnumeratedValue></PropertyType>")),
        ElementsAre(
            "8:63+4 error S016 there is text inside \"EnumList\", where elements belong | write each as "
            "an element \"EnumItem\""));
    EXPECT_THAT(
        findingLines(setWithType("<PropertyType>IfcLabel</PropertyType>")),
        ElementsAre("8:15+8 error S016 there is text inside \"PropertyType\", where elements belong | the "
                    "type belongs in an element of its kind, such as \"TypePropertySingleValue\""));
}

TEST(ElementTextsTest, TextThatIsNotReadIsFound) {
    EXPECT_THAT(
        findingLines(
            setWith(property("<NameAliases><NameAlias lang=\"de\"><!--c-->A</NameAlias></NameAliases>"))),
        ElementsAre(
            "7:194+8 error S017 the text of \"NameAlias\" begins with a comment, which is read in its "
            "place"));
}

TEST(ElementTextsTest, CommentsBetweenElementsAreRight) {
    EXPECT_THAT(findingLines(setWith("<!-- one -->" + property("<!-- two -->\n") + "<!-- three -->")),
                IsEmpty());
    EXPECT_THAT(findingLines(setWith("<PropertyDef><!-- one --><Name>P</Name><Definition>d</Definition>" +
                                     std::string(Single) + "</PropertyDef>")),
                IsEmpty());
}

TEST(ElementTextsTest, ACommentThatIsReadAsANameIsOneFinding) {
    EXPECT_THAT(
        findingLines(setWith("<PropertyDef><Name><!-- P --></Name><Definition>d</Definition>" +
                             std::string(Single) + "</PropertyDef>")),
        ElementsAre("7:20+10 error S017 the text of \"Name\" begins with a comment, which is read in its "
                    "place"));
}

} // namespace

} // namespace kiv::kit
