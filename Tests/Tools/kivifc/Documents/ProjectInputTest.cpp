#include "kivifc/Documents/ProjectInput.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace kiv::kivifc::test {

namespace {

using Paths = std::vector<std::string>;

const ProjectFile Project{"there/kivifc.toml", {}};

ProjectInput inputOf(const std::vector<ProjectEntry>& entries) {
    ProjectInput input;
    for (const auto& entry : entries)
        EXPECT_EQ(input.sEntryTake(Project, entry), "");
    return input;
}

TEST(ProjectInputTest, TakesSchemaSetsAndContextsOnly) {
    EXPECT_TRUE(ProjectInput::isNamedBy({"", "schema", {"A.exp"}}));
    EXPECT_TRUE(ProjectInput::isNamedBy({"", "sets", {"Sets"}}));
    EXPECT_TRUE(ProjectInput::isNamedBy({"contexts", "office", {"Office"}}));
    EXPECT_FALSE(ProjectInput::isNamedBy({"", "baseline", {"A.json"}}));
    EXPECT_FALSE(ProjectInput::isNamedBy({"site", "schema", {"A.exp"}}));
}

TEST(ProjectInputTest, AddsWhatTheCommandLineLeavesOut) {
    const auto input =
        inputOf({{"contexts", "office", {"Office"}}, {"", "schema", {"A.exp"}}, {"", "sets", {"Sets"}}});
    std::string schema;
    Paths sets;
    input.vComplete(schema, sets);
    EXPECT_EQ(schema, "there/A.exp");
    EXPECT_EQ(sets, (Paths{"there/Sets", "office=there/Office"}));
}

TEST(ProjectInputTest, TheCommandLineComesFirst) {
    const auto input = inputOf({{"", "schema", {"A.exp"}}, {"", "sets", {"Sets"}}});
    std::string schema = "B.EXP";
    Paths sets{"Mine"};
    input.vComplete(schema, sets);
    EXPECT_EQ(schema, "B.EXP");
    EXPECT_EQ(sets, Paths{"Mine"});
}

TEST(ProjectInputTest, AFirstArgumentThatIsNoSchemaIsADocument) {
    const auto input = inputOf({{"", "schema", {"A.exp"}}});
    std::string schema = "Mine.xml";
    Paths sets{"More.xml"};
    input.vComplete(schema, sets);
    EXPECT_EQ(schema, "there/A.exp");
    EXPECT_EQ(sets, (Paths{"Mine.xml", "More.xml"}));
}

TEST(ProjectInputTest, RefusesEmptyPaths) {
    ProjectInput input;
    EXPECT_EQ(input.sEntryTake(Project, {"", "schema", {""}}),
              "\"schema\" is empty, where a path is expected");
    EXPECT_EQ(input.sEntryTake(Project, {"", "schema", {}}), "\"schema\" is empty, where a path is expected");
    EXPECT_EQ(input.sEntryTake(Project, {"contexts", "office", {""}}),
              "\"office\" is empty, where a path is expected");
    EXPECT_EQ(input.sEntryTake(Project, {"", "sets", {}}), "");
}

} // namespace

} // namespace kiv::kivifc::test
