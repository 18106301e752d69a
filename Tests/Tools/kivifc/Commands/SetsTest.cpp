#include "Tools/kivifc/KivifcRun.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace kiv::kivifc::test {

namespace {

const std::string PsetWall =
    "  Pset_BldWall  property set, members: 5, applies to BldWall/LAYERED, BldStandardWall/SOLID, BldWall";
const std::string QtoWall =
    "  Qto_BldWall  quantity set, members: 4, applies to BldWall, BldStandardWall/SOLID";
const std::string Standard = "BUILDING1 (standard)\n";

Run setsRun(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"sets", "Building.exp", "Sets"});
    return kivifcRun(arguments);
}

TEST(SetsCommand, SetThatNamesEntityAndSupertypeIsListedOnce) {
    const auto run = setsRun({"--entity", "bldstandardwall"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, Standard + PsetWall + "\n" + QtoWall + "\n");
}

TEST(SetsCommand, UnrestrictedSetsComeWithTheTopmostSupertype) {
    EXPECT_EQ(setsRun({"--entity", "BldWall", "--unrestricted"}).out,
              Standard +
                  "  Pset_BldSubstance  property set, members: 5, applies to every class\n"
                  "  Qto_BldAny  quantity set, members: 0, applies to every class\n" +
                  PsetWall + "\n" + QtoWall + "\n");
}

TEST(SetsCommand, OwnLeavesOutThoseOfSupertypes) {
    const std::string flowPart =
        "  Pset_BldFlowPart  property set, members: 3, applies to BldFlowPart, BldPipe, BldDuct, BldPipe\n";
    EXPECT_EQ(setsRun({"--entity", "BldPipe", "--own"}).out, Standard + flowPart);
    // Storeys have a set of their own; what spaces have is no concern of theirs.
    EXPECT_EQ(setsRun({"--entity", "BldElement", "--own"}).status, 1);
}

TEST(SetsCommand, ContextsOfHostsComeFirstAndHideStandardSets) {
    const auto run = setsRun({"office=Sets/Pset_BldWall.xml", "--entity", "BldWall"});
    EXPECT_EQ(run.out, "office (host)\n" + PsetWall + "\n" + Standard + PsetWall +
                           "; hidden by a set of an earlier context\n" + QtoWall + "\n");
}

TEST(SetsCommand, NoSetIsStatusOne) {
    const auto run = setsRun({"--entity", "BldUnit"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "kivifc: BldUnit: no set applies\n");
}

TEST(SetsCommand, UnknownEntityIsStatusOneWithTheNameThatWasMeant) {
    const auto run = setsRun({"--entity", "BldWal"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "kivifc: Building.exp: no entity \"BldWal\"; did you mean \"BldWall\"?\n");
    EXPECT_EQ(setsRun({"--entity", "BldLabel"}).err, "kivifc: Building.exp: \"BldLabel\" is no entity\n");
}

TEST(SetsCommand, JsonHasContextAndPath) {
    const auto run = setsRun({"--entity", "BldStorey", "--json"});
    EXPECT_EQ(nlohmann::json::parse(run.out), nlohmann::json::parse(R"([{
        "name": "Pset_BldStorey", "kind": "PropertySetDef",
        "context": {"name": "BUILDING1", "standard": true},
        "path": "Sets/Pset_BldStorey.xml", "hidden": false}])"));
}

} // namespace

} // namespace kiv::kivifc::test
