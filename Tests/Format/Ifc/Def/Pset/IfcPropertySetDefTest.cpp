#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"

#include "Support/AssertCollector.h"
#include "Support/ErrorRecords.h"
#include "Support/SchemaFromText.h"
#include "Support/XmlFromText.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace kiv::test {

namespace {

using ifc::def::pset::PropertySetDef;
using ifc::def::xml::Def;
using ifc::def::xml::ExtraExportInfo;
using ifc::def::xml::SetDef;
using ifc::def::xml::XmlSetErrors;

/// A set with the records of its reading.
struct ReadSet {
    explicit ReadSet(std::string_view xml) : document(xml), set(document.root(), errors) {}

    XmlFromText document;
    XmlSetErrors errors;
    PropertySetDef set;
};

std::vector<std::string> propertyNamesOf(const PropertySetDef& set) {
    std::vector<std::string> names;
    for (const auto& property : set.getProperties())
        names.push_back(property.getName());
    return names;
}

std::string sExport(const PropertySetDef& set, ExtraExportInfo* info = nullptr) {
    XmlTarget target("Set");
    set.exportDef(target.root(), info);
    return target.sText();
}

using Texts = std::vector<std::string>;

static_assert(!std::is_move_constructible_v<PropertySetDef>, "its properties refer to it");

TEST(PropertySetDef, ReadsWhatAllSetsHave) {
    const ReadSet read(
        "\n<PropertySetDef templatetype='PSET_OCCURRENCEDRIVEN' "
        "ifdguid='e098e980d1bc11e1800000215ad4efdf'><Name>Pset_A</Name><Definition>D</Definition>"
        "<IfcVersion version='IFC4'/><ApplicableClasses><ClassName>IfcWall</ClassName>"
        "</ApplicableClasses><ApplicableTypeValue>IfcWall</ApplicableTypeValue></PropertySetDef>");
    EXPECT_EQ(read.set.getName(), "Pset_A");
    EXPECT_EQ(read.set.getDefinition(), "D");
    EXPECT_EQ(read.set.getIfdGuid().toString(false), "e098e980d1bc11e1800000215ad4efdf");
    EXPECT_EQ(read.set.getTemplateType(), ifc::def::xml::TemplateType::PSET_OCCURRENCEDRIVEN);
    EXPECT_EQ(read.set.getIfcVersion(), "IFC4");
    ASSERT_EQ(read.set.getApplicableClasses().size(), 1U);
    EXPECT_EQ(read.set.getApplicableClasses()[0].getClassName(), "IfcWall");
    EXPECT_EQ(read.set.getApplicableTypeValue(), "IfcWall");
    EXPECT_EQ(read.set.getLine(), 2U);
    EXPECT_EQ(read.errors.getRecords(), Records());
}

TEST(PropertySetDef, PropertiesKeepOrderAndRepetitionsAndKnowTheirSet) {
    const ReadSet read("<s><PropertyDefs><PropertyDef><Name>B</Name></PropertyDef>"
                       "<PropertyDef><Name>A</Name></PropertyDef><PropertyDef><Name>B</Name></PropertyDef>"
                       "</PropertyDefs></s>");
    EXPECT_EQ(propertyNamesOf(read.set), (Texts{"B", "A", "B"}));
    for (const auto& property : read.set.getProperties())
        EXPECT_EQ(property.pOwner(), &read.set);
}

TEST(PropertySetDef, SecondListOfPropertiesIsAdded) {
    const ReadSet read("<s><PropertyDefs><PropertyDef><Name>A</Name></PropertyDef></PropertyDefs>"
                       "<PropertyDefs><PropertyDef><Name>B</Name></PropertyDef></PropertyDefs></s>");
    EXPECT_EQ(propertyNamesOf(read.set), (Texts{"A", "B"}));
}

TEST(PropertySetDef, OtherElementsAmongThePropertiesAreSkippedInSilence) {
    const ReadSet read("<s><PropertyDefs><QtoDef/><propertyDef/><PropertyDef><Name>A</Name></PropertyDef>"
                       "</PropertyDefs></s>");
    EXPECT_EQ(propertyNamesOf(read.set), Texts{"A"});
    EXPECT_EQ(read.errors.getRecords(), Records());
}

TEST(PropertySetDef, ReadsDefinitionAliasesUnderItsOwnTags) {
    const ReadSet read("<s><PsetDefinitionAliases><PsetDefinitionAlias lang='de'>d</PsetDefinitionAlias>"
                       "<DefinitionAlias lang='fr'>f</DefinitionAlias></PsetDefinitionAliases></s>");
    ASSERT_EQ(read.set.getDefinitionAliases().getEntries().size(), 1U);
    EXPECT_EQ(read.set.getDefinitionAliases().getEntries()[0].text, "d");
    EXPECT_EQ(read.errors.getRecords(), Records());
}

TEST(PropertySetDef, UnknownChildrenAreRecordedAndTheRestIsRead) {
    const ReadSet read("<s>\n<Odd/>\n<DefinitionAliases/>\n<IfcVersion/>\n<Name>A</Name></s>");
    EXPECT_EQ(read.set.getName(), "A");
    EXPECT_EQ(read.errors.getRecords(),
              (Records{error("Odd", "Unknown xml node", 2), error("DefinitionAliases", "Unknown xml node", 3),
                       error("IfcVersion", "Unknown xml node", 4)}));
}

TEST(PropertySetDef, ApplicabilityIsNeitherReportedNorWritten) {
    const ReadSet read("<s><Applicability>all</Applicability></s>");
    EXPECT_EQ(read.errors.getRecords(), Records());
    EXPECT_EQ(sExport(read.set), "<Set><Name/><Definition/><ApplicableClasses/><ApplicableTypeValue/>"
                                 "<PropertyDefs/></Set>");
}

TEST(PropertySetDef, WithoutPropertiesIsWrittenWithAnEmptyListOfThem) {
    const ReadSet read("<s><Name>A</Name></s>");
    EXPECT_TRUE(read.set.getProperties().empty());
    EXPECT_EQ(sExport(read.set), "<Set><Name>A</Name><Definition/><ApplicableClasses/><ApplicableTypeValue/>"
                                 "<PropertyDefs/></Set>");
}

TEST(PropertySetDef, WithoutAliasesIsWrittenWithoutTheirElement) {
    const ReadSet read("<s><PsetDefinitionAliases/></s>");
    EXPECT_EQ(sExport(read.set).find("PsetDefinitionAliases"), std::string::npos);
}

TEST(PropertySetDef, IsWrittenInFixedOrder) {
    const ReadSet read("<s><PsetDefinitionAliases><PsetDefinitionAlias lang='de-DE'>d</PsetDefinitionAlias>"
                       "<PsetDefinitionAlias lang='fr'>f</PsetDefinitionAlias></PsetDefinitionAliases>"
                       "<PropertyDefs><PropertyDef><Name>P</Name><PropertyType><TypePropertySingleValue>"
                       "<DataType type='IfcLabel'/></TypePropertySingleValue></PropertyType></PropertyDef>"
                       "<PropertyDef><Name>Q</Name></PropertyDef></PropertyDefs><Name>N</Name></s>");
    EXPECT_EQ(sExport(read.set),
              "<Set><Name>N</Name><Definition/><ApplicableClasses/><ApplicableTypeValue/><PropertyDefs>"
              "<PropertyDef><Name>P</Name><Definition/><PropertyType><TypePropertySingleValue>"
              "<DataType type=\"IfcLabel\"/></TypePropertySingleValue></PropertyType></PropertyDef>"
              "<PropertyDef><Name>Q</Name><Definition/><PropertyType/></PropertyDef></PropertyDefs>"
              "<PsetDefinitionAliases><PsetDefinitionAlias lang=\"de-DE\">d</PsetDefinitionAlias>"
              "<PsetDefinitionAlias lang=\"fr\">f</PsetDefinitionAlias></PsetDefinitionAliases></Set>");
}

TEST(PropertySetDef, IsWrittenIntoTheElementItIsGiven) {
    const ReadSet read("<s/>");
    XmlTarget target("E");
    const auto written = read.set.exportDef(target.root(), nullptr);
    EXPECT_EQ(written, target.root());
    EXPECT_EQ(target.sText(),
              "<E><Name/><Definition/><ApplicableClasses/><ApplicableTypeValue/><PropertyDefs/></E>");
}

TEST(PropertySetDef, HookIsCalledForEachProperty) {
    const ReadSet read("<s><PropertyDefs><PropertyDef><Name>A</Name></PropertyDef>"
                       "<PropertyDef><Name>B</Name></PropertyDef></PropertyDefs></s>");
    Texts seen;
    ExtraExportInfo info;
    info.hook = [&](const Def& def, kiv::xml::Element& element) {
        seen.push_back(def.getName() + sXmlText(element));
    };
    sExport(read.set, &info);
    EXPECT_EQ(seen, (Texts{"A<PropertyDef/>", "B<PropertyDef/>"}));
}

TEST(PropertySetDef, BaseTypesAreWrittenOfEachProperty) {
    const auto schema =
        schemaFromText("TYPE IfcLabel = STRING;\nEND_TYPE;\nTYPE IfcReal = REAL;\nEND_TYPE;\n");
    const ReadSet read(
        "<s><PropertyDefs><PropertyDef><PropertyType><TypePropertySingleValue><DataType type='IfcLabel'/>"
        "</TypePropertySingleValue></PropertyType></PropertyDef><PropertyDef><PropertyType>"
        "<TypePropertyReferenceValue reftype='IfcReal'/></PropertyType></PropertyDef></PropertyDefs></s>");
    ExtraExportInfo info;
    info.schemaForBaseTypes = schema.get();
    EXPECT_EQ(
        sExport(read.set, &info),
        "<Set><Name/><Definition/><ApplicableClasses/><ApplicableTypeValue/><PropertyDefs>"
        "<PropertyDef><Name/><Definition/><PropertyType><TypePropertySingleValue>"
        "<DataType type=\"IfcLabel\" basetype=\"STRING\"/></TypePropertySingleValue></PropertyType>"
        "</PropertyDef><PropertyDef><Name/><Definition/><PropertyType><TypePropertyReferenceValue/>"
        "<DataType type=\"IfcReal\" basetype=\"REAL\"/></PropertyType></PropertyDef></PropertyDefs></Set>");
}

TEST(PropertySetDef, IsNamedAfterItsElement) {
    const ReadSet read("<s/>");
    const SetDef& set = read.set;
    EXPECT_STREQ(set.pXmlElementName(), "PropertySetDef");
}

constexpr std::string_view Schema = "ENTITY IfcPropertySingleValue;\nEND_ENTITY;\n"
                                    "ENTITY IfcToString;\n\tPredefinedType : STRING;\nEND_ENTITY;\n";

/// Two properties whose data types the schema lacks, in a set for that class.
std::string sSetFor(const std::string& className) {
    std::string properties;
    for (const char* type : {"IfcMissing", "IfcAbsent"})
        properties += std::string("<PropertyDef><PropertyType><TypePropertySingleValue><DataType type='") +
                      type + "'/></TypePropertySingleValue></PropertyType></PropertyDef>";
    return "<s><Name>Set</Name><ApplicableClasses><ClassName>" + className +
           "</ClassName></ApplicableClasses><PropertyDefs>" + properties + "</PropertyDefs></s>";
}

TEST(PropertySetDef, CheckLooksAtEveryPropertyAndPasses) {
    const auto schema = schemaFromText(Schema);
    ReadSet read(sSetFor("IfcPropertySingleValue"));
    AssertCollector reports;
    EXPECT_TRUE(read.set.checkForErrors(*schema, read.errors));
    EXPECT_EQ(reports.getMessages(), Texts(2, "Excpeted name to exist in schema"));
    EXPECT_EQ(read.errors.getRecords(), Records());
    EXPECT_EQ(read.errors.getSetName(), "");
}

TEST(PropertySetDef, CheckOfPropertiesGoesOnAfterRecordsThatDoNotFail) {
    const auto schema = schemaFromText(Schema);
    ReadSet read(sSetFor("IfcWal"));
    AssertCollector reports;
    EXPECT_TRUE(read.set.checkForErrors(*schema, read.errors));
    EXPECT_EQ(reports.getMessages().size(), 2U);
    EXPECT_EQ(read.errors.getRecords().size(), 1U);
    EXPECT_EQ(read.errors.getSetName(), "Set");
}

TEST(PropertySetDef, FailedCheckOfTheSetEndsTheCheckBeforeTheProperties) {
    const auto schema = schemaFromText(Schema);
    ReadSet read(sSetFor("IfcToString/A"));
    AssertCollector reports;
    EXPECT_FALSE(read.set.checkForErrors(*schema, read.errors));
    EXPECT_EQ(reports.getMessages(), Texts());
    EXPECT_EQ(read.errors.getSetName(), "Set");
}

TEST(PropertySetDef, PropertyWithRecordsLetsTheCheckPass) {
    const auto schema = schemaFromText(Schema);
    ReadSet read("<s><Name>Set</Name><PropertyDefs><PropertyDef><PropertyType><TypePropertySingleValue><Odd/>"
                 "</TypePropertySingleValue></PropertyType></PropertyDef></PropertyDefs></s>");
    EXPECT_EQ(read.errors.getRecords(), (Records{error("Odd", "Unknown xml node", 1)}));
    EXPECT_TRUE(read.set.checkForErrors(*schema, read.errors));
    EXPECT_EQ(read.errors.getSetName(), "Set");
}

} // namespace

} // namespace kiv::test
