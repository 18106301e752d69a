#include "kivifc/Site/SiteModel.h"

#include "Tools/kivifc/Site/SiteSample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace kiv::kivifc::site::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* SiteModelDeclarations = "TYPE Kind = ENUMERATION OF (SOLID, HOLLOW);\n"
                                              "END_TYPE;\n"
                                              "ENTITY Root\n"
                                              " ABSTRACT SUPERTYPE;\n"
                                              "    Name : STRING;\n"
                                              "    Length : REAL;\n"
                                              "END_ENTITY;\n"
                                              "ENTITY Wall\n"
                                              " SUBTYPE OF (Root);\n"
                                              "    PredefinedType : Kind;\n"
                                              " DERIVE\n"
                                              "    SELF\\Root.Length : REAL := 1.0;\n"
                                              "END_ENTITY;\n"
                                              "ENTITY Thin\n"
                                              " SUBTYPE OF (Wall);\n"
                                              "END_ENTITY;\n";

std::string sSetOfWalls(const std::string& name, const std::vector<std::string>& classes) {
    std::string text = "<PropertySetDef><Name>" + name + "</Name><ApplicableClasses>";
    for (const auto& each : classes)
        text += "<ClassName>" + each + "</ClassName>";
    return text + "</ApplicableClasses><PropertyDefs/></PropertySetDef>";
}

std::vector<std::string> namesOf(const std::vector<const SiteSet*>& sets) {
    std::vector<std::string> names;
    for (const auto* set : sets)
        names.push_back(set->set->getName());
    return names;
}

TEST(SiteModel, ObjectsAreSortedByKindAndName) {
    const SiteSample sample(SiteModelDeclarations);
    std::vector<std::string> names;
    for (const auto* entity : sample.getModel().getEntities())
        names.emplace_back(entity->getName());
    EXPECT_THAT(names, ElementsAre("Root", "Thin", "Wall"));
    EXPECT_EQ(sample.getModel().getTypes().size(), 1U);
}

TEST(SiteModel, PlacesInTheTreeAreCounted) {
    const SiteSample sample(SiteModelDeclarations);
    EXPECT_EQ(sample.getModel().depthOf(sample.entity("Root")), 0U);
    EXPECT_EQ(sample.getModel().depthOf(sample.entity("Thin")), 2U);
    EXPECT_EQ(sample.getModel().countBelow(sample.entity("Root")), 2U);
    EXPECT_EQ(sample.getModel().countBelow(sample.entity("Thin")), 0U);
}

TEST(SiteModel, RedeclarationsAreFoundFromWhatTheyRedeclare) {
    const SiteSample sample(SiteModelDeclarations);
    const auto attributes = sample.entity("Root").getAttributes();
    EXPECT_THAT(sample.getModel().redeclarationsOf(attributes[0]), IsEmpty());
    const auto& found = sample.getModel().redeclarationsOf(attributes[1]);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].entity->getName(), "Wall");
    EXPECT_TRUE(found[0].isDerived);
}

TEST(SiteModel, SetsOfAnEntityAreThoseThatNameItByPredefinedType) {
    const SiteSample sample(SiteModelDeclarations,
                            {{"office", sSetOfWalls("Pset_Solid", {"Wall/SOLID", "Wall/HOLLOW"})},
                             {"TEST", sSetOfWalls("Pset_Both", {"Wall/SOLID", "Wall"})}});
    const auto& groups = sample.getModel().setsOf(sample.entity("Wall"));
    ASSERT_EQ(groups.size(), 2U);
    EXPECT_THAT(groups[0].predefinedTypes, IsEmpty());
    EXPECT_THAT(namesOf(groups[0].sets), ElementsAre("Pset_Both"));
    EXPECT_THAT(groups[1].predefinedTypes, ElementsAre("SOLID", "HOLLOW"));
    EXPECT_THAT(namesOf(groups[1].sets), ElementsAre("Pset_Solid"));
    EXPECT_THAT(sample.getModel().setsOf(sample.entity("Thin")), IsEmpty());
}

TEST(SiteModel, SetsWithoutClassesApplyToAll) {
    const SiteSample sample(SiteModelDeclarations, {{"TEST", sSetOfWalls("Pset_Any", {})}});
    EXPECT_THAT(namesOf(sample.getModel().getUnrestrictedSets()), ElementsAre("Pset_Any"));
}

TEST(SiteModel, SetOfAHostHidesTheStandardOneOfItsName) {
    const SiteSample sample(SiteModelDeclarations, {{"TEST", sSetOfWalls("Pset_Wall", {"Wall"})},
                                                    {"office", sSetOfWalls("Pset_Wall", {"Wall"})}});
    const auto& sets = sample.getModel().getSets();
    ASSERT_EQ(sets.size(), 2U);
    EXPECT_EQ(sets[0].context.name, "office");
    EXPECT_EQ(sets[0].hiddenBy, nullptr);
    EXPECT_EQ(sets[1].hiddenBy, sets[0].set);
    const auto& addresses = sample.getModel().getAddresses();
    EXPECT_EQ(addresses.of(*sets[1].set).getPath(), "sets/Pset_Wall.html");
    EXPECT_NE(addresses.of(*sets[0].set).getPath(), addresses.of(*sets[1].set).getPath());
}

} // namespace

} // namespace kiv::kivifc::site::test
