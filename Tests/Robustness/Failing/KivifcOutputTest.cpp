#include "Support/FileSizeLimit.h"
#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/KivifcRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include <unistd.h>

namespace kiv::kivifc::test {

namespace {

namespace fs = std::filesystem;

using Arguments = std::vector<std::string>;
using kiv::test::FileSizeLimit;
using kiv::test::namesIn;
using kiv::test::sFileText;
using kiv::test::TemporaryFolder;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

const std::string Config = "../../Tests/Tools/kivifc/Data/Building.config.xml";

/// Every command with every form of output that it has. "OUT" is replaced by a folder of the test's own.
const std::vector<Arguments> Jobs{
    {"--help"},
    {"--version"},
    {"check", "--help"},
    {"schema", "Building.exp"},
    {"schema", "Building.exp", "--tree"},
    {"schema", "Building.exp", "--json"},
    {"check", "Building.exp", "Sets"},
    {"check", "Building.exp", "Sets", "--json"},
    {"check", "Building.exp", "BrokenSets/Broken_Refused.xml"},
    {"check", "Building.exp", "BrokenSets/Broken_Refused.xml", "--format", "json"},
    {"check", "Building.exp", "BrokenSets/Broken_Refused.xml", "--format", "sarif"},
    {"check", "Building.exp", "BrokenSets/Broken_Refused.xml", "--format", "github"},
    {"check", "Building.exp", "BrokenSets/Broken_Refused.xml", "--format", "junit"},
    {"type", "Building.exp", "Sets", "Pset_BldWall.Mark"},
    {"type", "Building.exp", "Sets", "Pset_BldWall.Mark", "--json"},
    {"entity", "Building.exp", "Sets", "BldWall"},
    {"entity", "Building.exp", "Sets", "BldWall", "--json"},
    {"sets", "Building.exp", "Sets", "--entity", "BldWall"},
    {"sets", "Building.exp", "Sets", "--entity", "BldWall", "--json"},
    {"find", "Building.exp", "Sets", "Pset_BldWall"},
    {"find", "Building.exp", "Sets", "Pset_BldWall", "--json"},
    {"export", "Building.exp", "Sets", "--out", "OUT"},
    {"export", "Building.exp", "Sets", "--out", "OUT", "--json"},
    {"site", "Building.exp", "Sets", "--out", "OUT"},
    {"config", "Building.exp", Config},
    {"config", "Building.exp", Config, "--json"},
};

class KivifcOutput : public testing::TestWithParam<Arguments> {
protected:
    Arguments arguments() const {
        auto words = GetParam();
        std::ranges::replace(words, "OUT", folder_.sPath("out"));
        return words;
    }

private:
    const TemporaryFolder folder_;
};

TEST_P(KivifcOutput, FullDiskIsOneLineAndStatus2) {
    const auto run = kivifcRun(arguments(), {.outputPath = "/dev/full"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err, "kivifc: standard output: No space left on device\n");
}

/// The end of `head` or of a pager is no failure worth a line.
TEST_P(KivifcOutput, ClosedPipeIsSilentAndStatus2) {
    const auto run = kivifcRun(arguments(), {.isOutputClosed = true});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err, "");
}

std::string sJobName(const testing::TestParamInfo<Arguments>& row) {
    std::string name = std::to_string(row.index);
    for (const auto& word : row.param)
        name += '_' + word.substr(word.find_first_not_of('-'));
    std::ranges::replace_if(
        name,
        [](char byte) {
            return !(byte >= '0' && byte <= '9') && !(byte >= 'A' && byte <= 'Z') &&
                   !(byte >= 'a' && byte <= 'z');
        },
        '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(All, KivifcOutput, testing::ValuesIn(Jobs), sJobName);

/// What the program writes to standard error is a file too; so it has room for the lines, but not for what is
/// exported.
constexpr std::size_t Room = 200;

TEST(KivifcFiles, ExportOfASetThatDoesNotFitLeavesNoFile) {
    const TemporaryFolder folder;
    const auto run = [&] {
        const FileSizeLimit limit(Room);
        return kivifcRun({"export", "Building.exp", "Sets/Pset_BldStair.xml", "--out", folder.sPath("out")});
    }();
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err, "kivifc: " + folder.sPath("out") + "/Pset_BldStair.xml: File too large\n");
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(namesIn(folder.sPath("out")), IsEmpty());
}

TEST(KivifcFiles, ReportThatDoesNotFitLeavesNoFile) {
    const TemporaryFolder folder;
    const auto run = [&] {
        const FileSizeLimit limit(Room);
        return kivifcRun({"check", "Building.exp", "BrokenSets/Broken_UnknownNodes.xml", "--report",
                          folder.sPath("report.txt")},
                         {.outputPath = "/dev/null"});
    }();
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err, "kivifc: " + folder.sPath("report.txt") + ": File too large\n");
    EXPECT_THAT(namesIn(folder.sPath("")), IsEmpty());
}

TEST(KivifcFiles, ReportToAFullDeviceIsOneLineAndStatus2) {
    const auto run =
        kivifcRun({"check", "Building.exp", "BrokenSets/Broken_UnknownNodes.xml", "--report", "/dev/full"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err, "kivifc: /dev/full: No space left on device\n");
}

/// Root may write there, too.
TEST(KivifcFiles, ReadOnlyFolderIsOneLineForEachFileAndNothingIsLeft) {
    if (::geteuid() == 0)
        GTEST_SKIP() << "left out: root may write to a read-only folder";
    const TemporaryFolder folder;
    const fs::path closed = folder.sPath("closed");
    fs::create_directory(closed);
    fs::permissions(closed, fs::perms::owner_read | fs::perms::owner_exec);
    const auto exported =
        kivifcRun({"export", "Building.exp", "Sets/Qto_BldWall.xml", "--out", closed.native()});
    const auto checked = kivifcRun(
        {"check", "Building.exp", "BrokenSets/Broken_Refused.xml", "--report", (closed / "report").native()});
    fs::permissions(closed, fs::perms::owner_all);
    EXPECT_EQ(exported.status, 2);
    EXPECT_THAT(linesOf(exported.err), ElementsAre(EndsWith("Qto_BldWall.xml: Permission denied")));
    EXPECT_EQ(checked.status, 2);
    EXPECT_EQ(checked.err, "kivifc: " + (closed / "report").native() + ": Permission denied\n");
    EXPECT_THAT(namesIn(closed.native()), IsEmpty());
}

TEST(KivifcFiles, ReportThatDoesNotFitLeavesTheFormerOne) {
    const TemporaryFolder folder;
    const auto path = folder.sWrite("report.txt", "the former report\n");
    {
        const FileSizeLimit limit(Room);
        kivifcRun({"check", "Building.exp", "BrokenSets/Broken_UnknownNodes.xml", "--report", path},
                  {.outputPath = "/dev/null"});
    }
    EXPECT_EQ(sFileText(path), "the former report\n");
    EXPECT_THAT(namesIn(folder.sPath("")), ElementsAre("report.txt"));
}

TEST(KivifcFiles, ReportGoesWhereALinkLeadsTo) {
    const TemporaryFolder folder;
    const auto target = folder.sWrite("target.txt", "the former report\n");
    const auto link = folder.sPath("link.txt");
    fs::create_symlink("target.txt", link);
    const auto run = kivifcRun({"check", "Building.exp", "BrokenSets/Broken_Refused.xml", "--report", link});
    EXPECT_EQ(run.err, "");
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_THAT(linesOf(sFileText(target)), testing::SizeIs(2));
}

/// As in a folder that is read-only, but for root too: below a file nothing can be made.
TEST(KivifcFiles, PathBelowAFileIsOneLineForEachFileAndNothingIsLeft) {
    const TemporaryFolder folder;
    const auto file = folder.sWrite("file", "in the way\n");
    const auto exported =
        kivifcRun({"export", "Building.exp", "Sets/Qto_BldWall.xml", "--out", file + "/below"});
    EXPECT_EQ(exported.status, 2);
    EXPECT_THAT(linesOf(exported.err), ElementsAre(EndsWith("Qto_BldWall.xml: Not a directory")));
    const auto checked =
        kivifcRun({"check", "Building.exp", "BrokenSets/Broken_Refused.xml", "--report", file + "/below"});
    EXPECT_EQ(checked.status, 2);
    EXPECT_EQ(checked.err, "kivifc: " + file + "/below: Not a directory\n");
    EXPECT_EQ(sFileText(file), "in the way\n");
    EXPECT_THAT(namesIn(folder.sPath("")), ElementsAre("file"));
}

} // namespace

} // namespace kiv::kivifc::test
