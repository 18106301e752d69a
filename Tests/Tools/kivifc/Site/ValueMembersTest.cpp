#include "kivifc/Site/ValueMembers.h"

#include "Tools/kivifc/Site/SiteSample.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::site::test {

namespace {

using namespace ifc::def::schema;

class ValueMembersTest : public testing::Test {
protected:
    /// "Owner.Name:Type"; empty for none.
    std::string sMember(std::string_view type, const std::string& upper) const {
        const auto member = memberOf(sample_.getModel(), *pObject(type), upper);
        if (!member.owner)
            return {};
        const auto* after = pElementType(member.type);
        return std::string(member.owner->getName()) + "." + std::string(member.name) + ":" +
               std::string(after ? after->getName() : "");
    }
    const ObjectBase* pObject(std::string_view name) const {
        return sample_.getModel().getSchema().pObjectFromName(name);
    }

    SiteSample sample_{
        "TYPE Wood = ENUMERATION OF (Oak, Ash);\nEND_TYPE;\n"
        "TYPE Timber = Wood;\nEND_TYPE;\n"
        "TYPE Walls = LIST [0:?] OF SET OF Wall;\nEND_TYPE;\n"
        "TYPE Part = SELECT (Wall, Opening);\nEND_TYPE;\n"
        "TYPE Opening = SELECT (Door, Part, Wood);\nEND_TYPE;\n"
        "TYPE Space = SELECT (Wall, Room);\nEND_TYPE;\n"
        "ENTITY Room;\nEND_ENTITY;\n"
        "ENTITY Hall\n SUBTYPE OF (Room);\n    Height : REAL;\nEND_ENTITY;\n"
        "ENTITY Root;\n    Name : STRING;\nEND_ENTITY;\n"
        "ENTITY Wall\n SUBTYPE OF (Root);\n    Height : REAL;\n    Of : Walls;\n DERIVE\n"
        "    First : Wall := Of[1];\n INVERSE\n    Doors : SET OF Door FOR In;\nEND_ENTITY;\n"
        "ENTITY Door\n SUBTYPE OF (Root);\n    In : Wall;\n    Height : REAL;\n    Leaf : Timber;\n"
        "END_ENTITY;\n"
        "ENTITY Gate\n SUBTYPE OF (Door);\n    Bars : Part;\n    Lock : Root;\nEND_ENTITY;\n"
        "ENTITY Hatch\n SUBTYPE OF (Door);\n    Lock : Root;\nEND_ENTITY;\n"};
};

TEST_F(ValueMembersTest, AttributesOfAllKindsLeadOn) {
    EXPECT_EQ(sMember("Wall", "NAME"), "Root.Name:");
    EXPECT_EQ(sMember("Wall", "OF"), "Wall.Of:Wall");
    EXPECT_EQ(sMember("Wall", "FIRST"), "Wall.First:Wall");
    EXPECT_EQ(sMember("Wall", "DOORS"), "Wall.Doors:Door");
    EXPECT_EQ(sMember("Wall", "ROOF"), "");
}

/// Elements of aggregates have the members of what they are.
TEST_F(ValueMembersTest, TypesAreFollowedToWhatHasMembers) {
    EXPECT_EQ(sMember("Walls", "HEIGHT"), "Wall.Height:");
    EXPECT_EQ(sMember("Wood", "OAK"), "Wood.Oak:");
    EXPECT_EQ(sMember("Timber", "ASH"), "Wood.Ash:");
}

/// Part and Opening have each other; Wall and Door have one Name and two heights.
TEST_F(ValueMembersTest, OfASelectIsWhatItsEntitiesHaveInCommon) {
    EXPECT_EQ(sMember("Part", "NAME"), "Root.Name:");
    EXPECT_EQ(sMember("Part", "HEIGHT"), "");
    EXPECT_EQ(sMember("Part", "LEAF"), "Door.Leaf:Wood");
}

/// A room has no height, but a hall has.
TEST_F(ValueMembersTest, OfASelectWhatIsBelowItsEntitiesCountsToo) {
    EXPECT_EQ(sMember("Space", "HEIGHT"), "");
    EXPECT_EQ(sMember("Space", "OF"), "Wall.Of:Wall");
}

TEST_F(ValueMembersTest, OfTheOnlyEntityBelowThatDeclaresIt) {
    EXPECT_EQ(sMember("Root", "BARS"), "Gate.Bars:Part");
    EXPECT_EQ(sMember("Part", "BARS"), "Gate.Bars:Part");
    EXPECT_EQ(sMember("Door", "LOCK"), "");
    EXPECT_EQ(sMember("Hatch", "BARS"), "");
}

} // namespace

} // namespace kiv::kivifc::site::test
