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

/// What is harmless is shown for the rules about it alone.
std::vector<Finding> findingsOfExample(const Rule& rule, const RuleExample& example) {
    return test::exampleFindings(example.text, rule.code == "R016" || rule.code == "R017");
}

std::vector<std::string> exampleLines(const Rule& rule, const RuleExample& example) {
    std::vector<std::string> lines;
    for (const auto& finding : findingsOfExample(rule, example))
        lines.push_back(test::sFindingLine(finding));
    return lines;
}

std::set<std::string> codesOf(const Rule& rule, const RuleExample& example) {
    std::set<std::string> codes;
    for (const auto& finding : findingsOfExample(rule, example))
        codes.insert(std::string(finding.code));
    return codes;
}

/// Rules about schemas have examples of another form.
bool isAboutDocuments(const Rule& rule) {
    return rule.code[0] != 'E' && rule.code != "R090" && !rule.wrong.text.empty();
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
    const std::set<std::string_view> reportsWithExamples{"R011", "R016", "R017", "R041", "R044", "R090"};
    for (const auto& rule : getRules()) {
        const bool isWithout = rule.code[0] == 'R' && !reportsWithExamples.contains(rule.code);
        EXPECT_EQ(rule.wrong.text.empty(), isWithout) << rule.code;
        EXPECT_EQ(rule.right.text.empty(), isWithout) << rule.code;
    }
}

/// What a document has in the place of what is right, and the rule that explains what the library reports.
struct Cause {
    std::string_view code;
    std::string_view right;
    std::string_view wrong;
    std::string_view explainedBy;
    std::string_view message;
};

constexpr Cause Causes[] = {
    {"R001", "</PropertyDef>", "<Foo/></PropertyDef>", "S001", "Unknown xml node"},
    {"R002", "<ValueRangeDef/>", "<ValueRangeDef><Foo/></ValueRangeDef>", "S001",
     "Unknown xml node in ValueRangeDef"},
    {"R003", "<PropertySetDef", "<PropertySetDef ifdguid=\"12\"", "G001", "Illegal ifdguid in xml file"},
    {"R004", "<PropertySetDef", "<PropertySetDef templatetype=\"PSET_OTHER\"", "S007",
     "Illegal templatetype used"},
    {"R005", "IfcWall", "IfcWal", "C001",
     "Applicable class in xml set is not defined in schema (contain spaces?)"},
    {"R006", "IfcWall", "IfcRoot/STANDARD", "C009",
     "Predefined type set on xml set, but no \"PredefinedType\" attribute found on entity"},
    {"R007", "IfcWall", "IfcWall/SOLIDWALL", "C009", "Attribute predefinedType is doesnt exist on entity"},
    {"R008", "IfcWall", "IfcWall/FOO", "C008",
     "Predefined type set on xml set, but the value is illegal for this enumeration"},
    {"R012", "<PropertyType>", "<PropertyType><Foo/>", "S010", "Unknown node"},
    {"R013", "\"IfcReal\"", "\"IfcFoo\"", "T001", "Excpeted name to exist in schema"},
    {"R014", "\"LENGTHUNIT\"", "\"LENGTHUNIT \"", "S019", "Name should not end with space"},
    {"R015", " type=\"LENGTHUNIT\"", "", "S005", "Could not find attribute"},
    {"R018", "<TypeComplexProperty name=\"C\">", "<TypeComplexProperty name=\"C\"><Foo/>", "S001",
     "Unknown node"},
    {"R019", "Q_LENGTH", "Q_FOO", "S009", "Unknown node"},
    {"R020", "Q_LENGTH", "", "S009", "Child not found"},
};

/// Has something of everything that may be wrong.
std::string sCauseDocument(const Cause& cause) {
    std::string text =
        "<PropertySetDef><IfcVersion version=\"IFC4\"/><Name>A</Name><ApplicableClasses><ClassName>IfcWall"
        "</ClassName></ApplicableClasses><PropertyDefs><PropertyDef><Name>P</Name><PropertyType>"
        "<TypePropertyBoundedValue><ValueRangeDef/><DataType type=\"IfcReal\"/></TypePropertyBoundedValue>"
        "</PropertyType></PropertyDef><PropertyDef><Name>S</Name><PropertyType><TypePropertySingleValue>"
        "<DataType type=\"IfcReal\"/><UnitType type=\"LENGTHUNIT\"/></TypePropertySingleValue>"
        "</PropertyType></PropertyDef><PropertyDef><Name>C</Name><PropertyType><TypeComplexProperty "
        "name=\"C\"></TypeComplexProperty></PropertyType></PropertyDef></PropertyDefs></PropertySetDef>";
    if (cause.right == "Q_LENGTH")
        text = "<QtoSetDef><IfcVersion version=\"IFC4\"/><Name>A</Name><QtoDefs><QtoDef><Name>Q</Name>"
               "<QtoType>Q_LENGTH</QtoType></QtoDef></QtoDefs></QtoSetDef>";
    text.replace(text.find(cause.right), cause.right.size(), cause.wrong);
    if (cause.code == "R007")
        text =
            "---- A.exp\nSCHEMA IFC4;\nENTITY IfcWall;\n PredefinedType : STRING;\nEND_ENTITY;\nEND_SCHEMA;\n"
            "---- A.xml\n" +
            text + '\n';
    return text;
}

TEST(RuleTest, PagesOfReportsNameTheRuleThatExplainsThem) {
    for (const auto& cause : Causes) {
        bool isNoted = false;
        for (const auto& finding : test::exampleFindings(sCauseDocument(cause))) {
            for (const auto& note : finding.notes)
                isNoted = isNoted || (finding.code == cause.explainedBy &&
                                      note.message == "the library reports: " + std::string(cause.message));
            EXPECT_NE(finding.code, cause.code);
        }
        EXPECT_TRUE(isNoted) << cause.code;
        const auto& page = pRuleFind(cause.code)->explanation;
        EXPECT_NE(page.find("which is a finding " + std::string(cause.explainedBy)), std::string_view::npos)
            << page;
    }
}

TEST(RuleTest, WrongExamplesYieldTheirCodeAlone) {
    for (const auto& rule : getRules()) {
        if (!isAboutDocuments(rule))
            continue;
        EXPECT_EQ(codesOf(rule, rule.wrong), std::set<std::string>{std::string(rule.code)})
            << testing::PrintToString(exampleLines(rule, rule.wrong));
    }
}

TEST(RuleTest, WrongExamplesHaveOneFinding) {
    for (const auto& rule : getRules()) {
        if (!isAboutDocuments(rule))
            continue;
        EXPECT_EQ(exampleLines(rule, rule.wrong).size(), 1)
            << testing::PrintToString(exampleLines(rule, rule.wrong));
    }
}

TEST(RuleTest, RightExamplesYieldNothing) {
    for (const auto& rule : getRules()) {
        if (!isAboutDocuments(rule))
            continue;
        EXPECT_THAT(exampleLines(rule, rule.right), IsEmpty()) << rule.code;
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
