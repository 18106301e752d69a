#include "kivifc/Documents/SetPaths.h"

#include "Tools/kivifc/TemporaryFolder.h"

#include <cstdio>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv::kivifc {

namespace {

using test::TemporaryFolder;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// Diagnostics whose lines nobody sees.
class Silence {
public:
    Diagnostics& getDiagnostics() { return diagnostics_; }

private:
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream_{std::tmpfile(), &std::fclose};
    Output output_{stream_.get()};
    Diagnostics diagnostics_{output_, stream_.get()};
};

TEST(SetPaths, FoldersAreSearchedForXmlFilesInAnyLetterCase) {
    const TemporaryFolder folder;
    const auto inner = folder.sWrite("sub/deeper/c.XML", "");
    const auto lower = folder.sWrite("b.xml", "");
    const auto mixed = folder.sWrite("A.Xml", "");
    folder.sWrite("notes.txt", "");
    folder.sWrite("b.xml.bak", "");
    folder.sWrite("xml", "");
    std::filesystem::create_directory(folder.sPath("folder.xml"));
    Silence silence;
    // Byte by byte: capitals first.
    EXPECT_THAT(setPathsCollect({folder.sPath("")}, silence.getDiagnostics()),
                ElementsAre(folder.sPath("") + "A.Xml", folder.sPath("") + "b.xml",
                            folder.sPath("") + "sub/deeper/c.XML"));
    EXPECT_EQ(silence.getDiagnostics().getStatus(), ExitStatus::Fine);
}

TEST(SetPaths, FilesAreTakenWhateverTheirName) {
    Silence silence;
    EXPECT_THAT(setPathsCollect({"z", "none.txt", "-"}, silence.getDiagnostics()),
                ElementsAre("-", "none.txt", "z"));
}

TEST(SetPaths, PathGivenTwiceIsTakenOnce) {
    const TemporaryFolder folder;
    const auto path = folder.sWrite("sets/a.xml", "");
    Silence silence;
    EXPECT_THAT(setPathsCollect({path, folder.sPath("sets"), path}, silence.getDiagnostics()),
                ElementsAre(path));
}

TEST(SetPaths, OrderIsThatOfThePathsNotOfTheArguments) {
    Silence silence;
    EXPECT_THAT(setPathsCollect({"b/2", "a/3", "b/1", "a.xml"}, silence.getDiagnostics()),
                ElementsAre("a.xml", "a/3", "b/1", "b/2"));
}

TEST(SetPaths, LinksToFoldersAreFollowedOnlyWhenGiven) {
    const TemporaryFolder folder;
    folder.sWrite("real/a.xml", "");
    folder.sWrite("top/b.xml", "");
    std::filesystem::create_directory_symlink("..", folder.sPath("top/circle"));
    std::filesystem::create_directory_symlink("real", folder.sPath("link"));
    Silence silence;
    EXPECT_THAT(setPathsCollect({folder.sPath("top"), folder.sPath("link")}, silence.getDiagnostics()),
                ElementsAre(folder.sPath("link/a.xml"), folder.sPath("top/b.xml")));
}

TEST(SetPaths, LinkThatLeadsNowhereIsKeptToBeTold) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink("gone.xml", folder.sPath("link.xml"));
    Silence silence;
    EXPECT_THAT(setPathsCollect({folder.sPath("")}, silence.getDiagnostics()), SizeIs(1));
}

TEST(SetPaths, FolderWithoutDocumentsIsAFailure) {
    const TemporaryFolder folder;
    folder.sWrite("notes.txt", "");
    Silence silence;
    EXPECT_THAT(setPathsCollect({folder.sPath("")}, silence.getDiagnostics()), IsEmpty());
    ASSERT_THAT(silence.getDiagnostics().getFailures(), SizeIs(1));
    EXPECT_EQ(silence.getDiagnostics().getFailures()[0].subject, folder.sPath(""));
    EXPECT_EQ(silence.getDiagnostics().getFailures()[0].reason, "no document (*.xml) in this folder");
    EXPECT_EQ(silence.getDiagnostics().getStatus(), ExitStatus::Failed);
}

} // namespace

} // namespace kiv::kivifc
