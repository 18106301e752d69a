#include "kivifc/Pictures/EntityPicture.h"

#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"
#include "Tools/kivifc/Program/OutputText.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc {

namespace {

constexpr const char* Declarations = "TYPE Label = STRING(80);\nEND_TYPE;\n"
                                     "ENTITY Root\n ABSTRACT SUPERTYPE OF (ONEOF (Wall));\n"
                                     "  Name : OPTIONAL Label;\n"
                                     " UNIQUE\n  UR1 : Name;\n"
                                     "END_ENTITY;\n"
                                     "ENTITY Wall\n SUBTYPE OF (Root);\n"
                                     "  Rooms : SET OF Room;\n"
                                     " DERIVE\n  Area :  REAL\t:= 1. +  2.;\n"
                                     " WHERE\n  WR1 : SIZEOF(Rooms)>0;\n"
                                     "END_ENTITY;\n"
                                     "ENTITY Room;\n"
                                     " INVERSE\n  Walls : SET OF Wall FOR Rooms;\n"
                                     "END_ENTITY;\n"
                                     "ENTITY Empty;\nEND_ENTITY;\n";

std::string sPicture(const char* declarations, const char* entity) {
    const kiv::test::AssertCollector reports;
    const auto schema = kiv::test::schemaFromText(declarations);
    test::OutputText text;
    vEntityPictureWrite(kiv::test::entityOf(*schema, entity), text.output);
    return text.sText();
}

TEST(EntityPicture, AnEmptyEntityHasNoSections) {
    EXPECT_EQ(sPicture(Declarations, "Empty"), "entity           Empty\nline             Empty\n");
}

TEST(EntityPicture, WhatIsInheritedIsUnderTheEntityThatDeclaresIt) {
    EXPECT_EQ(sPicture(Declarations, "Wall"), "entity           Wall\n"
                                              "line             Root > Wall\n"
                                              "attributes\n"
                                              "  Root\n"
                                              "    Name : OPTIONAL Label = STRING(80)\n"
                                              "  Wall\n"
                                              "    Rooms : SET OF Room\n"
                                              "derived\n"
                                              "  Wall\n"
                                              "    Area : REAL := 1. + 2.\n"
                                              "unique\n"
                                              "  Root\n"
                                              "    UR1 : Name\n"
                                              "where\n"
                                              "  Wall\n"
                                              "    WR1 : SIZEOF(Rooms) > 0\n");
}

TEST(EntityPicture, SubtypesAreNamedAndNotDrawn) {
    EXPECT_EQ(sPicture(Declarations, "Root"), "entity           Root (abstract)\n"
                                              "line             Root\n"
                                              "subtypes         Wall\n"
                                              "attributes\n"
                                              "  Root\n"
                                              "    Name : OPTIONAL Label = STRING(80)\n"
                                              "unique\n"
                                              "  Root\n"
                                              "    UR1 : Name\n");
}

TEST(EntityPicture, AnInverseSaysWhatItRefersTo) {
    EXPECT_EQ(sPicture(Declarations, "Room"), "entity           Room\n"
                                              "line             Room\n"
                                              "inverses\n"
                                              "  Room\n"
                                              "    Walls : SET OF Wall FOR Rooms -> Wall.Rooms\n");
    EXPECT_EQ(sPicture("ENTITY A;\n B : Missing;\n INVERSE\n  C : SET OF A FOR D;\nEND_ENTITY;\n", "A"),
              "entity           A\n"
              "line             A\n"
              "attributes\n"
              "  A\n"
              "    B : Missing -> ?\n"
              "inverses\n"
              "  A\n"
              "    C : SET OF A FOR D -> ?\n");
}

} // namespace

} // namespace kiv::kivifc
