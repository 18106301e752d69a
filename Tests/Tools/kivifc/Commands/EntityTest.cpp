#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/KivifcRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace kiv::kivifc::test {

namespace {

using kiv::test::TemporaryFolder;
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
                       "derived\n"
                       "  BldStorey\n"
                       "    Ceiling : BldLengthMeasure := NVL(Elevation, 0.0) + ClearHeight\n"
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

/// A schema with one entity that derives as these lines say.
std::string sDerivingSchema(const std::string& lines) {
    return "SCHEMA S;\nENTITY Deriving;\n\tLength : REAL;\n DERIVE\n" + lines + "END_ENTITY;\nEND_SCHEMA;\n";
}

TEST(EntityCommand, DerivedAttributesAreShownOnOneLineEach) {
    struct Row {
        const char* lines;
        const char* shown;
        const char* type;
        const char* expression;
        const char* redeclares;
    };
    const Row rows[] = {
        {"\tA : REAL := Length;\n", "A : REAL := Length", "REAL", "Length", nullptr},
        {"\tA : LIST [1:3] OF REAL  :=\n\t\t[Length,\n\t\t 2.0];\n",
         "A : LIST [1:3] OF REAL := [Length, 2.0]", "LIST [1:3] OF REAL", "[Length, 2.0]", nullptr},
        {"\tA : STRING := 'it''s  here ;';\n", "A : STRING := 'it''s  here ;'", "STRING", "'it''s  here ;'",
         nullptr},
        {"\tA : BOOLEAN := SELF :=: SELF;\n", "A : BOOLEAN := SELF :=: SELF", "BOOLEAN", "SELF :=: SELF",
         nullptr},
        {"\tSELF\\Deriving.Length : REAL := 1.0;\n", "SELF\\Deriving.Length : REAL := 1.0", "REAL", "1.0",
         "Deriving.Length"},
        {"\tA : REAL;\n", "A : REAL", "REAL", "", nullptr},
    };
    for (const auto& row : rows) {
        const TemporaryFolder folder;
        const auto path = folder.sWrite("s.exp", sDerivingSchema(row.lines));
        EXPECT_THAT(kivifcRun({"entity", path, "Deriving"}).out,
                    HasSubstr(std::string("derived\n  Deriving\n    ") + row.shown + "\n"));
        const auto document =
            nlohmann::json::parse(kivifcRun({"entity", path, "Deriving", "--json"}).out)["derived"];
        ASSERT_EQ(document.size(), 1U) << row.lines;
        EXPECT_EQ(document[0]["entity"], "Deriving");
        EXPECT_EQ(document[0]["type"], row.type) << row.lines;
        EXPECT_EQ(document[0]["expression"], row.expression) << row.lines;
        EXPECT_EQ(document[0]["redeclares"],
                  row.redeclares ? nlohmann::json(row.redeclares) : nlohmann::json(nullptr))
            << row.lines;
    }
}

TEST(EntityCommand, EntityThatDerivesNothingHasNoSuchSection) {
    EXPECT_EQ(kivifcRun({"entity", "Building.exp", "BldUnit"}).out.find("derived"), std::string::npos);
    const auto document =
        nlohmann::json::parse(kivifcRun({"entity", "Building.exp", "BldUnit", "--json"}).out);
    EXPECT_EQ(document["derived"], nlohmann::json::array());
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

TEST(EntityCommand, ConfigurationThatCannotBeReadIsAFailureAndTheRestIsShown) {
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
    const auto document =
        nlohmann::json::parse(kivifcRun({"entity", "Building.exp", "Sets", "BldWall", "--json"}).out);
    EXPECT_EQ(document["line"], nlohmann::json({"BldRoot", "BldObject", "BldElement", "BldWall"}));
    EXPECT_EQ(document["attributes"].size(), 11U);
    EXPECT_EQ(document["where"].back()["expression"], "'BUILDING1.BLDWALL' IN TYPEOF(SELF)");
    EXPECT_EQ(document["sets"].size(), 2U);
}

/// The schema writes ||, which makes one instance of two.
TEST(Entity, RuleThatJoinsInstancesHasItsOperator) {
    EXPECT_THAT(kivifcRun({"entity", "Building.exp", "BldPlacement"}).out,
                HasSubstr("SELF <> BldGeometryItem() || BldPlacement(?, ?)"));
}

} // namespace

} // namespace kiv::kivifc::test
