// What a signal leaves that ends `kivifc site`, whenever it comes.
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

using kiv::test::namesIn;
using kiv::test::sFileText;
using kiv::test::TemporaryFolder;
using testing::ElementsAre;

/// How many files there are in a folder that another program may remove meanwhile.
int countIn(const std::string& path) {
    std::error_code error;
    int count = 0;
    for (fs::directory_iterator entry(path, error); !error && entry != fs::directory_iterator();
         entry.increment(error))
        ++count;
    return count;
}

class SiteSignal : public testing::TestWithParam<int> {};

TEST_P(SiteSignal, LeavesTheFormerSiteAndNoHalfOfAnother) {
    const TemporaryFolder folder;
    vLongSetsWrite(folder);
    const auto site = folder.sPath("out/site");
    const auto unfinished = folder.sPath("out/.site.kivifc-site");
    ASSERT_EQ(kivifcRun({"site", "Building.exp", "--out", site}).status, 0);
    const auto before = sFileText(site + "/.kivifc-site");
    const std::vector<std::string> words{"site", "Building.exp", folder.sPath("sets"), "--out", site};
    for (const int files : {1, 5, 40}) {
        const auto status = kivifcInterrupt(words, GetParam(), [&] { return countIn(unfinished) >= files; });
        ASSERT_TRUE(WIFSIGNALED(status)) << "it was done before the signal came";
        EXPECT_EQ(WTERMSIG(status), GetParam());
        EXPECT_EQ(sFileText(site + "/.kivifc-site"), before);
        if (GetParam() == SIGKILL)
            EXPECT_THAT(namesIn(folder.sPath("out")), ElementsAre(".site.kivifc-site", "site"));
        else
            EXPECT_THAT(namesIn(folder.sPath("out")), ElementsAre("site"));
    }
    const auto run = kivifcRun(words);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_TRUE(fs::exists(site + "/sets/Pset_299.html"));
    EXPECT_THAT(namesIn(folder.sPath("out")), ElementsAre("site"));
}

INSTANTIATE_TEST_SUITE_P(All, SiteSignal, testing::Values(SIGINT, SIGTERM, SIGHUP, SIGKILL));

} // namespace

} // namespace kiv::kivifc::test
