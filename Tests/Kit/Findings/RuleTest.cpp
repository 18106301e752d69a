#include "kiv/Kit/Findings/Rule.h"

#include "Kit/Findings/FindingLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

namespace kiv::kit {

namespace {

using testing::IsEmpty;

std::vector<std::string> exampleLines(const RuleExample& example) {
    return test::findingLines(example.text);
}

std::set<std::string> codesOf(const RuleExample& example) {
    std::set<std::string> codes;
    for (const auto& finding : test::exampleFindings(example.text))
        codes.insert(std::string(finding.code));
    return codes;
}

/// Rules about schemas have examples of another form.
bool isAboutDocuments(const Rule& rule) {
    return rule.code[0] != 'E' && !rule.wrong.text.empty();
}

TEST(RuleTest, CodesAreDistinctAndInOrder) {
    std::string last;
    for (const auto& rule : getRules()) {
        EXPECT_LT(last, rule.code);
        last = rule.code;
    }
    EXPECT_FALSE(last.empty());
}

TEST(RuleTest, EveryRuleSaysWhatItIs) {
    for (const auto& rule : getRules()) {
        EXPECT_THAT(rule.code, testing::MatchesRegex("[A-Z][0-9][0-9][0-9]"));
        EXPECT_THAT(rule.name, testing::MatchesRegex("[a-z0-9-]+")) << rule.code;
        EXPECT_TRUE(rule.summary.ends_with('.')) << rule.code;
        EXPECT_TRUE(rule.explanation.ends_with('.')) << rule.code;
    }
}

TEST(RuleTest, NamesAreDistinct) {
    std::set<std::string_view> names;
    for (const auto& rule : getRules())
        EXPECT_TRUE(names.insert(rule.name).second)
            << rule.code << " is named " << rule.name << " as another one";
}

TEST(RuleTest, OnlyReportsOfTheLibraryHaveNoExamples) {
    for (const auto& rule : getRules()) {
        EXPECT_EQ(rule.wrong.text.empty(), rule.code[0] == 'R') << rule.code;
        EXPECT_EQ(rule.right.text.empty(), rule.code[0] == 'R') << rule.code;
    }
}

TEST(RuleTest, WrongExamplesYieldTheirCodeAlone) {
    for (const auto& rule : getRules()) {
        if (!isAboutDocuments(rule))
            continue;
        EXPECT_EQ(codesOf(rule.wrong), std::set<std::string>{std::string(rule.code)})
            << testing::PrintToString(exampleLines(rule.wrong));
    }
}

TEST(RuleTest, WrongExamplesHaveOneFinding) {
    for (const auto& rule : getRules()) {
        if (!isAboutDocuments(rule))
            continue;
        EXPECT_EQ(exampleLines(rule.wrong).size(), 1) << testing::PrintToString(exampleLines(rule.wrong));
    }
}

TEST(RuleTest, RightExamplesYieldNothing) {
    for (const auto& rule : getRules()) {
        if (!isAboutDocuments(rule))
            continue;
        EXPECT_THAT(exampleLines(rule.right), IsEmpty()) << rule.code;
    }
}

TEST(RuleTest, FindsRulesInAnyLetterCase) {
    ASSERT_NE(pRuleFind("s001"), nullptr);
    EXPECT_EQ(pRuleFind("s001")->code, "S001");
    EXPECT_EQ(pRuleFind("S0011"), nullptr);
    EXPECT_EQ(pRuleFind(""), nullptr);
}

} // namespace

} // namespace kiv::kit
