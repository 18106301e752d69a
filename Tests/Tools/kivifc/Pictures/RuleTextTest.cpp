#include "kivifc/Pictures/RuleText.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace kiv::kivifc {

namespace {

kit::Rule ruleOf(std::string_view code, std::string_view explanation) {
    return {code, "a-name", kit::Severity::Warning, "What <Name> is", explanation, {}, {}};
}

TEST(RuleText, ARuleWithoutExamples) {
    EXPECT_EQ(sRuleText(ruleOf("T001", "Why.")), "T001 a-name (warning)\n\nWhat <Name> is\n\nWhy.\n");
}

TEST(RuleText, ParagraphsAreFilledUpTo80Columns) {
    // Thirteen words of five letters, each with a blank after it, take 78 columns.
    std::string words;
    for (int word = 0; word < 13; ++word)
        words += "words ";
    const std::string head = "T001 a-name (warning)\n\nWhat <Name> is\n\n";
    EXPECT_EQ(sRuleText(ruleOf("T001", words + "ab")), head + words + "ab\n");
    EXPECT_EQ(sRuleText(ruleOf("T001", words + "abc")), head + words.substr(0, 77) + "\nabc\n");
    EXPECT_EQ(sRuleText(ruleOf("T001", words + "ab\nnext\n\nSecond\nparagraph.")),
              head + words + "ab\nnext\n\nSecond paragraph.\n");
}

TEST(RuleText, AWordThatIsTooLongHasALineOfItsOwn) {
    const std::string word(100, 'x');
    EXPECT_EQ(sRuleText(ruleOf("T001", "a " + word + " b")),
              "T001 a-name (warning)\n\nWhat <Name> is\n\na\n" + word + "\nb\n");
}

TEST(RuleText, ExamplesAreIndented) {
    auto rule = ruleOf("T001", "Why.");
    rule.wrong = {"<a>\n\n</a>"};
    rule.right = {"<b/>\n"};
    EXPECT_EQ(sRuleText(rule), "T001 a-name (warning)\n\nWhat <Name> is\n\nWhy.\n"
                               "\nWrong:\n\n    <a>\n\n    </a>\n"
                               "\nRight:\n\n    <b/>\n");
}

TEST(RuleText, TheListHasALineForEach) {
    const std::vector<kit::Rule> rules{ruleOf("T001", ""), ruleOf("X009", "")};
    const std::string rest = "  warning  a-name                         What <Name> is\n";
    EXPECT_EQ(sRuleList(rules), "T001" + rest + "X009" + rest);
    EXPECT_EQ(sRuleList({}), "");
}

TEST(RuleText, ThePageHasATableAndASectionForEachFamily) {
    auto schemaRule = ruleOf("E001", "Why <so>.");
    schemaRule.wrong = {"ENTITY A;"};
    auto setRule = ruleOf("T001", "Why.");
    setRule.right = {"<b/>\n"};
    const std::vector<kit::Rule> rules{schemaRule, setRule, ruleOf("T002", "Too.")};
    const auto page = sRulePage(rules);
    EXPECT_TRUE(page.starts_with("# Rules\n"));
    const auto table = page.find("| [E001](#e001-a-name) | warning | a-name | What &lt;Name> is |\n"
                                 "| [T001](#t001-a-name) | warning | a-name | What &lt;Name> is |\n"
                                 "| [T002](#t002-a-name)");
    EXPECT_NE(table, std::string::npos) << page;
    EXPECT_TRUE(page.ends_with("\n## Schema\n"
                               "\n### E001 a-name\n\nwarning: What &lt;Name> is\n\nWhy &lt;so>.\n"
                               "\nWrong:\n\n```text\nENTITY A;\n```\n"
                               "\n## Types\n"
                               "\n### T001 a-name\n\nwarning: What &lt;Name> is\n\nWhy.\n"
                               "\nRight:\n\n```xml\n<b/>\n```\n"
                               "\n### T002 a-name\n\nwarning: What &lt;Name> is\n\nToo.\n"))
        << page;
}

} // namespace

} // namespace kiv::kivifc
