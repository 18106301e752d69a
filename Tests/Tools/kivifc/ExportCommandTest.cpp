#include "KivifcRun.h"
#include "TemporaryFolder.h"
#include "kivifc/ExportFile.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv::kivifc::test {

namespace {

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
    const auto run = kivifcRun({"check", "Building.exp", folder.sPath("out")});
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
    const auto file = folder.sWrite("file", "");
    EXPECT_EQ(exportRun("Sets/Qto_BldAny.xml", file).status, 2);
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

TEST(ExportFile, NameBecomesOneThatNamesAFile) {
    struct Row {
        const char* name;
        const char* file;
    };
    const Row rows[] = {{"Pset_Wall", "Pset_Wall"}, {"", "%"},         {".", "%2E"},         {"..", "%2E."},
                        {"a/b", "a%2Fb"},           {"a\\b", "a%5Cb"}, {"a%2Fb", "a%252Fb"}, {"a.b", "a.b"},
                        {"\n\x7F", "%0A%7F"},       {"Größe", "Größe"}};
    for (const auto& row : rows)
        EXPECT_EQ(sFileName(row.name), row.file);
}

} // namespace

} // namespace kiv::kivifc::test
