#include "Format/Ifc/Def/Pset/PropertyTypeReading.h"
#include "Support/ErrorRecords.h"
#include "Support/Growth.h"

#include <cstdint>
#include <string>

namespace kiv::test {

namespace {

using ifc::def::pset::TypePropertySingleValue;
using ifc::def::xml::ExtraExportInfo;
using Read = ReadType<TypePropertySingleValue>;

kiv::assert::AssertRecord unitReport(std::string message, int line) {
    return {0, std::move(message), "kiv::ifc::def::pset::TypePropertySingleValue::boCheck",
            "Source/Format/Ifc/Def/Pset/IfcPropertyTypeDerived", line};
}

TEST(TypePropertySingleValue, ReadsDataTypeAndUnitType) {
    const Read read("<t><DataType type='IfcLengthMeasure'/><UnitType type='LENGTHUNIT'/></t>");
    EXPECT_EQ(read.type.getDataTypeName(), "IfcLengthMeasure");
    EXPECT_EQ(read.type.getUnitType(), "LENGTHUNIT");
    EXPECT_EQ(read.errors.getRecords(), Records());
    EXPECT_EQ(read.reports, Reports());
}

TEST(TypePropertySingleValue, ReftypeIsNotRead) {
    EXPECT_EQ(Read("<t reftype='IfcPerson'/>").type.getDataTypeName(), "");
}

TEST(TypePropertySingleValue, LastUnitTypeHolds) {
    EXPECT_EQ(Read("<t><UnitType type='A'/><UnitType type='B'/></t>").type.getUnitType(), "B");
    EXPECT_EQ(Read("<t><UnitType type='A'/><UnitType type=''/></t>").type.getUnitType(), "");
}

TEST(TypePropertySingleValue, UnitTypeThatEndsWithABlankIsKeptAndReported) {
    const Read read("<t><UnitType type='LENGTHUNIT '/></t>");
    EXPECT_EQ(read.type.getUnitType(), "LENGTHUNIT ");
    EXPECT_EQ(read.reports, Reports{unitReport("Name should not end with space", 145)});
    EXPECT_EQ(read.errors.getRecords(), Records());
}

TEST(TypePropertySingleValue, UnitTypeWithoutItsAttributeIsReportedAndUnknown) {
    const Read read("<t><UnitType type='A'/>\n<UnitType/></t>");
    EXPECT_EQ(read.type.getUnitType(), "A");
    EXPECT_EQ(read.reports, Reports{unitReport("Could not find attribute", 149)});
    EXPECT_EQ(read.errors.getRecords(), (Records{error("UnitType", "Unknown xml node", 2)}));
}

TEST(TypePropertySingleValue, UnknownChildrenAreRecorded) {
    const Read read("<t>\n<unittype type='x'/>\n<Values>1</Values></t>");
    EXPECT_EQ(read.errors.getRecords(),
              (Records{error("unittype", "Unknown xml node", 2), error("Values", "Unknown xml node", 3)}));
    EXPECT_EQ(read.reports, Reports());
}

TEST(TypePropertySingleValue, CheckReportsAMissingNameAndPasses) {
    const auto schema = schemaFromText("TYPE IfcLabel = STRING;\nEND_TYPE;\n");
    EXPECT_EQ(checkReportsOf(Read("<t><DataType type='IfcLabel'/><UnitType type='X'/></t>").type, *schema),
              Reports());
    EXPECT_EQ(checkReportsOf(Read("<t><DataType type='IfcLabels'/></t>").type, *schema),
              Reports{nameReport("TypePropertyReferenceValue::checkForErrors", 68)});
}

/// The basic blocks that an action runs through; those of the library only where it is counted.
template <class Action>
std::uint64_t blocksOf(const Action& action) {
    const auto before = workDone().blocks;
    action();
    return workDone().blocks - before;
}

/// A check that looks the name up takes a look-up more than one that does not.
TEST(TypePropertySingleValue, CheckLooksNoNameUpWhileNobodyListens) {
    const auto schema = schemaFromText("TYPE IfcLabel = STRING;\nEND_TYPE;\n");
    ifc::def::xml::XmlSetErrors errors;
    const TypePropertySingleValue type(XmlFromText("<t><DataType type='IfcLabel'/></t>").root(), errors);
    const auto vCheck = [&] { type.checkForErrors(*schema, errors); };
    const auto lookUp = blocksOf([&] { schema->pObjectFromName("IfcLabel"); });
    const auto unheard = blocksOf(vCheck);
    const AssertCollector reports;
    const auto heard = blocksOf(vCheck);
    // The first look-up does more than later ones do.
    EXPECT_GE(heard, unheard + lookUp / 4);
}

TEST(TypePropertySingleValue, DataTypeIsWrittenInTheElementOfTheKindAndTheUnitTypeNowhere) {
    EXPECT_EQ(sTypeExport(Read("<t><DataType type='IfcLabel'/><UnitType type='X'/></t>").type),
              "<PropertyType><TypePropertySingleValue><DataType type=\"IfcLabel\"/></TypePropertySingleValue>"
              "</PropertyType>");
}

TEST(TypePropertySingleValue, BaseTypeIsWritten) {
    const auto schema = schemaFromText("TYPE IfcLabel = STRING;\nEND_TYPE;\n");
    ExtraExportInfo info;
    info.schemaForBaseTypes = schema.get();
    EXPECT_EQ(sTypeExport(Read("<t><DataType type='IfcLabel'/></t>").type, &info),
              "<PropertyType><TypePropertySingleValue><DataType type=\"IfcLabel\" basetype=\"STRING\"/>"
              "</TypePropertySingleValue></PropertyType>");
}

} // namespace

} // namespace kiv::test
