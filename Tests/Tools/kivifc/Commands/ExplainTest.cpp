#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/KivifcRun.h"
#include "kivifc/Pictures/RuleText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv::kivifc::test {

namespace {

using kiv::test::sFileText;
using testing::HasSubstr;
using testing::StartsWith;

TEST(ExplainCommand, CodeInAnyLetterCaseShowsItsRule) {
    const auto run = kivifcRun({"explain", "n001"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, StartsWith("N001 set-without-name (error)\n\nA set has no name.\n"));
    EXPECT_THAT(run.out, HasSubstr("\nWrong:\n\n    <PropertySetDef "));
    EXPECT_THAT(run.out, HasSubstr("\nRight:\n\n    <PropertySetDef "));
    EXPECT_THAT(run.out, HasSubstr("\n      <Name/>\n"));
}

TEST(ExplainCommand, WithoutACodeAllAreListed) {
    const auto lines = linesOf(kivifcRun({"explain"}).out);
    ASSERT_EQ(lines.size(), kit::getRules().size());
    for (std::size_t number = 0; number < lines.size(); ++number)
        EXPECT_THAT(lines[number], StartsWith(std::string(kit::getRules()[number].code) + "  "));
}

TEST(ExplainCommand, BeginningListsItsFamily) {
    const auto lines = linesOf(kivifcRun({"explain", "N"}).out);
    ASSERT_FALSE(lines.empty());
    for (const auto& line : lines)
        EXPECT_THAT(line, StartsWith("N"));
}

TEST(ExplainCommand, UnknownCodeIsNamed) {
    const auto run = kivifcRun({"explain", "N01"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, StartsWith("kivifc: explain: no rule has the code \"N01\", did you mean \"N001\"?"));
}

TEST(RuleText, TextsAreFilledToEightyColumns) {
    kit::Rule rule{"Z001", "a-name", kit::Severity::Note, "One.", "", {}, {}};
    const std::string words(100, 'x');
    const std::string explanation = "aaa bbb\nccc\n\n" + words + " ddd";
    rule.explanation = explanation;
    EXPECT_EQ(sRuleText(rule), "Z001 a-name (note)\n\nOne.\n\naaa bbb ccc\n\n" + words + "\nddd\n");
}

/// `./dev rules` writes it.
TEST(RuleText, PageInTheRepositoryIsThatOfTheTable) {
    EXPECT_EQ(sFileText(KIVIFC_RULES), sRulePage(kit::getRules()));
}

} // namespace

} // namespace kiv::kivifc::test
