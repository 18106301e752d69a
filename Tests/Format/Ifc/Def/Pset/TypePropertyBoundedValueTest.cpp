#include "Format/Ifc/Def/Pset/PropertyTypeReading.h"
#include "Support/ErrorRecords.h"

namespace kiv::test {

namespace {

using ifc::def::pset::TypePropertyBoundedValue;
using ifc::def::xml::ExtraExportInfo;
using Read = ReadType<TypePropertyBoundedValue>;

TEST(TypePropertyBoundedValue, ReadsDataTypeUnitTypeAndBounds) {
    const Read read(
        "<t><DataType type='D'/><UnitType type='U'/>"
        "<ValueRangeDef><UpperBoundValue value='9'/><LowerBoundValue value='1'/></ValueRangeDef></t>");
    EXPECT_EQ(read.type.getDataTypeName(), "D");
    EXPECT_EQ(read.type.getUnitType(), "U");
    EXPECT_EQ(read.type.getLowerBoundValue(), "1");
    EXPECT_EQ(read.type.getUpperBoundValue(), "9");
    EXPECT_EQ(read.errors.getRecords(), Records());
}

TEST(TypePropertyBoundedValue, BoundWithoutItsAttributeIsLeft) {
    const Read read("<t><ValueRangeDef><LowerBoundValue value='1'/><LowerBoundValue/><UpperBoundValue/>"
                    "</ValueRangeDef></t>");
    EXPECT_EQ(read.type.getLowerBoundValue(), "1");
    EXPECT_EQ(read.type.getUpperBoundValue(), "");
    EXPECT_EQ(read.errors.getRecords(), Records());
}

TEST(TypePropertyBoundedValue, UnknownChildrenAreRecordedByTheirPlace) {
    const Read read("<t>\n<ValueRangeDef>\n<MinValue/>\n<lowerBoundValue value='1'/></ValueRangeDef>\n"
                    "<LowerBoundValue value='2'/></t>");
    EXPECT_EQ(read.type.getLowerBoundValue(), "");
    EXPECT_EQ(read.errors.getRecords(),
              (Records{error("MinValue", "Unknown xml node in ValueRangeDef", 3),
                       error("lowerBoundValue", "Unknown xml node in ValueRangeDef", 4),
                       error("LowerBoundValue", "Unknown xml node", 5)}));
}

TEST(TypePropertyBoundedValue, CheckLooksBoundsUpAsNames) {
    const auto schema = schemaFromText("TYPE Known = REAL;\nEND_TYPE;\n");
    const auto reports =
        checkReportsOf(Read("<t><DataType type='A'/><ValueRangeDef><LowerBoundValue value='B'/>"
                            "<UpperBoundValue value='C'/></ValueRangeDef></t>")
                           .type,
                       *schema);
    EXPECT_EQ(reports, (Reports{nameReport("TypePropertyReferenceValue::checkForErrors", 68),
                                nameReport("TypePropertyBoundedValue::checkForErrors", 393),
                                nameReport("TypePropertyBoundedValue::checkForErrors", 399)}));
}

TEST(TypePropertyBoundedValue, CheckIsSilentAboutEmptyAndKnownBounds) {
    const auto schema = schemaFromText("TYPE Known = REAL;\nEND_TYPE;\n");
    EXPECT_EQ(checkReportsOf(Read("<t/>").type, *schema), Reports());
    EXPECT_EQ(checkReportsOf(Read("<t><DataType type='Known'/><ValueRangeDef><LowerBoundValue value='Known'/>"
                                  "<UpperBoundValue value='KNOWN'/></ValueRangeDef></t>")
                                 .type,
                             *schema),
              Reports());
}

struct BoundRow {
    const char* dataType;
    const char* lower;
    const char* upper;
    /// What follows the data type in the element of the kind.
    const char* written;
};

TEST(TypePropertyBoundedValue, BoundThatIsMissingIsWrittenAsTheDataType) {
    const BoundRow rows[] = {
        {"", "", "", ""},
        {"", "1", "", "<ValueRangeDef><LowerBoundValue value=\"1\"/></ValueRangeDef>"},
        {"", "", "9", "<ValueRangeDef><UpperBoundValue value=\"9\"/></ValueRangeDef>"},
        {"", "1", "9",
         "<ValueRangeDef><LowerBoundValue value=\"1\"/><UpperBoundValue value=\"9\"/></ValueRangeDef>"},
        {"D", "", "",
         "<ValueRangeDef><LowerBoundValue value=\"D\"/><UpperBoundValue value=\"D\"/></ValueRangeDef>"},
        {"D", "1", "",
         "<ValueRangeDef><LowerBoundValue value=\"1\"/><UpperBoundValue value=\"D\"/></ValueRangeDef>"},
    };
    for (const BoundRow& row : rows) {
        const std::string dataType = row.dataType;
        SCOPED_TRACE(dataType + "|" + row.lower + "|" + row.upper);
        const Read read("<t><DataType type='" + dataType + "'/><ValueRangeDef><LowerBoundValue value='" +
                        row.lower + "'/><UpperBoundValue value='" + row.upper + "'/></ValueRangeDef></t>");
        EXPECT_EQ(sTypeExport(read.type), "<PropertyType><TypePropertyBoundedValue><DataType type=\"" +
                                              dataType + "\"/>" + row.written +
                                              "</TypePropertyBoundedValue></PropertyType>");
    }
}

TEST(TypePropertyBoundedValue, LengthWithAnUpperBoundOnlyIsWrittenWithTheMeasureAsLowerBound) {
    const Read read("<t><DataType type='IfcLengthMeasure'/><ValueRangeDef><UpperBoundValue value='9'/>"
                    "</ValueRangeDef></t>");
    EXPECT_EQ(sTypeExport(read.type),
              "<PropertyType><TypePropertyBoundedValue><DataType type=\"IfcLengthMeasure\"/><ValueRangeDef>"
              "<LowerBoundValue value=\"IfcLengthMeasure\"/><UpperBoundValue value=\"9\"/></ValueRangeDef>"
              "</TypePropertyBoundedValue></PropertyType>");
}

TEST(TypePropertyBoundedValue, BaseTypeIsWritten) {
    const auto schema = schemaFromText("TYPE IfcLengthMeasure = REAL;\nEND_TYPE;\n");
    ExtraExportInfo info;
    info.schemaForBaseTypes = schema.get();
    const Read read("<t><DataType type='IfcLengthMeasure'/></t>");
    EXPECT_EQ(
        sTypeExport(read.type, &info),
        "<PropertyType><TypePropertyBoundedValue><DataType type=\"IfcLengthMeasure\" basetype=\"REAL\"/>"
        "<ValueRangeDef><LowerBoundValue value=\"IfcLengthMeasure\"/>"
        "<UpperBoundValue value=\"IfcLengthMeasure\"/></ValueRangeDef></TypePropertyBoundedValue>"
        "</PropertyType>");
}

} // namespace

} // namespace kiv::test
