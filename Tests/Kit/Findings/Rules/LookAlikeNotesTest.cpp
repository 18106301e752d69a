#include "Kit/Findings/Rules/LookAlikeNotes.h"

#include "Kit/Findings/CheckedSet.h"
#include "Kit/Findings/FindingLines.h"
#include "Kit/Findings/Rules/Types/TypeCases.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

using test::sSingle;

TEST(LookAlikeNotesTest, SayWhichCharacterOfAnUnknownNameIsAnother) {
    const std::string_view looksLikeE = ", a letter of Cyrillic that looks like \"e\"";
    struct Row {
        std::string document;
        std::string character;
    };
    const Row rows[] = {
        {sSingle("IfcLab\u0435l"), "character 7 is U+0435"},
        {sSingle("IfcR\u0435al\" \u0435unit=\"m"), "character 1 is U+0435"},
        {test::sSetOf(
             "<TypePropertySingl\u0435Value><DataType type=\"IfcLabel\"/></TypePropertySingl\u0435Value>"),
         "character 18 is U+0435"},
    };
    for (const auto& row : rows) {
        bool isSaid = false;
        for (const auto& finding : test::exampleFindings(row.document)) {
            for (const auto& note : finding.notes)
                isSaid = isSaid || note.message == row.character + std::string(looksLikeE);
        }
        EXPECT_TRUE(isSaid) << row.document;
    }
}

TEST(LookAlikeNotesTest, AreNotAddedToOtherFindings) {
    // A slip of the pen, and a letter of another script that looks like no Latin one.
    for (const auto* type : {"IfcLable", "IfcLabel\u0436"}) {
        const auto findings = test::exampleFindings(sSingle(type));
        ASSERT_EQ(findings.size(), 1) << type;
        for (const auto& note : findings[0].notes)
            EXPECT_THAT(note.message, testing::Not(testing::StartsWith("character"))) << type;
    }
    // A finding about something else.
    const test::CheckedSet set(test::exampleSchema(), sSingle("IfcLabel"));
    auto run = set.run();
    run.addAtText("D001", set.outline.name, "a finding");
    vLookAlikesExplain(run);
    ASSERT_EQ(run.getDrafts().size(), 1);
    EXPECT_TRUE(run.getDrafts()[0].finding.notes.empty());
}

} // namespace

} // namespace kiv::kit
