#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlSchema.h"

#include "Format/Ifc/Def/XmlSchema/ConfigTools.h"

namespace kiv::test {

namespace {

TEST(ConfigSchemaTest, IsEmptyUntilItIsRead) {
    const ReadConfig read("");
    EXPECT_EQ(read.config.getSchema().getTargetNamespace(), "");
    EXPECT_EQ(read.config.getSchema().getNamespace().getPrefix(), "");
}

TEST(ConfigSchemaTest, ReadsTheTargetNamespaceAndItsNamespace) {
    const ReadConfig read(
        "<cnf:schema targetNamespace='urn:t' elementFormDefault='urn:e' attributeFormDefault='urn:a' "
        "embed-schema-items='true'><cnf:namespace prefix='p' alias='urn:n'/></cnf:schema>");
    EXPECT_EQ(read.config.getSchema().getTargetNamespace(), "urn:t");
    EXPECT_EQ(read.config.getSchema().getNamespace().getPrefix(), "p");
    EXPECT_EQ(read.config.getSchema().getNamespace().getAlias(), "urn:n");
    EXPECT_EQ(read.reports.getRecords(), Reports());
}

TEST(ConfigSchemaTest, OfSeveralEachAddsWhatItGives) {
    const ReadConfig read(
        "<cnf:schema targetNamespace='urn:t'><cnf:namespace prefix='p' alias='urn:n'/></cnf:schema>"
        "<cnf:schema/>");
    EXPECT_EQ(read.config.getSchema().getTargetNamespace(), "urn:t");
    EXPECT_EQ(read.config.getNamespace().getPrefix(), "p");
    EXPECT_EQ(read.config.getNamespace().getAlias(), "urn:n");
    EXPECT_EQ(ReadConfig("<cnf:schema targetNamespace='urn:t'/><cnf:schema targetNamespace='urn:u'/>")
                  .config.getSchema()
                  .getTargetNamespace(),
              "urn:u");
}

TEST(ConfigSchemaTest, TheNamespaceOfALaterOneTakesThePlaceOfTheEarlierAsAWhole) {
    const ReadConfig read(
        "<cnf:schema targetNamespace='urn:t'><cnf:namespace prefix='p' alias='urn:n'/></cnf:schema>"
        "<cnf:schema><cnf:namespace alias='urn:m'/></cnf:schema>");
    EXPECT_EQ(read.config.getSchema().getTargetNamespace(), "urn:t");
    EXPECT_EQ(read.config.getNamespace().getPrefix(), "");
    EXPECT_EQ(read.config.getNamespace().getAlias(), "urn:m");
}

} // namespace

} // namespace kiv::test
