#include "Support/Sanitized.h"
#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/KivifcRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace kiv::kivifc::test {

namespace {

namespace fs = std::filesystem;

using kiv::test::sFileText;
using kiv::test::TemporaryFolder;
using Arguments = std::vector<std::string>;
using kiv::test::isSanitized;
using testing::Each;
using testing::StartsWith;

/// "OUT" is replaced by a folder of the test's own.
const std::vector<Arguments> Jobs{
    {"--help"},
    {"schema", "Building.exp", "--json"},
    {"schema", "Broken.exp", "--assertions"},
    {"check", "Building.exp", "BrokenSets/Broken_UnknownNodes.xml", "--report", "OUT/report.txt"},
    {"check", "Building.exp", "Sets", "--json"},
    {"check", "Building.exp", "BrokenSets/Broken_UnknownNodes.xml", "--format", "json"},
    {"type", "Building.exp", "Sets", "Pset_BldWall.Mark"},
    {"entity", "Building.exp", "Sets", "BldWall", "--json"},
    {"export", "Building.exp", "Sets", "--out", "OUT/sets"},
    {"export", "Building.exp", "Sets", "--out", "OUT/sets", "--json"},
    {"config", "Building.exp", "../../Tests/Tools/kivifc/Data/Building.config.xml"},
};

/// What a run has written, its folder called OUT.
struct Written {
    Run run;
    std::map<std::string, std::string> files;
};

std::string sReplaced(std::string text, const std::string& from, const std::string& to) {
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

/// Without the line with the time, which is another one each time.
std::string sTimeless(const std::string& text) {
    std::string others;
    for (const auto& line : linesOf(text)) {
        if (!line.starts_with("time "))
            others += line + '\n';
    }
    return others;
}

/// What comes of a job that is given that many allocations.
Written jobRun(Arguments words, std::size_t allocations, const std::string& refusal) {
    const TemporaryFolder folder;
    const auto out = folder.sPath("out");
    fs::create_directory(out);
    for (auto& word : words)
        word = sReplaced(word, "OUT", out);
    words.insert(words.begin(), {std::to_string(allocations), refusal});
    Written written;
    written.run = kivifcRun(words, {.program = KIVIFC_WITH_LITTLE_MEMORY});
    written.run.out = sTimeless(sReplaced(written.run.out, out, "OUT"));
    for (const auto& entry : fs::recursive_directory_iterator(out)) {
        if (entry.is_regular_file())
            written.files[entry.path().lexically_relative(out).string()] = sFileText(entry.path().string());
    }
    return written;
}

/// Files are there whole or not at all, and nothing else is. A report is about the documents that could be
/// read, and so is empty where the one that there is could not be.
void vExpectFilesOf(const Written& whole, const Written& written) {
    for (const auto& [name, text] : written.files) {
        const auto found = whole.files.find(name);
        ASSERT_NE(found, whole.files.end()) << name;
        const bool isOfNothing = name == "report.txt" && text.empty();
        EXPECT_EQ(text, isOfNothing ? "" : found->second) << name;
    }
}

/// Either the job was done, or it says that there was not enough memory; of a document that could not be read
/// for want of it, check says so as a finding.
void vExpectDoneOrTold(const Written& whole, const Written& written) {
    vExpectFilesOf(whole, written);
    if (written.run.status == whole.run.status && written.run.err == whole.run.err) {
        EXPECT_EQ(written.run.out, whole.run.out);
        EXPECT_EQ(written.files, whole.files);
        return;
    }
    EXPECT_EQ(written.run.status, 2);
    if (whole.run.out.find("kivifc-check/1") != std::string::npos) {
        EXPECT_TRUE(nlohmann::json::accept(written.run.out)) << written.run.out;
        return;
    }
    const auto lines = linesOf(written.run.err);
    EXPECT_THAT(lines, Each(StartsWith("kivifc: ")));
    const bool isFinding = written.run.out.find(": error: not enough memory [") != std::string::npos;
    EXPECT_TRUE(isFinding ||
                std::ranges::any_of(
                    lines, [](const std::string& line) { return line.ends_with(": not enough memory"); }))
        << written.run.out << written.run.err;
}

class KivifcMemory : public testing::TestWithParam<Arguments> {};

/// The first places closely, later ones in ever larger steps: there are thousands.
TEST_P(KivifcMemory, LackOfItIsReportedAndLeavesNothingHalfDone) {
    constexpr std::size_t Plenty = 1000000;
    constexpr std::size_t Step = isSanitized ? 4 : 12;
    const auto whole = jobRun(GetParam(), Plenty, "all");
    ASSERT_NE(whole.run.status, 2);
    for (const std::string refusal : {"all", "once"}) {
        std::size_t failures = 0;
        for (std::size_t allocations = 0; !HasFailure(); allocations += 1 + allocations / Step) {
            SCOPED_TRACE(std::to_string(allocations) + " allocations, then failing: " + refusal);
            const auto written = jobRun(GetParam(), allocations, refusal);
            vExpectDoneOrTold(whole, written);
            if (written.run.status == 2)
                ++failures;
            else if (refusal == "all" || allocations > 100 * Step * Step)
                break;
        }
        EXPECT_GT(failures, 10U) << refusal;
    }
}

std::string sJobName(const testing::TestParamInfo<Arguments>& row) {
    std::string name = std::to_string(row.index);
    for (const auto& word : row.param) {
        if (std::ranges::all_of(word, [](char byte) { return byte == '-' || (byte >= 'a' && byte <= 'z'); }))
            name += '_' + word.substr(word.find_first_not_of('-'));
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(All, KivifcMemory, testing::ValuesIn(Jobs), sJobName);

} // namespace

} // namespace kiv::kivifc::test
