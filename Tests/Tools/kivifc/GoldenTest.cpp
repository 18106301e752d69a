// The sample data, checked whole: what kivifc prints about it is compared with reviewed files in Golden.
//
// When the output changes on purpose, `KIV_ACCEPT_GOLDEN=1 ./dev test dev -R KivifcGolden` writes the files
// anew (and passes); the difference is then to be reviewed line by line against the sample and its README.
#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/KivifcRun.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace kiv::kivifc::test {

namespace {

using kiv::test::sFileText;
using kiv::test::TemporaryFolder;

struct Golden {
    const char* file;
    std::vector<std::string> arguments;
    int status;
};

void PrintTo(const Golden& golden, std::ostream* stream) {
    *stream << golden.file;
}

/// Both streams as the file holds them; the time differs from run to run.
std::string sGoldenText(const Run& run) {
    std::string text;
    for (const auto& line : linesOf(run.out))
        text += (line.starts_with("time ") ? "time             TIME" : line) + '\n';
    if (!run.err.empty())
        text += "--- standard error\n" + run.err;
    return text;
}

std::string sGoldenName(const testing::TestParamInfo<Golden>& row) {
    std::string name = row.param.file;
    std::ranges::replace(name, '.', '_');
    return name;
}

std::vector<std::string> withJson(std::vector<std::string> arguments) {
    arguments.emplace_back("--json");
    return arguments;
}

/// From the folder of the sample data.
constexpr const char* Config = "../../Tests/Tools/kivifc/Data/Building.config.xml";
constexpr const char* BrokenConfig = "../../Tests/Tools/kivifc/Data/Broken.config.xml";

/// In the folder of the run.
constexpr const char* Out = "OUT";

/// Each kind of property and quantity, each kind of attribute, and what has no value.
std::vector<std::string> typeArguments() {
    return {"type",
            "Building.exp",
            "Sets",
            "Pset_BldWall.Mark",
            "Pset_BldWall.Finish",
            "Pset_BldWall.Tolerance",
            "Pset_BldStair.TreadByRiser",
            "Pset_BldStair.Landings",
            "Pset_BldSpace.Climate",
            "Pset_BldSpace.Tenant",
            "Pset_BldFlowPart.Medium",
            "Pset_BldSubstance.Colour",
            "Pset_BldSubstance.Density",
            "Pset_BldSubstance.Origin",
            "Pset_BldSubstance.Taste",
            "PSET_BLDSTOREY.Entrance",
            "Qto_BldWall.Length",
            "Qto_BldWall.NetSideArea",
            "Qto_BldWall.GrossVolume",
            "Qto_BldWall.Mass",
            "Qto_BldStair.Steps",
            "Qto_BldStair.AssemblyTime",
            "Qto_BldStair.Effort",
            "BldWall.Name",
            "bldstandardwall.Layers",
            "BldSpatial.LongName",
            "BldStandardWall.SideArea",
            "BldWal.Name"};
}

/// Sets of a host hide standard ones.
std::vector<std::string> wallArguments() {
    return {"entity",          "Building.exp", "Sets", "office=Sets/Qto_BldWall.xml",
            "BldStandardWall", "--config",     Config};
}

std::vector<std::string> setsArguments() {
    return {"sets",     "Building.exp", "Sets",          "office=Sets/Qto_BldWall.xml",
            "--entity", "BldPipe",      "--unrestricted"};
}

std::vector<std::string> exportArguments() {
    return {"export", "Building.exp", "Sets", "office=Sets/Qto_BldWall.xml", "--out", Out};
}

constexpr const char* MemberGuid = "bf367de2-fa90-31e7-40ac-f33e63e3b2e7";

class KivifcGolden : public testing::TestWithParam<Golden> {};

/// A folder in which an export runs: the sample data is there by links, so that all paths in the output are
/// relative. Where temporary folders lie would show in the output else, and in where its lines are broken.
class ExportFolder {
public:
    ExportFolder() {
        for (const char* const name : {"Building.exp", "Sets", "BrokenSets"})
            std::filesystem::create_symlink(std::filesystem::path(KIVIFC_SAMPLES) / name,
                                            folder_.sPath(name));
    }

    Run run(const std::vector<std::string>& arguments) const {
        return kivifcRun(arguments, {.folder = folder_.sPath(".")});
    }
    std::string sPath(const std::string& name) const { return folder_.sPath(name); }

private:
    TemporaryFolder folder_;
};

void vExpectGolden(const std::string& text, const std::string& file) {
    const auto path = std::string(KIVIFC_GOLDEN) + '/' + file;
    if (std::getenv("KIV_ACCEPT_GOLDEN"))
        std::ofstream(path, std::ios::binary) << text;
    EXPECT_EQ(text, sFileText(path));
}

TEST_P(KivifcGolden, OutputIsAsReviewed) {
    const auto& arguments = GetParam().arguments;
    const bool isExport = std::ranges::find(arguments, Out) != arguments.end();
    const auto run = isExport ? ExportFolder().run(arguments) : kivifcRun(arguments);
    EXPECT_EQ(run.status, GetParam().status);
    vExpectGolden(sGoldenText(run), GetParam().file);
}

/// All that an export writes, one document after another.
TEST(KivifcGoldenDocuments, ExportIsAsReviewed) {
    const ExportFolder folder;
    auto arguments = exportArguments();
    arguments.emplace_back("--basetype");
    std::string text;
    for (const auto& path : linesOf(folder.run(arguments).out))
        text += path + '\n' + sFileText(folder.sPath(path));
    vExpectGolden(text, "Export.documents.txt");
}

INSTANTIATE_TEST_SUITE_P(
    Samples, KivifcGolden,
    testing::Values(
        Golden{"Building.json", {"schema", "Building.exp", "--json"}, 0},
        Golden{"Building.txt", {"schema", "Building.exp"}, 0},
        Golden{"Building.tree.txt", {"schema", "Building.exp", "--tree"}, 0},
        Golden{"Broken.txt", {"schema", "Broken.exp", "--assertions"}, 1},
        Golden{"Sets.txt", {"check", "Building.exp", "Sets"}, 1},
        Golden{"Sets.json", {"check", "Building.exp", "Sets", "--json"}, 0},
        Golden{"BrokenSets.txt", {"check", "Building.exp", "BrokenSets"}, 2},
        Golden{"BrokenSets.warnings.txt", {"check", "Building.exp", "BrokenSets", "--warnings"}, 2},
        Golden{"BrokenSets.report.txt", {"check", "Building.exp", "BrokenSets", "--format", "report"}, 2},
        Golden{"Type.txt", typeArguments(), 1}, Golden{"Type.json", withJson(typeArguments()), 1},
        Golden{"Entity.Wall.txt", wallArguments(), 0},
        Golden{"Entity.Wall.json", withJson(wallArguments()), 0},
        Golden{"Entity.Storey.txt", {"entity", "Building.exp", "Sets", "BldStorey"}, 0},
        Golden{"Entity.Duct.txt", {"entity", "Building.exp", "Sets", "BldDuct"}, 0},
        Golden{"SetsOf.txt", setsArguments(), 0}, Golden{"SetsOf.json", withJson(setsArguments()), 0},
        Golden{"Find.Set.txt", {"find", "Building.exp", "Sets", "pset_bldspace"}, 0},
        Golden{"Find.Set.json", {"find", "Building.exp", "Sets", "pset_bldspace", "--json"}, 0},
        Golden{"Find.Member.txt", {"find", "Building.exp", "Sets", MemberGuid}, 0},
        Golden{"Find.Member.json", {"find", "Building.exp", "Sets", MemberGuid, "--json"}, 0},
        Golden{"Config.txt", {"config", "Building.exp", Config}, 0},
        Golden{"Config.json", {"config", "Building.exp", Config, "--json"}, 0},
        Golden{"BrokenConfig.txt", {"config", "Building.exp", BrokenConfig}, 1},
        Golden{"BrokenConfig.json", {"config", "Building.exp", BrokenConfig, "--json"}, 1},
        Golden{"Export.txt", exportArguments(), 0}, Golden{"Export.json", withJson(exportArguments()), 0},
        Golden{"BrokenExport.txt", {"export", "Building.exp", "BrokenSets", "--out", Out}, 2}),
    sGoldenName);

} // namespace

} // namespace kiv::kivifc::test
