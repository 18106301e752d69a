#include "kivifc/Site/RedeclaredName.h"

#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"

#include <gtest/gtest.h>
#include <string_view>

namespace kiv::kivifc::site {

namespace {

TEST(RedeclaredName, IsTheNameOfAnEntityAndItsOwn) {
    struct Row {
        std::string_view name, own, qualifier;
    };
    const Row rows[] = {
        {"SELF\\IfcRoot.Name", "Name", "IfcRoot"},
        {"Name", "Name", ""},
        {"", "", ""},
        {"IfcRoot.Name", "IfcRoot.Name", ""}, // without SELF it is a name
        {"SELF\\IfcRoot", "SELF\\IfcRoot", ""},
        {"SELF\\.Name", "Name", ""},
        {"SELF\\IfcRoot.", "", "IfcRoot"},
        {"a.b\\c", "b\\c", ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ownNameOf(row.name), row.own) << row.name;
        EXPECT_EQ(qualifierOf(row.name), row.qualifier) << row.name;
    }
}

TEST(RedeclaredName, TheAttributeIsThatOfTheEntityOrOneAboveIt) {
    const kiv::test::AssertCollector reports;
    const auto schema = kiv::test::schemaFromText("ENTITY Root;\n  Name : STRING;\nEND_ENTITY;\n"
                                                  "ENTITY Mid\n SUBTYPE OF (Root);\nEND_ENTITY;\n"
                                                  "ENTITY Wall\n SUBTYPE OF (Mid);\n"
                                                  "  SELF\\Mid.Name : STRING;\n"
                                                  "  SELF\\Missing.Name : STRING;\n"
                                                  "  SELF\\Root.Other : STRING;\n"
                                                  "  Own : STRING;\nEND_ENTITY;\n");
    const auto& root = kiv::test::entityOf(*schema, "Root");
    const auto attributes = kiv::test::entityOf(*schema, "Wall").getAttributes();
    ASSERT_EQ(attributes.size(), 4U);
    EXPECT_EQ(pRedeclared(attributes[0], *schema), &root.getAttributes()[0]);
    EXPECT_EQ(pRedeclared(attributes[1], *schema), nullptr);
    EXPECT_EQ(pRedeclared(attributes[2], *schema), nullptr);
    EXPECT_EQ(pRedeclared(attributes[3], *schema), nullptr);
}

} // namespace

} // namespace kiv::kivifc::site
