#include "kivifc/Documents/RepositoryPaths.h"

#include "Support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::test {

namespace {

namespace fs = std::filesystem;

using kiv::test::TemporaryFolder;

/// The current folder is "Repository/Tools".
class RepositoryPathsTest : public testing::Test {
protected:
    RepositoryPathsTest() {
        fs::create_directories(folder_.sPath("Repository/Tools"));
        fs::current_path(folder_.sPath("Repository/Tools"));
    }
    ~RepositoryPathsTest() override { fs::current_path(before_); }

    std::string sAbsolute(const std::string& path) const {
        return (fs::canonical(folder_.sPath("")) / path).native();
    }

    const TemporaryFolder folder_;

private:
    const fs::path before_ = fs::current_path();
};

TEST_F(RepositoryPathsTest, AreFromTheRootOfTheRepository) {
    fs::create_directory(folder_.sPath("Repository/.git"));
    const auto paths = RepositoryPaths::current();
    EXPECT_TRUE(paths.isInRepository());
    EXPECT_EQ(paths.sShared("a.xml"), "Tools/a.xml");
    EXPECT_EQ(paths.sShared("./Sets//a.xml"), "Tools/Sets/a.xml");
    EXPECT_EQ(paths.sShared("../Sets/a.xml"), "Sets/a.xml");
    EXPECT_EQ(paths.sShared(sAbsolute("Repository/Sets/a.xml")), "Sets/a.xml");
    EXPECT_EQ(paths.sShared("../../a.xml"), sAbsolute("a.xml"));
    EXPECT_EQ(paths.sShared("/else/a.xml"), "/else/a.xml");
    EXPECT_EQ(paths.sShared("<stdin>"), "<stdin>");
}

TEST_F(RepositoryPathsTest, FollowLinks) {
    fs::create_directory(folder_.sPath("Repository/.git"));
    fs::create_directories(folder_.sPath("Repository/Data/Sets"));
    fs::create_directory_symlink("../Data/Sets", folder_.sPath("Repository/Tools/Link"));
    const auto paths = RepositoryPaths::current();
    EXPECT_EQ(paths.sShared("Link/a.xml"), "Data/Sets/a.xml");
    // Above where the link leads.
    EXPECT_EQ(paths.sShared("Link/../b.xml"), "Data/b.xml");
}

TEST_F(RepositoryPathsTest, OfAWorkingTreeHaveAFileInThePlaceOfTheFolder) {
    folder_.sWrite("Repository/.git", "gitdir: elsewhere\n");
    EXPECT_EQ(RepositoryPaths::current().sShared("../a.xml"), "a.xml");
}

TEST_F(RepositoryPathsTest, WithoutARepositoryAreFromTheFolderOneIsIn) {
    const RepositoryPaths paths;
    EXPECT_FALSE(paths.isInRepository());
    EXPECT_EQ(paths.sShared("Sets/a.xml"), "Sets/a.xml");
    EXPECT_EQ(paths.sShared(sAbsolute("Repository/Tools/a.xml")), "a.xml");
    EXPECT_EQ(paths.sShared("../a.xml"), sAbsolute("Repository/a.xml"));
}

} // namespace

} // namespace kiv::kivifc::test
