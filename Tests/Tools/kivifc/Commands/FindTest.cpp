#include "Tools/kivifc/KivifcRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace kiv::kivifc::test {

namespace {

using nlohmann::json;
using testing::HasSubstr;

Run findRun(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"find", "Building.exp", "Sets"});
    return kivifcRun(arguments);
}

TEST(FindCommand, SetIsFoundByNameInAnyLetterCase) {
    const auto run = findRun({"qto_BLDSTAIR"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "set              Qto_BldStair\n"
                       "context          BUILDING1 (standard)\n"
                       "document         Sets/Qto_BldStair.xml\n"
                       "kind             quantity set\n"
                       "definition       Quantities of a stair.\n"
                       "template type    QTO_TYPEDRIVENONLY\n"
                       "version          BUILDING1\n"
                       "applies to       BldStair\n"
                       "members          3\n"
                       "  Steps  IfcQuantityCount\n"
                       "  AssemblyTime  IfcQuantityTime\n"
                       "  Effort  no type\n");
}

TEST(FindCommand, DefinitionIsFoundByGuidInEachOfItsForms) {
    for (const auto* guid : {"a2c851be7790fb9fb2eef35896f4abca", "a2c851be-7790-fb9f-b2ee-f35896f4abca",
                             "{A2C851BE-7790-FB9F-B2EE-F35896F4ABCA}", "2Yo56_Tv3xdxBkyrYMzAlA"}) {
        const auto run = findRun({guid});
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.out, "set              Qto_BldWall\n"
                           "context          BUILDING1 (standard)\n"
                           "document         Sets/Qto_BldWall.xml\n"
                           "kind             quantity set\n"
                           "member           Length\n"
                           "guid             a2c851be7790fb9fb2eef35896f4abca\n"
                           "definition       Length along the axis.\n"
                           "becomes          IfcQuantityLength\n");
    }
}

TEST(FindCommand, NullGuidFindsTheFirstDefinitionWithoutOne) {
    EXPECT_THAT(findRun({"00000000000000000000000000000000"}).out,
                HasSubstr("document         Sets/Pset_BldFlowPart.xml\n"
                          "kind             property set\n"
                          "member           Medium\n"
                          "definition       What flows.\n"));
}

TEST(FindCommand, UnknownGuidIsStatusOneAndSuggestsNothing) {
    const auto run = findRun({"a2c851be7790fb9fb2eef35896f4abcb"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "kivifc: not found: no set or GUID \"a2c851be7790fb9fb2eef35896f4abcb\"\n");
}

TEST(FindCommand, GuidOfASetIsNotLookedUp) {
    EXPECT_EQ(findRun({"14fafcf30e160e477383a24adb6f66e9"}).status, 1);
}

TEST(FindCommand, HostsSetIsFoundBeforeTheStandardOne) {
    EXPECT_THAT(findRun({"office=Sets/Pset_BldWall.xml", "Pset_BldWall"}).out,
                HasSubstr("context          office (host)\n"));
}

TEST(FindCommand, NothingIsStatusOne) {
    const auto run = findRun({"Pset_BldStar"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err,
              "kivifc: not found: no set or GUID \"Pset_BldStar\"; did you mean \"Pset_BldStair\"?\n");
    EXPECT_EQ(findRun({"00000000000000000000000000000001", "--json"}).out, "null\n");
}

TEST(FindCommand, JsonHasTheWholeDefinition) {
    const auto set = json::parse(findRun({"Pset_BldSpace", "--json"}).out);
    EXPECT_EQ(set["path"], "Sets/Pset_BldSpace.xml");
    EXPECT_EQ(set["kind"], "PropertySetDef");
    EXPECT_EQ(set["definition"]["properties"].size(), 4U);
    const auto def = json::parse(findRun({"bf367de2fa9031e740acf33e63e3b2e7", "--json"}).out);
    EXPECT_EQ(def["set"], "Pset_BldSpace");
    EXPECT_EQ(def["definition"]["name"], "Entrance");
}

} // namespace

} // namespace kiv::kivifc::test
