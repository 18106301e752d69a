#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"

#include "Format/Ifc/Def/IfcDefXmlNodes.h"
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
using ifc::def::xml::Def;
using ifc::def::xml::ElementChildren;
using ifc::def::xml::ExtraExportInfo;
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

std::string sExport(const QuantitySetDef& set, ExtraExportInfo* info = nullptr) {
    XmlTarget target("E");
    set.exportDef(target.root(), info);
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

TEST(QuantitySetDef, HookIsCalledForEachQuantity) {
    const ReadSet read(
        "<s><QtoDefs><QtoDef><Name>A</Name></QtoDef><QtoDef><Name>B</Name></QtoDef></QtoDefs></s>");
    Texts seen;
    ExtraExportInfo info;
    info.hook = [&](const Def& def, kiv::xml::Element& element) {
        seen.push_back(def.getName() + sXmlText(element));
        element.ElementNodeAppend("Extra");
    };
    EXPECT_EQ(sExport(read.set, &info),
              "<E><QtoSetDef><Name/><Definition/><ApplicableClasses/><ApplicableTypeValue/><QtoDefs>"
              "<QtoDef><Extra/><Name>A</Name><Definition/><QtoType/></QtoDef>"
              "<QtoDef><Extra/><Name>B</Name><Definition/><QtoType/></QtoDef></QtoDefs></QtoSetDef></E>");
    EXPECT_EQ(seen, (Texts{"A<QtoDef/>", "B<QtoDef/>"}));
}

/// The "ifdguid" of each quantity of a written set; empty where there is none.
Texts writtenGuidsOf(const kiv::xml::const_Element& set) {
    Texts guids;
    for (const auto& child : ElementChildren(set)) {
        if (!child.boNodeNameIs("QtoDefs"))
            continue;
        for (const auto& quantity : ElementChildren(child))
            ifc::def::xml::boAttributeTake(quantity, "ifdguid", guids.emplace_back());
    }
    return guids;
}

TEST(QuantitySetDef, GuidsAreGeneratedForTheQuantitiesThatHaveNone) {
    const ReadSet read(
        "<s><QtoDefs><QtoDef/><QtoDef ifdguid='e098e980d1bc11e1800000215ad4efdf'/><QtoDef/></QtoDefs></s>");
    ExtraExportInfo info;
    info.generateGuids = true;
    XmlTarget target("E");
    const kiv::xml::const_Element written = read.set.exportDef(target.root(), &info);
    const auto guids = writtenGuidsOf(written);
    ASSERT_EQ(guids.size(), 3U);
    EXPECT_EQ(guids[1], "e098e980d1bc11e1800000215ad4efdf");
    EXPECT_NE(guids[0], guids[2]);
    for (const auto& text : guids) {
        kiv::Guid guid;
        EXPECT_TRUE(guid.boSet(text)) << text;
        EXPECT_FALSE(guid.isNull());
    }
    EXPECT_FALSE(written.AttributeNodeGet("ifdguid"));
    EXPECT_TRUE(read.set.getQuantities()[0].getIfdGuid().isNull());
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
