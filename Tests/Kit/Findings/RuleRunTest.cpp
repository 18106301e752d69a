#include "Kit/Findings/RuleRun.h"

#include "Kit/Findings/CheckedSet.h"
#include "Kit/Findings/LegalNames.h"
#include "Support/SchemaFromText.h"
#include "kiv/Kit/Findings/Rule.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kit {

namespace {

using test::CheckedSet;

/// Elements: 0 PropertySetDef, 1 Name, 2 Definition, 3 ApplicableClasses.
constexpr std::string_view Text = "<PropertySetDef ifdguid=\"x\" templatetype=\"\">\n"
                                  "<Name> A </Name>\n"
                                  "<Definition/>\n"
                                  "<ApplicableClasses/>\n"
                                  "</PropertySetDef>";

class RuleRunTest : public testing::Test {
protected:
    const XmlAttribute& attribute(std::size_t index) const {
        return set_.xml().getAttributes(set_.xml().getElement(0))[index];
    }

    std::unique_ptr<ifc::def::schema::Schema> schema_ = test::schemaFromText("");
    CheckedSet set_{*schema_, std::string(Text)};
    RuleRun run_ = set_.run();
};

TEST_F(RuleRunTest, AFindingHasTheSeverityOfItsRule) {
    const auto& draft = run_.add("N001", 2, "why");
    EXPECT_EQ(draft.finding.code, "N001");
    EXPECT_EQ(draft.finding.severity, pRuleFind("N001")->severity);
    EXPECT_EQ(draft.finding.message, "why");
    EXPECT_EQ(draft.finding.place.path, "Set.xml");
    EXPECT_EQ(draft.finding.place.position, (TextPosition{3, 2, 10}));
    EXPECT_EQ(draft.subject, (FindingSubject{2, nullptr}));
}

TEST_F(RuleRunTest, FindingsAreAtTextsValuesAndNames) {
    EXPECT_EQ(run_.addAtText("N001", 1, "").finding.place.position, (TextPosition{2, 8, 1}));
    EXPECT_EQ(run_.addAtText("N001", 2, "").finding.place.position, (TextPosition{3, 2, 10}));
    EXPECT_EQ(run_.addAtValue("N001", 0, attribute(0), "").finding.place.position, (TextPosition{1, 26, 1}));
    // Nothing is between the quotes.
    EXPECT_EQ(run_.addAtValue("N001", 0, attribute(1), "").finding.place.position, (TextPosition{1, 29, 12}));
    EXPECT_EQ(run_.addAtAttribute("N001", 0, attribute(0), "").finding.place.position,
              (TextPosition{1, 17, 7}));
    EXPECT_EQ(run_.getDrafts().back().subject, (FindingSubject{0, &attribute(0)}));
}

TEST_F(RuleRunTest, ADraftIsCompleted) {
    auto& draft = run_.add("N001", 1, "")
                      .vNote("one")
                      .vNoteAt("two", {4, 2, 1})
                      .vSubject("A.B")
                      .vSeverity(Severity::Note)
                      .vEdit({3, 2}, "x");
    const auto& finding = draft.finding;
    ASSERT_EQ(finding.notes.size(), 2U);
    EXPECT_EQ(finding.notes[0].message, "one");
    EXPECT_FALSE(finding.notes[0].place);
    EXPECT_EQ(finding.notes[1].place->path, "Set.xml");
    EXPECT_EQ(finding.notes[1].place->position, (TextPosition{4, 2, 1}));
    EXPECT_EQ(finding.subject, "A.B");
    EXPECT_EQ(finding.severity, Severity::Note);
    ASSERT_EQ(finding.edits.size(), 1U);
    EXPECT_EQ(finding.edits[0].offset, 3U);
    EXPECT_EQ(finding.edits[0].length, 2U);
    EXPECT_EQ(finding.edits[0].text, "x");
}

// Half of a repair would be a further fault.
TEST_F(RuleRunTest, OneUnknownPlaceTakesAllEditsAway) {
    auto& draft = run_.add("N001", 1, "");
    draft.vEdit({3, 2}, "x").vEdit({}, "y").vEdit({9, 1}, "z");
    EXPECT_TRUE(draft.finding.edits.empty());
}

TEST_F(RuleRunTest, OfOneCodeALimitIsKept) {
    for (std::size_t count = 0; count <= RuleRun::maxFindingsPerCode; ++count)
        run_.add("N001", 1, "");
    EXPECT_EQ(run_.getDrafts().size(), RuleRun::maxFindingsPerCode);
    run_.add("N002", 1, "other");
    EXPECT_EQ(run_.getDrafts().size(), RuleRun::maxFindingsPerCode + 1);
    EXPECT_EQ(run_.getDrafts().back().finding.message, "other");
}

TEST_F(RuleRunTest, TheLastFindingOfAnElement) {
    EXPECT_EQ(run_.pLastOf(1), nullptr);
    run_.add("N001", 1, "");
    EXPECT_EQ(run_.pLastOf(1), &run_.getDrafts().back());
    EXPECT_EQ(run_.pLastOf(2), nullptr);
    run_.addAtAttribute("N001", 2, attribute(0), "");
    EXPECT_EQ(run_.pLastOf(1), nullptr);
    EXPECT_EQ(run_.pLastOf(2), &run_.getDrafts().back());
}

TEST_F(RuleRunTest, WhatIsNotedOfElements) {
    EXPECT_FALSE(run_.boMisplaced(1));
    run_.vMisplacedNote(1);
    EXPECT_TRUE(run_.boMisplaced(1));
    EXPECT_FALSE(run_.boMisplaced(2));
    EXPECT_FALSE(run_.boStrayText(1));
    run_.vStrayTextNote(1);
    EXPECT_TRUE(run_.boStrayText(1));
    const FindingSubject about{1, &attribute(0)};
    EXPECT_EQ(run_.joinedWith(about), about);
    run_.vJoin(1, 3);
    EXPECT_EQ(run_.joinedWith(about), (FindingSubject{3, nullptr}));
    run_.vJoin(1, 2); // the first one stays
    EXPECT_EQ(run_.joinedWith(about), (FindingSubject{3, nullptr}));
}

TEST(RuleTexts, AreCutBetweenCodePoints) {
    EXPECT_EQ(cut("abc", 3), "abc");
    EXPECT_EQ(cut("abc", 2), "ab");
    EXPECT_EQ(cut("a\xC3\xA9x", 2), "a");
    EXPECT_EQ(cut("a\xC3\xA9x", 3), "a\xC3\xA9");
    EXPECT_EQ(cut("\xF0\x9D\x84\x9Ex", 3), "");
    EXPECT_EQ(cut("abc", 0), "");
    EXPECT_EQ(cut("\x80\x80\x80", 2), "");
    EXPECT_EQ(cut({}, 5), "");
}

TEST(RuleTexts, AreQuoted) {
    EXPECT_EQ(sQuoted("IfcWal"), "\"IfcWal\"");
    EXPECT_EQ(sQuoted(""), "\"\"");
    const std::string longest(RuleRun::maxQuotedSize, 'x');
    EXPECT_EQ(sQuoted(longest), '"' + longest + '"');
    EXPECT_EQ(sQuoted(longest + 'y'), '"' + longest + "...\"");
}

TEST(RuleTexts, AMeantNameIsARuleOrAQuestion) {
    EXPECT_EQ(sMeant({"Name", true, true}), "write it as \"Name\"");
    EXPECT_EQ(sMeant({"Name", false, true}), "did you mean \"Name\"?");
}

TEST(RuleTexts, Lists) {
    EXPECT_EQ(sQuotedList({}), "");
    EXPECT_EQ(sQuotedList({"A"}), "\"A\"");
    EXPECT_EQ(sQuotedList({"A", "B"}), "\"A\" and \"B\"");
    EXPECT_EQ(sQuotedList({"A", "B", "C"}), "\"A\", \"B\" and \"C\"");
    EXPECT_EQ(sQuotedList({"A", "B", "C"}, 3), "\"A\", \"B\" and \"C\"");
    EXPECT_EQ(sQuotedList({"A", "B", "C"}, 2), "\"A\", \"B\" and 1 more");
}

} // namespace

} // namespace kiv::kit
