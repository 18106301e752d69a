#include "kiv/Kit/Documents/SchemaFile.h"

#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace kiv::kit {

namespace {

using kiv::test::TemporaryFolder;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNull;
using testing::NotNull;
using testing::SizeIs;

/// A schema with an entity whose supertype nobody declares, which the library reports.
std::string sSchema(const std::string& name, const std::string& supertype) {
    return "SCHEMA " + name + ";\nENTITY A\n SUBTYPE OF (" + supertype + ");\nEND_ENTITY;\nEND_SCHEMA;\n";
}

TEST(SchemaFile, IsReadFromPathAndText) {
    const TemporaryFolder folder;
    const auto text = sSchema("ONE", "Missing");
    const auto path = folder.sWrite("one.exp", text);
    const auto fromPath = schemaFileRead(path);
    const auto fromText = schemaTextRead(text, path);
    for (const auto* file : {&fromPath, &fromText}) {
        EXPECT_EQ(file->path, path);
        EXPECT_EQ(file->text, text);
        EXPECT_FALSE(file->failure);
        ASSERT_THAT(file->schema, NotNull());
        EXPECT_EQ(file->schema->getName(), "ONE");
        ASSERT_THAT(file->assertions, SizeIs(1));
        EXPECT_EQ(file->assertions[0].message, "Entity not found");
    }
}

TEST(SchemaFile, LastOfSeveralSchemasCountsWithItsReportsAlone) {
    const auto file = schemaTextRead(sSchema("ONE", "Missing") + "SCHEMA TWO;\nEND_SCHEMA;\n", "two.exp");
    EXPECT_THAT(file.names, ElementsAre("ONE", "TWO"));
    ASSERT_THAT(file.schema, NotNull());
    EXPECT_EQ(file.schema->getName(), "TWO");
    EXPECT_THAT(file.assertions, IsEmpty());
}

TEST(SchemaFile, WhatIsNoSchemaHasAFailure) {
    struct Row {
        const char* text;
        FailureKind kind;
        const char* reason;
    };
    const Row rows[] = {
        {"", FailureKind::Empty, "not a schema: the file is empty"},
        {"ENTITY A;\nEND_ENTITY;\n", FailureKind::NotASchema, "not a schema: no line with SCHEMA"},
        {"FILE_SCHEMA(('IFC4'));\n", FailureKind::NotASchema,
         "not a schema: the line with SCHEMA gives no name"},
        {"SCHEMA A;\nTYPE B = SELECT\n (C,\n", FailureKind::ListLeftOpen,
         "the schema ends in the middle of a list of names"},
    };
    for (const auto& row : rows) {
        const auto file = schemaTextRead(row.text, "a.exp");
        ASSERT_TRUE(file.failure) << row.text;
        EXPECT_EQ(file.failure->kind, row.kind) << row.text;
        EXPECT_EQ(file.failure->reason, row.reason);
        EXPECT_EQ(file.text, row.text);
        EXPECT_THAT(file.schema, IsNull());
        EXPECT_THAT(file.assertions, IsEmpty());
    }
}

TEST(SchemaFile, LiteralOutOfRangeIsAFailure) {
    const auto file =
        schemaTextRead("SCHEMA S;\nENTITY A;\n WHERE\n R : 1 = 99999999999999999999;\nEND_ENTITY;\n"
                       "END_SCHEMA;\n",
                       "a.exp");
    ASSERT_TRUE(file.failure);
    EXPECT_EQ(file.failure->kind, FailureKind::LiteralOutOfRange);
    EXPECT_THAT(file.failure->reason, testing::StartsWith("a literal of a WHERE rule is out of range: "));
}

TEST(SchemaFile, MissingFileAndBudgetAreFailures) {
    const TemporaryFolder folder;
    EXPECT_EQ(schemaFileRead(folder.sPath("none.exp")).failure->reason, "No such file or directory");
    ReadOptions options;
    options.budget.maxObjects = 0;
    const auto file = schemaTextRead(sSchema("ONE", "A"), "a.exp", options);
    ASSERT_TRUE(file.failure);
    EXPECT_EQ(file.failure->kind, FailureKind::OverBudget);
    EXPECT_EQ(file.failure->limit, ifc::def::BudgetLimit::Objects);
}

} // namespace

} // namespace kiv::kit
