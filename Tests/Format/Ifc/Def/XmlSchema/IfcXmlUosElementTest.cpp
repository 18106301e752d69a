#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlUosElement.h"

#include "Format/Ifc/Def/XmlSchema/ConfigTools.h"

namespace kiv::test {

namespace {

TEST(ConfigUosElementTest, IsEmptyUntilItIsRead) {
    EXPECT_EQ(ReadConfig("").config.getUosElement().getName(), "");
    EXPECT_EQ(ReadConfig("<cnf:uosElement/>").config.getUosElement().getName(), "");
}

TEST(ConfigUosElementTest, ReadsItsName) {
    const ReadConfig read("<cnf:uosElement name='ifcXML'/>");
    EXPECT_EQ(read.config.getUosElement().getName(), "ifcXML");
    EXPECT_EQ(read.reports.getRecords(), Reports());
}

TEST(ConfigUosElementTest, OfSeveralTheLastNameCounts) {
    EXPECT_EQ(ReadConfig("<cnf:uosElement name='a'/><cnf:uosElement/>").config.getUosElement().getName(),
              "a");
    EXPECT_EQ(
        ReadConfig("<cnf:uosElement name='a'/><cnf:uosElement name='b'/>").config.getUosElement().getName(),
        "b");
}

} // namespace

} // namespace kiv::test
