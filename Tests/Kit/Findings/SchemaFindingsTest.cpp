#include "kiv/Kit/Findings/SchemaFindings.h"

#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"

#include <gtest/gtest.h>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kit {

namespace {

std::vector<Finding> findingsIn(const std::string& text) {
    const test::AssertCollector reports;
    const auto schema = test::schemaFromWholeText(text);
    const auto records = reports.getRecords();
    return schemaFindingsOf(schema.get(), records, text, "T.exp");
}

std::vector<Finding> findingsOf(std::string_view statements) {
    return findingsIn("SCHEMA T;\n" + std::string(statements) + "END_SCHEMA;\n");
}

TEST(SchemaFindings, AFaultlessSchemaHasNone) {
    EXPECT_TRUE(findingsOf("ENTITY Wall;\n  Name : STRING;\nEND_ENTITY;\n").empty());
}

TEST(SchemaFindings, ASchemaWithoutDeclarationsIsAWarning) {
    const auto findings = findingsOf("");
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].severity, Severity::Warning);
    EXPECT_EQ(findings[0].message,
              "the schema has no declarations: there is no TYPE, ENTITY, FUNCTION or RULE in it");
}

TEST(SchemaFindings, AnAssertionIsANoteOfTheFindingThatExplainsIt) {
    const auto findings = findingsOf("ENTITY Wall\n SUBTYPE OF (Missing);\nEND_ENTITY;\n");
    ASSERT_EQ(findings.size(), 1U);
    const auto& finding = findings[0];
    EXPECT_EQ(finding.code, "E011");
    EXPECT_EQ(finding.place.path, "T.exp");
    EXPECT_EQ(finding.place.position, (TextPosition{3, 14, 7}));
    ASSERT_FALSE(finding.notes.empty());
    EXPECT_EQ(finding.notes.back().message, "reported while reading: Entity not found");
    ASSERT_TRUE(finding.origin);
    EXPECT_EQ(finding.origin->function, "kiv::ifc::def::schema::Entity::vUpdate");
}

TEST(SchemaFindings, AnAssertionThatNothingExplainsIsAFindingOfItsOwn) {
    const std::string text = "SCHEMA T;\nENTITY A;\nEND_ENTITY;\nEND_SCHEMA;\n";
    const auto schema = test::schemaFromWholeText(text);
    const std::vector<assert::AssertRecord> records{{0, "of another kind", "function", "file", 7}};
    const auto findings = schemaFindingsOf(schema.get(), records, text, "T.exp");
    ASSERT_EQ(findings.size(), 1U);
    ASSERT_TRUE(findings[0].origin);
    EXPECT_EQ(findings[0].origin->function, "function");
    EXPECT_EQ(findings[0].origin->line, 7);
}

TEST(SchemaFindings, LostDeclarationsAreNamed) {
    const auto findings = findingsOf("TYPE A = Missing;\nEND_TYPE;\nENTITY B;\nENTITY C;\nEND_ENTITY;\n"
                                     "entity Wall;\nEND_ENTITY;\n");
    ASSERT_EQ(findings.size(), 3U);
    // A type that is declared nowhere is not lost, and what takes another declaration is not either.
    EXPECT_EQ(findings[0].code, "E013");
    EXPECT_EQ(findings[0].missingNames, (std::vector<std::string>{}));
    EXPECT_EQ(findings[1].code, "E004");
    EXPECT_EQ(findings[1].missingNames, (std::vector<std::string>{"C"}));
    EXPECT_EQ(findings[2].code, "E002");
    EXPECT_EQ(findings[2].missingNames, (std::vector<std::string>{"Wall"}));
}

TEST(SchemaFindings, FindingsAreInTheOrderOfTheText) {
    const auto findings = findingsOf("ENTITY A\n SUBTYPE OF (X);\nEND_ENTITY;\n"
                                     "TYPE B = Y;\nEND_TYPE;\n"
                                     "ENTITY C\n SUBTYPE OF (Z);\nEND_ENTITY;\n");
    std::vector<std::size_t> lines;
    for (const auto& finding : findings)
        lines.push_back(finding.place.position.line);
    EXPECT_EQ(lines, (std::vector<std::size_t>{3, 5, 8}));
}

TEST(SchemaFindings, ATextWithoutASchemaIsOneFinding) {
    for (const std::string_view text : {"", "wall", "<PropertySetDef/>"}) {
        const auto findings = schemaFindingsOf(nullptr, std::span<const Assertion>(), text, "T.exp");
        EXPECT_EQ(findings.size(), 1U) << text;
    }
}

} // namespace

} // namespace kiv::kit
