#include "Format/Ifc/Def/Schema/IfcSchemaBuilder.h"

#include "Format/Ifc/Def/Schema/IfcSchemaLimits.h"
#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace kiv::ifc::def::schema;
using namespace kiv::test;

constexpr std::string_view Walls = "ENTITY Root;\n"
                                   "  Name : STRING;\n"
                                   "END_ENTITY;\n"
                                   "ENTITY Wall\n SUBTYPE OF (Root);\n"
                                   "  Width : REAL;\n"
                                   "END_ENTITY;\n";

TEST(SchemaBuilderTest, NothingIsAddedToASchemaThatIsBuilt) {
    const auto schema = schemaFromText(Walls);
    EXPECT_THROW(SchemaBuilder::of(*schema), std::logic_error);
    EXPECT_EQ(SchemaBuilder::pMeter(*schema), nullptr);
}

TEST(SchemaBuilderTest, ABuilderIsThatOfItsSchemaWhileItLives) {
    const auto schema = schemaFromText(Walls);
    {
        SchemaBuilder builder(*schema, nullptr);
        EXPECT_EQ(&SchemaBuilder::of(*schema), &builder);
    }
    EXPECT_THROW(SchemaBuilder::of(*schema), std::logic_error);
}

TEST(SchemaBuilderTest, ObjectsToBeChangedAreThoseThatAreLookedUp) {
    const auto schema = schemaFromText(Walls);
    EXPECT_EQ(SchemaBuilder::pObject(*schema, "Wall"), schema->pObjectFromName("WALL"));
    EXPECT_NE(SchemaBuilder::pObject(*schema, "Wall"), nullptr);
    EXPECT_EQ(SchemaBuilder::pObject(*schema, "Door"), nullptr);
}

TEST(SchemaBuilderTest, AttributesOfSupertypesAreFoundInABuiltSchemaToo) {
    const auto schema = schemaFromText(Walls);
    const auto& wall = entityOf(*schema, "Wall");
    const auto& root = entityOf(*schema, "Root");
    EXPECT_EQ(SchemaBuilder::pAttribute(*schema, wall, AttributeName("Name")), &root.getAttributes()[0]);
    EXPECT_EQ(SchemaBuilder::pAttribute(*schema, wall, AttributeName("Width")), &wall.getAttributes()[0]);
    EXPECT_EQ(SchemaBuilder::pAttribute(*schema, root, AttributeName("Width")), nullptr);
}

TEST(SchemaBuilderTest, AggregatesAreCountedWhileTheyAreNested) {
    const auto schema = schemaFromText(Walls);
    SchemaBuilder builder(*schema, nullptr);
    std::vector<std::unique_ptr<SchemaBuilder::AggregateNesting>> nested;
    for (std::size_t depth = 1; depth <= AggregateNestingMax + 1; ++depth) {
        nested.push_back(std::make_unique<SchemaBuilder::AggregateNesting>(builder));
        EXPECT_EQ(nested.back()->isTooDeep(), depth > AggregateNestingMax) << depth;
    }
    nested.pop_back();
    EXPECT_FALSE(nested.back()->isTooDeep());
}

TEST(SchemaBuilderTest, ReportsHaveTheTextOfTheTableOrTheirOwn) {
    const auto schema = schemaFromText(Walls);
    const AssertCollector reports;
    SchemaBuilder::vReport(*schema, kiv::ifc::def::Report::TypeNotFound);
    SchemaBuilder::vReport(*schema, kiv::ifc::def::Report::RuleRefused, "why");
    EXPECT_EQ(reports.getMessages(), (std::vector<std::string>{"Not type found", "why"}));
}

TEST(SchemaBuilderTest, TheNameIsWhatFollowsTheKeywordInTheLine) {
    struct Row {
        std::string line, name;
    };
    const Row rows[] = {
        {"SCHEMA TEST;", "TEST"}, {"SCHEMA   TEST ;", "TEST "},
        {"SCHEMA TEST", "TEST"},  {"SCHEMA A; (* B; *)", "A"},
        {"  SCHEMA T2x;", "T2x"}, {"SCHEMA;", ""},
        {"SCHEMA", ""},           {"SCHEMA   ", ""},
    };
    for (const auto& row : rows) {
        std::istringstream stream("END_SCHEMA;\n");
        const Schema schema(stream, row.line, row.line.find("SCHEMA"));
        EXPECT_EQ(schema.getName(), row.name) << row.line;
    }
}

} // namespace
