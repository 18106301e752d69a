#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/KivifcRun.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv::kivifc::test {

namespace {

using kiv::test::sFileText;
using kiv::test::TemporaryFolder;
using testing::HasSubstr;
using testing::Not;

Run exportRun(const std::string& sets, const std::string& out, std::vector<std::string> options = {}) {
    options.insert(options.begin(), {"export", "Building.exp", sets, "--out", out});
    return kivifcRun(options);
}

std::size_t filesIn(const std::string& folder) {
    const std::filesystem::directory_iterator begin(folder);
    return static_cast<std::size_t>(std::distance(begin, std::filesystem::directory_iterator()));
}

TEST(ExportCommand, WritesOneFileASetNamedAfterIt) {
    const TemporaryFolder folder;
    const auto out = folder.sPath("a/b");
    const auto run = exportRun("Sets", out);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(filesIn(out), 10U);
    EXPECT_EQ(linesOf(run.out).front(), out + "/Pset_BldDoor.xml");
}

TEST(ExportCommand, WhatIsWrittenReadsBack) {
    const TemporaryFolder folder;
    exportRun("Sets", folder.sPath("out"));
    const auto run = kivifcRun({"check", "Building.exp", folder.sPath("out"), "--warnings"});
    EXPECT_THAT(run.out, HasSubstr("property sets    7\nquantity sets    3\n"
                                   "members          36 (29 properties, 7 quantities)\n"));
    EXPECT_THAT(run.out, HasSubstr("refused sets     0\n"));
    // The tag of name aliases is written in another letter case than it is read.
    EXPECT_THAT(run.out, HasSubstr("records          3\n               3 Unknown xml node\n"));
}

TEST(ExportCommand, ContextOfAHostHasItsOwnFolder) {
    const TemporaryFolder folder;
    exportRun("../x=Sets/Qto_BldAny.xml", folder.sPath("out"));
    EXPECT_TRUE(std::filesystem::exists(folder.sPath("out/%2E.%2Fx/Qto_BldAny.xml")));
}

TEST(ExportCommand, OwnFilesAreReplacedAndOthersAreNot) {
    const TemporaryFolder folder;
    const auto out = folder.sPath("out");
    const auto path = out + "/Qto_BldAny.xml";
    const auto vExpectKept = [&] {
        const auto before = sFileText(path);
        const auto run = exportRun("Sets/Qto_BldAny.xml", out);
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err,
                  "kivifc: " + path + ": is there already and no unchanged export; --force replaces it\n");
        EXPECT_EQ(sFileText(path), before);
        EXPECT_EQ(filesIn(out), 1U);
    };
    folder.sWrite("out/Qto_BldAny.xml", "mine");
    vExpectKept();
    EXPECT_EQ(exportRun("Sets/Qto_BldAny.xml", out, {"--force"}).status, 0);
    const auto written = sFileText(path);
    EXPECT_THAT(written, Not(HasSubstr("mine")));
    EXPECT_EQ(exportRun("Sets/Qto_BldAny.xml", out).status, 0) << "it is an export's own now";
    auto changed = written;
    changed.replace(changed.find("Kept"), 4, "Left");
    folder.sWrite("out/Qto_BldAny.xml", changed);
    vExpectKept();
}

TEST(ExportCommand, FolderInTheWayIsAFailureAndLeavesNothing) {
    const TemporaryFolder folder;
    folder.sWrite("out/Qto_BldAny.xml/file", "");
    const auto run = exportRun("Sets/Qto_BldAny.xml", folder.sPath("out"), {"--force"});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.err, HasSubstr(": is a folder\n"));
    EXPECT_EQ(filesIn(folder.sPath("out")), 1U);
}

TEST(ExportCommand, GuidsAndBaseTypesAreWrittenWhenAskedFor) {
    const TemporaryFolder folder;
    const auto sExported = [&](const std::vector<std::string>& options) {
        exportRun("Sets/Pset_BldFlowPart.xml", folder.sPath("out"), options);
        return sFileText(folder.sPath("out/Pset_BldFlowPart.xml"));
    };
    const auto plain = sExported({});
    EXPECT_THAT(plain, Not(HasSubstr("basetype")));
    EXPECT_THAT(plain, Not(HasSubstr("ifdguid")));
    EXPECT_THAT(sExported({"--basetype"}), HasSubstr("basetype"));
    EXPECT_THAT(sExported({"--generate-guids"}), HasSubstr("ifdguid"));
}

/// A property set of this name that applies to every class.
std::string sMarkedSet(const std::string& name) {
    return "<PropertySetDef><Name>" + name + "</Name></PropertySetDef>";
}

TEST(ExportCommand, NameOfASetCannotLeaveTheFolder) {
    const TemporaryFolder folder;
    folder.sWrite("sets/1.xml", sMarkedSet("../../x"));
    folder.sWrite("sets/2.xml", sMarkedSet(".."));
    folder.sWrite("sets/3.xml", sMarkedSet("/etc/x"));
    folder.sWrite("sets/4.xml", sMarkedSet(""));
    folder.sWrite("sets/5.xml", sMarkedSet(std::string(5000, 'x')));
    const auto out = folder.sPath("out");
    const auto run = exportRun(folder.sPath("sets"), out);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_THAT(linesOf(run.out),
                testing::ElementsAre(out + "/%.xml", out + "/%2E..xml", out + "/%2E.%2F..%2Fx.xml",
                                     out + "/%2Fetc%2Fx.xml", testing::StartsWith(out + "/xxx")));
    EXPECT_EQ(filesIn(out), 5U);
    EXPECT_EQ(filesIn(folder.sPath("")), 2U) << "the sets and the export";
    EXPECT_THAT(kivifcRun({"check", "Building.exp", out, "--warnings"}).out,
                HasSubstr("property sets    5\n"));
}

TEST(ExportCommand, LinkBelowTheFolderIsRefusedEvenByForceAndNotFollowed) {
    const TemporaryFolder folder;
    const auto out = folder.sPath("out");
    std::filesystem::create_directories(out + "/OFFICE");
    std::filesystem::create_directory_symlink("OFFICE", out + "/office");
    for (const auto& options : std::vector<std::vector<std::string>>{{}, {"--force"}}) {
        std::vector<std::string> words{
            "export", "Building.exp", "office=Sets/Qto_BldWall.xml", "Sets/Qto_BldAny.xml", "--out", out};
        words.insert(words.end(), options.begin(), options.end());
        const auto run = kivifcRun(words);
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.out, out + "/Qto_BldAny.xml\n");
        EXPECT_EQ(run.err, "kivifc: " + out +
                               "/office/Qto_BldWall.xml: \"office\" is a symbolic link, which no export "
                               "follows\n");
        EXPECT_EQ(filesIn(out + "/OFFICE"), 0U);
    }
}

TEST(ExportCommand, LinkInThePlaceOfAFileIsRefusedEvenByForce) {
    const TemporaryFolder folder;
    const auto out = folder.sPath("out");
    const auto target = folder.sWrite("target.xml", "mine");
    std::filesystem::create_directories(out);
    for (const char* leadsTo : {"../target.xml", "nowhere.xml"}) {
        std::filesystem::create_symlink(leadsTo, out + "/Qto_BldAny.xml");
        for (const auto& options : std::vector<std::vector<std::string>>{{}, {"--force"}}) {
            const auto run = exportRun("Sets/Qto_BldAny.xml", out, options);
            EXPECT_EQ(run.status, 2);
            EXPECT_EQ(run.out, "");
            EXPECT_EQ(run.err,
                      "kivifc: " + out + "/Qto_BldAny.xml: is a symbolic link, which no export replaces\n");
            EXPECT_TRUE(std::filesystem::is_symlink(out + "/Qto_BldAny.xml"));
        }
        std::filesystem::remove(out + "/Qto_BldAny.xml");
    }
    EXPECT_EQ(sFileText(target), "mine");
    EXPECT_EQ(filesIn(out), 0U);
}

/// The limits are for what others wrote.
TEST(ExportCommand, OwnFileIsKnownWhateverTheLimits) {
    const TemporaryFolder folder;
    const auto out = folder.sPath("out");
    EXPECT_EQ(exportRun("Sets/Qto_BldWall.xml", out).status, 0);
    const auto document = sFileText(out + "/Qto_BldWall.xml");
    const TemporaryFolder input;
    const auto schema = input.sWrite("S.exp", "SCHEMA S;\nENTITY A;\nEND_ENTITY;\nEND_SCHEMA;\n");
    const auto set = input.sWrite("s.xml", "<QtoSetDef><Name>Qto_BldWall</Name></QtoSetDef>");
    const auto limit = std::to_string(document.size() - 1);
    const auto run = kivifcRun({"export", schema, set, "--out", out, "--max-input", limit});
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(sFileText(out + "/Qto_BldWall.xml"), document);
}

TEST(ExportCommand, FolderItselfMayBeALink) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder.sPath("real"));
    std::filesystem::create_directory_symlink("real", folder.sPath("out"));
    const auto run = kivifcRun({"export", "Building.exp", "office=Sets/Qto_BldWall.xml",
                                "Sets/Qto_BldAny.xml", "--out", folder.sPath("out") + "/"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(sFileText(folder.sPath("real/office/Qto_BldWall.xml")).find("<?xml"), 0U);
    EXPECT_EQ(filesIn(folder.sPath("real")), 2U);
}

TEST(ExportCommand, PathThatIsNotUtf8SurvivesInJson) {
    const TemporaryFolder folder;
    const auto out = folder.sPath("b\xFCro \xE2\x82\xAC");
    const auto run = exportRun("Sets/Qto_BldWall.xml", out, {"--json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr("b\xEF\xBF\xBDro \xE2\x82\xAC/Qto_BldWall.xml\""));
    EXPECT_THAT(run.out, HasSubstr("\"pathBytes\": \""));
    EXPECT_THAT(run.out, HasSubstr("/b%FCro%20%E2%82%AC/Qto_BldWall.xml\""));
    const auto plain = exportRun("Sets/Qto_BldWall.xml", folder.sPath("b\xC3\xBCro"), {"--json"});
    EXPECT_THAT(plain.out, Not(HasSubstr("pathBytes")));
}

TEST(ExportCommand, ContextThatIsNotUtf8SurvivesInJson) {
    const TemporaryFolder folder;
    const auto run = exportRun("b\xFCro x=Sets/Qto_BldWall.xml", folder.sPath("out"), {"--json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr("{\"name\": \"b\xEF\xBF\xBDro x\", \"standard\": false, "
                                   "\"nameBytes\": \"b%FCro%20x\"}"));
    const auto plain = exportRun("b\xC3\xBCro=Sets/Qto_BldWall.xml", folder.sPath("plain"), {"--json"});
    EXPECT_THAT(plain.out, HasSubstr("{\"name\": \"b\xC3\xBCro\", \"standard\": false}"));
}

TEST(ExportCommand, OutThatIsAFileIsAFailureForEachSetAndStays) {
    const TemporaryFolder folder;
    const auto out = folder.sWrite("out", "mine");
    const auto run = exportRun("Sets/Qto_BldAny.xml", out, {"--force"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "kivifc: " + out + "/Qto_BldAny.xml: Not a directory\n");
    EXPECT_EQ(sFileText(out), "mine");
}

TEST(ExportCommand, FileOfSomebodyElseIsLeftAndTheOthersAreWritten) {
    const TemporaryFolder folder;
    const auto out = folder.sPath("out");
    folder.sWrite("out/Pset_BldWall.xml", "mine");
    const auto run = exportRun("Sets", out);
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(linesOf(run.out).size(), 9U);
    EXPECT_EQ(run.err,
              "kivifc: " + out +
                  "/Pset_BldWall.xml: is there already and no unchanged export; --force replaces it\n");
    EXPECT_EQ(sFileText(out + "/Pset_BldWall.xml"), "mine");
}

TEST(ExportCommand, SetThatIsNotWrittenIsAFinding) {
    const TemporaryFolder folder;
    const auto out = folder.sPath("out");
    const auto refused =
        kivifcRun({"export", "Building.exp", "Sets", "BrokenSets/Broken_Refused.xml", "--out", out});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(linesOf(refused.out).size(), 10U);
    EXPECT_THAT(refused.err, HasSubstr("the set \"Pset_BrokenRefused\" is refused: "));
    const auto repeated = kivifcRun(
        {"export", "Building.exp", "Sets", folder.sWrite("z.xml", sMarkedSet("PSET_BLDWALL")), "--out", out});
    EXPECT_EQ(repeated.status, 1);
    EXPECT_EQ(linesOf(repeated.out).size(), 10U);
    EXPECT_THAT(repeated.err, HasSubstr(" is left out: "));
}

TEST(ExportCommand, NoSetAtAllIsAFinding) {
    const TemporaryFolder folder;
    const auto run = exportRun("BrokenSets/Broken_Refused.xml", folder.sPath("out"), {"--json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "[]\n");
    EXPECT_FALSE(std::filesystem::exists(folder.sPath("out")));
}

TEST(ExportCommand, ExportOfAnExportIsTheSameText) {
    const TemporaryFolder folder;
    const auto first = folder.sPath("first");
    const auto second = folder.sPath("second");
    exportRun("Sets/Pset_BldFlowPart.xml", first);
    EXPECT_EQ(exportRun(first, second).status, 0);
    EXPECT_EQ(sFileText(second + "/Pset_BldFlowPart.xml"), sFileText(first + "/Pset_BldFlowPart.xml"));
}

} // namespace

} // namespace kiv::kivifc::test
