#include "Format/Ifc/Def/Qto/IfcQuantityDef.h"

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

using ifc::def::qto::QuantitySetDef;
using ifc::def::xml::SetDef;
using ifc::def::xml::XmlSetErrors;
using Texts = std::vector<std::string>;

/// A set with the records of its reading.
struct ReadSet {
    explicit ReadSet(std::string_view xml) : set(XmlFromText(xml).root(), errors) {}

    XmlSetErrors errors;
    QuantitySetDef set;
};

Texts quantityNamesOf(const QuantitySetDef& set) {
    Texts names;
    for (const auto& quantity : set.getQuantities())
        names.push_back(quantity.getName());
    return names;
}

std::string sExport(const QuantitySetDef& set) {
    XmlTarget target("E");
    set.exportDef(target.root(), nullptr);
    return target.sText();
}

static_assert(!std::is_move_constructible_v<QuantitySetDef>, "its quantities refer to it");

TEST(QuantitySetDef, ReadsWhatAllSetsHave) {
    const ReadSet read("<QtoSetDef templatetype='QTO_TYPEDRIVENOVERRIDE'><Name>Qto_A</Name>"
                       "<IfcVersion version='IFC4'/><ApplicableClasses><ClassName>IfcWall</ClassName>"
                       "</ApplicableClasses></QtoSetDef>");
    EXPECT_EQ(read.set.getName(), "Qto_A");
    EXPECT_EQ(read.set.getTemplateType(), ifc::def::xml::TemplateType::QTO_TYPEDRIVENOVERRIDE);
    EXPECT_EQ(read.set.getIfcVersion(), "IFC4");
    EXPECT_EQ(read.set.getApplicableClasses().size(), 1U);
    EXPECT_EQ(read.errors.getRecords(), Records());
}

TEST(QuantitySetDef, QuantitiesOfAllListsKeepTheirOrderAndKnowTheirSet) {
    const ReadSet read("<s><QtoDefs><QtoDef><Name>B</Name></QtoDef><QtoDef><Name>A</Name></QtoDef></QtoDefs>"
                       "<QtoDefs><QtoDef><Name>B</Name></QtoDef></QtoDefs></s>");
    EXPECT_EQ(quantityNamesOf(read.set), (Texts{"B", "A", "B"}));
    for (const auto& quantity : read.set.getQuantities())
        EXPECT_EQ(quantity.pOwner(), &read.set);
}

TEST(QuantitySetDef, OtherElementsAmongTheQuantitiesAreSkippedInSilence) {
    const ReadSet read("<s><QtoDefs><PropertyDef/><qtoDef/><QtoDef><Name>A</Name></QtoDef></QtoDefs></s>");
    EXPECT_EQ(quantityNamesOf(read.set), Texts{"A"});
    EXPECT_EQ(read.errors.getRecords(), Records());
}

TEST(QuantitySetDef, ReadsDefinitionAliasesUnderItsOwnTags) {
    const ReadSet read("<s><QtoDefinitionAliases><QtoDefinitionAlias lang='de'>d</QtoDefinitionAlias>"
                       "<PsetDefinitionAlias lang='fr'>f</PsetDefinitionAlias></QtoDefinitionAliases></s>");
    ASSERT_EQ(read.set.getDefinitionAliases().getEntries().size(), 1U);
    EXPECT_EQ(read.set.getDefinitionAliases().getEntries()[0].text, "d");
    EXPECT_EQ(read.errors.getRecords(), Records());
}

TEST(QuantitySetDef, UnknownChildrenAreRecordedAndTheRestIsRead) {
    const ReadSet read("<s>\n<PropertyDefs/>\n<PsetDefinitionAliases/>\n<IfcVersion/><Name>A</Name></s>");
    EXPECT_EQ(read.set.getName(), "A");
    EXPECT_EQ(read.errors.getRecords(), (Records{error("PropertyDefs", "Unknown xml node", 2),
                                                 error("PsetDefinitionAliases", "Unknown xml node", 3),
                                                 error("IfcVersion", "Unknown xml node", 4)}));
}

TEST(QuantitySetDef, ApplicabilityIsNeitherReportedNorWritten) {
    const ReadSet read("<s><Applicability>all</Applicability></s>");
    EXPECT_EQ(read.errors.getRecords(), Records());
    EXPECT_EQ(sExport(read.set),
              "<E><QtoSetDef><Name/><Definition/><ApplicableClasses/><ApplicableTypeValue/>"
              "<QtoDefs/></QtoSetDef></E>");
}

TEST(QuantitySetDef, WithoutQuantitiesIsWrittenWithAnEmptyListOfThem) {
    const ReadSet read("<s><Name>A</Name></s>");
    EXPECT_EQ(sExport(read.set), "<E><QtoSetDef><Name>A</Name><Definition/><ApplicableClasses/>"
                                 "<ApplicableTypeValue/><QtoDefs/></QtoSetDef></E>");
}

TEST(QuantitySetDef, IsWrittenIntoAnElementOfItsOwnWhichIsReturned) {
    const ReadSet read("<s/>");
    XmlTarget target("E");
    const auto written = read.set.exportDef(target.root(), nullptr);
    EXPECT_EQ(written.getNodeName(), "QtoSetDef");
    EXPECT_EQ(target.sText(), "<E>" + sXmlText(written) + "</E>");
}

TEST(QuantitySetDef, IsWrittenInFixedOrder) {
    const ReadSet read(
        "<s><QtoDefinitionAliases><QtoDefinitionAlias lang='de_DE'>d</QtoDefinitionAlias>"
        "</QtoDefinitionAliases><QtoDefs><QtoDef><Name>A</Name><QtoType>Q_TIME</QtoType></QtoDef>"
        "<QtoDef><Name>B</Name></QtoDef></QtoDefs><Name>N</Name></s>");
    EXPECT_EQ(
        sExport(read.set),
        "<E><QtoSetDef><Name>N</Name><Definition/><ApplicableClasses/><ApplicableTypeValue/><QtoDefs>"
        "<QtoDef><Name>A</Name><Definition/><QtoType>Q_TIME</QtoType></QtoDef>"
        "<QtoDef><Name>B</Name><Definition/><QtoType/></QtoDef></QtoDefs><QtoDefinitionAliases>"
        "<QtoDefinitionAlias lang=\"de-DE\">d</QtoDefinitionAlias></QtoDefinitionAliases></QtoSetDef></E>");
}

TEST(QuantitySetDef, IsNamedAfterItsElement) {
    const ReadSet read("<s/>");
    const SetDef& set = read.set;
    EXPECT_STREQ(set.pXmlElementName(), "QtoSetDef");
}

std::string sSetFor(const std::string& className) {
    return "<s><Name>Qto_A</Name><ApplicableClasses><ClassName>" + className +
           "</ClassName></ApplicableClasses><QtoDefs><QtoDef><QtoType>Q_AREA</QtoType></QtoDef>"
           "<QtoDef><QtoType>Q_ODD</QtoType></QtoDef></QtoDefs></s>";
}

TEST(QuantitySetDef, CheckIsThatOfAllSetsAndNeverLooksAtQuantities) {
    const auto schema = schemaFromText("ENTITY IfcWall;\nEND_ENTITY;\n"
                                       "ENTITY IfcToString;\n\tPredefinedType : STRING;\nEND_ENTITY;\n");
    const struct {
        const char* className;
        bool passes;
        std::size_t records;
    } rows[] = {{"IfcWall", true, 0}, {"IfcWal", true, 1}, {"IfcToString/A", false, 1}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.className);
        ReadSet read(sSetFor(row.className));
        const AssertCollector reports;
        EXPECT_EQ(read.set.checkForErrors(*schema, read.errors), row.passes);
        EXPECT_EQ(read.errors.getRecords().size(), row.records);
        EXPECT_EQ(read.errors.getSetName(), row.records == 0 ? "" : "Qto_A");
        EXPECT_EQ(reports.getMessages(), Texts());
    }
}

} // namespace

} // namespace kiv::test
