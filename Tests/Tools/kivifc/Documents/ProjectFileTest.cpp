#include "kivifc/Documents/ProjectFile.h"
#include "Tools/kivifc/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv::kivifc::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(ProjectFile, KeysHaveTheirSectionsValuesAndLines) {
    const TemporaryFolder folder;
    const auto path = folder.sWrite("kivifc.toml", "# what we check\n"
                                                   "schema = \"IFC4.exp\"\n"
                                                   "sets = [\"Sets\", \"More sets\"]\n"
                                                   "\n"
                                                   "no-context = true\n"
                                                   "[contexts]\n"
                                                   "office = \"Office\"\n"
                                                   "[severity]\n"
                                                   "T001 = \"warning\"\n");
    std::string failure;
    const auto project = projectFileRead(path, failure);
    ASSERT_TRUE(project) << failure;
    ASSERT_EQ(project->entries.size(), 5U);
    const auto& entries = project->entries;
    EXPECT_EQ(entries[0].key, "schema");
    EXPECT_EQ(entries[0].section, "");
    EXPECT_THAT(entries[0].values, ElementsAre("IFC4.exp"));
    EXPECT_EQ(entries[0].line, 2U);
    EXPECT_THAT(entries[1].values, ElementsAre("Sets", "More sets"));
    EXPECT_EQ(entries[1].line, 3U);
    EXPECT_THAT(entries[2].values, ElementsAre("true"));
    EXPECT_EQ(entries[3].section, "contexts");
    EXPECT_EQ(entries[3].key, "office");
    EXPECT_EQ(entries[3].line, 7U);
    EXPECT_EQ(entries[4].section, "severity");
    EXPECT_EQ(entries[4].line, 9U);
}

TEST(ProjectFile, PathsAreRelativeToTheFile) {
    const ProjectFile project{"../kivifc.toml", {}};
    EXPECT_EQ(project.sPath("Sets"), "../Sets");
    EXPECT_EQ(project.sPath("/Sets"), "/Sets");
    EXPECT_EQ(project.sPath("-"), "-");
    EXPECT_EQ((ProjectFile{"kivifc.toml", {}}.sPath("Sets")), "Sets");
}

TEST(ProjectFile, FileThatCannotBeReadIsAFailure) {
    const TemporaryFolder folder;
    std::string failure;
    EXPECT_FALSE(projectFileRead(folder.sPath("none.toml"), failure));
    EXPECT_EQ(failure, "No such file or directory");
}

} // namespace

} // namespace kiv::kivifc::test
