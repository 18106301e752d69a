#include "KivifcRun.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv::kivifc::test {

namespace {

using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

TEST(CommandLine, VersionIsThatOfTheProject) {
    const auto run = kivifcRun({"--version"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "kivifc " KIVIFC_VERSION "\n");
}

TEST(CommandLine, HelpNamesTheCommandsAndTheExitStatus) {
    const auto run = kivifcRun({"--help"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr("schema"));
    EXPECT_THAT(run.out, HasSubstr("check"));
    EXPECT_THAT(run.out, HasSubstr("Exit status: 0"));
}

TEST(CommandLine, EachCommandHasItsOwnHelp) {
    EXPECT_THAT(kivifcRun({"schema", "--help"}).out, HasSubstr("--tree"));
    EXPECT_THAT(kivifcRun({"check", "--help"}).out, HasSubstr("--warnings"));
}

struct BadCommandLine {
    std::vector<std::string> arguments;
    const char* named;
};

void PrintTo(const BadCommandLine& bad, std::ostream* stream) {
    for (const auto& argument : bad.arguments)
        *stream << argument << ' ';
}

class BadCommandLines : public testing::TestWithParam<BadCommandLine> {};

TEST_P(BadCommandLines, EndWithStatusTwoAndOneLine) {
    const auto run = kivifcRun(GetParam().arguments);
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, StartsWith("kivifc: command line: "));
    EXPECT_THAT(run.err, HasSubstr(GetParam().named));
    EXPECT_THAT(linesOf(run.err), SizeIs(1));
}

INSTANTIATE_TEST_SUITE_P(
    All, BadCommandLines,
    testing::Values(BadCommandLine{{}, "a command is missing"}, BadCommandLine{{"frobnicate"}, "frobnicate"},
                    BadCommandLine{{"--frob"}, "--frob"}, BadCommandLine{{"schema"}, "FILE"},
                    BadCommandLine{{"schema", "Building.exp", "--frob"}, "--frob"},
                    BadCommandLine{{"schema", "Building.exp", "Broken.exp"}, "Broken.exp"},
                    BadCommandLine{{"schema", "Building.exp", "--tree", "--json"}, "--json"},
                    BadCommandLine{{"schema", "Building.exp", "--tree", "--assertions"}, "--assertions"},
                    BadCommandLine{{"check"}, "FILE"}, BadCommandLine{{"check", "Building.exp"}, "PATH"},
                    BadCommandLine{{"check", "Building.exp", "Sets", "--format", "yaml"}, "yaml"},
                    BadCommandLine{{"check", "Building.exp", "Sets", "--json", "--format", "report"},
                                   "--json"},
                    BadCommandLine{{"check", "Building.exp", "Sets", "--report"}, "--report"}));

TEST(StandardOutput, FullDiskIsAFailure) {
    for (const auto& arguments : std::vector<std::vector<std::string>>{{"schema", "Building.exp"},
                                                                       {"schema", "Building.exp", "--json"},
                                                                       {"schema", "Building.exp", "--tree"},
                                                                       {"check", "Building.exp", "Sets"},
                                                                       {"--help"},
                                                                       {"--version"}}) {
        const auto run = kivifcRun(arguments, {.outputPath = "/dev/full"});
        EXPECT_EQ(run.status, 2) << arguments.front();
        EXPECT_EQ(run.err, "kivifc: standard output: No space left on device\n") << arguments.front();
    }
}

TEST(StandardOutput, ClosedPipeIsAFailureAndNoSilentEnd) {
    const auto run = kivifcRun({"schema", "Building.exp", "--json"}, {.isOutputClosed = true});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err, "kivifc: standard output: Broken pipe\n");
}

TEST(CommandLine, PathInBracketsIsOnePath) {
    const TemporaryFolder folder;
    const auto run = kivifcRun({"check", "Building.exp", "[a,b]"});
    EXPECT_EQ(run.err, "kivifc: ./[a,b]: No such file or directory\n");
}

} // namespace

} // namespace kiv::kivifc::test
