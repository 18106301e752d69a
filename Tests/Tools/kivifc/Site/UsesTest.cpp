#include "kivifc/Site/Uses.h"

#include "Tools/kivifc/Site/SiteSample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace kiv::kivifc::site::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* Declarations = "TYPE Label = STRING;\n"
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

    SiteSample sample_{Declarations};
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

} // namespace

} // namespace kiv::kivifc::site::test
