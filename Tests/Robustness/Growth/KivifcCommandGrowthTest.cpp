// What whole commands of kivifc make of hostile files.

#include "Robustness/Growth/CountedFile.h"
#include "Robustness/Growth/GrowthRow.h"
#include "Support/Growth.h"
#include "Support/TemporaryFolder.h"
#include "kiv/Kit/Documents/SchemaFile.h"
#include "kivifc/Commands/CommandTable.h"
#include "kivifc/Program/Diagnostics.h"
#include "kivifc/Program/Output.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kiv::test {

namespace {

/// Runs a command; what it writes is counted.
void vCommandRun(const std::unique_ptr<kivifc::Command>& command, std::vector<std::string> arguments,
                 kivifc::ExitStatus status = kivifc::ExitStatus::Fine) {
    CLI::App app;
    command->vOptionsAdd(app);
    std::ranges::reverse(arguments);
    app.parse(std::move(arguments));
    const auto file = countedFile();
    const auto problems = countedFile();
    ASSERT_TRUE(file && problems);
    kivifc::Output output(file.get());
    kivifc::Diagnostics diagnostics(output, problems.get());
    kivifc::Console console{output, diagnostics};
    command->vRun(console);
    EXPECT_EQ(output.sFinish(), "");
    EXPECT_EQ(diagnostics.getStatus(), status);
}

/// An entity with a name that is as long as its attributes are together, and a configuration of them all.
std::string sAttribute(std::size_t number) {
    return "A" + std::to_string(number);
}

std::string sConfiguredSchema(std::size_t count) {
    return "SCHEMA S;\nENTITY " + std::string(10 * count, 'x') + ";\n" +
           sJoined(count, [](std::size_t i) { return "\t" + sAttribute(i) + " : REAL;\n"; }) +
           "END_ENTITY;\nEND_SCHEMA;\n";
}

std::string sConfiguration(std::size_t count) {
    return "<cnf:configuration id='S' "
           "xmlns:cnf='urn:iso:std:iso:10303:-28:ed-2:tech:XMLschema:configuration_language'>"
           "<cnf:entity select='" +
           std::string(10 * count, 'x') + "'>" +
           sJoined(count,
                   [](std::size_t i) {
                       return "<cnf:attribute select='" + sAttribute(i) + "' exp-attribute='double-tag'/>";
                   }) +
           "</cnf:entity></cnf:configuration>";
}

constexpr char Between = '\0';

const std::vector<GrowthRow> ConfiguredEntities{{"configured attributes", 5'000, [](std::size_t count) {
                                                     return sConfiguredSchema(count) + Between +
                                                            sConfiguration(count);
                                                 }}};

void vConfigRun(const std::string& files, std::vector<std::string> arguments) {
    const TemporaryFolder folder;
    const auto end = files.find(Between);
    arguments.push_back(folder.sWrite("S.exp", files.substr(0, end)));
    arguments.push_back(folder.sWrite("c.xml", files.substr(end + 1)));
    vCommandRun(kivifc::pConfigCommand(), arguments);
}

TEST(KivifcCommandGrowthTest, ConfigurationsOfEntitiesWithLongNames) {
    vGrowthForOutputExpect(ConfiguredEntities, [](const std::string& files) { vConfigRun(files, {}); });
}

TEST(KivifcCommandGrowthTest, ConfigurationsOfEntitiesWithLongNamesAsJson) {
    vGrowthForOutputExpect(ConfiguredEntities,
                           [](const std::string& files) { vConfigRun(files, {"--json"}); });
}

/// Each record on the nodes that nobody knows names the set, whose name is as long as all of them.
const std::vector<GrowthRow> LongSets{{"records", 10'000, [](std::size_t count) {
                                           return "<PropertySetDef><Name>" + std::string(4 * count, 'N') +
                                                  "</Name>" + sTimes("<a/>", count) + "</PropertySetDef>";
                                       }}};

TEST(KivifcCommandGrowthTest, SetsWithLongNamesAndManyRecordsAsJson) {
    vGrowthForOutputExpect(LongSets, [](const std::string& document) {
        const TemporaryFolder folder;
        vCommandRun(
            kivifc::pCheckCommand(),
            {"--json", folder.sWrite("S.exp", "SCHEMA S;\nEND_SCHEMA;\n"), folder.sWrite("s.xml", document)},
            kivifc::ExitStatus::Findings);
    });
}

/// The report on the last rule of a type, which is refused, is made for each type that is built on it.
const std::vector<GrowthRow> RefusedRules{
    {"types built on a type with many rules", 5'000, [](std::size_t count) {
         return "SCHEMA S;\nTYPE T = REAL;\n WHERE\n" +
                sJoined(count, [](std::size_t i) { return "W" + std::to_string(i) + " : SELF > 0;\n"; }) +
                "W : SELF > ( ;\nEND_TYPE;\n" +
                sJoined(count,
                        [](std::size_t i) { return "TYPE U" + std::to_string(i) + " = T;\nEND_TYPE;\n"; }) +
                "END_SCHEMA;\n";
     }}};

TEST(KivifcCommandGrowthTest, ReportsOnRulesOfManyTypesAsJson) {
    vGrowthForOutputExpect(RefusedRules, [](const std::string& schema) {
        const TemporaryFolder folder;
        const auto document = folder.sWrite("s.xml", "<PropertySetDef><Name>P</Name></PropertySetDef>");
        vCommandRun(kivifc::pCheckCommand(), {"--json", folder.sWrite("S.exp", schema), document},
                    kivifc::ExitStatus::Fine);
    });
}

/// Declarations like those of IFC: names of such lengths, some attributes and rules each, references.
std::string sPlainSchema(std::size_t count) {
    return "SCHEMA S;\n" +
           sJoined(count,
                   [](std::size_t i) {
                       const auto name = std::to_string(i);
                       const auto above = std::to_string(i / 3);
                       return "TYPE KindOfElement" + name +
                              " = ENUMERATION OF\n\t(SOLID\n\t,HOLLOW\n\t,USERDEFINED\n\t,NOTDEFINED);\n"
                              "END_TYPE;\n"
                              "ENTITY BuildingElement" +
                              name + (i == 0 ? ";\n" : "\n SUBTYPE OF (BuildingElement" + above + ");\n") +
                              "\tGlobalIdentifier" + name + " : STRING;\n\tOverallHeight" + name +
                              " : OPTIONAL REAL;\n\tKindOfElement" + name + " : OPTIONAL KindOfElement" +
                              name + ";\n\tConnections" + name + " : SET [0:?] OF BuildingElement" + above +
                              ";\n WHERE\n\tCorrectHeight : (NOT (EXISTS (OverallHeight" + name +
                              "))) OR (OverallHeight" + name + " > 0);\n\tCorrectKind : KindOfElement" +
                              name + " <> KindOfElement" + name + ".USERDEFINED;\nEND_ENTITY;\n";
                   }) +
           "END_SCHEMA;\n";
}

Work workOf(const std::function<void()>& job) {
    const auto held = peakBegin();
    const auto begin = workDone();
    job();
    auto work = workDone();
    work.blocks -= begin.blocks;
    work.peakBytes -= held;
    return work;
}

/// The JSON is written from the schema as it was read. What is wrong with it is looked for only as far as the
/// exit status needs that, which takes 6 times as much as to read it. 20 and 10 times in all are what a user
/// may wait for; more is work done twice.
TEST(KivifcCommandGrowthTest, SchemasAsJsonTakeAFewTimesWhatTheirReadingTakes) {
    if (!isWorkCounted)
        GTEST_SKIP() << "left out: nothing is counted here";
    const TemporaryFolder folder;
    const auto path = folder.sWrite("S.exp", sPlainSchema(500));
    for (const bool isJson : {true, false}) {
        SCOPED_TRACE(isJson);
        const auto reading = workOf([&] { EXPECT_TRUE(kit::schemaFileRead(path).schema); });
        const auto writing = workOf([&] {
            vCommandRun(kivifc::pSchemaCommand(), {path, isJson ? "--json" : "--tree"});
        });
        EXPECT_LE(writing.blocks, (isJson ? 20U : 10U) * reading.blocks);
        EXPECT_LE(writing.peakBytes, 3 * reading.peakBytes);
        RecordProperty(isJson ? "jsonTenths" : "treeTenths",
                       static_cast<int>(10 * writing.blocks / reading.blocks));
    }
}

} // namespace

} // namespace kiv::test
