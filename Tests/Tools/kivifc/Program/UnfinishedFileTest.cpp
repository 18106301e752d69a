#include "kivifc/Program/UnfinishedFile.h"

#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/ChildProcess.h"

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace kiv::kivifc::test {

namespace {

namespace fs = std::filesystem;

using kiv::test::TemporaryFolder;

/// A folder with a file that a child process is writing.
class UnfinishedFile : public testing::Test {
protected:
    void vNote() const {
        close(openat(descriptor_, "file", O_WRONLY | O_CREAT | O_EXCL, 0600));
        vUnfinishedFileNote(descriptor_, "file");
    }

    bool isThere() const { return fs::exists(folder_.sPath("file")); }

    const TemporaryFolder folder_;
    const int descriptor_ = open(folder_.sPath("").c_str(), O_RDONLY | O_DIRECTORY);
};

/// Takes a folder where the interface says file.
void vFileRemove(const void* folder) {
    unlinkat(*static_cast<const int*>(folder), "file", 0);
}

TEST_F(UnfinishedFile, IsRemovedByEachSignalThatThenEndsTheProgram) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        const auto status = childStatus([&] {
            vEndSignalsCatch();
            vNote();
            raise(number);
        });
        EXPECT_TRUE(WIFSIGNALED(status)) << number;
        EXPECT_EQ(WTERMSIG(status), number);
        EXPECT_FALSE(isThere()) << number;
    }
}

TEST_F(UnfinishedFile, StaysWithASignalThatWasIgnoredBefore) {
    const auto status = childStatus([&] {
        std::signal(SIGHUP, SIG_IGN);
        vEndSignalsCatch();
        vNote();
        raise(SIGHUP);
    });
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_TRUE(isThere());
}

TEST_F(UnfinishedFile, SignalIsHandledAsBeforeAfterIt) {
    const auto status = childStatus([&] {
        std::signal(SIGTERM, [](int) { _exit(5); });
        vEndSignalsCatch();
        vNote();
        raise(SIGTERM);
    });
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 5);
    EXPECT_FALSE(isThere());
}

TEST_F(UnfinishedFile, HeldSignalTakesEffectAtTheEndOfTheScope) {
    const auto status = childStatus([&] {
        vEndSignalsCatch();
        {
            const HeldEndSignals held;
            raise(SIGTERM);
            fs::create_directory(folder_.sPath("held"));
        }
        fs::create_directory(folder_.sPath("after"));
    });
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_TRUE(fs::exists(folder_.sPath("held")));
    EXPECT_FALSE(fs::exists(folder_.sPath("after")));
}

TEST_F(UnfinishedFile, FolderIsRemovedByEachSignalUntilItIsForgotten) {
    for (const bool isForgotten : {false, true}) {
        for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
            const auto status = childStatus([&] {
                vEndSignalsCatch();
                close(openat(descriptor_, "file", O_WRONLY | O_CREAT, 0600));
                vUnfinishedFolderNote(vFileRemove, &descriptor_);
                if (isForgotten)
                    vUnfinishedFolderForget();
                raise(number);
            });
            EXPECT_TRUE(WIFSIGNALED(status)) << number;
            EXPECT_EQ(WTERMSIG(status), number);
            EXPECT_EQ(isThere(), isForgotten) << number;
        }
    }
}

TEST_F(UnfinishedFile, StaysOnceItIsForgotten) {
    const auto status = childStatus([&] {
        vEndSignalsCatch();
        vNote();
        vUnfinishedFileForget();
        vUnfinishedFileRemove();
        raise(SIGINT);
    });
    EXPECT_EQ(WTERMSIG(status), SIGINT);
    EXPECT_TRUE(isThere());
}

} // namespace

} // namespace kiv::kivifc::test
