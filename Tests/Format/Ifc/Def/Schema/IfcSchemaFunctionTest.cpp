#include "kiv/Format/Ifc/Def/Schema/IfcSchemaFunction.h"

#include "Format/Ifc/Def/Schema/SchemaTestTools.h"
#include "Support/AssertCollector.h"
#include "Support/FailingStreamCheck.h"
#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using namespace kiv::ifc::def::schema;
using namespace kiv::test;
using testing::ElementsAre;

/// The body lines of the function or rule of this name.
template <typename Statement>
Strings bodyOf(const Schema& schema, std::string_view name) {
    const auto* statement = dynamic_cast<const Statement*>(schema.pObjectFromName(name));
    EXPECT_NE(statement, nullptr) << name;
    return statement ? stringsOf(statement->getBodyLines()) : Strings{};
}

TEST(FunctionTest, KeepsTheLinesOfItsBody) {
    const auto schema = schemaFromText("FUNCTION F (a : REAL) : REAL;\n"
                                       "  LOCAL\n"
                                       "\tb : REAL := 1.0; \n"
                                       "  END_LOCAL;\n"
                                       "  RETURN (a + b);\n"
                                       "END_FUNCTION;");
    const auto& function = objectOf(*schema, "F");
    EXPECT_EQ(function.getKind(), ObjectBase::Type::Function);
    EXPECT_EQ(function.getName(), "F");
    EXPECT_THAT(bodyOf<Function>(*schema, "F"),
                ElementsAre("  LOCAL", "\tb : REAL := 1.0; ", "  END_LOCAL;", "  RETURN (a + b);"));
}

TEST(FunctionTest, LinesWithOtherKeywordsAreBodyLinesAndMakeNoObject) {
    const auto schema = schemaFromText("FUNCTION F : REAL;\n"
                                       "  TYPE T = REAL;\n"
                                       "  END_TYPE;\n"
                                       "  ENTITY E;\n"
                                       "  RULE R FOR (E);\n"
                                       "  END_RULE;\n"
                                       "  END_SCHEMA;\n"
                                       "END_FUNCTION;\n"
                                       "ENTITY Next;\nEND_ENTITY;");
    EXPECT_THAT(namesOf(schema->getObjects()), ElementsAre("F", "Next"));
    EXPECT_THAT(bodyOf<Function>(*schema, "F"),
                ElementsAre("  TYPE T = REAL;", "  END_TYPE;", "  ENTITY E;", "  RULE R FOR (E);",
                            "  END_RULE;", "  END_SCHEMA;"));
}

TEST(FunctionTest, EndMarkerInsideACommentEndsTheFunction) {
    const auto schema = schemaFromText("FUNCTION F : REAL;\n"
                                       "  first\n"
                                       "  (* before END_FUNCTION comes the return *)\n"
                                       "  second\n"
                                       "ENTITY Next;\nEND_ENTITY;");
    EXPECT_THAT(namesOf(schema->getObjects()), ElementsAre("F", "Next"));
    EXPECT_THAT(bodyOf<Function>(*schema, "F"), ElementsAre("  first"));
}

TEST(FunctionTest, EmptyLinesAreNotKept) {
    const auto schema = schemaFromText("FUNCTION F : REAL;\n\n  a\n\n \n\nEND_FUNCTION;");
    EXPECT_THAT(bodyOf<Function>(*schema, "F"), ElementsAre("  a", " "));
}

TEST(FunctionTest, LinesLoseTheirCarriageReturn) {
    const auto schema = schemaFromText("FUNCTION F : REAL;\r\n  a\r\n\r\nEND_FUNCTION;\r");
    EXPECT_THAT(bodyOf<Function>(*schema, "F"), ElementsAre("  a"));
}

TEST(FunctionTest, TheHeaderLineIsNotSearchedForTheEnd) {
    const auto schema =
        schemaFromText("FUNCTION F : REAL; END_FUNCTION;\n  a\nEND_FUNCTION;\nENTITY E;\nEND_ENTITY;");
    EXPECT_THAT(bodyOf<Function>(*schema, "F"), ElementsAre("  a"));
    EXPECT_THAT(namesOf(schema->getObjects()), ElementsAre("F", "E"));
}

TEST(FunctionTest, TheEndMarkerIsCaseSensitiveAndItsOwn) {
    const auto schema =
        schemaFromText("FUNCTION F : REAL;\nend_function;\nEND_RULE;\nEND_FUNCTIO\nEND_FUNCTION;");
    EXPECT_THAT(bodyOf<Function>(*schema, "F"), ElementsAre("end_function;", "END_RULE;", "END_FUNCTIO"));
}

TEST(FunctionTest, StreamThatEndsInsideTheBodyEndsTheFunction) {
    for (const auto* text :
         {"SCHEMA A;\nFUNCTION F : REAL;\n  a\n  b", "SCHEMA A;\nFUNCTION F : REAL;\n  a\n  b\n"})
        EXPECT_THAT(bodyOf<Function>(*schemaFromWholeText(text), "F"), ElementsAre("  a", "  b")) << text;
    EXPECT_TRUE(bodyOf<Function>(*schemaFromWholeText("SCHEMA A;\nFUNCTION F : REAL;"), "F").empty());
}

TEST(FunctionTest, ABodyMayBeEmpty) {
    EXPECT_TRUE(bodyOf<Function>(*schemaFromText("FUNCTION F : REAL;\nEND_FUNCTION;"), "F").empty());
}

TEST(FunctionTest, NothingInABodyIsResolvedOrReported) {
    AssertCollector reports;
    schemaFromText("FUNCTION F (x : Missing) : Missing;\n WHERE\n  a : );\nEND_FUNCTION;\n"
                   "RULE R FOR (Missing);\n WHERE\n  a : );\nEND_RULE;");
    EXPECT_TRUE(reports.getRecords().empty());
}

TEST(FunctionTest, StreamThatFailsInsideTheBodyIsAnException) {
    const std::string_view text = "FUNCTION F : REAL;\n  a\n\n  b\nEND_FUNCTION;\n";
    const auto schema = schemaFromText("");
    vFailingStreamCheck(text, 19, [&](std::istream& stream) {
        ReadLineHelper line;
        ASSERT_TRUE(line.boNextLine(stream));
        const Function function(*schema, line, 0, stream);
    });
}

TEST(RuleTest, KeepsTheLinesOfItsBody) {
    const auto schema = schemaFromText("RULE R FOR\n"
                                       "  (A);\n"
                                       "\n"
                                       " WHERE\n"
                                       "  WR1 : SIZEOF(A) = 1;\n"
                                       "  END_FUNCTION;\n"
                                       "END_RULE;\n"
                                       "ENTITY A;\nEND_ENTITY;");
    const auto& rule = objectOf(*schema, "R");
    EXPECT_EQ(rule.getKind(), ObjectBase::Type::Rule);
    EXPECT_EQ(rule.getName(), "R");
    EXPECT_THAT(bodyOf<Rule>(*schema, "R"),
                ElementsAre("  (A);", " WHERE", "  WR1 : SIZEOF(A) = 1;", "  END_FUNCTION;"));
    EXPECT_THAT(namesOf(schema->getObjects()), ElementsAre("R", "A"));
}

TEST(RuleTest, EndMarkerAnywhereInALineEndsTheRule) {
    const auto schema =
        schemaFromText("RULE R FOR (A);\n  a -- END_RULE follows\n  b\nENTITY A;\nEND_ENTITY;");
    EXPECT_TRUE(bodyOf<Rule>(*schema, "R").empty());
    EXPECT_THAT(namesOf(schema->getObjects()), ElementsAre("R", "A"));
}

TEST(RuleTest, StreamThatEndsInsideTheBodyEndsTheRule) {
    EXPECT_THAT(bodyOf<Rule>(*schemaFromWholeText("SCHEMA A;\nRULE R FOR (A);\n  a"), "R"),
                ElementsAre("  a"));
}

TEST(RuleTest, StreamThatFailsInsideTheBodyIsAnException) {
    const std::string_view text = "RULE R FOR (A);\n  a\nEND_RULE;\n";
    const auto schema = schemaFromText("");
    vFailingStreamCheck(text, 16, [&](std::istream& stream) {
        ReadLineHelper line;
        ASSERT_TRUE(line.boNextLine(stream));
        const Rule rule(*schema, line, 0, stream);
    });
}

} // namespace
