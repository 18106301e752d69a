#include "Format/Ifc/Def/Reports/IfcReports.h"

#include "Support/AssertCollector.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace {

using namespace kiv::ifc::def;
using kiv::assert::AssertRecord;
using kiv::test::AssertCollector;

TEST(ReportsTest, AReportIsThatOfItsRow) {
    const AssertCollector reports;
    vReport(Report::SubtypeNotFound);
    vReport(Report::ConfigNotWellFormed);
    EXPECT_EQ(
        reports.getRecords(),
        (std::vector<AssertRecord>{{0, "Entity not found", "kiv::ifc::def::schema::Entity::vUpdate",
                                    "Source/Format/Ifc/Def/Schema/IfcSchemaEntity", 325},
                                   {0, "Illegal xml document", "kiv::ifc::def::xmlschema::Config::Config",
                                    "Source/Format/Ifc/Def/XmlSchema/IfcXmlConfig", 0}}));
}

TEST(ReportsTest, AMessageMayGoOn) {
    const AssertCollector reports;
    vReport(Report::RuleRefused, "a message of its own");
    EXPECT_EQ(
        reports.getRecords(),
        (std::vector<AssertRecord>{{0, "a message of its own", "kiv::ifc::def::schema::Where::parseRules",
                                    "Source/Format/Ifc/Def/Schema/IfcSchemaWhere", 0}}));
}

TEST(ReportsTest, EachIsThatOfItsEnumerator) {
    for (std::size_t index = 0; index < static_cast<std::size_t>(Report::Count); ++index)
        EXPECT_EQ(placeOf(static_cast<Report>(index)).report, static_cast<Report>(index));
    EXPECT_EQ(textOf(RecordMessage::PredefinedTypeIllegal),
              "Predefined type set on xml set, but the value is illegal for this enumeration");
    EXPECT_EQ(textOf(SyntaxMessage::RuleExpected), "Expected at least one rule in where clause");
}

// What hosts filter by finds one report, or the reports of one message.
TEST(ReportsTest, NoTwoAreTheSame) {
    std::set<std::tuple<std::string_view, std::string_view, int>> places;
    for (const auto& place : ReportPlaces)
        EXPECT_TRUE(places.emplace(place.message, place.function, place.line).second) << place.function;
    std::set<std::string_view> messages;
    for (const auto& message : RecordMessages)
        EXPECT_TRUE(messages.insert(message.text).second) << message.text;
}

} // namespace
