// What properties have of their own; the rest is in IfcDefMemberTest.cpp.

#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"

#include "Support/AssertCollector.h"
#include "Support/ErrorRecords.h"
#include "Support/SchemaFromText.h"
#include "Support/XmlFromText.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

namespace {

using namespace ifc::def::pset;
using ifc::def::xml::ExtraExportInfo;
using ifc::def::xml::XmlSetErrors;

/// A property without a set, with the records of its reading.
struct ReadProperty {
    explicit ReadProperty(std::string_view xml) : property(nullptr, XmlFromText(xml).root(), errors) {}

    XmlSetErrors errors;
    PropertyDef property;
};

std::string sExport(const PropertyDef& property, ExtraExportInfo* info = nullptr) {
    XmlTarget target("PropertyDefs");
    property.vExport(target.root(), info);
    return target.sText();
}

constexpr std::string_view SingleValue = "<PropertyDef><PropertyType><TypePropertySingleValue><DataType "
                                         "type='IfcLabel'/></TypePropertySingleValue></PropertyType>"
                                         "</PropertyDef>";

TEST(PropertyDef, MayHaveNoOwner) {
    EXPECT_EQ(ReadProperty("<PropertyDef/>").property.pOwner(), nullptr);
}

TEST(PropertyDef, ValueDefIsIgnored) {
    const ReadProperty read("<PropertyDef><ValueDef><Odd/></ValueDef></PropertyDef>");
    EXPECT_EQ(read.errors.getRecords(), Records());
    EXPECT_EQ(sExport(read.property),
              "<PropertyDefs><PropertyDef><Name/><Definition/><PropertyType/></PropertyDef>"
              "</PropertyDefs>");
}

TEST(PropertyDef, UnknownChildrenAreRecordedAndTheRestIsRead) {
    const ReadProperty read("<PropertyDef>\n<propertyType/>\n<QtoType/>\n<Name>N</Name></PropertyDef>");
    EXPECT_EQ(read.property.getName(), "N");
    EXPECT_EQ(read.errors.getRecords(), (Records{error("propertyType", "Unknown xml node", 2),
                                                 error("QtoType", "Unknown xml node", 3)}));
}

TEST(PropertyDef, MadeInCodeIsNotAmongThePropertiesOfItsSet) {
    XmlSetErrors errors;
    const PropertySetDef set(XmlFromText("<s><Name>Pset_WallCommon</Name></s>").root(), errors);
    const PropertyDef property(
        set, "IsExternal",
        std::make_unique<TypePropertyListValue>(XmlFromText("<TypePropertyListValue/>").root(), errors));
    EXPECT_EQ(property.getEntityName(), "IfcPropertyListValue");
    EXPECT_EQ(property.getConcept(), "Pset_WallCommon.IsExternal");
    EXPECT_TRUE(set.getProperties().empty());
}

TEST(PropertyDef, BaseTypeOfTheTypeIsWritten) {
    const auto schema = schemaFromText("TYPE IfcLabel = STRING;\nEND_TYPE;\n");
    ExtraExportInfo info;
    info.schemaForBaseTypes = schema.get();
    EXPECT_EQ(sExport(ReadProperty(SingleValue).property, &info),
              "<PropertyDefs><PropertyDef><Name/><Definition/><PropertyType><TypePropertySingleValue>"
              "<DataType type=\"IfcLabel\" basetype=\"STRING\"/></TypePropertySingleValue></PropertyType>"
              "</PropertyDef></PropertyDefs>");
}

TEST(PropertyDef, CheckReportsTheEntityFirstAndThenTheDataType) {
    const auto schema = schemaFromText("");
    ReadProperty read(SingleValue);
    const AssertCollector reports;
    EXPECT_TRUE(read.property.checkForErrors(*schema, read.errors));
    EXPECT_EQ(reports.getMessages(),
              (std::vector<std::string>{"Entity not found", "Excpeted name to exist in schema"}));
}

} // namespace

} // namespace kiv::test
