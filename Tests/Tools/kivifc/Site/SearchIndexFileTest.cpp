// What the search of the sample's site finds.
#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/KivifcRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace kiv::kivifc::test {

namespace {

using kiv::test::sFileText;
using kiv::test::TemporaryFolder;
using testing::Contains;
using testing::ContainsRegex;
using testing::HasSubstr;

/// One page a line, without the comma after it.
std::vector<std::string> indexLines() {
    const TemporaryFolder folder;
    const auto out = folder.sPath("site");
    EXPECT_EQ(kivifcRun({"site", "Building.exp", "Sets", "--out", out}).status, 0);
    auto lines = linesOf(sFileText(out + "/assets/search-index.js"));
    for (auto& line : lines) {
        if (line.ends_with(','))
            line.pop_back();
    }
    return lines;
}

TEST(SearchIndexFile, HoldsTheRowsOfEachPage) {
    const auto lines = indexLines();
    for (
        const std::string line :
        {R"([0,"BldWall",0,0,[[8,"PredefinedType","Length","Height","Thickness"],[10,"SideArea","GrossVolume"],)"
         R"([14,"KindIsTold","Slender","Solid","InBuilding"]],[],0,"BldElement"])",
         R"([0,"BldStorey",0,0,[[8,"Level","Elevation","ClearHeight"],[9,"Rooms"],[10,"Ceiling"],[15,"UR2","UR3"],)"
         R"([14,"NoThirteenth"]],[],0,"BldSpatial"])",
         // Declared again: by its own name.
         R"([0,"BldStandardWall",0,0,[[8,"Layers"],[10,"Thickness"],[14,"SideInRange"]],[],0,"BldWall"])",
         // Its rule is in the model twice.
         R"([1,"BldPositiveLength",0,0,[[14,"Positive"]]])",
         R"([2,"BldDoorKind",0,0,[[11,"SWING","SLIDING","REVOLVING","NOTDEFINED"]]])", R"([1,"BldGateKind"])",
         R"([3,"BldPlaceable"])", R"([12,"BldCountDoors"])", R"([13,"BldOneProject"])"})
        EXPECT_THAT(lines, Contains(line));
}

TEST(SearchIndexFile, HoldsMembersWithGuidsLanguagesAndValues) {
    const auto lines = indexLines();
    EXPECT_THAT(lines,
                Contains(AllOf(HasSubstr(R"([4,"Pset_BldWall",0,"14fafcf30e160e477383a24adb6f66e9",)"),
                               HasSubstr(R"(["Mark",0,"02bf42a5a9509184065e4ea845fc4da1",)"),
                               HasSubstr("\"Kennzeichen\""), HasSubstr("\"\xE8\xA8\x98\xE5\x8F\xB7\""))));
    // The values of an enumeration are at its row; what is within a complex property has a row of its own.
    // What they are called in other languages is found too.
    EXPECT_THAT(lines,
                Contains(ContainsRegex(R"(\[2,"LeafMaterial"\],\[11,\["TIMBER","LeafMaterial",0,)"
                                       R"([0-9]+,"Holz",[0-9]+,"Bois"\],\["STEEL","LeafMaterial"\],)")));
    EXPECT_THAT(lines, Contains(HasSubstr(R"(["Season",0,"a2f65b0c3b75dbef24788bac22896d11",)")));
}

/// Who looks for a set by name is to see which of them it finds.
TEST(SearchIndexFile, SetsThatAreHiddenOrNotUsedSaySo) {
    const TemporaryFolder folder;
    const auto schema = folder.sWrite("Test.exp", "SCHEMA TEST;\nENTITY Wall;\nEND_ENTITY;\nEND_SCHEMA;\n");
    const std::string set = "<PropertySetDef><Name>Pset_A</Name></PropertySetDef>";
    folder.sWrite("sets/1.xml", set);
    folder.sWrite("sets/2.xml", set);
    folder.sWrite("office/1.xml", set);
    const auto out = folder.sPath("site");
    kivifcRun({"site", schema, folder.sPath("sets"), "office=" + folder.sPath("office"), "--out", out});
    const auto index = sFileText(out + "/assets/search-index.js");
    EXPECT_THAT(index, HasSubstr("[4,\"Pset_A\",0,0,[],[],\"hidden by office\"]"));
    EXPECT_THAT(index, HasSubstr(",0,[],[],\"not used\"]"));
}

TEST(SearchIndexFile, ANameThatIsThereTwiceHasTwoAnchors) {
    EXPECT_THAT(indexLines(),
                Contains(HasSubstr(R"([4,"Pset_BldFlowPart",0,0,[[6,"Medium",["Medium","Medium~~2")")));
}

} // namespace

} // namespace kiv::kivifc::test
