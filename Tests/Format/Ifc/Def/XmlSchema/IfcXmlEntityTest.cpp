#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlEntity.h"

#include "Format/Ifc/Def/XmlSchema/ConfigTools.h"
#include "Support/XmlFromText.h"

namespace kiv::test {

namespace {

/// Both kinds of children; each would be reported if it were read for an entity that lacks it.
constexpr const char* Children = "<cnf:attribute select='Name'/><cnf:inverse select='OwnerOf'/>";

std::string sEntity(const std::string& attributes, const std::string& children = Children) {
    return "<cnf:entity " + attributes + ">" + children + "</cnf:entity>";
}

TEST(ConfigEntityTest, IsSelectedInAnyCase) {
    for (const auto* select : {"IfcRoot", "ifcroot", "IFCROOT"}) {
        SCOPED_TRACE(select);
        const ReadConfig read(sEntity("select='" + std::string(select) + "'"));
        EXPECT_NE(read.pRecord("IfcRoot", "Name"), nullptr);
        EXPECT_NE(read.pRecordInverse("IfcRoot", "OwnerOf"), nullptr);
        EXPECT_EQ(read.reports.getRecords(), Reports());
    }
}

TEST(ConfigEntityTest, WhatIsNoEntityIsSkippedWithItsChildrenAndNoReport) {
    for (const auto* attributes :
         {"select='IfcNowhere'", "select='IfcLabel'", "select=''", "select=' IfcRoot'", ""}) {
        SCOPED_TRACE(attributes);
        const ReadConfig read(sEntity(attributes, "<cnf:attribute/><cnf:attribute select='Nowhere' x='1'/>"
                                                  "<cnf:inverse exp-attribute='no'/>" +
                                                      std::string(Children)));
        EXPECT_EQ(read.config.getAttributes().size(), 0U);
        EXPECT_EQ(read.config.getAttributesInverse().size(), 0U);
        EXPECT_EQ(read.reports.getRecords(), Reports());
    }
}

TEST(ConfigEntityTest, WhatIsUnknownInAnUnknownEntityIsReported) {
    const ReadConfig read(sEntity("select='IfcNowhere' x='1'", "<cnf:other/>"));
    EXPECT_EQ(read.reports.getRecords(),
              (Reports{report("Unknown attribute", "Entity::vRead::<lambda_1>::operator ()", "Entity"),
                       report("Unknown element", "Entity::vRead::<lambda_2>::operator ()", "Entity")}));
}

TEST(ConfigEntityTest, ChildrenAreReadInOrderAroundUnknownOnes) {
    const ReadConfig read(sEntity("select='IfcWall'",
                                  "<cnf:attribute select='Tag' exp-attribute='double-tag'/><x/>"
                                  "<cnf:attribute select='Name' exp-attribute='attribute-tag'/>"));
    ASSERT_EQ(read.config.getAttributes().size(), 2U);
    EXPECT_EQ(numberOf(read.config.getAttributes()[0].getRepresentation()), 3);
    EXPECT_EQ(numberOf(read.config.getAttributes()[1].getRepresentation()), 1);
    EXPECT_EQ(read.reports.getMessages(), Texts{"Unknown element"});
}

TEST(ConfigEntityTest, IsReadFromAnElementAlone) {
    ReadConfig read("");
    const XmlFromText document("<any select='IfcRoot'><cnf:attribute xmlns:cnf='c' select='Name'/></any>");
    ifc::def::xmlschema::Entity::vRead(read.config, *read.schema, document.root());
    EXPECT_NE(read.pRecord("IfcRoot", "Name"), nullptr);
}

} // namespace

} // namespace kiv::test
