#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/KivifcRun.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>

namespace kiv::kivifc::test {

namespace {

using kiv::test::sFileText;
using kiv::test::TemporaryFolder;
using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

Run checkRun(std::vector<std::string> arguments, const RunOptions& options = {}) {
    arguments.insert(arguments.begin(), {"check", "Building.exp"});
    return kivifcRun(arguments, options);
}

/// A property set of this name that applies to this class.
std::string sSetOfClass(const std::string& name, const std::string& className) {
    return "<PropertySetDef>\n<Name>" + name + "</Name>\n<ApplicableClasses>\n<ClassName>" + className +
           "</ClassName>\n</ApplicableClasses>\n</PropertySetDef>\n";
}

/// The lines that end with this text.
std::size_t linesWith(const std::string& text, const std::string& end) {
    const auto lines = linesOf(text);
    return static_cast<std::size_t>(
        std::ranges::count_if(lines, [&](auto& line) { return line.ends_with(end); }));
}

TEST(CheckCommand, CleanSetsMakeStatusZero) {
    EXPECT_EQ(checkRun({"Sets", "--warnings"}).status, 0);
    const auto run = checkRun({"Sets/Pset_BldWall.xml"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
}

TEST(CheckCommand, ReadmeOfTheSampleSaysWhatItsSetsShow) {
    const auto lines = linesOf(checkRun({"Sets"}).out);
    ASSERT_FALSE(lines.empty());
    EXPECT_THAT(sFileText(KIVIFC_SAMPLES "/README.md"), HasSubstr("\n    " + lines.back() + "\n"));
}

TEST(CheckCommand, RecordsMakeStatusOne) {
    const auto run = checkRun({"BrokenSets/Broken_Classes.xml"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "");
}

TEST(CheckCommand, ReportsAloneMakeStatusZero) {
    EXPECT_EQ(checkRun({"BrokenSets/Broken_Reports.xml", "--warnings"}).status, 0);
}

TEST(CheckCommand, FailureWinsOverRecordsAndTheRestIsDone) {
    const auto run = checkRun({"none.xml", "BrokenSets/Broken_Refused.xml", "Sets", "--warnings"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err, "kivifc: none.xml: No such file or directory\n");
    EXPECT_THAT(run.out, HasSubstr("BrokenSets/Broken_Refused.xml:7: error: Pset_BrokenRefused: BldWal: "));
    EXPECT_THAT(run.out, HasSubstr("property sets    8\n"));
}

TEST(CheckCommand, WhatIsNoSetDocumentIsNamedWithTheReason) {
    const TemporaryFolder folder;
    struct Row {
        std::string path;
        std::string line;
    };
    const Row rows[] = {
        {folder.sPath("none.xml"), ": No such file or directory"},
        {"/proc/self/mem", ": Input/output error"},
        {folder.sWrite("empty.xml", ""), ": the file is empty"},
        {folder.sWrite("text.xml", "no xml"), ":1:1: syntax error"},
        {folder.sWrite("open.xml", "<PropertySetDef>\n  <Name>A</Name>\n"), ":3:1: no element found"},
        {folder.sWrite("entity.xml", "<!DOCTYPE a [<!ENTITY b 'c'>]>\n<PropertySetDef/>"), ":1:"},
        {folder.sWrite("foreign.xml", "<Catalogue/>"),
         ": root element is \"Catalogue\", neither \"PropertySetDef\" nor \"QtoSetDef\""},
        {folder.sWrite("case.xml", "<propertySetDef/>"), ": root element is \"propertySetDef\", neither "},
    };
    for (const auto& row : rows) {
        const auto run = checkRun({row.path, "--warnings"});
        EXPECT_EQ(run.status, 2) << row.path;
        EXPECT_THAT(run.err, testing::StartsWith("kivifc: " + row.path + row.line)) << row.path;
        EXPECT_THAT(linesOf(run.err), SizeIs(1)) << row.path;
        EXPECT_THAT(run.out, HasSubstr("documents        1 (1 not read)\n")) << row.path;
    }
}

TEST(CheckCommand, RootWithAPrefixIsRefusedByName) {
    const TemporaryFolder folder;
    const auto pset = folder.sWrite("a.xml", "<p:PropertySetDef xmlns:p='urn:example'/>");
    const auto qset = folder.sWrite("b.xml", "<q:QtoSetDef xmlns:q='urn:example'/>");
    const auto run = checkRun({pset, qset, "--warnings"});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.out, HasSubstr("property sets    0\nquantity sets    0\n"));
    EXPECT_THAT(linesOf(run.err),
                ElementsAre(HasSubstr("root element is \"p:PropertySetDef\", and prefixes are not supported"),
                            HasSubstr("root element is \"q:QtoSetDef\", and prefixes are not supported")));
}

TEST(CheckCommand, StandardInputIsReadForADash) {
    const auto run = checkRun({"-", "--warnings"}, {.input = sSetOfClass("Pset_In", "BldWal")});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(
        linesOf(run.out).front(),
        "<stdin>:4: error: Pset_In: BldWal: Applicable class in xml set is not defined in schema (contain "
        "spaces?)");
}

TEST(CheckCommand, StandardInputThatIsNoXmlIsNamed) {
    const auto run = checkRun({"-", "--warnings"}, {.input = "<a>"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err, "kivifc: <stdin>:1:4: no element found\n");
}

TEST(CheckCommand, DocumentsComeInTheOrderOfTheirPaths) {
    const TemporaryFolder folder;
    folder.sWrite("b/2.xml", sSetOfClass("P4", "X"));
    folder.sWrite("b/1.XML", sSetOfClass("P3", "X"));
    folder.sWrite("B.xml", sSetOfClass("P1", "X"));
    folder.sWrite("a/z.xml", sSetOfClass("P2", "X"));
    const auto run = checkRun({folder.sPath("b"), folder.sPath("B.xml"), folder.sPath("a"), "--warnings"});
    const auto lines = linesOf(run.out);
    ASSERT_GE(lines.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_THAT(lines[i], HasSubstr(": error: P" + std::to_string(i + 1) + ": X: "));
}

TEST(CheckCommand, ItemWithLineBreaksStaysOnOneLine) {
    const TemporaryFolder folder;
    const auto path = folder.sWrite("a.xml", sSetOfClass("Pset\x7F", "&#10;\tBldWall&#13;"));
    const auto run = checkRun({path, "--warnings"});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(linesOf(run.out).front(),
                HasSubstr(":4: error: Pset\\x7F: \\n\\tBldWall\\r: Applicable class "));
}

TEST(CheckCommand, WarningsStandAmongTheRecordsOfTheirDocument) {
    const auto run =
        checkRun({"BrokenSets/Broken_NotRefused.xml", "BrokenSets/Broken_Quantities.xml", "--warnings"});
    const std::string quantities = "BrokenSets/Broken_Quantities.xml";
    const auto lines = linesOf(run.out);
    ASSERT_GE(lines.size(), 14U);
    EXPECT_EQ(lines[2], "BrokenSets/Broken_NotRefused.xml: warning: Excpeted name to exist in schema "
                        "(kiv::ifc::def::pset::TypePropertyReferenceValue::checkForErrors)");
    EXPECT_THAT(lines[7], HasSubstr(quantities + ":15: error:"));
    EXPECT_EQ(lines[8], quantities + ": warning: Unknown node (kiv::ifc::def::qto::QuantityType::pCreate)");
    EXPECT_EQ(lines[9], lines[8]);
    EXPECT_EQ(lines[10],
              quantities + ": warning: Child not found (kiv::ifc::def::qto::QuantityType::pCreate)");
    EXPECT_THAT(lines[11], HasSubstr(quantities + ":32: error:"));
}

/// Where the library reported something is for programs: `--format json` has it.
TEST(CheckCommand, FunctionsAreNotShownUnasked) {
    EXPECT_THAT(checkRun({"BrokenSets/Broken_Reports.xml"}).out, testing::Not(HasSubstr("kiv::")));
}

TEST(CheckCommand, RefusedSetIsNamedAtTheEnd) {
    const auto run = checkRun({"BrokenSets/Broken_Refused.xml", "--warnings"});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.out, HasSubstr("refused sets     1\n"
                                   "                 Pset_BrokenRefused (BrokenSets/Broken_Refused.xml)\n"));
}

TEST(CheckCommand, SchemaThatRaisesReportsIsMentionedAndUsed) {
    const auto run = kivifcRun({"check", "Broken.exp", "Sets/Qto_BldAny.xml", "--warnings"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr("schema           BROKEN1 (reports made while it was read: 14)\n"));
}

TEST(CheckCommand, BrokenSampleHasTheNumbersOfItsDescription) {
    const auto run = checkRun({"BrokenSets", "--warnings"});
    EXPECT_EQ(run.status, 2);
    const auto& out = run.out;
    EXPECT_EQ(linesWith(out, ": Illegal ifdguid in xml file"), 7U);
    EXPECT_EQ(linesWith(out, ": Illegal templatetype used"), 2U);
    EXPECT_EQ(linesWith(out, ": Applicable class in xml set is not defined in schema (contain spaces?)"), 5U);
    EXPECT_EQ(
        linesWith(out,
                  ": Predefined type set on xml set, but no \"PredefinedType\" attribute found on entity"),
        2U);
    EXPECT_EQ(linesWith(out, ": Attribute predefinedType is doesnt exist on entity"), 3U);
    EXPECT_EQ(
        linesWith(out, ": Predefined type set on xml set, but the value is illegal for this enumeration"),
        4U);
    EXPECT_EQ(linesWith(out, ": Unknown xml node"), 21U);
    EXPECT_EQ(linesWith(out, ": Unknown xml node in ValueRangeDef"), 1U);
    EXPECT_THAT(out, HasSubstr("documents        10 (2 not read)\n"
                               "property sets    6\n"
                               "quantity sets    2\n"
                               "members          25 (20 properties, 5 quantities)\n"
                               "records          45\n"
                               "              21 Unknown xml node\n"));
    EXPECT_THAT(out, HasSubstr("refused sets     2\n"));
    EXPECT_THAT(out, HasSubstr("assertions       16\n"));
}

TEST(CheckReport, FormatReportPrintsTheReportAlone) {
    const auto run = checkRun({"BrokenSets/Broken_NotRefused.xml", "BrokenSets/Broken_QuantitiesRefused.xml",
                               "Sets", "--format", "report"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(
        run.out,
        "Pset_BrokenNotRefused;Error;BldDuct/ROUND;Attribute predefinedType is doesnt exist on entity\n"
        "Pset_BrokenNotRefused;Error;BldWal;Applicable class in xml set is not defined in schema (contain "
        "spaces?)\n"
        "Qto_BrokenRefused;Error;BldDuct/ROUND;Attribute predefinedType is doesnt exist on entity\n");
}

TEST(CheckReport, FileGetsTheSameText) {
    const TemporaryFolder folder;
    const auto path = folder.sWrite("report.txt", "what was here before, and was longer than what comes");
    const auto run = checkRun({"BrokenSets", "--report", path});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(sFileText(path), checkRun({"BrokenSets", "--format", "report"}).out);
    EXPECT_EQ(checkRun({"Sets", "--warnings", "--report", path}).status, 0);
    EXPECT_EQ(sFileText(path), "");
}

TEST(CheckReport, FileThatCannotBeWrittenIsAFailure) {
    const TemporaryFolder folder;
    struct Row {
        std::string path;
        std::string reason;
    };
    const Row rows[] = {
        {folder.sPath("none/report.txt"), "No such file or directory"},
        {folder.sPath(""), "Is a directory"},
        {"/dev/full", "No space left on device"},
    };
    for (const auto& row : rows) {
        const auto run = checkRun({"BrokenSets/Broken_Refused.xml", "--warnings", "--report", row.path});
        EXPECT_EQ(run.status, 2) << row.path;
        EXPECT_EQ(run.err, "kivifc: " + row.path + ": " + row.reason + "\n");
        EXPECT_THAT(run.out, HasSubstr("records          2\n"));
    }
}

TEST(CheckReport, DeviceIsWrittenToAsWell) {
    EXPECT_EQ(checkRun({"BrokenSets/Broken_Refused.xml", "--report", "/dev/null"}).status, 1);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST(CheckJson, CleanSampleIsWhole) {
    const auto run = checkRun({"Sets", "--json"});
    ASSERT_EQ(run.status, 0);
    const auto all = json::parse(run.out);
    EXPECT_EQ(all["schema"],
              json({{"path", "Building.exp"}, {"name", "BUILDING1"}, {"assertions", json::array()}}));
    EXPECT_EQ(all["failures"], json::array());
    EXPECT_THAT(all["documents"], SizeIs(10));
    std::size_t properties = 0;
    std::size_t quantities = 0;
    for (const auto& document : all["documents"]) {
        EXPECT_EQ(document["records"], json::array());
        EXPECT_EQ(document["assertions"], json::array());
        EXPECT_EQ(document["refused"], false);
        const auto& set = document["set"];
        EXPECT_EQ(set.contains("properties"), document["kind"] == "PropertySetDef");
        EXPECT_EQ(set.contains("quantities"), document["kind"] == "QtoSetDef");
        properties += set.value("properties", json::array()).size();
        quantities += set.value("quantities", json::array()).size();
    }
    EXPECT_EQ(properties, 29U);
    EXPECT_EQ(quantities, 7U);
}

TEST(CheckJson, BrokenSampleHasItsRecordsReportsAndFailures) {
    const auto run = checkRun({"BrokenSets", "--json"});
    EXPECT_EQ(run.status, 2);
    const auto all = json::parse(run.out);
    EXPECT_THAT(all["documents"], SizeIs(8));
    EXPECT_THAT(all["failures"], SizeIs(2));
    EXPECT_EQ(all["failures"][1],
              json({{"subject", "BrokenSets/Broken_NotXml.xml:5:32"}, {"reason", "mismatched tag"}}));
    std::size_t records = 0;
    std::size_t assertions = 0;
    std::vector<std::string> refused;
    for (const auto& document : all["documents"]) {
        records += document["records"].size();
        assertions += document["assertions"].size();
        if (document["refused"] == true)
            refused.push_back(document["set"]["name"]);
    }
    EXPECT_EQ(records, 45U);
    EXPECT_EQ(assertions, 16U);
    EXPECT_THAT(refused, ElementsAre("Qto_BrokenRefused", "Pset_BrokenRefused"));
    EXPECT_EQ(all["documents"][1]["records"][0],
              json({{"kind", "Error"},
                    {"set", "Pset_BrokenNotRefused"},
                    {"item", "BldDuct/ROUND"},
                    {"message", "Attribute predefinedType is doesnt exist on entity"},
                    {"line", 7}}));
    EXPECT_EQ(all["summary"]["records"], 45);
    EXPECT_EQ(all["summary"]["recordsByMessage"]["Unknown xml node"], 21);
    EXPECT_THAT(all["summary"]["refusedSets"], SizeIs(2));
}

} // namespace

} // namespace kiv::kivifc::test
