#include "kiv/Format/Ifc/Def/PropertyNameSearcher.h"

#include "Format/Ifc/Def/DefDoubles.h"
#include "Format/Ifc/Def/StoreTools.h"
#include "Support/AssertCollector.h"

#include <optional>

namespace kiv::test {

namespace {

using ifc::findPropertyTypeName;
using kiv::assert::AssertRecord;
using TypeName = std::optional<std::string>;
using Reports = std::vector<AssertRecord>;

constexpr std::string_view Entities = "TYPE IfcLabel = STRING(255);\n"
                                      "END_TYPE;\n"
                                      "TYPE IfcKindEnum = ENUMERATION OF (A, B);\n"
                                      "END_TYPE;\n"
                                      "TYPE IfcChoice = SELECT (IfcRoot, IfcLabel);\n"
                                      "END_TYPE;\n"
                                      "FUNCTION IfcFunction(x : REAL) : REAL;\n"
                                      "END_FUNCTION;\n"
                                      "ENTITY IfcRoot;\n"
                                      "  Name : OPTIONAL IfcLabel;\n"
                                      "  Shadowed : IfcLabel;\n"
                                      "  Owner : IfcRoot;\n"
                                      " INVERSE\n"
                                      "  OwnerOf : SET [0:?] OF IfcRoot FOR Owner;\n"
                                      "END_ENTITY;\n"
                                      "ENTITY IfcElement;\n"
                                      " SUBTYPE OF (IfcRoot);\n"
                                      "  Kind : ifckindenum;\n"
                                      "  Any : IfcChoice;\n"
                                      "  Text : STRING;\n"
                                      "  Code : OPTIONAL STRING(22) FIXED;\n"
                                      "  Count : INTEGER;\n"
                                      "  Names : LIST [1:?] OF UNIQUE IfcLabel;\n"
                                      "  Grid : OPTIONAL ARRAY [1:2] OF SET [0:?] OF REAL;\n"
                                      "  Lost : IfcNowhere;\n"
                                      "  Dotted.Name : BOOLEAN;\n"
                                      "END_ENTITY;\n"
                                      "ENTITY IfcWall;\n"
                                      " SUBTYPE OF (IfcElement);\n"
                                      "  Shadowed : REAL;\n"
                                      "END_ENTITY;\n";

std::string sType(const std::string& kind, const std::string& children = {}) {
    return "<" + kind + ">" + children + "</" + kind + ">";
}

std::string sDataType(const std::string& name) {
    return "<DataType type='" + name + "'/>";
}

/// The properties, one of each kind of type.
std::string sProperties() {
    const auto column = "<DefiningValue>" + sDataType("IfcLabel") + "</DefiningValue>";
    return sProperty("Single", sType("TypePropertySingleValue", sDataType("IfcBoolean"))) +
           sProperty("NoDataType", sType("TypePropertySingleValue")) +
           sProperty("Foreign", sType("TypePropertySingleValue", sDataType("NotInSchema"))) +
           sProperty("Bounded", sType("TypePropertyBoundedValue", sDataType("IfcPositiveLengthMeasure"))) +
           sProperty("NoBoundedType", sType("TypePropertyBoundedValue")) +
           sProperty("Enumerated", sType("TypePropertyEnumeratedValue",
                                         "<EnumList name='PEnum_Status'><EnumItem>A</EnumItem></EnumList>")) +
           sProperty("Table", sType("TypePropertyTableValue", column)) +
           sProperty("List",
                     sType("TypePropertyListValue", "<ListValue>" + sDataType("IfcLabel") + "</ListValue>")) +
           sProperty("Complex",
                     sType("TypeComplexProperty",
                           sProperty("Part", sType("TypePropertySingleValue", sDataType("IfcReal"))))) +
           sProperty("Reference", "<TypePropertyReferenceValue reftype='IfcPerson'/>") + sProperty("NoType") +
           sProperty("Simple", sType("TypeSimpleProperty")) +
           sProperty("Twice", sType("TypePropertySingleValue", sDataType("IfcInteger"))) +
           sProperty("Twice", sType("TypePropertySingleValue", sDataType("IfcText"))) +
           sProperty("With.Dot", sType("TypePropertySingleValue", sDataType("IfcDate"))) +
           sProperty("", sType("TypePropertySingleValue", sDataType("IfcTime")));
}

class PropertyNameSearcherTest : public StoreTest {
protected:
    PropertyNameSearcherTest() { vAdd({"TEST", true}, {sPropertySet("Pset_Wall", {}, sProperties())}); }

    void vAdd(ifc::def::SchemaPropertySetDefinitionsContext context, const Texts& sets) {
        registry().addPropertySets(std::move(context), collectionOf(*schema, sets));
    }

    TypeName find(const std::string& name) const { return findPropertyTypeName(name, *schema); }

    std::unique_ptr<ifc::def::SchemaPset> schema = schemaPsetFromText(Entities);
};

AssertRecord notImplemented(int line) {
    return {0, "Not implemented", "kiv::ifc::findPropertyTypeName",
            "Source/Format/Ifc/Def/PropertyNameSearcher", line};
}

TEST_F(PropertyNameSearcherTest, ANameNeedsADot) {
    const AssertCollector reports;
    for (const auto* name : {"", "Pset_Wall", "IfcWall", "Pset_Wall:Single"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(find(name), std::nullopt);
    }
    EXPECT_EQ(reports.getRecords(), Reports());
}

/// A name without a dot is neither the set nor the member, also where both have it.
TEST_F(PropertyNameSearcherTest, ANameWithoutADotIsNotTheMemberOfItsOwnSet) {
    vAdd({"host", false},
         {sPropertySet("Single", {},
                       sProperty("Single", sType("TypePropertySingleValue", sDataType("IfcReal"))))});
    ASSERT_EQ(find("Single.Single"), "IfcReal");
    EXPECT_EQ(find("Single"), std::nullopt);
}

struct PropertyRow {
    const char* name;
    TypeName type;
};

TEST_F(PropertyNameSearcherTest, APropertyIsAnsweredByTheKindOfItsType) {
    const PropertyRow rows[] = {
        {"Pset_Wall.Single", "IfcBoolean"},   {"Pset_Wall.NoDataType", ""},
        {"Pset_Wall.Foreign", "NotInSchema"}, {"Pset_Wall.Bounded", "IfcPositiveLengthMeasure"},
        {"Pset_Wall.NoBoundedType", ""},      {"Pset_Wall.Enumerated", "IfcLabel"},
        {"Pset_Wall.Table", std::nullopt},    {"Pset_Wall.List", std::nullopt},
        {"Pset_Wall.Complex", std::nullopt},
    };
    const AssertCollector reports;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(find(row.name), row.type);
    }
    EXPECT_EQ(reports.getRecords(), Reports());
}

TEST_F(PropertyNameSearcherTest, AnEnumeratedPropertyIsALabelWhateverItsEnumerationIsNamed) {
    const auto enumerated = [](const std::string& list) {
        return sType("TypePropertyEnumeratedValue", list);
    };
    vAdd({"host", false}, {sPropertySet("Pset_E", {},
                                        sProperty("Named", enumerated("<EnumList name='IfcBoolean'/>")) +
                                            sProperty("Unnamed", enumerated("<EnumList/>")) +
                                            sProperty("Empty", enumerated("")))});
    for (const auto* name : {"Pset_E.Named", "Pset_E.Unnamed", "Pset_E.Empty"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(find(name), "IfcLabel");
    }
}

TEST_F(PropertyNameSearcherTest, ATableHasNoValueAndNoReport) {
    const AssertCollector reports;
    EXPECT_EQ(find("Pset_Wall.Table"), std::nullopt);
    EXPECT_EQ(reports.getRecords(), Reports());
}

TEST_F(PropertyNameSearcherTest, APropertyOfAnyOtherKindIsReportedAndHasNoValue) {
    for (const auto* name : {"Pset_Wall.Reference", "Pset_Wall.NoType", "Pset_Wall.Simple"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(find(name), std::nullopt) << "nobody listens";
        const AssertCollector reports;
        EXPECT_EQ(find(name), std::nullopt);
        EXPECT_EQ(reports.getRecords(), Reports{notImplemented(44)});
    }
}

TEST_F(PropertyNameSearcherTest, TheSetIsFoundInAnyCaseThePropertyInItsOwn) {
    const PropertyRow rows[] = {
        {"pset_wall.Single", "IfcBoolean"},  {"PSET_WALL.Single", "IfcBoolean"},
        {"Pset_Wall.single", std::nullopt},  {"Pset_Wall.SINGLE", std::nullopt},
        {"Pset_Wall.Single ", std::nullopt}, {"Pset_Wall. Single", std::nullopt},
        {" Pset_Wall.Single", std::nullopt}, {"Pset_Wall.Singl", std::nullopt},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(find(row.name), row.type);
    }
}

TEST_F(PropertyNameSearcherTest, TheNameIsSplitAtItsFirstDot) {
    EXPECT_EQ(find("Pset_Wall.With.Dot"), "IfcDate");
    EXPECT_EQ(find("Pset_Wall.Complex.Part"), std::nullopt);
    EXPECT_EQ(find("Pset_Wall."), "IfcTime") << "the property without name";
    EXPECT_EQ(find("."), std::nullopt);
    EXPECT_EQ(find(".Single"), std::nullopt);
}

TEST_F(PropertyNameSearcherTest, OfTwoPropertiesOfOneNameTheFirstCounts) {
    EXPECT_EQ(find("Pset_Wall.Twice"), "IfcInteger");
}

TEST_F(PropertyNameSearcherTest, AQuantityIsAnsweredByItsMeasure) {
    vAdd({"host", false}, {sQuantitySet("Qto_Wall", {},
                                        sQuantity("Area", "Q_AREA") + sQuantity("Length", "Q_LENGTH") +
                                            sQuantity("Count", "Q_COUNT") + sQuantity("Time", "Q_TIME") +
                                            sQuantity("Volume", "Q_VOLUME") +
                                            sQuantity("Weight", "Q_WEIGHT") + sQuantity("Area", "Q_TIME"))});
    const PropertyRow rows[] = {
        {"Qto_Wall.Area", "IfcAreaMeasure"},     {"Qto_Wall.Length", "IfcLengthMeasure"},
        {"Qto_Wall.Count", "IfcCountMeasure"},   {"Qto_Wall.Time", "IfcTimeMeasure"},
        {"Qto_Wall.Volume", "IfcVolumeMeasure"}, {"Qto_Wall.Weight", "IfcMassMeasure"},
        {"qto_wall.Volume", "IfcVolumeMeasure"}, {"Qto_Wall.volume", std::nullopt},
        {"Qto_Wall.Mass", std::nullopt},
    };
    const AssertCollector reports;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(find(row.name), row.type);
    }
    EXPECT_EQ(reports.getRecords(), Reports());
}

TEST_F(PropertyNameSearcherTest, AQuantityWithoutTypeIsReportedAndHasNoValue) {
    vAdd({"host", false}, {sQuantitySet("Qto_Wall", {}, sQuantity("None") + sQuantity("Odd", "Q_ODD"))});
    for (const auto* name : {"Qto_Wall.None", "Qto_Wall.Odd"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(find(name), std::nullopt) << "nobody listens";
        const AssertCollector reports;
        EXPECT_EQ(find(name), std::nullopt);
        EXPECT_EQ(reports.getRecords(), Reports{notImplemented(64)});
    }
}

TEST_F(PropertyNameSearcherTest, ASetOfAnotherKindHasNoValue) {
    ifc::def::SchemaPropertySetDefinitions sets;
    ifc::def::xml::XmlSetErrors errors;
    sets.xmlSetAdd(*schema, std::make_unique<PlainSet>("IfcWall"), errors);
    registry().addPropertySets({"host", false}, std::move(sets));
    const AssertCollector reports;
    EXPECT_EQ(find("IfcWall.Name"), std::nullopt) << "the set hides the entity";
    EXPECT_EQ(reports.getRecords(), Reports());
}

TEST_F(PropertyNameSearcherTest, TheSetOfAHostHidesTheStandardOneWithAllItsProperties) {
    vAdd({"host", false},
         {sPropertySet("PSET_WALL", {},
                       sProperty("Single", sType("TypePropertySingleValue", sDataType("IfcLogical"))))});
    EXPECT_EQ(find("Pset_Wall.Single"), "IfcLogical");
    EXPECT_EQ(find("Pset_Wall.Bounded"), std::nullopt);
}

TEST_F(PropertyNameSearcherTest, ASetWithTheNameOfAnEntityHidesIt) {
    EXPECT_EQ(find("IfcWall.Name"), "IfcLabel");
    vAdd({"host", false}, {sPropertySet("ifcwall")});
    EXPECT_EQ(find("IfcWall.Name"), std::nullopt);
}

TEST_F(PropertyNameSearcherTest, AStandardSetOfAForeignSchemaIsNotSeen) {
    vAdd({"FOREIGN", true},
         {sPropertySet("Pset_F", {},
                       sProperty("Single", sType("TypePropertySingleValue", sDataType("IfcReal"))))});
    EXPECT_EQ(find("Pset_F.Single"), std::nullopt);
}

TEST_F(PropertyNameSearcherTest, AnAttributeIsAnsweredByTheFirstOfItsTypesAsTheSchemaWritesIt) {
    const PropertyRow rows[] = {
        {"IfcRoot.Name", "IfcLabel"},
        {"IfcRoot.Owner", "IfcRoot"},
        {"IfcElement.Kind", "IfcKindEnum"}, // written "ifckindenum" where it is used
        {"IfcElement.Any", "IfcChoice"},
        {"IfcElement.Text", "STRING"},
        {"IfcElement.Code", "STRING(22)"},
        {"IfcElement.Count", "INTEGER"},
        {"IfcElement.Names", "LIST"},
        {"IfcElement.Grid", "ARRAY"},
        {"IfcElement.Dotted.Name", "BOOLEAN"},
        {"IfcElement.Lost", std::nullopt}, // its type is nothing that the schema knows
    };
    const AssertCollector reports;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(find(row.name), row.type);
    }
    EXPECT_EQ(reports.getRecords(), Reports());
}

TEST_F(PropertyNameSearcherTest, AnAttributeIsSearchedInTheEntityAndThenUpwards) {
    const PropertyRow rows[] = {
        {"IfcWall.Name", "IfcLabel"},        {"IfcWall.Kind", "IfcKindEnum"}, {"IfcWall.Shadowed", "REAL"},
        {"IfcElement.Shadowed", "IfcLabel"}, {"IfcRoot.Kind", std::nullopt},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(find(row.name), row.type);
    }
}

TEST_F(PropertyNameSearcherTest, TheEntityIsFoundInAnyCaseTheAttributeInItsOwn) {
    const PropertyRow rows[] = {
        {"ifcwall.Name", "IfcLabel"},   {"IFCWALL.Name", "IfcLabel"},    {"IfcWall.name", std::nullopt},
        {"IfcWall.NAME", std::nullopt}, {"IfcWall.Name ", std::nullopt}, {"IfcWall.Nam", std::nullopt},
        {"IfcWall.", std::nullopt},     {"IfcWal.Name", std::nullopt},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(find(row.name), row.type);
    }
}

TEST_F(PropertyNameSearcherTest, WhatIsNoExplicitAttributeOfAnEntityHasNoValue) {
    const AssertCollector reports;
    for (const auto* name :
         {"IfcRoot.OwnerOf", "IfcLabel.Name", "IfcFunction.x", "IfcNowhere.Name", "Pset_No.Name"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(find(name), std::nullopt);
    }
    EXPECT_EQ(reports.getRecords(), Reports());
}

} // namespace

} // namespace kiv::test
