// What a signal leaves behind that ends an export, whenever it comes.
#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/Commands/LongSets.h"
#include "Tools/kivifc/KivifcInterrupt.h"
#include "Tools/kivifc/KivifcRun.h"

#include <csignal>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <vector>

namespace kiv::kivifc::test {

namespace {

namespace fs = std::filesystem;

using kiv::test::sFileText;
using kiv::test::TemporaryFolder;
using testing::HasSubstr;

/// Files of the export are whole, and there is nothing else but `leftovers` at most.
void vExpectWhole(const std::string& out, int leftovers) {
    for (const auto& entry : fs::directory_iterator(out)) {
        if (entry.path().extension() == ".xml") {
            EXPECT_THAT(sFileText(entry.path().native()), HasSubstr("\n<!-- kivifc export ")) << entry.path();
        } else {
            EXPECT_GE(--leftovers, 0) << entry.path();
        }
    }
}

class ExportSignal : public testing::TestWithParam<int> {};

TEST_P(ExportSignal, LeavesWholeFilesAndEndsTheProgramItself) {
    const TemporaryFolder folder;
    vLongSetsWrite(folder);
    const auto out = folder.sPath("out");
    const std::vector<std::string> words{"export", "Building.exp", folder.sPath("sets"), "--out", out};
    for (int files = 1; files < 30; files += 7) {
        fs::remove_all(out);
        const auto status = kivifcInterrupt(words, GetParam(), [&] {
            std::error_code error;
            const fs::directory_iterator begin(out, error);
            return !error && std::distance(begin, fs::directory_iterator()) >= files;
        });
        ASSERT_TRUE(WIFSIGNALED(status)) << "it was done before the signal came";
        EXPECT_EQ(WTERMSIG(status), GetParam());
        vExpectWhole(out, GetParam() == SIGKILL ? 1 : 0);
    }
    const auto run = kivifcRun(words);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    vExpectWhole(out, 0);
    EXPECT_EQ(linesOf(run.out).size(), static_cast<std::size_t>(LongSets));
}

INSTANTIATE_TEST_SUITE_P(All, ExportSignal, testing::Values(SIGINT, SIGTERM, SIGHUP, SIGKILL));

} // namespace

} // namespace kiv::kivifc::test
