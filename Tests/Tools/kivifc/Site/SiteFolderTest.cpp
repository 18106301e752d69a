#include "kivifc/Site/SiteFolder.h"

#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/ChildProcess.h"
#include "kivifc/Program/UnfinishedFile.h"

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// As of a disk that turns out to be full when a file is closed: close takes place and fails.
bool isCloseFailing = false;

} // namespace

/// In place of that of the C library.
extern "C" int close(int file) {
    const auto result = static_cast<int>(syscall(SYS_close, file));
    if (!isCloseFailing)
        return result;
    errno = ENOSPC;
    return -1;
}

namespace kiv::kivifc::site::test {

namespace {

namespace fs = std::filesystem;

using kiv::test::namesIn;
using kiv::test::sFileText;
using kiv::test::TemporaryFolder;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

std::string sWritten(const std::string& path, std::string_view text, bool isForced = false) {
    SiteFolder folder(path, isForced);
    folder.vWrite(Address(PageName("index.html")), text);
    return folder.sFinish();
}

TEST(SiteFolder, HasItsFilesAndAListOfThem) {
    const TemporaryFolder folder;
    EXPECT_EQ(sWritten(folder.sPath("site"), "first"), "");
    EXPECT_EQ(sFileText(folder.sPath("site/index.html")), "first");
    EXPECT_EQ(sFileText(folder.sPath("site/.kivifc-site")), "kivifc site 1\nindex.html\n");
    EXPECT_THAT(namesIn(folder.sPath("")), ElementsAre("site"));
}

TEST(SiteFolder, FoldersThatLeadToItAreMade) {
    const TemporaryFolder folder;
    EXPECT_EQ(sWritten(folder.sPath("a/b/site/"), "first"), "");
    EXPECT_EQ(sFileText(folder.sPath("a/b/site/index.html")), "first");
}

TEST(SiteFolder, FormerSiteIsReplacedWhole) {
    const TemporaryFolder folder;
    {
        SiteFolder former(folder.sPath("site"), false);
        former.vWrite(Address(PageName("gone.html")), "");
        ASSERT_EQ(former.sFinish(), "");
    }
    EXPECT_EQ(sWritten(folder.sPath("site"), "second"), "");
    EXPECT_EQ(sFileText(folder.sPath("site/index.html")), "second");
    EXPECT_FALSE(fs::exists(folder.sPath("site/gone.html")));
    EXPECT_THAT(namesIn(folder.sPath("")), ElementsAre("site"));
}

TEST(SiteFolder, FormerSiteStaysUntilTheNewOneIsFinished) {
    const TemporaryFolder folder;
    ASSERT_EQ(sWritten(folder.sPath("site"), "first"), "");
    {
        SiteFolder unfinished(folder.sPath("site"), false);
        unfinished.vWrite(Address(PageName("index.html")), "second");
        EXPECT_EQ(sFileText(folder.sPath("site/index.html")), "first");
    }
    EXPECT_EQ(sFileText(folder.sPath("site/index.html")), "first");
    EXPECT_THAT(namesIn(folder.sPath("")), ElementsAre("site"));
}

TEST(SiteFolder, FormerSiteStaysWhenAFileCannotBeWritten) {
    const TemporaryFolder folder;
    ASSERT_EQ(sWritten(folder.sPath("site"), "first"), "");
    {
        SiteFolder failing(folder.sPath("site"), false);
        failing.vWrite(Address(PageName("index.html")), "second");
        // There is one of that name already.
        failing.vWrite(Address(PageName("index.html")), "third");
        EXPECT_EQ(failing.sFinish(), "index.html: File exists");
    }
    EXPECT_EQ(sFileText(folder.sPath("site/index.html")), "first");
    EXPECT_THAT(namesIn(folder.sPath("")), ElementsAre("site"));
}

TEST(SiteFolder, FormerSiteStaysWhenAFileCannotBeClosed) {
    const TemporaryFolder folder;
    ASSERT_EQ(sWritten(folder.sPath("site"), "first"), "");
    {
        SiteFolder failing(folder.sPath("site"), false);
        isCloseFailing = true;
        failing.vWrite(Address(PageName("index.html")), "second");
        isCloseFailing = false;
        failing.vWrite(Address(PageName("other.html")), "second");
        EXPECT_EQ(failing.sFinish(), "index.html: No space left on device");
    }
    EXPECT_EQ(sFileText(folder.sPath("site/index.html")), "first");
    EXPECT_THAT(namesIn(folder.sPath("")), ElementsAre("site"));
}

TEST(SiteFolder, FolderOfSomebodyElseIsRefused) {
    const TemporaryFolder folder;
    folder.sWrite("site/notes.txt", "mine");
    EXPECT_THAT(sWritten(folder.sPath("site"), "first"), HasSubstr("kivifc did not make this folder"));
    EXPECT_EQ(sFileText(folder.sPath("site/notes.txt")), "mine");
    EXPECT_THAT(namesIn(folder.sPath("")), ElementsAre("site"));
}

TEST(SiteFolder, SiteWithAFileOfSomebodyElseIsRefused) {
    const TemporaryFolder folder;
    ASSERT_EQ(sWritten(folder.sPath("site"), "first"), "");
    folder.sWrite("site/more/notes.txt", "mine");
    EXPECT_THAT(sWritten(folder.sPath("site"), "second"), HasSubstr("\"more/notes.txt\""));
    EXPECT_EQ(sFileText(folder.sPath("site/index.html")), "first");
}

TEST(SiteFolder, FolderOfSomebodyElseIsReplacedWhenThatIsAsked) {
    const TemporaryFolder folder;
    folder.sWrite("site/notes.txt", "mine");
    EXPECT_EQ(sWritten(folder.sPath("site"), "first", true), "");
    EXPECT_THAT(namesIn(folder.sPath("site")),
                UnorderedElementsAre("index.html", ".kivifc-site", "sets", "assets"));
}

TEST(SiteFolder, EmptyFolderIsReplaced) {
    const TemporaryFolder folder;
    fs::create_directory(folder.sPath("site"));
    EXPECT_EQ(sWritten(folder.sPath("site"), "first"), "");
}

TEST(SiteFolder, FileIsRefused) {
    const TemporaryFolder folder;
    folder.sWrite("site", "mine");
    EXPECT_EQ(sWritten(folder.sPath("site"), "first", true), "is no folder");
    EXPECT_EQ(sFileText(folder.sPath("site")), "mine");
}

TEST(SiteFolder, LinkStaysAndWhatItLeadsToIsReplaced) {
    const TemporaryFolder folder;
    ASSERT_EQ(sWritten(folder.sPath("real"), "first"), "");
    fs::create_directory_symlink("real", folder.sPath("link"));
    EXPECT_EQ(sWritten(folder.sPath("link"), "second"), "");
    EXPECT_TRUE(fs::is_symlink(folder.sPath("link")));
    EXPECT_EQ(sFileText(folder.sPath("real/index.html")), "second");
}

/// A marker that is a link could list anything.
TEST(SiteFolder, MarkThatIsALinkIsNone) {
    const TemporaryFolder folder;
    folder.sWrite("list", "kivifc site 1\nnotes.txt\n");
    folder.sWrite("site/notes.txt", "mine");
    fs::create_symlink("../list", folder.sPath("site/.kivifc-site"));
    EXPECT_THAT(sWritten(folder.sPath("site"), "first"), HasSubstr("kivifc did not make this folder"));
}

TEST(SiteFolder, LeftoverOfAKilledSiteIsRemoved) {
    const TemporaryFolder folder;
    folder.sWrite(".site.kivifc-site/index.html", "left");
    folder.sWrite(".site.kivifc-site/.kivifc-site-unfinished", "");
    EXPECT_EQ(sWritten(folder.sPath("site"), "first"), "");
    EXPECT_EQ(sFileText(folder.sPath("site/index.html")), "first");
    EXPECT_THAT(namesIn(folder.sPath("")), ElementsAre("site"));
}

TEST(SiteFolder, LeftoverOfSomebodyElseStaysEvenWhenItIsInTheWay) {
    for (const std::string name : {".site.kivifc-site", ".site.kivifc-site-former"}) {
        const TemporaryFolder folder;
        ASSERT_EQ(sWritten(folder.sPath("site"), "first"), "");
        folder.sWrite(name + "/notes.txt", "mine");
        EXPECT_THAT(sWritten(folder.sPath("site"), "second", true),
                    HasSubstr(name + "\", which kivifc did not make, is in the way"));
        EXPECT_EQ(sFileText(folder.sPath(name + "/notes.txt")), "mine");
        EXPECT_EQ(sFileText(folder.sPath("site/index.html")), "first");
    }
}

/// A system on which two folders cannot change places.
bool boNever(const fs::path&, const fs::path&) {
    return false;
}

TEST(SiteFolder, FormerSiteIsReplacedInTwoStepsWhereOneIsNotPossible) {
    const TemporaryFolder folder;
    for (const std::string text : {"first", "second", "third"}) {
        SiteFolder site(folder.sPath("site"), false, boNever);
        site.vWrite(Address(PageName("index.html")), text);
        EXPECT_EQ(site.sFinish(), "");
        EXPECT_EQ(sFileText(folder.sPath("site/index.html")), text);
        EXPECT_THAT(namesIn(folder.sPath("")), ElementsAre("site"));
        EXPECT_THAT(namesIn(folder.sPath("site")),
                    UnorderedElementsAre("index.html", ".kivifc-site", "sets", "assets"));
    }
}

/// As a program leaves it that is killed between the two steps.
TEST(SiteFolder, FormerSiteComesBackWhenTheNewOneDidNotTakeItsPlace) {
    const TemporaryFolder folder;
    ASSERT_EQ(sWritten(folder.sPath("site"), "first"), "");
    folder.sWrite("site/notes.txt", "mine");
    fs::rename(folder.sPath("site"), folder.sPath(".site.kivifc-site-former"));
    // Its own rules hold again: the file of somebody else is in it.
    EXPECT_THAT(sWritten(folder.sPath("site"), "second"), HasSubstr("\"notes.txt\""));
    EXPECT_EQ(sFileText(folder.sPath("site/index.html")), "first");
    EXPECT_EQ(sFileText(folder.sPath("site/notes.txt")), "mine");
    EXPECT_THAT(namesIn(folder.sPath("")), ElementsAre("site"));
}

TEST(SiteFolder, LeftoverOfAFormerSiteIsRemoved) {
    const TemporaryFolder folder;
    ASSERT_EQ(sWritten(folder.sPath("site"), "first"), "");
    fs::rename(folder.sPath("site"), folder.sPath(".site.kivifc-site-former"));
    ASSERT_TRUE(fs::create_directory(folder.sPath("site")));
    EXPECT_EQ(sWritten(folder.sPath("site"), "second"), "");
    EXPECT_EQ(sFileText(folder.sPath("site/index.html")), "second");
    EXPECT_THAT(namesIn(folder.sPath("")), ElementsAre("site"));
}

TEST(SiteFolder, FileThatSomebodyAddsMeanwhileKeepsTheFormerSite) {
    for (const auto boExchange : {&boFoldersExchange, &boNever}) {
        const TemporaryFolder folder;
        ASSERT_EQ(sWritten(folder.sPath("site"), "first"), "");
        {
            SiteFolder second(folder.sPath("site"), false, boExchange);
            second.vWrite(Address(PageName("index.html")), "second");
            folder.sWrite("site/notes.txt", "mine");
            EXPECT_THAT(second.sFinish(), HasSubstr("\"notes.txt\""));
        }
        EXPECT_EQ(sFileText(folder.sPath("site/index.html")), "first");
        EXPECT_EQ(sFileText(folder.sPath("site/notes.txt")), "mine");
        EXPECT_THAT(namesIn(folder.sPath("")), ElementsAre("site"));
    }
}

/// Another program comes just when the two folders have changed places.
bool boExchangeAndWrite(const fs::path& left, const fs::path& right) {
    if (!boFoldersExchange(left, right))
        return false;
    EXPECT_EQ(sWritten(right, "third"), "another kivifc is writing it");
    EXPECT_TRUE(fs::exists(left / "index.html"));
    return true;
}

TEST(SiteFolder, FormerSiteIsNoLeftoverWhileItIsBeingReplaced) {
    const TemporaryFolder folder;
    ASSERT_EQ(sWritten(folder.sPath("site"), "first"), "");
    SiteFolder second(folder.sPath("site"), false, boExchangeAndWrite);
    second.vWrite(Address(PageName("index.html")), "second");
    EXPECT_EQ(second.sFinish(), "");
    EXPECT_EQ(sFileText(folder.sPath("site/index.html")), "second");
    EXPECT_THAT(namesIn(folder.sPath("")), ElementsAre("site"));
}

/// As far as a program came with a site before a signal ended it.
enum class Progress { Begun, Written, Exchanging };

int exchangeSignal = 0;

bool boSignalAndExchange(const fs::path& left, const fs::path& right) {
    raise(exchangeSignal);
    return boFoldersExchange(left, right);
}

/// Writes a site that says "second", and is ended by the signal.
int signalledStatus(const std::string& path, int number, Progress progress) {
    return kiv::kivifc::test::childStatus([&] {
        vEndSignalsCatch();
        exchangeSignal = number;
        SiteFolder folder(path, false, boSignalAndExchange);
        if (progress == Progress::Begun)
            raise(number);
        folder.vWrite(Address(PageName("index.html")), "second");
        folder.vWrite(Address(PageName("assets/site.css")), "");
        folder.vWrite(Address(PageName("sets/S.html")), "");
        if (progress == Progress::Written)
            raise(number);
        folder.sFinish();
    });
}

TEST(SiteFolder, SignalLeavesTheFormerSiteAndNothingElse) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        for (const auto progress : {Progress::Begun, Progress::Written}) {
            const TemporaryFolder folder;
            ASSERT_EQ(sWritten(folder.sPath("site"), "first"), "");
            const auto status = signalledStatus(folder.sPath("site"), number, progress);
            ASSERT_TRUE(WIFSIGNALED(status));
            EXPECT_EQ(WTERMSIG(status), number);
            EXPECT_EQ(sFileText(folder.sPath("site/index.html")), "first");
            EXPECT_THAT(namesIn(folder.sPath("")), ElementsAre("site"));
        }
    }
}

/// It takes effect when the one site is there and the other is gone.
TEST(SiteFolder, SignalWaitsWhileTheSitesAreExchanged) {
    const TemporaryFolder folder;
    ASSERT_EQ(sWritten(folder.sPath("site"), "first"), "");
    const auto status = signalledStatus(folder.sPath("site"), SIGTERM, Progress::Exchanging);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGTERM);
    EXPECT_EQ(sFileText(folder.sPath("site/index.html")), "second");
    EXPECT_THAT(namesIn(folder.sPath("")), ElementsAre("site"));
}

TEST(SiteFolder, WhatAKilledProgramLeavesTheNextOneRemoves) {
    for (const auto progress : {Progress::Begun, Progress::Written, Progress::Exchanging}) {
        const TemporaryFolder folder;
        ASSERT_EQ(sWritten(folder.sPath("site"), "first"), "");
        const auto status = signalledStatus(folder.sPath("site"), SIGKILL, progress);
        ASSERT_TRUE(WIFSIGNALED(status));
        EXPECT_EQ(sFileText(folder.sPath("site/index.html")), "first");
        EXPECT_THAT(namesIn(folder.sPath("")), ElementsAre(".site.kivifc-site", "site"));
        EXPECT_EQ(sWritten(folder.sPath("site"), "third"), "");
        EXPECT_EQ(sFileText(folder.sPath("site/index.html")), "third");
        EXPECT_THAT(namesIn(folder.sPath("")), ElementsAre("site"));
    }
}

TEST(SiteFolder, SecondWriterIsRefused) {
    const TemporaryFolder folder;
    SiteFolder first(folder.sPath("site"), false);
    EXPECT_EQ(sWritten(folder.sPath("site"), "second"), "another kivifc is writing it");
    first.vWrite(Address(PageName("index.html")), "first");
    EXPECT_EQ(first.sFinish(), "");
    EXPECT_EQ(sFileText(folder.sPath("site/index.html")), "first");
}

} // namespace

} // namespace kiv::kivifc::site::test
