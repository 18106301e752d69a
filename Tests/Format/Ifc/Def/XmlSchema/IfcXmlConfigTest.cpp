#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"

#include "Format/Ifc/Def/XmlSchema/ConfigTools.h"
#include "Support/FailingStream.h"
#include "Support/XmlFromText.h"

#include <type_traits>
#include <utility>

namespace kiv::test {

namespace {

using ifc::def::xmlschema::Attribute;
using ifc::def::xmlschema::AttributeInverse;
using ifc::def::xmlschema::Config;

static_assert(!std::is_copy_constructible_v<Config> && !std::is_move_constructible_v<Config>,
              "attributes point at its records");

/// One element of each kind.
constexpr const char* AllElements =
    "<cnf:entity select='IfcRoot'><cnf:attribute select='Name' exp-attribute='double-tag'/>"
    "<cnf:inverse select='OwnerOf' exp-attribute='attribute-tag'/></cnf:entity>"
    "<cnf:type select='IfcLabel'/>"
    "<cnf:uosElement name='uos'/>"
    "<cnf:schema targetNamespace='urn:t'><cnf:namespace prefix='p'/></cnf:schema>"
    "<cnf:option concrete-attribute='attribute-tag'/>";

void vExpectAllElements(const ReadConfig& read) {
    ASSERT_EQ(read.config.getAttributes().size(), 1U);
    EXPECT_EQ(read.pRecord("IfcRoot", "Name"), &read.config.getAttributes().front());
    ASSERT_EQ(read.config.getAttributesInverse().size(), 1U);
    EXPECT_EQ(read.pRecordInverse("IfcRoot", "OwnerOf"), &read.config.getAttributesInverse().front());
    EXPECT_EQ(read.config.getUosElement().getName(), "uos");
    EXPECT_EQ(read.config.getSchema().getTargetNamespace(), "urn:t");
    EXPECT_EQ(read.config.getNamespace().getPrefix(), "p");
    EXPECT_EQ(numberOf(read.config.getOption().getConcreteAttribute()), 1);
}

TEST(ConfigTest, ReadsEveryKindOfElement) {
    const ReadConfig read(AllElements);
    vExpectAllElements(read);
    EXPECT_EQ(read.reports.getRecords(), Reports());
}

TEST(ConfigTest, WithAnotherIdIsReportedOnceAndReadAllTheSame) {
    for (const auto* rootAttributes :
         {"id='IFC4'", "id='test'", "id='TEST '", "id=''", "", "ID='TEST'", "cnf:id='TEST'"}) {
        SCOPED_TRACE(rootAttributes);
        const ReadConfig read(AllElements, rootAttributes);
        vExpectAllElements(read);
        EXPECT_EQ(read.reports.getRecords(),
                  Reports{report("Illegal ifc version", "Config::Config", "Config")});
    }
}

TEST(ConfigTest, WithoutIdFitsASchemaWithoutName) {
    const auto schema = schemaPsetFromText("", "");
    ASSERT_EQ(schema->getName(), "");
    const AssertCollector reports;
    std::istringstream stream(sConfigText("", ""));
    const Config config(*schema, stream);
    EXPECT_EQ(reports.getRecords(), Reports());
}

TEST(ConfigTest, OfTheRootNothingButItsIdIsLookedAt) {
    const auto schema = schemaPsetFromText("");
    const AssertCollector reports;
    std::istringstream stream(
        "<any id='TEST' version='9' x='y'><cnf:uosElement xmlns:cnf='c' name='uos'/></any>");
    const Config config(*schema, stream);
    EXPECT_EQ(reports.getMessages(), Texts{"Unknown attribute"}) << "the xmlns of the child";
    EXPECT_EQ(config.getUosElement().getName(), "uos");
}

TEST(ConfigTest, AnUnknownElementIsReportedAndReadingGoesOn) {
    const auto unknown = report("Unknown nodename", "Config::{ctor}::<lambda_1>::operator ()", "Config");
    for (const auto* tag :
         {"cnf:other", "cnf:Entity", "cnf:ENTITY", "entity", "other:entity", "cnf:attribute", "cnf:inverse",
          "cnf:namespace", "cnf:configuration", "cnf:uoselement"}) {
        SCOPED_TRACE(tag);
        const ReadConfig read("<" + std::string(tag) + " select='IfcRoot'><x/></" + tag + ">" + AllElements);
        vExpectAllElements(read);
        EXPECT_EQ(read.reports.getRecords(), Reports{unknown});
    }
}

TEST(ConfigTest, WhatIsNoElementIsIgnoredAmongTheChildrenOfTheRoot) {
    const ReadConfig read("text<!-- comment --><?target data?><![CDATA[<cnf:other/>]]>" +
                          std::string(AllElements) + "<!-- <cnf:other/> -->\n");
    vExpectAllElements(read);
    EXPECT_EQ(read.reports.getRecords(), Reports());
}

TEST(ConfigTest, WhatIsUnknownIsReportedInDocumentOrder) {
    const ReadConfig read(
        "<cnf:type x='1'/><x/><cnf:entity select='IfcRoot'><cnf:attribute/></cnf:entity><cnf:option y='1'/>",
        "");
    EXPECT_EQ(read.reports.getMessages(),
              (Texts{"Illegal ifc version", "Unknown attribute", "Unknown nodename",
                     "XML Attribute not found", "Unknown attribute"}));
}

TEST(ConfigTest, NeedsNobodyWhoListens) {
    const auto schema = schemaPsetFromText(ConfigSchema);
    std::istringstream stream(
        sConfigText("<x/><cnf:entity y='1' select='IfcRoot'><cnf:attribute/><cnf:attribute select='Nowhere'/>"
                    "<z/><cnf:attribute select='Name' exp-attribute='no'/></cnf:entity>",
                    "id='OTHER'"));
    const Config config(*schema, stream);
    ASSERT_EQ(config.getAttributes().size(), 1U);
    EXPECT_EQ(numberOf(config.getAttributes().front().getRepresentation()), 2);
}

TEST(ConfigTest, WithoutChildrenIsEmpty) {
    const ReadConfig read("");
    EXPECT_EQ(read.config.getAttributes().size(), 0U);
    EXPECT_EQ(read.config.getAttributesInverse().size(), 0U);
    EXPECT_EQ(read.reports.getRecords(), Reports());
}

TEST(ConfigTest, StreamThatPassesOnWhatItsBufferThrowsIsReportedAsWell) {
    const auto text = sConfigText(AllElements);
    FailingStream stream(text, text.size());
    stream.exceptions(std::ios::badbit);
    const ReadConfig read{std::move(stream)};
    EXPECT_EQ(read.reports.getRecords(), Reports{report("Illegal xml document", "Config::Config", "Config")});
    EXPECT_EQ(read.config.getAttributes().size(), 0U);
}

TEST(ConfigTest, WhatIsNotWellFormedIsReportedAndLeavesTheConfigurationEmptyAndTheSchemaAsItWas) {
    const auto whole = sConfigText(AllElements);
    for (const auto& text :
         {std::string(), std::string("no xml"), whole + "<second/>", whole + "text",
          whole.substr(0, whole.size() - 3), sConfigText(std::string(AllElements) + "</x>")}) {
        SCOPED_TRACE(text);
        const ReadConfig read{std::istringstream(text)};
        EXPECT_EQ(read.reports.getRecords(),
                  Reports{report("Illegal xml document", "Config::Config", "Config")});
        EXPECT_EQ(read.config.getAttributes().size(), 0U);
        EXPECT_EQ(read.config.getAttributesInverse().size(), 0U);
        EXPECT_EQ(read.config.getUosElement().getName(), "");
        EXPECT_EQ(read.config.getSchema().getTargetNamespace(), "");
        EXPECT_EQ(read.pRecord("IfcRoot", "Name"), nullptr);
        EXPECT_EQ(read.pRecordInverse("IfcRoot", "OwnerOf"), nullptr);
    }
}

TEST(ConfigTest, StoresCopiesOfRecordsInOrderWhichStayWhereTheyAre) {
    ReadConfig read("");
    const XmlFromText document("<any exp-attribute='double-tag'/>");
    const Attribute attribute{document.root()};
    const AttributeInverse inverse{document.root()};
    const auto* const first = read.config.pAttribute(attribute);
    const auto* const firstInverse = read.config.pAttributeInverse(inverse);
    EXPECT_NE(first, &attribute);
    EXPECT_NE(firstInverse, &inverse);
    for (int count = 0; count < 1000; ++count) {
        read.config.pAttribute(attribute);
        read.config.pAttributeInverse(inverse);
    }
    EXPECT_EQ(&read.config.getAttributes().front(), first);
    EXPECT_EQ(&read.config.getAttributesInverse().front(), firstInverse);
    EXPECT_EQ(numberOf(first->getRepresentation()), 3);
    EXPECT_EQ(numberOf(firstInverse->getRepresentation()), 3);
    EXPECT_EQ(read.config.getAttributes().size(), 1001U);
    EXPECT_EQ(read.config.getAttributesInverse().size(), 1001U);
}

TEST(ConfigTest, ALinkMadeLaterLeavesTheOtherAttributesAlone) {
    ReadConfig older(AllElements);
    const XmlFromText document("<any/>");
    const auto& root = entityOf(*older.schema, "IfcRoot");
    const auto& name = *root.pAttributeFromName(ifc::def::schema::AttributeName("Name"), false);
    const auto& owner = *root.pAttributeFromName(ifc::def::schema::AttributeName("Owner"), false);
    const auto& ownerOf = *root.pAttributeInverseFromName("OwnerOf", false);

    std::istringstream stream(sConfigText(AllElements));
    const Config newer(*older.schema, stream);
    older.config.vLink(owner, *older.config.pAttribute(Attribute(document.root())));
    EXPECT_EQ(owner.pXmlAttribute(), &older.config.getAttributes().back());
    EXPECT_EQ(name.pXmlAttribute(), &newer.getAttributes().front());
    EXPECT_EQ(ownerOf.pXmlAttribute(), &newer.getAttributesInverse().front());
}

/// The attributes that `AllElements` links, and another one.
struct LinkedAttributes {
    explicit LinkedAttributes(const ifc::def::SchemaPset& schema) :
        root(entityOf(schema, "IfcRoot")),
        name(*root.pAttributeFromName(ifc::def::schema::AttributeName("Name"), false)),
        owner(*root.pAttributeFromName(ifc::def::schema::AttributeName("Owner"), false)),
        ownerOf(*root.pAttributeInverseFromName("OwnerOf", false)) {}

    const ifc::def::schema::Entity& root;
    const ifc::def::schema::Attribute& name;
    const ifc::def::schema::Attribute& owner;
    const ifc::def::schema::AttributeInverse& ownerOf;
};

TEST(ConfigTest, AtItsEndUnlinksTheAttributesThatItLinked) {
    const auto schema = schemaPsetFromText(ConfigSchema);
    const LinkedAttributes attributes(*schema);
    {
        std::istringstream stream(sConfigText(AllElements));
        Config config(*schema, stream);
        const XmlFromText document("<any/>");
        config.vLink(attributes.owner, *config.pAttribute(Attribute(document.root())));
        ASSERT_NE(attributes.name.pXmlAttribute(), nullptr);
        ASSERT_NE(attributes.ownerOf.pXmlAttribute(), nullptr);
        ASSERT_NE(attributes.owner.pXmlAttribute(), nullptr);
    }
    EXPECT_EQ(attributes.name.pXmlAttribute(), nullptr);
    EXPECT_EQ(attributes.ownerOf.pXmlAttribute(), nullptr);
    EXPECT_EQ(attributes.owner.pXmlAttribute(), nullptr) << "linked after the reading";
}

TEST(ConfigTest, AtItsEndLeavesAloneWhatAnotherHasLinkedSince) {
    const auto schema = schemaPsetFromText(ConfigSchema);
    const LinkedAttributes attributes(*schema);
    std::istringstream olderStream(sConfigText(AllElements));
    auto older = std::make_unique<Config>(*schema, olderStream);
    std::istringstream newerStream(sConfigText(AllElements));
    const Config newer(*schema, newerStream);
    older.reset();
    EXPECT_EQ(attributes.name.pXmlAttribute(), &newer.getAttributes().front());
    EXPECT_EQ(attributes.ownerOf.pXmlAttribute(), &newer.getAttributesInverse().front());
}

TEST(ConfigTest, AtItsEndDoesNotLinkAnewWhatItTookFromAnEarlierOne) {
    ReadConfig older(AllElements);
    const LinkedAttributes attributes(*older.schema);
    {
        std::istringstream stream(sConfigText(AllElements));
        const Config newer(*older.schema, stream);
    }
    EXPECT_EQ(attributes.name.pXmlAttribute(), nullptr);
    EXPECT_EQ(older.config.getAttributes().size(), 1U) << "its records are still there";
}

} // namespace

} // namespace kiv::test
