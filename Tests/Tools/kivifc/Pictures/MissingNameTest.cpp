#include "kivifc/Pictures/MissingName.h"

#include "Support/SchemaFromText.h"

#include <gtest/gtest.h>

namespace kiv::kivifc {

namespace {

TEST(MissingName, TheNearestNameIsOffered) {
    EXPECT_EQ(sNoName("set", "Pset_Wal", {"Pset_Door", "Pset_Wall"}),
              "no set \"Pset_Wal\"; did you mean \"Pset_Wall\"?");
    EXPECT_EQ(sNoName("set", "Something", {"Pset_Wall"}), "no set \"Something\"");
    EXPECT_EQ(sNoName("set", "", {}), "no set \"\"");
}

TEST(MissingName, WhatIsNoEntityIsSaidSo) {
    const auto schema =
        kiv::test::schemaFromText("ENTITY BldWall;\nEND_ENTITY;\nTYPE BldName = STRING;\nEND_TYPE;\n");
    EXPECT_EQ(sNoEntity(*schema, "BldWal"), "no entity \"BldWal\"; did you mean \"BldWall\"?");
    EXPECT_EQ(sNoEntity(*schema, "BldName"), "\"BldName\" is no entity");
    EXPECT_EQ(sNoEntity(*schema, "BldNam"), "no entity \"BldNam\""); // a type is not offered
}

} // namespace

} // namespace kiv::kivifc
