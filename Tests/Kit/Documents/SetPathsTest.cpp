#include "kiv/Kit/Documents/SetPaths.h"

#include "Support/TemporaryFolder.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>

namespace kiv::kit {

namespace {

using kiv::test::TemporaryFolder;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST(SetPaths, FoldersAreSearchedForXmlFilesInAnyLetterCase) {
    const TemporaryFolder folder;
    const auto inner = folder.sWrite("sub/deeper/c.XML", "");
    const auto lower = folder.sWrite("b.xml", "");
    const auto mixed = folder.sWrite("A.Xml", "");
    folder.sWrite("notes.txt", "");
    folder.sWrite("b.xml.bak", "");
    folder.sWrite("xml", "");
    std::filesystem::create_directory(folder.sPath("folder.xml"));
    const auto sets = setPathsCollect({folder.sPath("")});
    // Byte by byte: capitals first.
    EXPECT_THAT(sets.documents, ElementsAre(folder.sPath("") + "A.Xml", folder.sPath("") + "b.xml",
                                            folder.sPath("") + "sub/deeper/c.XML"));
    EXPECT_THAT(sets.problems, IsEmpty());
}

TEST(SetPaths, FilesAreTakenWhateverTheirName) {
    EXPECT_THAT(setPathsCollect({"z", "none.txt", "-"}).documents, ElementsAre("-", "none.txt", "z"));
}

TEST(SetPaths, PathGivenTwiceIsTakenOnce) {
    const TemporaryFolder folder;
    const auto path = folder.sWrite("sets/a.xml", "");
    EXPECT_THAT(setPathsCollect({path, folder.sPath("sets"), path}).documents, ElementsAre(path));
}

TEST(SetPaths, SpellingsOfOnePathAreOneDocument) {
    const TemporaryFolder folder;
    const auto path = folder.sWrite("sets/a.xml", "");
    std::filesystem::create_symlink("a.xml", folder.sPath("sets/z.xml"));
    const auto sets = folder.sPath("sets");
    const std::string spellings[] = {path, sets + "/./a.xml", sets + "/../sets/a.xml", sets + "/z.xml"};
    for (const auto& first : spellings) {
        for (const auto& second : spellings)
            EXPECT_THAT(setPathsCollect({first, second}).documents, ElementsAre(first)) << second;
        EXPECT_THAT(setPathsCollect({first, sets}).documents, ElementsAre(first));
        EXPECT_EQ(sPathKey(first), sPathKey(path));
    }
    EXPECT_THAT(setPathsCollect({sets}).documents, ElementsAre(path));
    EXPECT_THAT(setPathsCollect({sets, sets + "/."}).documents, ElementsAre(path));
    EXPECT_THAT(setPathsCollect({sets, sets + "/."}).problems, IsEmpty());
}

TEST(SetPaths, HardLinksAndMissingFilesAreFilesOfTheirOwn) {
    const TemporaryFolder folder;
    const auto path = folder.sWrite("a.xml", "");
    const auto other = folder.sPath("b.xml");
    std::filesystem::create_hard_link(path, other);
    EXPECT_THAT(setPathsCollect({other, path}).documents, ElementsAre(path, other));
    EXPECT_THAT(setPathsCollect({folder.sPath("none"), folder.sPath("./none")}).documents,
                ElementsAre(folder.sPath("none")));
    EXPECT_NE(sPathKey("none"), sPathKey("other"));
}

TEST(SetPaths, OrderIsThatOfThePathsNotOfTheArguments) {
    EXPECT_THAT(setPathsCollect({"b/2", "a/3", "b/1", "a.xml"}).documents,
                ElementsAre("a.xml", "a/3", "b/1", "b/2"));
}

TEST(SetPaths, LinksToFoldersAreFollowedOnlyWhenGiven) {
    const TemporaryFolder folder;
    folder.sWrite("real/a.xml", "");
    folder.sWrite("top/b.xml", "");
    std::filesystem::create_directory_symlink("..", folder.sPath("top/circle"));
    std::filesystem::create_directory_symlink("real", folder.sPath("link"));
    EXPECT_THAT(setPathsCollect({folder.sPath("top"), folder.sPath("link")}).documents,
                ElementsAre(folder.sPath("link/a.xml"), folder.sPath("top/b.xml")));
}

TEST(SetPaths, LinkThatLeadsNowhereIsKeptToBeReported) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink("gone.xml", folder.sPath("link.xml"));
    EXPECT_THAT(setPathsCollect({folder.sPath("")}).documents, SizeIs(1));
}

TEST(SetPaths, FolderWithoutDocumentsIsAProblem) {
    const TemporaryFolder folder;
    folder.sWrite("notes.txt", "");
    const auto sets = setPathsCollect({folder.sPath("")});
    EXPECT_THAT(sets.documents, IsEmpty());
    EXPECT_THAT(sets.problems, ElementsAre(PathProblem{folder.sPath(""), "no document (*.xml) in this folder",
                                                       PathProblemKind::Folder}));
}

TEST(SetPaths, PipesAndSocketsInFoldersAreProblems) {
    const TemporaryFolder folder;
    const auto document = folder.sWrite("sets/b.xml", "");
    const auto pipe = folder.sPath("sets/a.xml");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::filesystem::create_symlink("a.xml", folder.sPath("sets/link.xml"));
    ASSERT_EQ(mkfifo(folder.sPath("sets/pipe.txt").c_str(), 0600), 0);
    std::filesystem::create_symlink("/dev/null", folder.sPath("sets/device.XML"));
    const auto sets = setPathsCollect({folder.sPath("sets")});
    EXPECT_THAT(sets.documents, ElementsAre(document));
    const std::string ending = " in a folder is not read unless its path is given";
    const auto special = PathProblemKind::SpecialFile;
    EXPECT_THAT(sets.problems,
                ElementsAre(PathProblem{pipe, "a pipe" + ending, special},
                            PathProblem{folder.sPath("sets/device.XML"), "a device" + ending, special},
                            PathProblem{folder.sPath("sets/link.xml"), "a pipe" + ending, special}));
}

TEST(SetPaths, PipeIsTakenWhenItsPathIsGiven) {
    const TemporaryFolder folder;
    const auto pipe = folder.sPath("a.xml");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_THAT(setPathsCollect({pipe}).documents, ElementsAre(pipe));
}

} // namespace

} // namespace kiv::kit
