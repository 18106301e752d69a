#include "kivifc/Site/DeclaredNames.h"

#include "Tools/kivifc/Site/SiteSample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::site::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DeclaredNamesTest : public testing::Test {
protected:
    const DeclaredNames& names() const { return sample_.getModel().getDeclaredNames(); }
    const ifc::def::schema::ObjectBase& object(std::string_view name) const {
        return *sample_.getModel().getSchema().pObjectFromName(name);
    }
    const ifc::def::schema::Type& type(std::string_view name) const {
        return *ifc::def::schema::Type::pFrom(&object(name));
    }

    SiteSample sample_{
        "TYPE Wood = ENUMERATION OF (Oak, Ash, Oak, Other);\nEND_TYPE;\n"
        "TYPE Stone = ENUMERATION OF (Slate, Other);\nEND_TYPE;\n"
        "ENTITY Door;\n    Leaf : Wood;\nEND_ENTITY;\n"
        "ENTITY Gate\n SUBTYPE OF (Door);\n DERIVE\n    SELF\\Door.Leaf : Wood := OAK;\n INVERSE\n"
        "    Walls : SET OF Wall FOR Door;\nEND_ENTITY;\n"
        "ENTITY Wall;\n    Door : Gate;\nEND_ENTITY;\n"
        "FUNCTION F\n    (a : Wall; b : SET [1:(2)] OF Gate) (* ; *) :\n    LIST [1:?] OF Door;\n"
        "    RETURN([b[1]]);\nEND_FUNCTION;\n"
        "FUNCTION G : REAL;\n    RETURN(1.0);\nEND_FUNCTION;\n"};
};

TEST_F(DeclaredNamesTest, ItemsAreFoundInAnyLetterCase) {
    EXPECT_EQ(names().itemOf(type("Wood"), "OAK").name, "Oak");
    EXPECT_EQ(names().itemOf(type("Wood"), "SLATE").type, nullptr);
}

/// The other enumeration has "Other" too; that Oak is there twice in one makes it no less clear.
TEST_F(DeclaredNamesTest, ItemAloneIsThatOfTheOnlyEnumeration) {
    EXPECT_EQ(names().onlyItem("SLATE").type, &type("Stone"));
    EXPECT_EQ(names().onlyItem("OAK").type, &type("Wood"));
    EXPECT_EQ(names().onlyItem("OTHER").type, nullptr);
    EXPECT_EQ(names().onlyItem("ELM").type, nullptr);
}

TEST_F(DeclaredNamesTest, AttributesOfAllKindsAreKnownByTheEntitiesThatDeclareThem) {
    EXPECT_THAT(names().declaring("LEAF"), ElementsAre(&object("Door"), &object("Gate")));
    EXPECT_THAT(names().declaring("WALLS"), ElementsAre(&object("Gate")));
    EXPECT_THAT(names().declaring("ROOF"), IsEmpty());
}

TEST_F(DeclaredNamesTest, ResultOfAFunctionIsWhatItsHeaderEndsWith) {
    EXPECT_EQ(names().pResultOf(object("F")), &object("Door"));
    EXPECT_EQ(names().pResultOf(object("G")), nullptr);
    EXPECT_EQ(names().pResultOf(object("Wall")), nullptr);
}

} // namespace

} // namespace kiv::kivifc::site::test
