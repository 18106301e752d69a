#include "kivifc/Documents/Folder.h"

#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/ChildProcess.h"
#include "kivifc/Program/UnfinishedFile.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace kiv::kivifc::test {

namespace {

namespace fs = std::filesystem;

using kiv::test::namesIn;
using kiv::test::sFileText;
using kiv::test::TemporaryFolder;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr uid_t SomeUser = 12345;
constexpr gid_t SomeGroup = 23456;

struct stat statusOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
    return status;
}

mode_t modeOf(const std::string& path) {
    return statusOf(path).st_mode & 07777U;
}

Descriptor opened(const std::string& path) {
    std::string failure;
    auto folder = folderOpen(path, "", failure);
    EXPECT_EQ(failure, "");
    return folder;
}

/// Replaces a file, and is ended while it writes by the signal of a file that becomes too large.
void vKilledReplace(const std::string& path) {
    const rlimit limit{1000, 1000};
    setrlimit(RLIMIT_FSIZE, &limit);
    sFileReplace(path, std::string(1000000, 'x'));
}

/// Leaves what an export leaves that is killed, and gives its path.
std::string sLeftover(const TemporaryFolder& folder) {
    const auto before = namesIn(folder.sPath(""));
    const auto status = childStatus([&] {
        std::signal(SIGXFSZ, SIG_DFL);
        vKilledReplace(folder.sPath("x.xml"));
    });
    EXPECT_TRUE(WIFSIGNALED(status));
    for (const auto& name : namesIn(folder.sPath(""))) {
        if (!std::ranges::binary_search(before, name))
            return folder.sPath(name);
    }
    ADD_FAILURE() << "nothing is left";
    return {};
}

TEST(DescriptorTest, SaysWhetherItCouldBeClosed) {
    Descriptor file(open("/dev/null", O_RDONLY));
    EXPECT_TRUE(file.boClose());
    EXPECT_FALSE(file.isOpen());
    Descriptor lost(open("/dev/null", O_RDONLY));
    close(lost.getNumber());
    EXPECT_FALSE(lost.boClose());
    EXPECT_EQ(errno, EBADF);
    EXPECT_FALSE(lost.isOpen());
}

TEST(Folder, IsMadeWithThoseThatLeadToIt) {
    const TemporaryFolder folder;
    std::string failure;
    const auto inner = folderOpen(folder.sPath("a/b"), "c/d", failure);
    EXPECT_EQ(failure, "");
    EXPECT_EQ(sFileReplace(inner, "x.xml", "text"), "");
    EXPECT_EQ(sFileText(folder.sPath("a/b/c/d/x.xml")), "text");
}

TEST(Folder, LinkLeadsToTheTopAndNoFurther) {
    const TemporaryFolder folder;
    fs::create_directory(folder.sPath("real"));
    fs::create_directory(folder.sPath("real/inner"));
    fs::create_directory_symlink("real", folder.sPath("link"));
    fs::create_directory_symlink("inner", folder.sPath("real/away"));
    std::string failure;
    EXPECT_TRUE(folderOpen(folder.sPath("link"), "inner", failure).isOpen());
    EXPECT_EQ(failure, "");
    for (const char* inner : {"away", "away/below"}) {
        EXPECT_FALSE(folderOpen(folder.sPath("link"), inner, failure).isOpen());
        EXPECT_EQ(failure, "\"away\" is a symbolic link, which no export follows");
    }
    fs::create_directory_symlink("nowhere", folder.sPath("real/dangling"));
    EXPECT_FALSE(folderOpen(folder.sPath("link"), "dangling", failure).isOpen());
    EXPECT_EQ(failure, "\"dangling\" is a symbolic link, which no export follows");
    EXPECT_THAT(namesIn(folder.sPath("real/inner")), IsEmpty());
}

TEST(Folder, FileInItsPlaceIsNoFolder) {
    const TemporaryFolder folder;
    folder.sWrite("file", "mine");
    std::string failure;
    EXPECT_FALSE(folderOpen(folder.sPath(""), "file", failure).isOpen());
    EXPECT_EQ(failure, "Not a directory");
    failure.clear();
    EXPECT_FALSE(folderOpen(folder.sPath("file"), "", failure).isOpen());
    EXPECT_EQ(failure, "Not a directory");
}

TEST(Folder, StaysTheOneThatWasOpened) {
    const TemporaryFolder folder;
    fs::create_directory(folder.sPath("a"));
    fs::create_directory(folder.sPath("b"));
    const auto open = opened(folder.sPath("a"));
    fs::rename(folder.sPath("a"), folder.sPath("c"));
    fs::create_directory_symlink("b", folder.sPath("a"));
    EXPECT_EQ(sFileReplace(open, "x.xml", "text"), "");
    EXPECT_THAT(namesIn(folder.sPath("b")), IsEmpty());
    EXPECT_THAT(namesIn(folder.sPath("c")), ElementsAre("x.xml"));
}

TEST(FileReplace, FileKeepsItsMode) {
    const TemporaryFolder folder;
    const auto path = folder.sWrite("x.xml", "old");
    for (const mode_t mode : {0600U, 0640U, 0444U, 0777U, 02755U}) {
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        EXPECT_EQ(sFileReplace(path, "new"), "");
        EXPECT_EQ(modeOf(path), mode);
    }
    EXPECT_EQ(sFileText(path), "new");
}

TEST(FileReplace, NewFileHasTheModeThatTheUmaskLeaves) {
    const TemporaryFolder folder;
    const auto former = umask(027);
    EXPECT_EQ(sFileReplace(folder.sPath("x.xml"), "text"), "");
    umask(former);
    EXPECT_EQ(modeOf(folder.sPath("x.xml")), 0640U);
}

TEST(FileReplace, LinkIsReplacedAndDoesNotHandItsModeOn) {
    const TemporaryFolder folder;
    const auto target = folder.sWrite("target", "mine");
    ASSERT_EQ(chmod(target.c_str(), 0777), 0);
    fs::create_symlink("target", folder.sPath("x.xml"));
    const auto former = umask(022);
    EXPECT_EQ(sFileReplace(opened(folder.sPath("")), "x.xml", "text"), "");
    umask(former);
    EXPECT_EQ(modeOf(folder.sPath("x.xml")), 0644U);
    EXPECT_EQ(sFileText(target), "mine");
}

TEST(FileReplace, FileKeepsItsOwnerWhereThatIsPermitted) {
    if (geteuid() != 0)
        GTEST_SKIP() << "left out: only root may give files away";
    const TemporaryFolder folder;
    const auto path = folder.sWrite("x.xml", "old");
    ASSERT_EQ(chown(path.c_str(), SomeUser, SomeGroup), 0);
    ASSERT_EQ(chmod(path.c_str(), 06755), 0);
    EXPECT_EQ(sFileReplace(path, "new"), "");
    EXPECT_EQ(statusOf(path).st_uid, SomeUser);
    EXPECT_EQ(statusOf(path).st_gid, SomeGroup);
    EXPECT_EQ(modeOf(path), 06755U);
}

TEST(FileReplace, FileOfSomebodyElseBecomesOnesOwnWithoutTheRightsItLent) {
    if (geteuid() != 0)
        GTEST_SKIP() << "left out: only root may become somebody else";
    const TemporaryFolder folder;
    const auto path = folder.sWrite("x.xml", "old");
    ASSERT_EQ(chmod(path.c_str(), 06754), 0);
    ASSERT_EQ(chmod(folder.sPath("").c_str(), 0777), 0);
    const auto status = childStatus([&] {
        if (setgid(SomeGroup) != 0 || setuid(SomeUser) != 0 || !sFileReplace(path, "new").empty())
            _exit(1);
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(sFileText(path), "new");
    EXPECT_EQ(statusOf(path).st_uid, SomeUser);
    // Its group is another one now, which gets no more than everybody.
    EXPECT_EQ(modeOf(path), 0744U);
}

TEST(FileReplace, SignalInTheMiddleLeavesTheFormerFileAndNoOther) {
    const TemporaryFolder folder;
    const auto path = folder.sWrite("x.xml", "old");
    const auto status = childStatus([&] {
        vEndSignalsCatch();
        std::signal(SIGXFSZ, [](int) { raise(SIGTERM); });
        vKilledReplace(path);
    });
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGTERM);
    EXPECT_THAT(namesIn(folder.sPath("")), ElementsAre("x.xml"));
    EXPECT_EQ(sFileText(path), "old");
}

TEST(Leftover, IsRemovedByWhoWritesNext) {
    const TemporaryFolder folder;
    for (int count = 0; count < 20; ++count) {
        const auto leftover = sLeftover(folder);
        // The next one that is killed has removed it already.
        EXPECT_THAT(namesIn(folder.sPath("")), SizeIs(1));
        EXPECT_GT(fs::file_size(leftover), 0U);
    }
    EXPECT_EQ(sFileReplace(folder.sPath("x.xml"), "text"), "");
    EXPECT_THAT(namesIn(folder.sPath("")), ElementsAre("x.xml"));
}

TEST(Leftover, StaysWhileItsWriterIsAlive) {
    const TemporaryFolder folder;
    const auto leftover = sLeftover(folder);
    {
        const Descriptor writer(open(leftover.c_str(), O_WRONLY));
        ASSERT_EQ(flock(writer.getNumber(), LOCK_EX), 0);
        vLeftoversRemove(opened(folder.sPath("")));
        EXPECT_TRUE(fs::exists(leftover));
    }
    vLeftoversRemove(opened(folder.sPath("")));
    EXPECT_FALSE(fs::exists(leftover));
}

TEST(Leftover, StaysWhenItIsNotSurelyOne) {
    const TemporaryFolder folder;
    const auto leftover = sLeftover(folder);
    const auto vExpectKept = [&](const std::string& path) {
        vLeftoversRemove(opened(folder.sPath("")));
        EXPECT_TRUE(fs::exists(fs::symlink_status(path))) << path;
    };
    // Another name, by one byte.
    auto other = leftover;
    other.back() = other.back() == '0' ? '1' : '0';
    fs::rename(leftover, other);
    vExpectKept(other);
    const auto longer = leftover + "0";
    fs::rename(other, longer);
    vExpectKept(longer);
    const auto start = folder.sWrite(".kivifc-export-", "");
    vExpectKept(start);
    // Another name beside it.
    fs::rename(longer, leftover);
    const auto second = folder.sPath("second");
    fs::create_hard_link(leftover, second);
    vExpectKept(leftover);
    fs::remove(leftover);
    // No file.
    fs::create_symlink("second", leftover);
    vExpectKept(leftover);
    EXPECT_TRUE(fs::exists(second));
    fs::remove(leftover);
    fs::create_directory(leftover);
    vExpectKept(leftover);
    fs::remove(leftover);
    ASSERT_EQ(mkfifo(leftover.c_str(), 0600), 0);
    vExpectKept(leftover);
    fs::remove(leftover);
    // It is removed when all is as it was.
    fs::rename(second, leftover);
    vLeftoversRemove(opened(folder.sPath("")));
    EXPECT_FALSE(fs::exists(leftover));
}

TEST(Leftover, ThatMayOnlyBeReadIsRemovedToo) {
    const TemporaryFolder folder;
    const auto leftover = sLeftover(folder);
    ASSERT_EQ(chmod(leftover.c_str(), 0444), 0);
    // Root may write to any file, so somebody else removes it.
    const bool isRoot = geteuid() == 0;
    if (isRoot) {
        ASSERT_EQ(chmod(folder.sPath("").c_str(), 0777), 0);
        ASSERT_EQ(chown(leftover.c_str(), SomeUser, SomeGroup), 0);
    }
    const auto status = childStatus([&] {
        if (isRoot && (setgid(SomeGroup) != 0 || setuid(SomeUser) != 0))
            _exit(1);
        vLeftoversRemove(opened(folder.sPath("")));
    });
    EXPECT_EQ(status, 0);
    EXPECT_FALSE(fs::exists(leftover));
}

TEST(Leftover, OfSomebodyElseStays) {
    if (geteuid() != 0)
        GTEST_SKIP() << "left out: only root may give files away";
    const TemporaryFolder folder;
    const auto leftover = sLeftover(folder);
    ASSERT_EQ(chown(leftover.c_str(), SomeUser, SomeGroup), 0);
    vLeftoversRemove(opened(folder.sPath("")));
    EXPECT_TRUE(fs::exists(leftover));
}

/// Names like those of earlier versions.
TEST(Leftover, ThousandFilesOfLikeNamesAreNotInTheWay) {
    const TemporaryFolder folder;
    for (int number = 0; number < 1000; ++number)
        folder.sWrite(".kivifc-export-" + std::to_string(number), "");
    EXPECT_EQ(sFileReplace(folder.sPath("x.xml"), "text"), "");
    EXPECT_THAT(namesIn(folder.sPath("")), SizeIs(1001));
}

} // namespace

} // namespace kiv::kivifc::test
