#include "kivifc/Pictures/SchemaSummary.h"

#include "kiv/Kit/Documents/SchemaFile.h"

#include <chrono>
#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc {

namespace {

/// As if the text had been read from a file in 3.2 ms.
SchemaFile fileOf(const std::string& statements) {
    return {kit::schemaTextRead("SCHEMA TEST;\n" + statements + "END_SCHEMA;\n", "Test.exp"),
            std::chrono::microseconds(3200)};
}

constexpr const char* Statements =
    "TYPE Label = STRING;\n WHERE\n  WR1 : SELF <> '';\n  WR2 : TRUE;\nEND_TYPE;\n"
    "TYPE Labels = LIST OF Label;\nEND_TYPE;\n"
    "ENTITY Root\n ABSTRACT SUPERTYPE;\n"
    "  Name : Label;\n"
    "  Tag : OPTIONAL Label;\n"
    " UNIQUE\n  UR1 : Name;\n"
    "END_ENTITY;\n"
    "ENTITY Wall\n SUBTYPE OF (Root);\n"
    "  Rooms : SET OF Room;\n"
    " DERIVE\n"
    "  SELF\\Root.Name : Label := 'x';\n"
    "  Area : REAL := 1.;\n"
    "END_ENTITY;\n"
    "ENTITY Room;\n"
    " INVERSE\n  Walls : SET OF Wall FOR Rooms;\n"
    " WHERE\n  WR1 : $;\n"
    "END_ENTITY;\n"
    "FUNCTION F\nEND_FUNCTION;\n"
    "RULE R FOR (Wall);\nEND_RULE;\n";

TEST(SchemaSummary, EverythingIsCounted) {
    const auto file = fileOf(Statements);
    const auto counts = schemaCounts(file, InheritanceTree(*file.schema));
    EXPECT_EQ(counts.types, 2U);
    EXPECT_EQ(counts.entities, 3U);
    EXPECT_EQ(counts.entitiesAbstract, 1U);
    EXPECT_EQ(counts.functions, 1U);
    EXPECT_EQ(counts.rules, 1U);
    EXPECT_EQ(counts.attributes, 3U);
    EXPECT_EQ(counts.attributesOptional, 1U);
    EXPECT_EQ(counts.attributesInverse, 1U);
    EXPECT_EQ(counts.attributesDerived, 2U);
    EXPECT_EQ(counts.attributesRedeclared, 1U);
    EXPECT_EQ(counts.uniqueRules, 1U);
    EXPECT_EQ(counts.whereRules, 2U);
    EXPECT_EQ(counts.whereRulesFailed, 1U);
    EXPECT_EQ(counts.roots, 2U);
    EXPECT_EQ(counts.depth, 2U);
}

TEST(SchemaSummary, AnEmptySchemaHasNothing) {
    const auto file = fileOf("");
    EXPECT_EQ(sSchemaSummary(file, InheritanceTree(*file.schema), false),
              "schema           TEST\n"
              "types            0\n"
              "entities         0 (0 abstract)\n"
              "functions        0\n"
              "rules            0\n"
              "attributes       0 explicit (0 optional), 0 inverse, 0 derived (0 redeclared)\n"
              "data types       0\n"
              "WHERE rules      0 parsed, 0 failed\n"
              "UNIQUE rules     0\n"
              "tree             0 roots, 0 levels\n"
              "assertions       0\n"
              "time             3.2 ms\n");
}

TEST(SchemaSummary, HowToHaveAssertionsListedIsSaidWhenTheyAreNot) {
    const auto file = fileOf("ENTITY A\n SUBTYPE OF (Missing);\nEND_ENTITY;\n");
    const InheritanceTree tree(*file.schema);
    const auto brief = sSchemaSummary(file, tree, false);
    const auto listed = sSchemaSummary(file, tree, true);
    EXPECT_NE(brief.find("assertions       1 (--assertions lists them)\n"), std::string::npos) << brief;
    EXPECT_NE(listed.find("assertions       1\n"), std::string::npos) << listed;
    EXPECT_NE(brief.find("tree             1 root, 1 level\n"), std::string::npos) << brief;
}

} // namespace

} // namespace kiv::kivifc
