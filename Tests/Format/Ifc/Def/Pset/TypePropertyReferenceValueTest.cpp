#include "Format/Ifc/Def/Pset/PropertyTypeReading.h"
#include "Support/ErrorRecords.h"

namespace kiv::test {

namespace {

using ifc::def::pset::TypePropertyReferenceValue;
using ifc::def::xml::ExtraExportInfo;
using Read = ReadType<TypePropertyReferenceValue>;

struct NameRow {
    const char* xml;
    const char* dataTypeName;
};

TEST(TypePropertyReferenceValue, DataTypeIsNamedByReftypeOrType) {
    const NameRow rows[] = {
        {"<t/>", ""},
        {"<t reftype='IfcPerson'/>", "IfcPerson"},
        {"<t reftype='IfcPerson'><DataType/></t>", "IfcPerson"},
        {"<t reftype='IfcPerson'><DataType type='IfcActor'/></t>", "IfcActor"},
        {"<t reftype='IfcPerson'><DataType type=''/></t>", ""},
        {"<t><DataType type='A'/><DataType type='B'/><DataType/></t>", "B"},
        {"<t type='A'><DataType reftype='B'/></t>", ""},
    };
    for (const NameRow& row : rows) {
        SCOPED_TRACE(row.xml);
        const Read read(row.xml);
        EXPECT_EQ(read.type.getDataTypeName(), row.dataTypeName);
        EXPECT_EQ(read.errors.getRecords(), Records());
        EXPECT_EQ(read.reports, Reports());
    }
}

TEST(TypePropertyReferenceValue, UnknownChildrenAreRecorded) {
    const Read read("<t>\n<UnitType type='x'/>\n<datatype/><DataType type='A'/></t>");
    EXPECT_EQ(read.type.getDataTypeName(), "A");
    EXPECT_EQ(read.errors.getRecords(),
              (Records{error("UnitType", "Unknown xml node", 2), error("datatype", "Unknown xml node", 3)}));
}

TEST(TypePropertyReferenceValue, CheckReportsAMissingNameAndPasses) {
    const auto schema = schemaFromText("ENTITY IfcPerson;\nEND_ENTITY;\n");
    EXPECT_EQ(checkReportsOf(Read("<t reftype='IfcPerson'/>").type, *schema), Reports());
    EXPECT_EQ(checkReportsOf(Read("<t reftype='ifcperson'/>").type, *schema), Reports());
    EXPECT_EQ(checkReportsOf(Read("<t/>").type, *schema), Reports());
    EXPECT_EQ(checkReportsOf(Read("<t reftype='IfcPersona'/>").type, *schema),
              Reports{nameReport("TypePropertyReferenceValue::checkForErrors", 68)});
}

TEST(TypePropertyReferenceValue, DataTypeIsWrittenBesideTheElementOfTheKind) {
    EXPECT_EQ(sTypeExport(Read("<t reftype='IfcPerson'/>").type),
              "<PropertyType><TypePropertyReferenceValue/><DataType type=\"IfcPerson\"/></PropertyType>");
}

TEST(TypePropertyReferenceValue, EmptyDataTypeIsWrittenToo) {
    EXPECT_EQ(sTypeExport(Read("<t/>").type),
              "<PropertyType><TypePropertyReferenceValue/><DataType type=\"\"/></PropertyType>");
}

struct BaseTypeRow {
    const char* dataTypeName;
    /// Null when none is written.
    const char* baseType;
};

TEST(TypePropertyReferenceValue, BaseTypeIsWrittenForDefinedTypesOfTheSchema) {
    const BaseTypeRow rows[] = {
        {"IfcLabel", "STRING(255)"}, {"ifclabel", "STRING(255)"},
        {"IfcName", "STRING(255)"},  {"IfcKind", "ENUMERATION"},
        {"IfcPerson", nullptr},      {"IfcUnresolved", nullptr},
        {"IfcMissing", nullptr},     {"", nullptr},
    };
    const auto schema = schemaFromText("TYPE IfcLabel = STRING(255);\nEND_TYPE;\n"
                                       "TYPE IfcName = IfcLabel;\nEND_TYPE;\n"
                                       "TYPE IfcKind = ENUMERATION OF\n\t(A);\nEND_TYPE;\n"
                                       "TYPE IfcUnresolved = IfcNothing;\nEND_TYPE;\n"
                                       "ENTITY IfcPerson;\nEND_ENTITY;\n");
    ExtraExportInfo info;
    info.schemaForBaseTypes = schema.get();
    for (const BaseTypeRow& row : rows) {
        SCOPED_TRACE(row.dataTypeName);
        XmlTarget target("r");
        Read("<t reftype='" + std::string(row.dataTypeName) + "'/>").type.vExportCommon(target.root(), &info);
        std::string expected = "<r><DataType type=\"" + std::string(row.dataTypeName) + "\"";
        if (row.baseType)
            expected += " basetype=\"" + std::string(row.baseType) + "\"";
        EXPECT_EQ(target.sText(), expected + "/></r>");
    }
}

TEST(TypePropertyReferenceValue, BaseTypeIsWrittenWithTheDataTypeBesideTheElementOfTheKind) {
    const auto schema = schemaFromText("TYPE IfcLabel = STRING(255);\nEND_TYPE;\n");
    ExtraExportInfo info;
    info.schemaForBaseTypes = schema.get();
    EXPECT_EQ(sTypeExport(Read("<t reftype='IfcLabel'/>").type, &info),
              "<PropertyType><TypePropertyReferenceValue/>"
              "<DataType type=\"IfcLabel\" basetype=\"STRING(255)\"/></PropertyType>");
}

TEST(TypePropertyReferenceValue, BaseTypeIsNotWrittenWithoutASchema) {
    const ExtraExportInfo info;
    XmlTarget target("r");
    Read("<t reftype='IfcLabel'/>").type.vExportCommon(target.root(), &info);
    EXPECT_EQ(target.sText(), "<r><DataType type=\"IfcLabel\"/></r>");
}

} // namespace

} // namespace kiv::test
