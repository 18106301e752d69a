#include "Format/Ifc/Def/Pset/PropertyTypeReading.h"
#include "Support/ErrorRecords.h"

namespace kiv::test {

namespace {

using ifc::def::pset::TypePropertyTableValue;
using Read = ReadType<TypePropertyTableValue>;

constexpr std::string_view Table =
    "<t><Expression>a = b</Expression>"
    "<DefiningValue><DataType type='IfcTimeMeasure'/><UnitType type='U'/><Values>1;2</Values></DefiningValue>"
    "<DefinedValue><DataType type='IfcAreaMeasure'/><Values>3;4</Values></DefinedValue></t>";

TEST(TypePropertyTableValue, ReadsExpressionTypesAndValues) {
    const Read read(Table);
    EXPECT_EQ(read.type.getExpression(), "a = b");
    EXPECT_EQ(read.type.getDefiningTypeName(), "IfcTimeMeasure");
    EXPECT_EQ(read.type.getDefinedTypeName(), "IfcAreaMeasure");
    ASSERT_EQ(read.type.getDefiningValues().size(), 1U);
    EXPECT_EQ(read.type.getDefiningValues()[0].getDataTypeName(), "IfcTimeMeasure");
    EXPECT_EQ(read.type.getDefiningValues()[0].getUnitType(), "U");
    EXPECT_EQ(read.type.getDefiningValues()[0].getValues(), "1;2");
    ASSERT_EQ(read.type.getDefinedValues().size(), 1U);
    EXPECT_EQ(read.type.getDefinedValues()[0].getDataTypeName(), "IfcAreaMeasure");
    EXPECT_EQ(read.type.getDefinedValues()[0].getValues(), "3;4");
    EXPECT_EQ(read.errors.getRecords(), Records());
}

TEST(TypePropertyTableValue, EmptyExpressionLeavesTheOneBefore) {
    EXPECT_EQ(Read("<t><Expression>a</Expression><Expression/></t>").type.getExpression(), "a");
}

struct TypeRow {
    const char* content;
    const char* typeName;
};

TEST(TypePropertyTableValue, ColumnTypeIsThatOfTheFirstElementWhateverItsName) {
    const TypeRow rows[] = {
        {"<DefiningValue/>", ""},
        {"<DefiningValue><DataType/></DefiningValue>", ""},
        {"<DefiningValue><UnitType type='U'/><DataType type='D'/></DefiningValue>", "U"},
        {"<DefiningValue><Values/><DataType type='D'/></DefiningValue>", ""},
        {"<DefiningValue><DataType type='A'/></DefiningValue><DefiningValue><DataType "
         "type='B'/></DefiningValue>",
         "B"},
        {"<DefiningValue><DataType type='A'/></DefiningValue><DefiningValue/>", "A"},
    };
    for (const TypeRow& row : rows) {
        SCOPED_TRACE(row.content);
        EXPECT_EQ(Read("<t>" + std::string(row.content) + "</t>").type.getDefiningTypeName(), row.typeName);
    }
}

TEST(TypePropertyTableValue, SeveralValuesOfAColumnAreKeptInOrder) {
    const Read read("<t><DefinedValue><Values>1</Values></DefinedValue><DefinedValue><Values>2</Values>"
                    "</DefinedValue></t>");
    ASSERT_EQ(read.type.getDefinedValues().size(), 2U);
    EXPECT_EQ(read.type.getDefinedValues()[0].getValues(), "1");
    EXPECT_EQ(read.type.getDefinedValues()[1].getValues(), "2");
}

TEST(TypePropertyTableValue, UnknownChildrenAreRecordedAlsoInsideColumns) {
    const Read read("<t>\n<DataType type='x'/><DefiningValue>\n<Odd/></DefiningValue></t>");
    EXPECT_EQ(read.errors.getRecords(),
              (Records{error("DataType", "Unknown xml node", 2), error("Odd", "Unknown xml node", 3)}));
}

TEST(TypePropertyTableValue, CheckLooksAtEveryValueOfBothColumns) {
    const auto schema = schemaFromText("TYPE Known = REAL;\nEND_TYPE;\n");
    const auto missing = nameReport("TypePropertyReferenceValue::checkForErrors", 68);
    EXPECT_EQ(checkReportsOf(Read(Table).type, *schema), Reports(2, missing));
    EXPECT_EQ(checkReportsOf(
                  Read("<t><DefiningValue><DataType type='Known'/></DefiningValue><DefinedValue/></t>").type,
                  *schema),
              Reports());
    EXPECT_EQ(checkReportsOf(Read("<t/>").type, *schema), Reports());
}

TEST(TypePropertyTableValue, ColumnTypesAloneAreWritten) {
    EXPECT_EQ(sTypeExport(Read(Table).type),
              "<PropertyType><TypePropertyTableValue><DefiningValue><DataType "
              "type=\"IfcTimeMeasure\"/></DefiningValue>"
              "<DefinedValue><DataType type=\"IfcAreaMeasure\"/></DefinedValue></TypePropertyTableValue>"
              "</PropertyType>");
}

TEST(TypePropertyTableValue, ColumnWithoutTypeIsNotWritten) {
    EXPECT_EQ(sTypeExport(Read("<t><Expression>a</Expression><DefiningValue/></t>").type),
              "<PropertyType><TypePropertyTableValue/></PropertyType>");
}

} // namespace

} // namespace kiv::test
