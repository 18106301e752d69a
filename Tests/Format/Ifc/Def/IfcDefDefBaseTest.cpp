#include "kiv/Format/Ifc/Def/IfcDefBase.h"

#include "Format/Ifc/Def/DefDoubles.h"
#include "Support/ErrorRecords.h"
#include "Support/SchemaFromText.h"
#include "Support/XmlFromText.h"

#include <gtest/gtest.h>

#include <string>

namespace kiv::test {

namespace {

using ifc::def::xml::XmlSetErrors;

PlainSet setOf(std::string_view xml, XmlSetErrors& errors) {
    return PlainSet(XmlFromText(xml).root(), errors);
}

TEST(DefBase, NameAndDefinitionAreTakenAsTheyStand) {
    XmlSetErrors errors;
    const auto set = setOf("<s><Name> A\n</Name><Definition>\tText &lt; </Definition></s>", errors);
    EXPECT_EQ(set.getName(), " A\n");
    EXPECT_EQ(set.getDefinition(), "\tText < ");
    EXPECT_EQ(set.refusedTags, std::vector<std::string>());
    EXPECT_EQ(errors.getRecords(), Records());
}

TEST(DefBase, IsEmptyWithoutItsChildren) {
    XmlSetErrors errors;
    const auto set = setOf("<s/>", errors);
    EXPECT_EQ(set.getName(), "");
    EXPECT_EQ(set.getDefinition(), "");
    EXPECT_TRUE(set.getIfdGuid().isNull());
    EXPECT_TRUE(set.getDefinitionAliases().getEntries().empty());
    EXPECT_EQ(errors.getRecords(), Records());
}

TEST(DefBase, EmptyChildLeavesTheFieldAndIsTakenAllTheSame) {
    XmlSetErrors errors;
    const auto set =
        setOf("<s><Name>A</Name><Name/><Definition>B</Definition><Definition></Definition></s>", errors);
    EXPECT_EQ(set.getName(), "A");
    EXPECT_EQ(set.getDefinition(), "B");
    EXPECT_EQ(set.refusedTags, std::vector<std::string>());
}

TEST(DefBase, LastOfSeveralTextsHolds) {
    XmlSetErrors errors;
    EXPECT_EQ(setOf("<s><Name>A</Name><Name>B</Name></s>", errors).getName(), "B");
}

TEST(DefBase, TagsAreComparedWithCase) {
    XmlSetErrors errors;
    const auto set = setOf("<s><name>A</name><DEFINITION>B</DEFINITION></s>", errors);
    EXPECT_EQ(set.getName(), "");
    EXPECT_EQ(set.refusedTags, (std::vector<std::string>{"name", "DEFINITION"}));
}

TEST(DefBase, GuidIsRead) {
    XmlSetErrors errors;
    const auto set = setOf("<s ifdguid='e098e980d1bc11e1800000215ad4efdf'/>", errors);
    EXPECT_EQ(set.getIfdGuid(),
              kiv::Guid(0xE098E980U, 0xD1BC, 0x11E1, {0x80, 0, 0, 0x21, 0x5A, 0xD4, 0xEF, 0xDF}));
    EXPECT_EQ(errors.getRecords(), Records());
}

TEST(DefBase, IllegalGuidIsRecordedAndLeavesNone) {
    XmlSetErrors errors;
    const auto set = setOf("\n<s\n ifdguid='abc'>\n<Name>A</Name></s>", errors);
    EXPECT_TRUE(set.getIfdGuid().isNull());
    EXPECT_EQ(set.getName(), "A");
    EXPECT_EQ(errors.getRecords(), (Records{error("abc", "Illegal ifdguid in xml file", 2)}));
}

TEST(DefBase, EmptyGuidIsRecordedWithAnEmptyItem) {
    XmlSetErrors errors;
    setOf("<s ifdguid=''/>", errors);
    EXPECT_EQ(errors.getRecords(), (Records{error("", "Illegal ifdguid in xml file", 1)}));
}

TEST(DefBase, ReadingLeavesTheCollectorWithoutSetName) {
    XmlSetErrors errors;
    setOf("<s ifdguid='abc'><Name>A</Name></s>", errors);
    EXPECT_EQ(errors.getSetName(), "");
}

TEST(DefBase, KnowsTheLineOfItsElement) {
    XmlSetErrors errors;
    EXPECT_EQ(setOf("<!-- c -->\n\n<s/>", errors).getLine(), 3U);
    EXPECT_EQ(PlainSet("A").getLine(), 0U);
}

TEST(TypeBase, HasNothingToCheck) {
    const auto schema = schemaFromText("");
    XmlSetErrors errors;
    EXPECT_TRUE(PlainType().checkForErrors(*schema, errors));
    EXPECT_EQ(errors.getRecords(), Records());
}

} // namespace

} // namespace kiv::test
