#include "kiv/Kit/Names/SchemaRelease.h"

#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

using ifc::def::schema::Schema;

std::unique_ptr<Schema> schemaOf(const std::string& name, std::initializer_list<std::string> entities) {
    std::stringstream text;
    text << "SCHEMA " << name << ";\n";
    for (const auto& entity : entities)
        text << "ENTITY " << entity << ";\nEND_ENTITY;\n";
    text << "END_SCHEMA;\n";
    return test::schemaFromWholeText(text.str());
}

struct Alias {
    std::string declared;
    std::string release;
};

class SchemaReleaseAlias : public testing::TestWithParam<Alias> {};

TEST_P(SchemaReleaseAlias, NamesOneRelease) {
    const auto* release = pSchemaReleaseFind(GetParam().declared);
    ASSERT_NE(release, nullptr) << GetParam().declared;
    EXPECT_EQ(release->name, GetParam().release) << GetParam().declared;
}

INSTANTIATE_TEST_SUITE_P(
    Declared, SchemaReleaseAlias,
    testing::Values(Alias{"2x4", "IFC4"}, Alias{"IFC2x4", "IFC4"}, Alias{"IFC4", "IFC4"},
                    Alias{"ifc 4", "IFC4"}, Alias{"4", "IFC4"}, Alias{"2x3", "IFC2X3"},
                    Alias{"IFC2x3", "IFC2X3"}, Alias{"2x3 TC1", "IFC2X3_TC1"},
                    Alias{"IFC2X3_TC1", "IFC2X3_TC1"}, Alias{"\tifc2x3tc1 ", "IFC2X3_TC1"},
                    Alias{"IFC2x Edition 3 Technical Corrigendum 1", "IFC2X3_TC1"},
                    Alias{"IFC4 Add2 TC1", "IFC4_ADD2_TC1"}, Alias{"IFC4-ADD1", "IFC4_ADD1"},
                    Alias{"IFC 4 Addendum 2", "IFC4_ADD2"}, Alias{"2x4 Add2", "IFC4_ADD2"},
                    Alias{"4.0.2.1", "IFC4_ADD2_TC1"}, Alias{"IFC4x1", "IFC4X1"}, Alias{"IFC 4.2", "IFC4X2"},
                    Alias{"IFC4.3", "IFC4X3"}, Alias{"IFC4X3_ADD2", "IFC4X3_ADD2"},
                    Alias{"4.3.2.0", "IFC4X3_ADD2"}, Alias{"IFC2X2_FINAL", "IFC2X2"}));

TEST(SchemaRelease, OtherNamesAreNoRelease) {
    for (const auto* name : {"", " ", "IFC", "IFC5", "2x5", "IFC4X3_RC4", "walls", "IFC4 draft", "IFC44"})
        EXPECT_EQ(pSchemaReleaseFind(name), nullptr) << name;
}

TEST(SchemaRelease, EachReleaseOfTheTableIsFoundByItsNameAndOnce) {
    std::set<std::string_view> names;
    for (const auto& release : getSchemaReleases()) {
        EXPECT_EQ(pSchemaReleaseFind(release.name), &release) << release.name;
        EXPECT_TRUE(names.insert(release.name).second) << release.name;
        EXPECT_TRUE(release.name.starts_with(release.family)) << release.name;
    }
}

struct Pair {
    std::string left;
    std::string right;
    ReleaseMatch match;
};

class CompareReleases : public testing::TestWithParam<Pair> {};

TEST_P(CompareReleases, BothWaysRound) {
    const auto& [left, right, match] = GetParam();
    EXPECT_EQ(compareReleases(left, right), match) << left << " and " << right;
    EXPECT_EQ(compareReleases(right, left), match) << right << " and " << left;
}

INSTANTIATE_TEST_SUITE_P(Declared, CompareReleases,
                         testing::Values(Pair{"2x4", "IFC4", ReleaseMatch::Same},
                                         Pair{"2x3 TC1", "IFC2X3_TC1", ReleaseMatch::Same},
                                         Pair{"IFC4X3_RC4", "4.3 rc4", ReleaseMatch::Same},
                                         Pair{"2x3", "2x3 TC1", ReleaseMatch::OtherEdition},
                                         Pair{"IFC4", "IFC4_ADD2", ReleaseMatch::OtherEdition},
                                         Pair{"IFC4X3", "IFC4X3_RC4", ReleaseMatch::OtherEdition},
                                         Pair{"2x4", "2x3", ReleaseMatch::Different},
                                         Pair{"IFC4", "IFC4X1", ReleaseMatch::Different},
                                         Pair{"IFC2X", "IFC2X3", ReleaseMatch::Different},
                                         Pair{"IFC4", "IFC5", ReleaseMatch::Unknown},
                                         Pair{"", "", ReleaseMatch::Unknown}));

struct Edition {
    std::initializer_list<std::string> entities;
    std::string releases;
};

TEST(ReleaseOfSchema, EntitiesThatOnlyOneEditionHasDecide) {
    const std::string curve = "IfcBoundedCurve";
    const std::string faces = "IfcTessellatedFaceSet";
    const Edition editions[] = {
        {{curve, faces}, "IFC4"},
        {{curve, faces, "IfcIndexedPolyCurve"}, "IFC4_ADD1"},
        {{curve, faces, "IfcIndexedPolyCurve", "IfcPolygonalFaceSet"}, "IFC4_ADD2 or IFC4_ADD2_TC1"},
        {{"ifcPOLYGONALfaceset"}, "IFC4_ADD2 or IFC4_ADD2_TC1"},
        {{"IfcIndexedPolyCurve"}, "IFC4_ADD1, IFC4_ADD2 or IFC4_ADD2_TC1"},
        {{faces}, "IFC4 or IFC4_ADD1"},
        {{"IfcWall"}, "IFC4, IFC4_ADD1, IFC4_ADD2 or IFC4_ADD2_TC1"},
    };
    for (const auto& edition : editions)
        EXPECT_EQ(sReleaseOf(*schemaOf("IFC4", edition.entities)), edition.releases);
}

TEST(ReleaseOfSchema, NamesAloneDecideTheRest) {
    EXPECT_EQ(sReleaseOf(*schemaOf("IFC2X3", {"IfcWall"})), "IFC2X3 or IFC2X3_TC1");
    EXPECT_EQ(sReleaseOf(*schemaOf("Ifc4x3_Add2 ", {})), "IFC4X3_ADD2");
    EXPECT_EQ(sReleaseOf(*schemaOf("WALLS", {"IfcPolygonalFaceSet"})), "WALLS");
    EXPECT_TRUE(getReleasesOf(*schemaOf("WALLS", {})).empty());
}

TEST(ReleaseOfSchema, IsComparedWithWhatADocumentDeclares) {
    const auto addendum = schemaOf("IFC4", {"IfcPolygonalFaceSet"});
    EXPECT_EQ(compareWithSchema("2x4", *addendum), ReleaseMatch::Same);
    EXPECT_EQ(compareWithSchema("IFC4", *addendum), ReleaseMatch::Same);
    EXPECT_EQ(compareWithSchema("IFC4 ADD2", *addendum), ReleaseMatch::Same);
    EXPECT_EQ(compareWithSchema("IFC4 ADD2 TC1", *addendum), ReleaseMatch::Same);
    EXPECT_EQ(compareWithSchema("IFC4 ADD1", *addendum), ReleaseMatch::OtherEdition);
    EXPECT_EQ(compareWithSchema("2x3", *addendum), ReleaseMatch::Different);
    EXPECT_EQ(compareWithSchema("IFC4X3", *addendum), ReleaseMatch::Different);
    EXPECT_EQ(compareWithSchema("mine", *addendum), ReleaseMatch::Unknown);
    EXPECT_EQ(compareWithSchema("2x3 TC1", *schemaOf("IFC2X3", {})), ReleaseMatch::Same);
    EXPECT_EQ(compareWithSchema("IFC4", *schemaOf("WALLS", {})), ReleaseMatch::Unknown);
}

} // namespace

} // namespace kiv::kit
