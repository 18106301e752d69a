#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"

#include "Support/ErrorRecords.h"
#include "Support/XmlFromText.h"

#include <gtest/gtest.h>

#include <string_view>

namespace kiv::test {

namespace {

using ifc::def::pset::ConstantDef;
using ifc::def::xml::XmlSetErrors;

TEST(ConstantDef, ReadsTextsAndAliases) {
    XmlSetErrors errors;
    const ConstantDef constant(XmlFromText("<c><Name> N </Name><Definition>D</Definition><Name/><Definition/>"
                                           "<NameAliases><NameAlias lang='de'>n</NameAlias></NameAliases>"
                                           "<DefinitionAliases><DefinitionAlias lang='fr'>d</DefinitionAlias>"
                                           "</DefinitionAliases></c>")
                                   .root(),
                               errors);
    EXPECT_EQ(constant.getName(), " N ");
    EXPECT_EQ(constant.getDefinition(), "D");
    ASSERT_EQ(constant.getNameAliases().getEntries().size(), 1U);
    EXPECT_EQ(constant.getNameAliases().getEntries()[0].text, "n");
    ASSERT_EQ(constant.getDefinitionAliases().getEntries().size(), 1U);
    EXPECT_EQ(constant.getDefinitionAliases().getEntries()[0].text, "d");
    EXPECT_EQ(errors.getRecords(), Records());
}

TEST(ConstantDef, IsEmptyWithoutChildren) {
    XmlSetErrors errors;
    const ConstantDef constant(XmlFromText("<c>text</c>").root(), errors);
    EXPECT_EQ(constant.getName(), "");
    EXPECT_EQ(constant.getDefinition(), "");
    EXPECT_TRUE(constant.getNameAliases().getEntries().empty());
    EXPECT_TRUE(constant.getDefinitionAliases().getEntries().empty());
}

TEST(ConstantDef, UnknownChildrenAreRecorded) {
    XmlSetErrors errors;
    const ConstantDef constant(XmlFromText("<c>\n<name>A</name>\n<Value/><Name>N</Name></c>").root(), errors);
    EXPECT_EQ(constant.getName(), "N");
    EXPECT_EQ(errors.getRecords(),
              (Records{error("name", "Unknown xml node", 2), error("Value", "Unknown xml node", 3)}));
}

} // namespace

} // namespace kiv::test
