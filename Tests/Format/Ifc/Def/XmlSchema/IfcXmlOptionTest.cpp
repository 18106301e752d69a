#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlOption.h"

#include "Format/Ifc/Def/XmlSchema/ConfigTools.h"

namespace kiv::test {

namespace {

TEST(ConfigOptionTest, WithoutSettingsGivesNothing) {
    for (const auto* children :
         {"", "<cnf:option/>", "<cnf:option inheritance='true' tagless='x' exp-type='double-tag'/>"}) {
        SCOPED_TRACE(children);
        const ReadConfig read(children);
        EXPECT_EQ(numberOf(read.config.getOption().getConcreteAttribute()), 0);
        EXPECT_EQ(numberOf(read.config.getOption().getEntityAttribute()), 0);
        EXPECT_EQ(read.reports.getRecords(), Reports());
    }
}

TEST(ConfigOptionTest, ReadsTheRepresentations) {
    const ReadConfig read("<cnf:option concrete-attribute='attribute-tag' entity-attribute='double-tag'/>");
    EXPECT_EQ(numberOf(read.config.getOption().getConcreteAttribute()), 1);
    EXPECT_EQ(numberOf(read.config.getOption().getEntityAttribute()), 3);
    EXPECT_EQ(read.reports.getRecords(), Reports());
}

TEST(ConfigOptionTest, OfSeveralEachAddsWhatItGives) {
    const ReadConfig read("<cnf:option concrete-attribute='attribute-tag' entity-attribute='double-tag'/>"
                          "<cnf:option entity-attribute='attribute-content'/>");
    EXPECT_EQ(numberOf(read.config.getOption().getConcreteAttribute()), 1);
    EXPECT_EQ(numberOf(read.config.getOption().getEntityAttribute()), 2);
    EXPECT_EQ(read.reports.getRecords(), Reports());
}

TEST(ConfigOptionTest, AnIllegalRepresentationIsReportedAndMeansContent) {
    const ReadConfig read("<cnf:option concrete-attribute='Attribute-Tag' entity-attribute=''/>");
    EXPECT_EQ(numberOf(read.config.getOption().getConcreteAttribute()), 2);
    EXPECT_EQ(numberOf(read.config.getOption().getEntityAttribute()), 2);
    const auto illegal = report("Illegal string", "expAttributeFromString", "Common");
    EXPECT_EQ(read.reports.getRecords(), (Reports{illegal, illegal}));
}

} // namespace

} // namespace kiv::test
