#include "Format/Ifc/Def/XmlSchema/IfcXmlUosElement.h"

#include "Format/Ifc/Def/XmlSchema/ConfigTools.h"

namespace kiv::test {

namespace {

TEST(ConfigUosElement, IsEmptyUntilItIsRead) {
    EXPECT_EQ(ReadConfig("").config.getUosElement().getName(), "");
    EXPECT_EQ(ReadConfig("<cnf:uosElement/>").config.getUosElement().getName(), "");
}

TEST(ConfigUosElement, ReadsItsName) {
    const ReadConfig read("<cnf:uosElement name='ifcXML'/>");
    EXPECT_EQ(read.config.getUosElement().getName(), "ifcXML");
    EXPECT_EQ(read.reports.getRecords(), Reports());
}

} // namespace

} // namespace kiv::test
