// The sample data, checked whole: what kivifc prints about it is compared with reviewed files in Golden.
//
// When the output changes on purpose, `KIV_ACCEPT_GOLDEN=1 ./dev test dev -R KivifcGolden` writes the files anew (and
// passes); the difference is then to be reviewed line by line against the sample and its README.
#include "KivifcRun.h"
#include "TemporaryFolder.h"

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

class KivifcGolden : public testing::TestWithParam<Golden> {};

TEST_P(KivifcGolden, OutputIsAsReviewed) {
    const auto run = kivifcRun(GetParam().arguments);
    const auto path = std::string(KIVIFC_GOLDEN) + '/' + GetParam().file;
    EXPECT_EQ(run.status, GetParam().status);
    if (std::getenv("KIV_ACCEPT_GOLDEN"))
        std::ofstream(path, std::ios::binary) << sGoldenText(run);
    EXPECT_EQ(sGoldenText(run), sFileText(path));
}

INSTANTIATE_TEST_SUITE_P(
    Samples, KivifcGolden,
    testing::Values(
        Golden{"Building.json", {"schema", "Building.exp", "--json"}, 0},
        Golden{"Building.txt", {"schema", "Building.exp"}, 0},
        Golden{"Building.tree.txt", {"schema", "Building.exp", "--tree"}, 0},
        Golden{"Broken.txt", {"schema", "Broken.exp", "--assertions"}, 1},
        Golden{"Sets.txt", {"check", "Building.exp", "Sets"}, 0},
        Golden{"Sets.json", {"check", "Building.exp", "Sets", "--json"}, 0},
        Golden{"BrokenSets.txt", {"check", "Building.exp", "BrokenSets"}, 2},
        Golden{"BrokenSets.warnings.txt", {"check", "Building.exp", "BrokenSets", "--warnings"}, 2},
        Golden{"BrokenSets.report.txt", {"check", "Building.exp", "BrokenSets", "--format", "report"}, 2}),
    sTestName);

} // namespace

} // namespace kiv::kivifc::test
