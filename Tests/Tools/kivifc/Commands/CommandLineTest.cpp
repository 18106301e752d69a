#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/KivifcRun.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace kiv::kivifc::test {

namespace {

using kiv::test::TemporaryFolder;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::SizeIs;
using testing::StartsWith;

TEST(CommandLine, VersionIsThatOfTheProjectWithCommitAndCompiler) {
    const auto run = kivifcRun({"--version"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, StartsWith("kivifc " KIVIFC_VERSION " (commit "));
    EXPECT_THAT(run.out,
                MatchesRegex(R"([^(]+\(commit ([0-9a-f]{7,}|unknown), (GCC|Clang) [0-9]+\.[0-9]+\.[0-9]+\)
)"));
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
    EXPECT_THAT(kivifcRun({"type", "--help"}).out, HasSubstr("QUESTION"));
    EXPECT_THAT(kivifcRun({"entity", "--help"}).out, HasSubstr("--config"));
    EXPECT_THAT(kivifcRun({"sets", "--help"}).out, HasSubstr("--unrestricted"));
    EXPECT_THAT(kivifcRun({"find", "--help"}).out, HasSubstr("GUID"));
    EXPECT_THAT(kivifcRun({"export", "--help"}).out, HasSubstr("--generate-guids"));
    EXPECT_THAT(kivifcRun({"config", "--help"}).out, HasSubstr("CONFIG"));
}

struct BadCommandLine {
    std::vector<std::string> arguments;
    const char* named;
};

void PrintTo(const BadCommandLine& bad, std::ostream* stream) {
    for (const auto& argument : bad.arguments)
        *stream << argument << ' ';
}

class CommandLineFault : public testing::TestWithParam<BadCommandLine> {};

TEST_P(CommandLineFault, EndWithStatusTwoAndOneLine) {
    const auto run = kivifcRun(GetParam().arguments);
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, StartsWith("kivifc: command line: "));
    EXPECT_THAT(run.err, HasSubstr(GetParam().named));
    EXPECT_THAT(linesOf(run.err), SizeIs(1));
}

INSTANTIATE_TEST_SUITE_P(
    All, CommandLineFault,
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

INSTANTIATE_TEST_SUITE_P(
    LookUp, CommandLineFault,
    testing::Values(
        BadCommandLine{{"type"}, "FILE"}, BadCommandLine{{"type", "Building.exp"}, "QUESTION"},
        BadCommandLine{{"type", "Building.exp", "Sets"}, "a question is missing"},
        BadCommandLine{{"type", "Building.exp", "BldWall.Name", "--frob"}, "--frob"},
        BadCommandLine{{"entity"}, "FILE"}, BadCommandLine{{"entity", "Building.exp"}, "NAME"},
        BadCommandLine{{"entity", "Building.exp", "BldWall", "--config"}, "--config"},
        BadCommandLine{{"entity", "Building.exp", "BldWall", "--frob"}, "--frob"},
        BadCommandLine{{"sets"}, "FILE"}, BadCommandLine{{"sets", "Building.exp"}, "SETS"},
        BadCommandLine{{"sets", "Building.exp", "Sets"}, "--entity"},
        BadCommandLine{{"sets", "Building.exp", "Sets", "--entity"}, "--entity"},
        BadCommandLine{{"sets", "Building.exp", "Sets", "--entity", "BldWall", "--frob"}, "--frob"},
        BadCommandLine{{"find"}, "FILE"}, BadCommandLine{{"find", "Building.exp"}, "NAME-OR-GUID"},
        BadCommandLine{{"find", "Building.exp", "Sets", "Pset_BldWall", "--frob"}, "--frob"},
        BadCommandLine{{"config"}, "FILE"}, BadCommandLine{{"config", "Building.exp"}, "CONFIG"},
        BadCommandLine{{"config", "Building.exp", "a.xml", "b.xml"}, "b.xml"},
        BadCommandLine{{"config", "Building.exp", "a.xml", "--frob"}, "--frob"},
        BadCommandLine{{"export"}, "FILE"}, BadCommandLine{{"export", "Building.exp"}, "SETS"},
        BadCommandLine{{"export", "Building.exp", "Sets"}, "--out"},
        BadCommandLine{{"export", "Building.exp", "Sets", "--out"}, "--out"},
        BadCommandLine{{"export", "Building.exp", "Sets", "--out", ""}, "no folder is named"},
        BadCommandLine{{"export", "Building.exp", "Sets", "--out", "/dev/null", "--frob"}, "--frob"}));

/// Arguments with which a command does its job. "OUT" is replaced by a folder of the test's own.
using Arguments = std::vector<std::string>;

/// The commands that take sets, which come after the schema.
const std::vector<Arguments> SetLookUpArguments{{"type", "Building.exp", "Sets", "Pset_BldWall.Mark"},
                                                {"entity", "Building.exp", "Sets", "BldWall"},
                                                {"sets", "Building.exp", "Sets", "--entity", "BldWall"},
                                                {"find", "Building.exp", "Sets", "Pset_BldWall"},
                                                {"export", "Building.exp", "Sets", "--out", "OUT"}};

const Arguments ConfigArguments{"config", "Building.exp",
                                "../../Tests/Tools/kivifc/Data/Building.config.xml"};

std::string sTestName(const testing::TestParamInfo<Arguments>& row) {
    return row.param.front();
}

class LookUp : public testing::TestWithParam<Arguments> {
protected:
    /// The arguments with the folder in place of "OUT".
    Arguments arguments() const {
        auto words = GetParam();
        std::ranges::replace(words, "OUT", folder_.sPath("out"));
        return words;
    }

    /// The same with further sets.
    Arguments argumentsWith(const std::string& sets) const {
        auto words = arguments();
        words.insert(words.begin() + 3, sets);
        return words;
    }

    const TemporaryFolder folder_;
};

class SetLookUp : public LookUp {};

TEST_P(LookUp, DoTheirJobAndAreSilentOnStandardError) {
    const auto run = kivifcRun(arguments());
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.out, "");
    EXPECT_EQ(run.err, "");
}

TEST_P(LookUp, SchemaThatCannotBeReadIsTheOnlyFailure) {
    struct Row {
        const char* path;
        const char* reason;
    };
    const Row rows[] = {{"none.exp", "No such file or directory"},
                        {"Sets", "Is a directory"},
                        {"Sets/Qto_BldAny.xml", "not a schema: no line with SCHEMA"}};
    for (const auto& row : rows) {
        auto words = arguments();
        words[1] = row.path;
        const auto run = kivifcRun(words);
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, std::string("kivifc: ") + row.path + ": " + row.reason + "\n");
    }
}

TEST_P(LookUp, FullDiskIsAFailureOfOneLine) {
    for (const bool jsonAsked : {false, true}) {
        auto words = arguments();
        if (jsonAsked)
            words.emplace_back("--json");
        const auto run = kivifcRun(words, {.outputPath = "/dev/full"});
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.err, "kivifc: standard output: No space left on device\n");
    }
}

/// Sets that cannot be had among good ones: one line reports them, and the good ones are used.
TEST_P(SetLookUp, SetsThatCannotBeReadAreOneLineAndTheOthersAreUsed) {
    std::filesystem::create_directory(folder_.sPath("empty"));
    folder_.sWrite("mixed/text.txt", "no document");
    const auto open = folder_.sWrite("mixed/open.xml", "<PropertySetDef>");
    struct Row {
        std::string argument;
        std::string line;
    };
    const Row rows[] = {
        {folder_.sPath("empty"), folder_.sPath("empty") + ": no document (*.xml) in this folder"},
        {"office=" + folder_.sPath("empty"), folder_.sPath("empty") + ": no document (*.xml) in this folder"},
        {folder_.sPath("mixed"), open + ":1:17: no element found"},
        {"office=" + open, open + ":1:17: no element found"},
        {"office=", "office=: no path behind the name of the context"},
        {"office=Setz", "Setz: No such file or directory"},
        {"a=b=c", "b=c: No such file or directory"},
    };
    const auto good = kivifcRun(arguments());
    for (const auto& row : rows) {
        const auto run = kivifcRun(argumentsWith(row.argument));
        EXPECT_EQ(run.status, 2) << row.argument;
        EXPECT_EQ(run.out, good.out) << row.argument;
        EXPECT_EQ(run.err, "kivifc: " + row.line + "\n");
    }
}

TEST_P(SetLookUp, PathsThatAreNotThereAreFailures) {
    // An argument that is no path is a question to the command that takes several of them.
    const bool areQuestions = GetParam().front() == "type";
    for (const std::string path : {"Setz", "=Sets", ""}) {
        const auto run = kivifcRun(argumentsWith(path));
        EXPECT_EQ(run.status, 2) << path;
        EXPECT_EQ(run.err,
                  "kivifc: " + path +
                      (areQuestions ? ": neither an existing path nor a question such as Set.Member\n"
                                    : ": No such file or directory\n"));
    }
}

INSTANTIATE_TEST_SUITE_P(WithSets, LookUp, testing::ValuesIn(SetLookUpArguments), sTestName);
INSTANTIATE_TEST_SUITE_P(WithConfig, LookUp, testing::Values(ConfigArguments), sTestName);
INSTANTIATE_TEST_SUITE_P(All, SetLookUp, testing::ValuesIn(SetLookUpArguments), sTestName);

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

/// By its status and not by a signal, and without a line: `head` had what it wanted.
TEST(StandardOutput, ClosedPipeIsASilentFailure) {
    for (const auto& arguments : std::vector<std::vector<std::string>>{{"schema", "Building.exp"},
                                                                       {"schema", "Building.exp", "--json"},
                                                                       {"entity", "Building.exp", "BldWall"},
                                                                       {"explain"}}) {
        const auto run = kivifcRun(arguments, {.isOutputClosed = true});
        EXPECT_EQ(run.status, 2) << arguments.front();
        EXPECT_EQ(run.err, "") << arguments.front();
    }
}

TEST(CommandLine, PathInBracketsIsOnePath) {
    const TemporaryFolder folder;
    const auto run = kivifcRun({"check", "--warnings", "Building.exp", "[a,b]"});
    EXPECT_EQ(run.err, "kivifc: ./[a,b]: No such file or directory\n");
}

TEST(CommandLine, TwoDashesMayComeBetweenSetsAndQuestions) {
    struct Row {
        std::vector<std::string> arguments;
        std::vector<std::string> without;
    };
    const Row rows[] = {
        {{"type", "Building.exp", "Sets", "--", "BldWall.Tag"},
         {"type", "Building.exp", "Sets", "BldWall.Tag"}},
        {{"type", "--json", "Building.exp", "--", "Sets", "BldWall.Tag"},
         {"type", "--json", "Building.exp", "Sets", "BldWall.Tag"}},
        {{"find", "Building.exp", "Sets", "--", "Pset_BldWall"},
         {"find", "Building.exp", "Sets", "Pset_BldWall"}},
        {{"entity", "--", "Building.exp", "BldWall"}, {"entity", "Building.exp", "BldWall"}},
    };
    for (const auto& row : rows) {
        const auto run = kivifcRun(row.arguments);
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.out, kivifcRun(row.without).out);
    }
}

TEST(CommandLine, NothingAfterTwoDashesIsAnOptionOrACommand) {
    EXPECT_EQ(kivifcRun({"find", "Building.exp", "Sets", "--", "--json"}).err,
              "kivifc: not found: no set or GUID \"--json\"\n");
    EXPECT_EQ(kivifcRun({"find", "Building.exp", "--", "check"}).err,
              "kivifc: not found: no set or GUID \"check\"\n");
    EXPECT_EQ(kivifcRun({"check", "--warnings", "Building.exp", "--", "[a,b]"}).err,
              "kivifc: [a,b]: No such file or directory\n");
    EXPECT_EQ(kivifcRun({"--", "check"}).err,
              "kivifc: command line: The following argument was not expected: check; see kivifc --help\n");
    EXPECT_EQ(kivifcRun({"check", "--warnings", "Building.exp",
                         "\x01"
                         "a"})
                  .err,
              "kivifc: \\x01a: No such file or directory\n");
}

TEST(CommandLine, PipeInAFolderOfSetsIsAFailureAndTheOthersAreUsed) {
    const TemporaryFolder folder;
    folder.sWrite("sets/b.xml", "<PropertySetDef><Name>Pset_B</Name></PropertySetDef>");
    ASSERT_EQ(mkfifo(folder.sPath("sets/a.xml").c_str(), 0600), 0);
    const auto run = kivifcRun({"find", "Building.exp", folder.sPath("sets"), "Pset_B"});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.out, HasSubstr("Pset_B"));
    EXPECT_EQ(run.err, "kivifc: " + folder.sPath("sets/a.xml") +
                           ": a pipe in a folder is not read unless its path is given\n");
}

} // namespace

} // namespace kiv::kivifc::test
