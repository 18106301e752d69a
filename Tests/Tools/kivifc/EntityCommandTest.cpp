#include "KivifcRun.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace kiv::kivifc::test {

namespace {

using testing::HasSubstr;

TEST(EntityCommand, ShowsTheWholePicture) {
    const auto run = kivifcRun({"entity", "Building.exp", "Sets", "bldstorey"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "entity           BldStorey\n"
                       "line             BldRoot > BldObject > BldSpatial > BldStorey\n"
                       "attributes\n"
                       "  BldRoot\n"
                       "    GlobalId : BldGlobalId = STRING(22) FIXED\n"
                       "    Name : OPTIONAL BldName = BldLabel = STRING(80)\n"
                       "    Description : OPTIONAL BldText = STRING\n"
                       "  BldObject\n"
                       "    Labels : OPTIONAL BldLabelSet = SET [0:?] OF BldLabel; BldLabel = STRING(80)\n"
                       "  BldSpatial\n"
                       "    LongName : OPTIONAL STRING(255)\n"
                       "    Placement : OPTIONAL BldPlacement\n"
                       "  BldStorey\n"
                       "    Level : INTEGER\n"
                       "    Elevation : OPTIONAL BldLengthMeasure = IfcLengthMeasure = REAL\n"
                       "    ClearHeight : BldPositiveLength = BldLengthMeasure = IfcLengthMeasure = REAL\n"
                       "inverses\n"
                       "  BldObject\n"
                       "    PartOf : SET [0:1] OF BldRelContains FOR Targets -> BldRelation.Targets\n"
                       "    Contains : SET [0:?] OF BldRelContains FOR Whole -> BldRelContains.Whole\n"
                       "    DefinedBy : SET [0:?] OF BldRelDefines FOR Targets -> BldRelation.Targets\n"
                       "  BldStorey\n"
                       "    Rooms : SET [0:?] OF BldRelContains FOR Whole -> BldRelContains.Whole\n"
                       "unique\n"
                       "  BldRoot\n"
                       "    UR1 : GlobalId\n"
                       "  BldStorey\n"
                       "    UR2 : Level, Elevation\n"
                       "    UR3 : SELF\\BldRoot.Name, Level\n"
                       "where\n"
                       "  BldRoot\n"
                       "    IdIsComplete : LENGTH(GlobalId) = 22\n"
                       "  BldStorey\n"
                       "    NoThirteenth : ABS(Level) MOD 100 <> 13\n"
                       "sets\n"
                       "  BUILDING1 (standard)\n"
                       "    Pset_BldStorey  property set, members: 2, applies to BldStorey\n");
}

TEST(EntityCommand, ConfigurationAddsRepresentations) {
    const TemporaryFolder folder;
    const auto config =
        folder.sWrite("config.xml", "<cnf:c xmlns:cnf='c' id='BUILDING1'><cnf:entity select='BldUnit'>"
                                    "<cnf:attribute select='Symbol' exp-attribute='attribute-content'/>"
                                    "</cnf:entity></cnf:c>");
    const auto run = kivifcRun({"entity", "Building.exp", "BldUnit", "--config", config});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr("    Symbol : STRING  {attribute-content}\n    Factor : REAL\n"));
    EXPECT_THAT(run.out, HasSubstr("subtypes         BldBaseUnit\n"));
    EXPECT_THAT(run.out, HasSubstr("sets: none\n"));
}

TEST(EntityCommand, ConfigurationThatCannotBeReadIsAFailureAndTheRestIsTold) {
    const TemporaryFolder folder;
    const auto config = folder.sWrite("open.xml", "<a>");
    const auto run = kivifcRun({"entity", "Building.exp", "BldUnit", "--config", config});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err, "kivifc: " + config + ":1:4: no element found\n");
    EXPECT_THAT(run.out, HasSubstr("    Symbol : STRING\n    Factor : REAL\n"));
}

TEST(EntityCommand, UnknownEntityIsStatusOneWithTheNameThatWasMeant) {
    const auto run = kivifcRun({"entity", "Building.exp", "Sets", "BldStory"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "kivifc: Building.exp: no entity \"BldStory\"; did you mean \"BldStorey\"?\n");
}

TEST(EntityCommand, JsonHasTheSameFacts) {
    const auto json =
        nlohmann::json::parse(kivifcRun({"entity", "Building.exp", "Sets", "BldWall", "--json"}).out);
    EXPECT_EQ(json["line"], nlohmann::json({"BldRoot", "BldObject", "BldElement", "BldWall"}));
    EXPECT_EQ(json["attributes"].size(), 11U);
    EXPECT_EQ(json["where"].back()["expression"], "'BUILDING1.BLDWALL' IN TYPEOF(SELF)");
    EXPECT_EQ(json["sets"].size(), 2U);
}

} // namespace

} // namespace kiv::kivifc::test
