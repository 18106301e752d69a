#include "Tools/kivifc/KivifcRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

namespace kiv::kivifc::test {

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

TEST(Limits, AreListedWithTheirDefaults) {
    const auto run = kivifcRun({"--limits"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(linesOf(run.out), SizeIs(7));
    EXPECT_THAT(run.out, HasSubstr("  --max-piece            1048576  "));
}

struct Case {
    std::vector<std::string> arguments;
    const char* reported;
};

void PrintTo(const Case& row, std::ostream* stream) {
    for (const auto& argument : row.arguments)
        *stream << argument << ' ';
}

class LimitExceeded : public testing::TestWithParam<Case> {};

TEST_P(LimitExceeded, IsReportedLikeAFileThatCannotBeRead) {
    const auto run = kivifcRun(GetParam().arguments);
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.err, HasSubstr(GetParam().reported));
}

INSTANTIATE_TEST_SUITE_P(
    All, LimitExceeded,
    testing::Values(Case{{"schema", "Building.exp", "--max-input", "1K"},
                         "Building.exp: more than 1024 bytes of input are needed (--max-input)"},
                    Case{{"schema", "Building.exp", "--max-memory", "2K"},
                         "Building.exp: more than 2048 bytes of memory are needed (--max-memory)"},
                    Case{{"schema", "Building.exp", "--max-rule-nodes", "3"},
                         "Building.exp: more than 3 rule nodes are needed (--max-rule-nodes)"},
                    Case{{"schema", "Broken.exp", "--max-reports", "0"},
                         "Broken.exp: more than 0 reports are needed (--max-reports)"},
                    Case{{"check", "/dev/zero", "Sets", "--max-input", "1M"},
                         "/dev/zero: more than 1048576 bytes of input are needed (--max-input)"}));

TEST(Limits, SizesMayHaveUnits) {
    EXPECT_EQ(kivifcRun({"schema", "Building.exp", "--max-memory", "64M"}).status, 0);
}

/// Such numbers must not mean that there is no limit.
TEST(Limits, NumbersThatAreNoneAreRefused) {
    struct Row {
        const char* argument;
        const char* reported;
    };
    const Row rows[] = {
        {"--max-memory=-1", "--max-memory: Value -1 is no number of bytes"},
        {"--max-memory=-5k", "--max-memory: Value -5k is no number of bytes"},
        {"--max-input=99999999999999999999", "--max-input: Value 99999999999999999999 is no number of bytes"},
        {"--max-piece=16384P", "--max-piece: Value 16384P is no number of bytes"},
        {"--max-objects=-1", "--max-objects: Value -1 not in range 0 to 18446744073709551615"},
        {"--max-objects=18446744073709551616", "--max-objects: Value 18446744073709551616 not in range 0"},
        {"--max-rule-nodes=64K", "--max-rule-nodes: Value 64K not in range 0"},
        {"--max-reports=1.5", "--max-reports: Value 1.5 not in range 0"}};
    for (const auto& row : rows) {
        const auto run = kivifcRun({"schema", "Building.exp", row.argument});
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.out, "");
        EXPECT_THAT(run.err, HasSubstr(row.reported));
    }
    EXPECT_EQ(kivifcRun({"schema", "Building.exp", "--max-objects=18446744073709551615"}).status, 0);
}

TEST(Limits, AreOptionsOfCommandsThatReadFiles) {
    EXPECT_THAT(kivifcRun({"find", "--help"}).out, HasSubstr("--max-input"));
    EXPECT_THAT(kivifcRun({"explain", "--help"}).out, Not(HasSubstr("--max-")));
    EXPECT_EQ(kivifcRun({"explain", "--max-input", "1K"}).status, 2);
}

} // namespace

} // namespace kiv::kivifc::test
