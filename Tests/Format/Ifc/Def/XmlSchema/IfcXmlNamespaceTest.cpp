#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlNamespace.h"

#include "Format/Ifc/Def/XmlSchema/ConfigTools.h"
#include "Support/XmlFromText.h"

namespace kiv::test {

namespace {

using ifc::def::xmlschema::Namespace;

TEST(ConfigNamespaceTest, IsEmptyUntilItIsRead) {
    const Namespace none;
    EXPECT_EQ(none.getPrefix(), "");
    EXPECT_EQ(none.getAlias(), "");
}

TEST(ConfigNamespaceTest, ReadsPrefixAndAliasAsWritten) {
    const XmlFromText document("<any prefix=' ifc' alias='http://a?b=1&amp;c=2'/>");
    const AssertCollector reports;
    Namespace read;
    read.vInit(document.root());
    EXPECT_EQ(read.getPrefix(), " ifc");
    EXPECT_EQ(read.getAlias(), "http://a?b=1&c=2");
    EXPECT_EQ(reports.getRecords(), Reports());
}

TEST(ConfigNamespaceTest, OfSeveralTheLastCountsAsAWhole) {
    const ReadConfig read(
        "<cnf:schema><cnf:namespace prefix='a' alias='x'/><cnf:namespace prefix='b'/></cnf:schema>");
    EXPECT_EQ(read.config.getNamespace().getPrefix(), "b");
    EXPECT_EQ(read.config.getNamespace().getAlias(), "");
    EXPECT_EQ(&read.config.getNamespace(), &read.config.getSchema().getNamespace());
    EXPECT_EQ(read.reports.getRecords(), Reports());
}

} // namespace

} // namespace kiv::test
