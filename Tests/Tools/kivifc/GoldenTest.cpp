// The sample data, checked whole: what kivifc prints about it is compared with reviewed files in Golden.
//
// When the output changes on purpose, `KIV_ACCEPT_GOLDEN=1 ./dev test dev -R KivifcGolden` writes the files
// anew (and passes); the difference is then to be reviewed line by line against the sample and its README.
#include "Tools/kivifc/KivifcRun.h"
#include "Tools/kivifc/TemporaryFolder.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace kiv::kivifc::test {

namespace {

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

std::string sTestName(const testing::TestParamInfo<Golden>& row) {
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

/// Replaced by a folder of the run's own, in arguments and in the output.
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

std::string sReplaced(std::string text, const std::string& what, const std::string& by) {
    for (auto pos = text.find(what); pos != std::string::npos; pos = text.find(what, pos + by.size()))
        text.replace(pos, what.size(), by);
    return text;
}

void vExpectGolden(const std::string& text, const std::string& file) {
    const auto path = std::string(KIVIFC_GOLDEN) + '/' + file;
    if (std::getenv("KIV_ACCEPT_GOLDEN"))
        std::ofstream(path, std::ios::binary) << text;
    EXPECT_EQ(text, sFileText(path));
}

TEST_P(KivifcGolden, OutputIsAsReviewed) {
    const TemporaryFolder folder;
    auto arguments = GetParam().arguments;
    std::ranges::replace(arguments, Out, folder.sPath("out"));
    const auto run = kivifcRun(arguments);
    EXPECT_EQ(run.status, GetParam().status);
    vExpectGolden(sReplaced(sGoldenText(run), folder.sPath("out"), Out), GetParam().file);
}

/// All that an export writes, one document after another.
TEST(KivifcGoldenDocuments, ExportIsAsReviewed) {
    const TemporaryFolder folder;
    auto arguments = exportArguments();
    arguments.back() = folder.sPath("out");
    arguments.emplace_back("--basetype");
    std::string text;
    for (const auto& path : linesOf(kivifcRun(arguments).out))
        text += sReplaced(path, folder.sPath("out"), Out) + '\n' + sFileText(path);
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
    sTestName);

} // namespace

} // namespace kiv::kivifc::test
