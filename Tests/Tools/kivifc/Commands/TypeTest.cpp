#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/KivifcRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace kiv::kivifc::test {

namespace {

using kiv::test::TemporaryFolder;
using testing::HasSubstr;

TEST(TypeCommand, AnswersOneLineAQuestion) {
    const auto run = kivifcRun({"type", "Building.exp", "Sets", "pset_bldwall.Mark", "Pset_BldWall.Finish",
                                "Qto_BldWall.GrossVolume", "BldStandardWall.Name", "BldSite.Latitude"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "pset_bldwall.Mark  BldLabel\n"
                       "Pset_BldWall.Finish  IfcLabel\n"
                       "Qto_BldWall.GrossVolume  IfcVolumeMeasure\n"
                       "BldStandardWall.Name  BldName\n"
                       "BldSite.Latitude  LIST\n");
}

TEST(TypeCommand, NoValueIsStatusOneAndSaysWhy) {
    struct Row {
        const char* question;
        const char* reason;
    };
    const Row rows[] = {
        {"Pset_BldWal.Mark", R"(no set or entity "Pset_BldWal"; did you mean "Pset_BldWall"?)"},
        {"BldDor.Width", R"(no set or entity "BldDor"; did you mean "BldDoor"?)"},
        {"Pset_BldWall.Marks", R"(no member "Marks"; did you mean "Mark"?)"},
        {"Pset_BldWall.mark", R"(no member "mark"; did you mean "Mark"?)"},
        {"BldStandardWall.Heigt", R"(no attribute "Heigt"; did you mean "Height"?)"},
        {"BldStandardWall.onlayer",
         R"("OnLayer" is an inverse attribute, BldLayer FOR Items; only explicit ones have a value)"},
        {"Pset_BldStair.Landings", "what is of its kind has no single type"},
        {"Pset_BldSpace.Tenant", "what is of its kind has no single type"},
        {"Pset_BldSubstance.Colour", "it has no type"},
        {"Qto_BldStair.Effort", "it has no type"},
    };
    for (const auto& row : rows) {
        const auto run = kivifcRun({"type", "Building.exp", "Sets", row.question});
        EXPECT_EQ(run.status, 1) << row.question;
        EXPECT_EQ(run.out, std::string(row.question) + "  no value\n");
        EXPECT_EQ(run.err, std::string("kivifc: ") + row.question + ": " + row.reason + "\n");
    }
}

TEST(TypeCommand, EmptyNameOfATypeIsAValueOneCanSee) {
    const auto run = kivifcRun({"type", "Building.exp", "Sets", "Pset_BldSubstance.Origin"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "Pset_BldSubstance.Origin  \"\"\n");
}

TEST(TypeCommand, JsonHasNullForNoValue) {
    const auto run = kivifcRun({"type", "Building.exp", "Sets", "BldWall.Tag", "BldWall.Tags", "--json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(nlohmann::json::parse(run.out),
              nlohmann::json::parse(R"([{"question": "BldWall.Tag", "type": "BldLabel"},
                                        {"question": "BldWall.Tags", "type": null}])"));
}

TEST(TypeCommand, SetsMayBeLeftOutForAttributes) {
    EXPECT_EQ(kivifcRun({"type", "Building.exp", "BldDoor.Width"}).out, "BldDoor.Width  BldPositiveLength\n");
}

TEST(TypeCommand, HostsSetIsAskedBeforeTheStandardOne) {
    const TemporaryFolder folder;
    const auto path = folder.sWrite(
        "own.xml", "<PropertySetDef><Name>PSET_BLDWALL</Name><PropertyDefs><PropertyDef><Name>Mark</Name>"
                   "<PropertyType><TypePropertySingleValue><DataType type='BldText'/>"
                   "</TypePropertySingleValue></PropertyType></PropertyDef></PropertyDefs></PropertySetDef>");
    const auto run = kivifcRun({"type", "Building.exp", "Sets", "office=" + path, "Pset_BldWall.Mark"});
    EXPECT_EQ(run.out, "Pset_BldWall.Mark  BldText\n");
    // Of the schema's own name it is standard too, and the set that comes first by its path stays.
    const auto standard =
        kivifcRun({"type", "Building.exp", "Sets", "BUILDING1=" + path, "Pset_BldWall.Mark"});
    EXPECT_THAT(standard.err, HasSubstr("is left out: "));
}

TEST(TypeCommand, WhatIsNeitherSetsNorAQuestionIsAFailure) {
    for (const auto* argument : {"Setz", "Sets/None.xml"}) {
        const auto run = kivifcRun({"type", "Building.exp", argument, "BldDoor.Width"});
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.err, std::string("kivifc: ") + argument +
                               ": neither an existing path nor a question such as Set.Member\n");
        EXPECT_EQ(run.out, "BldDoor.Width  BldPositiveLength\n");
    }
    EXPECT_EQ(kivifcRun({"type", "Building.exp", "Sets"}).err,
              "kivifc: command line: a question is missing; see kivifc type --help\n");
}

TEST(TypeCommand, MemberMayHaveAStrokeInItsName) {
    const TemporaryFolder folder;
    const auto path = folder.sWrite(
        "own.xml", "<PropertySetDef><Name>Own</Name><PropertyDefs><PropertyDef><Name>Width/Height</Name>"
                   "<PropertyType><TypePropertySingleValue><DataType type='REAL'/></TypePropertySingleValue>"
                   "</PropertyType></PropertyDef></PropertyDefs></PropertySetDef>");
    EXPECT_EQ(kivifcRun({"type", "Building.exp", path, "own.Width/Height"}).out, "own.Width/Height  REAL\n");
    for (const std::string argument : {"other.Width/Height", "./Setz", "../Setz/x.xml"}) {
        const auto run = kivifcRun({"type", "Building.exp", path, argument});
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.err,
                  "kivifc: " + argument + ": neither an existing path nor a question such as Set.Member\n");
    }
}

TEST(TypeCommand, RefusedAndUnreadableSetsAreReportedAndNotUsed) {
    const auto refused =
        kivifcRun({"type", "Building.exp", "BrokenSets/Broken_Refused.xml", "Pset_BrokenRefused.A"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.err, HasSubstr("the set \"Pset_BrokenRefused\" is refused: BldDuct/ROUND: "));
    const auto unreadable =
        kivifcRun({"type", "Building.exp", "BrokenSets/Broken_NotXml.xml", "BldDoor.Width"});
    EXPECT_EQ(unreadable.status, 2);
    EXPECT_THAT(unreadable.err, testing::StartsWith("kivifc: BrokenSets/Broken_NotXml.xml:5:"));
}

} // namespace

} // namespace kiv::kivifc::test
