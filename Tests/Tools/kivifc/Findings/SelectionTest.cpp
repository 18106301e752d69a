#include "kivifc/Findings/Selection.h"
#include "Tools/kivifc/Findings/SampleFindings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv::kivifc::test {

namespace {

using kit::Severity;

struct SelectionRow {
    std::vector<std::string> selected;
    std::vector<std::string> ignored;
    std::string_view code;
    bool isShown;
};

TEST(Selection, LongerBeginningWins) {
    const SelectionRow rows[] = {
        {{}, {}, "T001", true},
        {{"T"}, {}, "T001", true},
        {{"T"}, {}, "S001", false},
        {{"T00"}, {}, "T010", false},
        {{}, {"T"}, "T001", false},
        {{}, {"T001"}, "T002", true},
        {{"T"}, {"T001"}, "T001", false},
        {{"T001"}, {"T"}, "T001", true},
        {{"T001"}, {"T"}, "T002", false},
        // Both name the same: what is to be ignored is.
        {{"T001"}, {"T001"}, "T001", false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(isSelected({row.selected, row.ignored, {}}, row.code), row.isShown) << row.code;
}

TEST(Selection, LongestBeginningGivesTheSeverity) {
    std::vector<kit::Finding> findings{sampleFinding("T001", Severity::Error, "a", {}),
                                       sampleFinding("T002", Severity::Error, "b", {}),
                                       sampleFinding("S001", Severity::Error, "c", {})};
    vFindingsSelect(findings, {{}, {}, {{"T", Severity::Note}, {"T001", Severity::Warning}}});
    EXPECT_EQ(findings[0].severity, Severity::Warning);
    EXPECT_EQ(findings[1].severity, Severity::Note);
    EXPECT_EQ(findings[2].severity, Severity::Error);
}

TEST(Selection, FileThatCannotBeReadIsShownWhateverIsChosen) {
    std::vector<kit::Finding> findings{sampleFinding("R044", Severity::Error, "a", {}),
                                       sampleFinding("T002", Severity::Error, "b", {})};
    vFindingsSelect(findings, {{"S"}, {"R"}, {{"R", Severity::Note}}});
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].severity, Severity::Error);
}

TEST(Selection, UnknownCodeIsNamed) {
    std::string failure;
    sCodeOf("Q123", failure);
    EXPECT_THAT(failure, testing::HasSubstr("no rule has the code \"Q123\""));
}

TEST(Selection, SeveritiesHaveThreeNames) {
    EXPECT_EQ(severityFrom("error"), Severity::Error);
    EXPECT_EQ(severityFrom("Warning"), Severity::Warning);
    EXPECT_EQ(severityFrom("note"), Severity::Note);
    EXPECT_EQ(severityFrom("info"), std::nullopt);
}

} // namespace

} // namespace kiv::kivifc::test
