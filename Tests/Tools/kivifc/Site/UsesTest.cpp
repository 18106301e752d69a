#include "kivifc/Site/Uses.h"

#include "Tools/kivifc/Site/SiteSample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace kiv::kivifc::site::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr const char* UsesDeclarations = "TYPE Label = STRING;\n"
                                         "END_TYPE;\n"
                                         "TYPE Name = Label;\n"
                                         "END_TYPE;\n"
                                         "TYPE Labels = LIST [1:?] OF Label;\n"
                                         "END_TYPE;\n"
                                         "TYPE Any = SELECT (Label, Wall);\n"
                                         "END_TYPE;\n"
                                         "ENTITY Wall;\n"
                                         "    Title : Label;\n"
                                         "    Titles : OPTIONAL SET [0:?] OF Label;\n"
                                         " DERIVE\n"
                                         "    Twice : REAL := Doubled(1.0) + Doubled(2.0);\n"
                                         " INVERSE\n"
                                         "    Rooms : SET OF Room FOR Bounds;\n"
                                         " WHERE\n"
                                         "    Kind : 'TEST.WALL' IN TYPEOF(SELF);\n"
                                         "    Big : Doubled(Doubled(1.0)) > 1.0;\n"
                                         "END_ENTITY;\n"
                                         "ENTITY Room;\n"
                                         "    Bounds : Wall;\n"
                                         " WHERE\n"
                                         "    IsWall : 'TEST.WALL' IN TYPEOF(Bounds);\n"
                                         "END_ENTITY;\n"
                                         "FUNCTION Doubled\n"
                                         "    (x : REAL) : REAL;\n"
                                         "    (* Room *)\n"
                                         "    RETURN(x + SIZEOF(USEDIN(x, 'TEST.ROOM')));\n"
                                         "END_FUNCTION;\n";

class UsesTest : public testing::Test {
protected:
    const Uses& of(std::string_view name) const {
        return sample_.getModel().usesOf(*sample_.getModel().getSchema().pObjectFromName(name));
    }

    template <typename Items>
    static std::vector<std::string> namesOf(const Items& items) {
        std::vector<std::string> names;
        for (const auto* item : items)
            names.emplace_back(item->getName());
        return names;
    }

    std::vector<std::string> rulesOf(std::string_view name) const {
        std::vector<std::string> rules;
        for (const auto& rule : of(name).rules)
            rules.push_back(std::string(rule.owner->getName()) + "." + std::string(rule.label));
        return rules;
    }

    SiteSample sample_{UsesDeclarations};
};

TEST_F(UsesTest, AttributesAreThoseOfTheTypeAndOfAggregatesOfIt) {
    EXPECT_THAT(namesOf(of("Label").attributes), ElementsAre("Title", "Titles"));
    EXPECT_THAT(namesOf(of("Wall").attributes), ElementsAre("Bounds"));
}

TEST_F(UsesTest, InverseAttributesAreThoseThatReferToTheEntity) {
    EXPECT_THAT(namesOf(of("Room").inverses), ElementsAre("Rooms"));
}

TEST_F(UsesTest, TypesAreBuiltOnItOrSelectIt) {
    EXPECT_THAT(namesOf(of("Label").types), ElementsAre("Name", "Labels", "Any"));
    EXPECT_THAT(namesOf(of("Wall").types), ElementsAre("Any"));
    EXPECT_THAT(of("Any").types, IsEmpty());
}

TEST_F(UsesTest, RulesCallOrNameItOnceEach) {
    EXPECT_THAT(rulesOf("Doubled"), ElementsAre("Wall.Twice", "Wall.Big"));
    // Its own rule is none.
    EXPECT_THAT(rulesOf("Wall"), ElementsAre("Room.IsWall"));
}

TEST_F(UsesTest, FunctionsNameItInTheirTextButNotInComments) {
    EXPECT_THAT(rulesOf("Room"), ElementsAre("Doubled."));
}

TEST(Uses, RedeclarationsAndUniqueRulesNameTheEntityAbove) {
    const SiteSample sample(
        "ENTITY Wall;\n    Size : REAL;\n    Mark : STRING;\nEND_ENTITY;\n"
        "ENTITY Thick\n SUBTYPE OF (Wall);\n    SELF\\Wall.Mark : STRING(9);\n DERIVE\n"
        "    SELF\\Wall.Size : REAL := 2.0;\n UNIQUE\n    U : SELF\\Wall.Mark;\nEND_ENTITY;\n");
    std::vector<std::string> labels;
    for (const auto& rule : sample.getModel().usesOf(sample.entity("Wall")).rules)
        labels.emplace_back(rule.label);
    EXPECT_THAT(labels, ElementsAre("Mark", "Size", "U"));
    EXPECT_THAT(sample.sPage("Wall.html"), HasSubstr("<a href=\"Thick.html#U\"><code>Thick.U</code></a>"));
}

/// What a function or a query calls Wall is no use of the entity, and no link to it.
TEST(Uses, LocalNamesAreNoUses) {
    const SiteSample sample(
        "ENTITY Wall;\nEND_ENTITY;\nENTITY Door;\n    Wall : REAL;\nEND_ENTITY;\n"
        "ENTITY Room;\n    Sizes : LIST OF REAL;\n WHERE\n"
        "    R : SIZEOF(QUERY(Wall <* Sizes | Wall > 1.0)) = 0;\nEND_ENTITY;\n"
        "FUNCTION F\n    (Wall : REAL; d : Door) : REAL;\n    RETURN (Wall + d.Wall);\nEND_FUNCTION;\n"
        "FUNCTION G\n    (x : REAL) : REAL;\n    LOCAL Door : INTEGER; END_LOCAL;\n"
        "    RETURN (SIZEOF(Wall) + Door);\nEND_FUNCTION;\n");
    const auto& walls = sample.getModel().usesOf(sample.entity("Wall")).rules;
    ASSERT_EQ(walls.size(), 1U);
    EXPECT_EQ(walls[0].owner->getName(), "G");
    const auto& doors = sample.getModel().usesOf(sample.entity("Door")).rules;
    ASSERT_EQ(doors.size(), 1U);
    EXPECT_EQ(doors[0].owner->getName(), "F");
    EXPECT_THAT(sample.sPage("F.html"), Not(HasSubstr("<a href=\"Wall.html\">")));
    EXPECT_THAT(sample.sPage("G.html"), HasSubstr("<a href=\"Wall.html\">Wall</a>"));
    EXPECT_THAT(sample.sPage("Room.html"), Not(HasSubstr("<a href=\"Wall.html\">")));
}

/// USEDIN asks for the attribute of an entity.
TEST(Uses, LiteralsOfThreePartsNameTheirEntity) {
    const SiteSample sample(
        "ENTITY Wall;\n    Size : REAL;\nEND_ENTITY;\n"
        "ENTITY Room;\n WHERE\n    R : SIZEOF(USEDIN(SELF, 'TEST.WALL.SIZE')) = 0;\nEND_ENTITY;\n"
        "FUNCTION F\n    (x : REAL) : REAL;\n    RETURN(SIZEOF(USEDIN(x, 'TEST.WALL.SIZE')));\n"
        "END_FUNCTION;\n");
    const auto& rules = sample.getModel().usesOf(sample.entity("Wall")).rules;
    ASSERT_EQ(rules.size(), 2U);
    EXPECT_EQ(rules[0].label, "R");
    EXPECT_EQ(rules[1].owner->getName(), "F");
    for (const auto* page : {"Room.html", "F.html"})
        EXPECT_THAT(sample.sPage(page), HasSubstr("TEST.<a href=\"Wall.html\">WALL</a>.SIZE"));
}

/// Oak is an item of one type, Other of two, and Ash may be the attribute.
TEST(Uses, ItemWithoutItsTypeIsAUseOfTheType) {
    const SiteSample sample(
        "TYPE Wood = ENUMERATION OF (Oak, Ash, Other);\nEND_TYPE;\n"
        "TYPE Stone = ENUMERATION OF (Slate, Other);\nEND_TYPE;\n"
        "ENTITY Door;\n    Ash : INTEGER;\n WHERE\n    A : Ash = 1;\n    B : Ash <> OAK;\n"
        "    C : Ash <> Other;\nEND_ENTITY;\n"
        "FUNCTION F\n    (Slate : REAL; x : REAL) : LOGICAL;\n    RETURN(x = Slate);\n"
        "END_FUNCTION;\n"
        "FUNCTION G\n    (x : REAL) : LOGICAL;\n    RETURN(x = Slate);\nEND_FUNCTION;\n");
    const auto rulesOf = [&](std::string_view name) {
        std::vector<std::string> rules;
        const auto& model = sample.getModel();
        for (const auto& use : model.usesOf(*model.getSchema().pObjectFromName(name)).rules)
            rules.push_back(std::string(use.owner->getName()) + "." + std::string(use.label));
        return rules;
    };
    EXPECT_THAT(rulesOf("Wood"), ElementsAre("Door.B"));
    EXPECT_THAT(rulesOf("Stone"), ElementsAre("G."));
}

} // namespace

} // namespace kiv::kivifc::site::test
