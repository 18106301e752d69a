#include "Format/Ifc/Def/Pset/PropertyTypeReading.h"
#include "Support/ErrorRecords.h"

namespace kiv::test {

namespace {

using ifc::def::pset::TypePropertyValue;
using Read = ReadType<TypePropertyValue>;

TEST(TypePropertyValue, ReadsDataTypeUnitTypeAndValues) {
    const Read read("<v><DataType type='D'/><UnitType type='U'/><Values> 1;2 </Values><Values/></v>");
    EXPECT_EQ(read.type.getDataTypeName(), "D");
    EXPECT_EQ(read.type.getUnitType(), "U");
    EXPECT_EQ(read.type.getValues(), " 1;2 ");
    EXPECT_EQ(read.errors.getRecords(), Records());
}

TEST(TypePropertyValue, ValuesAreTheFirstNodeAlone) {
    EXPECT_EQ(Read("<v><Values>1<ValueItem>2</ValueItem></Values></v>").type.getValues(), "1");
    EXPECT_EQ(Read("<v><Values><ValueItem>2</ValueItem></Values></v>").type.getValues(), "");
}

TEST(TypePropertyValue, UnknownChildrenAreRecorded) {
    const Read read("<v>\n<Value>1</Value></v>");
    EXPECT_EQ(read.errors.getRecords(), (Records{error("Value", "Unknown xml node", 2)}));
}

TEST(TypePropertyValue, IsASingleValueOfWhichNothingIsWritten) {
    const Read read("<v><DataType type='D'/><Values>1</Values></v>");
    EXPECT_EQ(read.type.sEntityName(), "IfcPropertySingleValue");
    EXPECT_EQ(sTypeExport(read.type), "<PropertyType/>");
}

TEST(TypePropertyValue, CheckReportsAMissingNameAndPasses) {
    const auto schema = schemaFromText("");
    EXPECT_EQ(checkReportsOf(Read("<v><DataType type='D'/></v>").type, *schema),
              Reports{nameReport("TypePropertyReferenceValue::checkForErrors", 68)});
}

} // namespace

} // namespace kiv::test
