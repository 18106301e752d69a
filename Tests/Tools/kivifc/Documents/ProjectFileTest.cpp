#include "kivifc/Documents/ProjectFile.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv::kivifc::test {

namespace {

using kiv::test::TemporaryFolder;
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
    ProjectFailure failure;
    const auto project = projectFileRead(path, failure);
    ASSERT_TRUE(project) << failure.reason;
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

TEST(ProjectFile, ListsMayHaveSeveralLines) {
    const TemporaryFolder folder;
    const auto path = folder.sWrite("kivifc.toml", "sets = [\n"
                                                   "  \"Sets\", # ours\r\n"
                                                   "  \"More\",\n"
                                                   "]\n"
                                                   "also = [\"A.exp\",\n"
                                                   "\n"
                                                   "  \"B.exp\"] # both\n"
                                                   "select = \"T\"\n");
    ProjectFailure failure;
    const auto project = projectFileRead(path, failure);
    ASSERT_TRUE(project) << failure.reason;
    ASSERT_EQ(project->entries.size(), 3U);
    EXPECT_EQ(project->entries[0].line, 1U);
    EXPECT_THAT(project->entries[0].values, ElementsAre("Sets", "More"));
    EXPECT_EQ(project->entries[1].line, 5U);
    EXPECT_THAT(project->entries[1].values, ElementsAre("A.exp", "B.exp"));
    EXPECT_EQ(project->entries[2].line, 8U);
}

TEST(ProjectFile, FaultsHaveTheirLine) {
    struct Row {
        std::string text;
        std::string reason;
        std::size_t line;
    };
    const Row rows[] = {
        {"sets = \"a\"\nselect = \"T\"\nsets = \"b\"\n", "\"sets\" is there twice", 3},
        {"sets = \"a\"\nsets = \"b\"\n", "\"sets\" is there twice", 2},
        {"[severity]\nT = \"note\"\nS = \"note\"\nT = \"error\"\n", "\"T\" is there twice", 4},
        {"\nsets = [\n", "nothing closes this list", 2},
        {"# it's\nschema = \"IFC4.exp # '\n", "nothing closes this text", 2},
        {"schema = 'a'\nsets = [\"a\",\n'b]\n", "nothing closes this text", 3},
        {"schema = \"a\\\"\n", "nothing closes this text", 1},
        {"sets = [\"a\",\nselect = \"T\"\n", "nothing closes this list", 1},
        {"sets = [\"a\"\n[severity]\nT = \"note\"\n", "nothing closes this list", 1},
        {"sets = [\"a\" # ]\n", "nothing closes this list", 1},
    };
    for (const auto& row : rows) {
        const TemporaryFolder folder;
        ProjectFailure failure;
        EXPECT_FALSE(projectFileRead(folder.sWrite("kivifc.toml", row.text), failure)) << row.text;
        EXPECT_EQ(failure.reason, row.reason) << row.text;
        EXPECT_EQ(failure.line, row.line) << row.text;
    }
}

TEST(ProjectFile, FileThatCannotBeReadIsAFailure) {
    const TemporaryFolder folder;
    ProjectFailure failure;
    EXPECT_FALSE(projectFileRead(folder.sPath("none.toml"), failure));
    EXPECT_EQ(failure.reason, "No such file or directory");
}

} // namespace

} // namespace kiv::kivifc::test
