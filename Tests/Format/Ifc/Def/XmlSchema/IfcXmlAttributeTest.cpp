#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlAttribute.h"

#include "Format/Ifc/Def/XmlSchema/ConfigTools.h"
#include "Support/Allocations.h"
#include "Support/XmlFromText.h"

#include <algorithm>
#include <cstddef>
#include <deque>

namespace kiv::test {

namespace {

using ifc::def::xmlschema::Attribute;
using ifc::def::xmlschema::AttributeInverse;
using ifc::def::xmlschema::Config;
using ifc::def::xmlschema::ExpAttribute;

std::string sEntity(const std::string& children, const std::string& name = "IfcRoot") {
    return "<cnf:entity select='" + name + "'>" + children + "</cnf:entity>";
}

std::string sAttribute(const std::string& attributes) {
    return "<cnf:attribute " + attributes + "/>";
}

std::string sInverse(const std::string& attributes) {
    return "<cnf:inverse " + attributes + "/>";
}

TEST(ConfigAttributeTest, WithoutSettingsHasTheirDefaultsAndNoReport) {
    const ReadConfig read(sEntity(sAttribute("select='Name'")));
    ASSERT_EQ(read.config.getAttributes().size(), 1U);
    const auto& record = read.config.getAttributes().front();
    EXPECT_EQ(numberOf(record.getRepresentation()), 0);
    EXPECT_FALSE(record.isTagless());
    EXPECT_FALSE(record.isKeep());
    EXPECT_EQ(read.reports.getRecords(), Reports());
}

TEST(ConfigAttributeTest, ReadsItsRepresentation) {
    const struct {
        const char* text;
        int number;
    } rows[] = {{"attribute-tag", 1}, {"attribute-content", 2}, {"double-tag", 3}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const auto setting = " exp-attribute='" + std::string(row.text) + "'";
        const ReadConfig read(
            sEntity(sAttribute("select='Name'" + setting) + sInverse("select='OwnerOf'" + setting)));
        EXPECT_EQ(numberOf(read.pRecord("IfcRoot", "Name")->getRepresentation()), row.number);
        EXPECT_EQ(numberOf(read.pRecordInverse("IfcRoot", "OwnerOf")->getRepresentation()), row.number);
        EXPECT_EQ(read.reports.getRecords(), Reports());
    }
}

TEST(ConfigAttributeTest, ARepresentationInAnotherCaseIsReportedAndMeansContent) {
    const ReadConfig read(sEntity(sAttribute("select='Name' exp-attribute='DOUBLE-TAG'") +
                                  sInverse("select='OwnerOf' exp-attribute='Attribute-Tag'")));
    EXPECT_EQ(read.pRecord("IfcRoot", "Name")->getRepresentation(), ExpAttribute::AttributeContent);
    EXPECT_EQ(read.pRecordInverse("IfcRoot", "OwnerOf")->getRepresentation(), ExpAttribute::AttributeContent);
    const auto illegal = report("Illegal string", "expAttributeFromString", "Common");
    EXPECT_EQ(read.reports.getRecords(), (Reports{illegal, illegal}));
}

TEST(ConfigAttributeTest, TruthValuesAreThoseOfXmlAndElseFalse) {
    const struct {
        const char* text;
        bool value;
    } rows[] = {{"true", true}, {"1", true},     {" true ", true}, {"false", false}, {"0", false},
                {"", false},    {"TRUE", false}, {"True", false},  {"yes", false},   {"2", false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const auto value = "='" + std::string(row.text) + "'";
        const ReadConfig read(
            sEntity(sAttribute("select='Name' tagless" + value) + sAttribute("select='Owner' keep" + value)));
        EXPECT_EQ(read.pRecord("IfcRoot", "Name")->isTagless(), row.value);
        EXPECT_FALSE(read.pRecord("IfcRoot", "Name")->isKeep());
        EXPECT_EQ(read.pRecord("IfcRoot", "Owner")->isKeep(), row.value);
        EXPECT_FALSE(read.pRecord("IfcRoot", "Owner")->isTagless());
        EXPECT_EQ(read.reports.getRecords(), Reports());
    }
}

TEST(ConfigAttributeTest, IsMadeOfAnElementAlone) {
    const XmlFromText document("<any select='x' exp-attribute='double-tag' tagless='1' keep='1'/>");
    const AssertCollector reports;
    const Attribute attribute{document.root()};
    EXPECT_EQ(attribute.getRepresentation(), ExpAttribute::DoubleTag);
    EXPECT_TRUE(attribute.isTagless());
    EXPECT_TRUE(attribute.isKeep());
    EXPECT_EQ(reports.getRecords(), Reports());
    // An inverse knows neither "tagless" nor "keep".
    EXPECT_EQ(AttributeInverse(document.root()).getRepresentation(), ExpAttribute::DoubleTag);
    EXPECT_EQ(reports.getMessages(), (Texts{"Unknown attribute", "Unknown attribute"}));
}

TEST(ConfigAttributeTest, WithoutSelectIsReportedAndMakesNoRecord) {
    const ReadConfig read(
        sEntity(sAttribute("exp-attribute='no' x='1'") + sInverse("exp-attribute='no' x='1'")));
    EXPECT_EQ(read.config.getAttributes().size(), 0U);
    EXPECT_EQ(read.config.getAttributesInverse().size(), 0U);
    EXPECT_EQ(read.reports.getRecords(),
              (Reports{report("XML Attribute not found", "Attribute::vRead", "Attribute"),
                       report("XML Attribute not found", "AttributeInverse::vRead", "Attribute")}));
}

TEST(ConfigAttributeTest, AnUnknownOneIsReportedAndMakesNoRecord) {
    const auto notFound = report("Attribute not found", "Attribute::vRead", "Attribute");
    // An inverse attribute, a subtype's attribute and a name in another case are none of the entity's.
    for (const auto* select : {"Nowhere", "OwnerOf", "Tag", "name", "NAME", ""}) {
        SCOPED_TRACE(select);
        const ReadConfig read(
            sEntity(sAttribute("exp-attribute='no' x='1' select='" + std::string(select) + "'") +
                    sAttribute("select='Owner'")));
        EXPECT_EQ(read.reports.getRecords(), Reports{notFound});
        EXPECT_EQ(read.config.getAttributes().size(), 1U) << "the next one is read";
        EXPECT_NE(read.pRecord("IfcRoot", "Owner"), nullptr);
    }
}

TEST(ConfigAttributeTest, AnUnknownInverseIsReportedAndMakesNoRecord) {
    const auto notFound = report("Attribute not found", "AttributeInverse::vRead", "Attribute");
    for (const auto* select : {"Nowhere", "Name", "OwnerO", ""}) {
        SCOPED_TRACE(select);
        const ReadConfig read(
            sEntity(sInverse("exp-attribute='no' x='1' select='" + std::string(select) + "'")));
        EXPECT_EQ(read.reports.getRecords(), Reports{notFound});
        EXPECT_EQ(read.config.getAttributesInverse().size(), 0U);
    }
}

TEST(ConfigAttributeTest, AnInverseIsSelectedInAnyCase) {
    for (const auto* select : {"OwnerOf", "ownerof", "OWNEROF"}) {
        SCOPED_TRACE(select);
        const ReadConfig read(sEntity(sInverse("select='" + std::string(select) + "'")));
        ASSERT_EQ(read.config.getAttributesInverse().size(), 1U);
        EXPECT_EQ(read.pRecordInverse("IfcRoot", "OwnerOf"), &read.config.getAttributesInverse().front());
        EXPECT_EQ(read.reports.getRecords(), Reports());
    }
}

TEST(ConfigAttributeTest, IsLinkedToTheAttributeOfTheSupertypeThatDeclaresIt) {
    const ReadConfig read(sEntity(
        sAttribute("select='Name'") + sAttribute("select='Tag'") + sInverse("select='OwnerOf'"), "IfcWall"));
    ASSERT_EQ(read.config.getAttributes().size(), 2U);
    EXPECT_EQ(read.pRecord("IfcRoot", "Name"), &read.config.getAttributes()[0]);
    EXPECT_EQ(read.pRecord("IfcWall", "Tag"), &read.config.getAttributes()[1]);
    EXPECT_EQ(read.pRecord("IfcRoot", "Owner"), nullptr);
    ASSERT_EQ(read.config.getAttributesInverse().size(), 1U);
    EXPECT_EQ(read.pRecordInverse("IfcRoot", "OwnerOf"), &read.config.getAttributesInverse().front());
}

TEST(ConfigAttributeTest, OfSeveralRecordsTheLastIsLinkedAndAllAreKept) {
    const ReadConfig read(sEntity(sAttribute("select='Name' exp-attribute='double-tag'")) +
                          sEntity(sAttribute("select='Name' exp-attribute='attribute-tag'") +
                                      sInverse("select='OwnerOf' exp-attribute='double-tag'"),
                                  "IfcWall") +
                          sEntity(sInverse("select='OwnerOf'")));
    ASSERT_EQ(read.config.getAttributes().size(), 2U);
    EXPECT_EQ(read.config.getAttributes()[0].getRepresentation(), ExpAttribute::DoubleTag);
    EXPECT_EQ(read.pRecord("IfcRoot", "Name"), &read.config.getAttributes()[1]);
    ASSERT_EQ(read.config.getAttributesInverse().size(), 2U);
    EXPECT_EQ(read.pRecordInverse("IfcRoot", "OwnerOf"), &read.config.getAttributesInverse()[1]);
}

/// Where the record lies among those of a configuration; negative when there is none.
template <class Record>
std::ptrdiff_t indexOf(const Record* record, const std::deque<Record>& records) {
    const auto found = std::find_if(records.begin(), records.end(),
                                    [record](const Record& other) { return &other == record; });
    return found == records.end() ? -1 : found - records.begin();
}

TEST(ConfigAttributeTest, IsLinkedAmongHundredsOfOneEntity) {
    // More steps than are walked: some are answered by walks, others by the table.
    constexpr int Count = 500;
    std::string attributes;
    std::string inverses;
    std::string records;
    Reports expected;
    for (int number = 0; number != Count; ++number) {
        const auto name = std::to_string(number);
        attributes += "  A" + name + " : E;\n";
        inverses += "  I" + name + " : E FOR A0;\n";
        const auto fromBehind = std::to_string(Count - 1 - number);
        records += sAttribute("select='A" + fromBehind + "'") + sInverse("select='i" + fromBehind + "'") +
                   sAttribute("select='a" + name + "'") + sInverse("select='A" + name + "'");
        expected.push_back(report("Attribute not found", "Attribute::vRead", "Attribute"));
        expected.push_back(report("Attribute not found", "AttributeInverse::vRead", "Attribute"));
    }
    const auto schema = schemaPsetFromText("ENTITY E;\n" + attributes + " INVERSE\n" + inverses +
                                           "END_ENTITY;\nENTITY F\n SUBTYPE OF (E);\nEND_ENTITY;");
    const AssertCollector reports;
    std::istringstream stream(sConfigText(sEntity(records, "F")));
    const Config config(*schema, stream);
    EXPECT_EQ(reports.getRecords(), expected);
    const auto& entity = entityOf(*schema, "E");
    for (std::size_t number = 0; number != Count; ++number) {
        EXPECT_EQ(indexOf(entity.getAttributes()[number].pXmlAttribute(), config.getAttributes()),
                  static_cast<std::ptrdiff_t>(Count - 1 - number));
        EXPECT_EQ(
            indexOf(entity.getAttributesInverse()[number].pXmlAttribute(), config.getAttributesInverse()),
            static_cast<std::ptrdiff_t>(Count - 1 - number));
    }
}

TEST(ConfigAttributeTest, WhenMemoryRunsOutThereIsNeitherRecordNorLink) {
    ReadConfig read("");
    const auto& wall = entityOf(*read.schema, "IfcWall");
    const XmlFromText name("<any select='Name' exp-attribute='double-tag'/>");
    const XmlFromText ownerOf("<any select='OwnerOf' exp-attribute='attribute-tag'/>");
    // Some more records than one block holds, so that a new block is needed too.
    for (std::size_t records = 1; records < 200; ++records) {
        for (std::size_t count = 0;
             !boRunWith(count, [&] { Attribute::vRead(read.config, *read.schema, wall, name.root()); });
             ++count)
            ASSERT_EQ(read.config.getAttributes().size(), records - 1);
        ASSERT_EQ(read.config.getAttributes().size(), records);
        ASSERT_EQ(read.pRecord("IfcRoot", "Name"), &read.config.getAttributes().back());
        for (std::size_t count = 0; !boRunWith(
                 count, [&] { AttributeInverse::vRead(read.config, *read.schema, wall, ownerOf.root()); });
             ++count)
            ASSERT_EQ(read.config.getAttributesInverse().size(), records - 1);
        ASSERT_EQ(read.config.getAttributesInverse().size(), records);
        ASSERT_EQ(read.pRecordInverse("IfcRoot", "OwnerOf"), &read.config.getAttributesInverse().back());
    }
}

TEST(ConfigAttributeTest, IsReadIntoAConfigurationThatIsReadAlready) {
    ReadConfig read("");
    const auto& wall = entityOf(*read.schema, "IfcWall");
    const XmlFromText name("<any select='Name' exp-attribute='double-tag'/>");
    const XmlFromText ownerOf("<any select='OwnerOf' exp-attribute='attribute-tag'/>");
    Attribute::vRead(read.config, *read.schema, wall, name.root());
    AttributeInverse::vRead(read.config, *read.schema, wall, ownerOf.root());
    ASSERT_EQ(read.config.getAttributes().size(), 1U);
    EXPECT_EQ(read.pRecord("IfcRoot", "Name"), &read.config.getAttributes().front());
    ASSERT_EQ(read.config.getAttributesInverse().size(), 1U);
    EXPECT_EQ(read.pRecordInverse("IfcRoot", "OwnerOf"), &read.config.getAttributesInverse().front());
    EXPECT_EQ(read.reports.getRecords(), Reports());
}

} // namespace

} // namespace kiv::test
