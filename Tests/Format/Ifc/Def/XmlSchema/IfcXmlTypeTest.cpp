#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlType.h"

#include "Format/Ifc/Def/XmlSchema/ConfigTools.h"
#include "Support/XmlFromText.h"

namespace kiv::test {

namespace {

TEST(ConfigTypeTest, LooksNothingUp) {
    const ReadConfig read("<cnf:type select='IfcNowhere' map='xs:nothing' keep='perhaps'/><cnf:type/>"
                          "<cnf:type select='IfcLabel' map='xs:string' keep='false'/>");
    EXPECT_EQ(read.reports.getRecords(), Reports());
    EXPECT_EQ(read.config.getAttributes().size(), 0U);
}

TEST(ConfigTypeTest, IsReadFromAnElementAlone) {
    ReadConfig read("");
    const XmlFromText document("<any select='IfcLabel' x='1'/>");
    ifc::def::xmlschema::Type::vRead(read.config, *read.schema, document.root());
    EXPECT_EQ(read.reports.getRecords(),
              Reports{report("Unknown attribute", "Type::vRead::<lambda_1>::operator ()", "Type")});
}

} // namespace

} // namespace kiv::test
