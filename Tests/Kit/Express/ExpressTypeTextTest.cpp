#include "kiv/Kit/Express/ExpressTypeText.h"

#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

// The attributes of an entity have a type each.
TEST(ExpressTypeText, NamesAreFollowedToWhatTheyAreMadeOf) {
    struct Row {
        std::string_view attribute, text;
    };
    const auto schema = test::schemaFromText("TYPE Label = STRING(80);\nEND_TYPE;\n"
                                             "TYPE Name = Label;\nEND_TYPE;\n"
                                             "TYPE Code = STRING(4) FIXED;\nEND_TYPE;\n"
                                             "TYPE Kind = ENUMERATION OF\n (A, B);\nEND_TYPE;\n"
                                             "TYPE Any = SELECT\n (Label, Wall);\nEND_TYPE;\n"
                                             "TYPE Row = LIST [1:3] OF Name;\nEND_TYPE;\n"
                                             "ENTITY Wall;\n"
                                             "  A : REAL;\n"
                                             "  B : Label;\n"
                                             "  C : Name;\n"
                                             "  D : Code;\n"
                                             "  E : Kind;\n"
                                             "  F : Any;\n"
                                             "  G : Wall;\n"
                                             "  H : SET OF Wall;\n"
                                             "  I : LIST [2:?] OF UNIQUE Name;\n"
                                             "  J : ARRAY [0:1] OF LIST [1:?] OF REAL;\n"
                                             "  K : Row;\n"
                                             "  L : SET [0:?] OF Row;\n"
                                             "  M : STRING;\n"
                                             "END_ENTITY;\n");
    const Row rows[] = {
        {"A", "REAL"},
        {"B", "Label = STRING(80)"},
        {"C", "Name = Label = STRING(80)"},
        {"D", "Code = STRING(4) FIXED"},
        {"E", "Kind = ENUMERATION OF (A, B)"},
        {"F", "Any = SELECT (Label, Wall)"},
        {"G", "Wall"},
        {"H", "SET OF Wall"},
        {"I", "LIST [2:?] OF UNIQUE Name; Name = Label = STRING(80)"},
        {"J", "ARRAY [0:1] OF LIST [1:?] OF REAL"},
        {"K", "Row = LIST [1:3] OF Name; Name = Label = STRING(80)"},
        {"L", "SET [0:?] OF Row; Row = LIST [1:3] OF Name; Name = Label = STRING(80)"},
        {"M", "STRING"},
    };
    const auto& wall = test::entityOf(*schema, "Wall");
    for (const auto& row : rows) {
        const auto* attribute = wall.pAttributeFromNameUpper(std::string(row.attribute), false);
        ASSERT_NE(attribute, nullptr) << row.attribute;
        EXPECT_EQ(sTypeResolved(attribute->pFirstType()), row.text);
    }
}

TEST(ExpressTypeText, WhatWasNotFoundIsAQuestionMark) {
    EXPECT_EQ(sTypeResolved(nullptr), "?");
    const test::AssertCollector reports;
    const auto schema = test::schemaFromText("TYPE A = Missing;\nEND_TYPE;\n"
                                             "TYPE B = LIST OF Missing;\nEND_TYPE;\n");
    EXPECT_EQ(sTypeResolved(&test::typeOf(*schema, "A")), "A = ?");
    EXPECT_EQ(sTypeResolved(&test::typeOf(*schema, "B")), "B = LIST OF ?");
}

TEST(ExpressTypeText, TypesThatAreDefinedByEachOtherEnd) {
    const auto schema = test::schemaFromText("TYPE A = B;\nEND_TYPE;\n"
                                             "TYPE B = A;\nEND_TYPE;\n");
    EXPECT_EQ(sTypeResolved(&test::typeOf(*schema, "A")), "A = B = A");
}

} // namespace

} // namespace kiv::kit
