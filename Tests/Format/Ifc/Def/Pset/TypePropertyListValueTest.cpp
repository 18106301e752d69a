#include "Format/Ifc/Def/Pset/PropertyTypeReading.h"
#include "Support/ErrorRecords.h"

namespace kiv::test {

namespace {

using ifc::def::pset::TypePropertyListValue;
using ifc::def::xml::ExtraExportInfo;
using Read = ReadType<TypePropertyListValue>;

TEST(TypePropertyListValue, ReadsItemTypeAndValues) {
    const Read read(
        "<t><ListValue><DataType type='A'/><Values>1</Values></ListValue>"
        "<ListValue><DataType type='B'/></ListValue><ListValue><Values>2</Values></ListValue></t>");
    EXPECT_EQ(read.type.getListItemTypeName(), "B");
    ASSERT_EQ(read.type.getListValues().size(), 3U);
    EXPECT_EQ(read.type.getListValues()[0].getDataTypeName(), "A");
    EXPECT_EQ(read.type.getListValues()[0].getValues(), "1");
    EXPECT_EQ(read.type.getListValues()[1].getDataTypeName(), "B");
    EXPECT_EQ(read.type.getListValues()[2].getValues(), "2");
    EXPECT_EQ(read.errors.getRecords(), Records());
}

TEST(TypePropertyListValue, UnknownChildrenAreRecorded) {
    const Read read("<t>\n<DataType type='x'/>\n<ListValue><Odd/></ListValue></t>");
    EXPECT_EQ(read.errors.getRecords(),
              (Records{error("DataType", "Unknown xml node", 2), error("Odd", "Unknown xml node", 3)}));
}

TEST(TypePropertyListValue, CheckLooksAtEveryValue) {
    const auto schema = schemaFromText("TYPE Known = REAL;\nEND_TYPE;\n");
    const auto missing = nameReport("TypePropertyReferenceValue::checkForErrors", 68);
    EXPECT_EQ(checkReportsOf(Read("<t><ListValue><DataType type='A'/></ListValue>"
                                  "<ListValue><DataType type='Known'/></ListValue>"
                                  "<ListValue><DataType type='B'/></ListValue></t>")
                                 .type,
                             *schema),
              Reports(2, missing));
}

TEST(TypePropertyListValue, CheckOfAnEmptyListPasses) {
    const auto schema = schemaFromText("");
    EXPECT_EQ(checkReportsOf(Read("<t/>").type, *schema), Reports());
}

TEST(TypePropertyListValue, OneTypedValueIsWrittenAsTwo) {
    EXPECT_EQ(sTypeExport(Read("<t><ListValue><DataType type='A'/><Values>1</Values></ListValue></t>").type),
              "<PropertyType><TypePropertyListValue><ListValue><DataType type=\"A\"/></ListValue>"
              "<ListValue><DataType type=\"A\"/></ListValue></TypePropertyListValue></PropertyType>");
}

TEST(TypePropertyListValue, UntypedValueIsWrittenWithAnEmptyDataType) {
    EXPECT_EQ(sTypeExport(Read("<t><ListValue/></t>").type),
              "<PropertyType><TypePropertyListValue><ListValue><DataType type=\"\"/></ListValue>"
              "</TypePropertyListValue></PropertyType>");
}

TEST(TypePropertyListValue, TypeThatIsNotFirstIsOfTheValueOnlyAndIsFirstWhenWritten) {
    const Read read("<t><ListValue><Odd/><DataType type='A'/></ListValue></t>");
    EXPECT_EQ(read.type.getListItemTypeName(), "");
    EXPECT_EQ(sTypeExport(read.type),
              "<PropertyType><TypePropertyListValue><ListValue><DataType type=\"A\"/></ListValue>"
              "</TypePropertyListValue></PropertyType>");
}

TEST(TypePropertyListValue, EmptyListIsWrittenEmpty) {
    EXPECT_EQ(sTypeExport(Read("<t/>").type), "<PropertyType><TypePropertyListValue/></PropertyType>");
}

TEST(TypePropertyListValue, BaseTypeIsWrittenForTheValuesOnly) {
    const auto schema = schemaFromText("TYPE A = REAL;\nEND_TYPE;\n");
    ExtraExportInfo info;
    info.schemaForBaseTypes = schema.get();
    EXPECT_EQ(
        sTypeExport(Read("<t><ListValue><DataType type='A'/></ListValue></t>").type, &info),
        "<PropertyType><TypePropertyListValue><ListValue><DataType type=\"A\" basetype=\"REAL\"/></ListValue>"
        "<ListValue><DataType type=\"A\"/></ListValue></TypePropertyListValue></PropertyType>");
}

} // namespace

} // namespace kiv::test
