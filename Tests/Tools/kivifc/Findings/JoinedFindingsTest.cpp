#include "kivifc/Findings/JoinedFindings.h"

#include "Tools/kivifc/Findings/SampleFindings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kivifc::test {

namespace {

using kit::Severity;
using testing::ElementsAre;
using testing::IsEmpty;

kit::Finding findingIn(const std::string& path, std::string_view code, const std::string& message,
                       const std::vector<std::string>& missingNames = {}) {
    auto finding = sampleFinding(code, Severity::Error, message, {1, 1, 1}, path);
    finding.missingNames = missingNames;
    return finding;
}

/// "PATH CODE" of each that is left, with its notes.
std::vector<std::string> joined(std::vector<kit::Finding> findings) {
    vFindingsJoin(findings);
    std::vector<std::string> lines;
    for (const auto& finding : findings) {
        auto& line = lines.emplace_back(finding.place.path + " " + std::string(finding.code));
        for (const auto& note : finding.notes)
            line += "; " + note.message;
    }
    return lines;
}

TEST(JoinedFindings, OfASchemaThatCannotBeReadNoNameIsUnknown) {
    EXPECT_THAT(
        joined({findingIn("A.exp", "E001", "no schema"), findingIn("a.xml", "C001", "no entity", {"Wall"}),
                findingIn("a.xml", "R011", "x"), findingIn("a.xml", "R013", "x"),
                findingIn("a.xml", "T001", "no type", {"Label"}), findingIn("a.xml", "N001", "no name")}),
        ElementsAre("A.exp E001", "a.xml N001"));
}

TEST(JoinedFindings, ASchemaWithoutThatMistakeHasUnknownNames) {
    auto warning = findingIn("A.exp", "E001", "no schema");
    warning.severity = Severity::Warning;
    EXPECT_THAT(joined({warning, findingIn("a.xml", "C001", "no entity", {"Wall"})}),
                ElementsAre("A.exp E001", "a.xml C001"));
}

TEST(JoinedFindings, UsesOfALostNameAreCountedWithTheLossInAnyLetterCase) {
    EXPECT_THAT(joined({findingIn("A.exp", "E003", "lost", {"Wall", "Door"}),
                        findingIn("a.xml", "C001", "no entity", {"WALL"}),
                        findingIn("a.xml", "T001", "no type", {"Wall"}),
                        findingIn("b.xml", "C001", "no entity", {"Wall"}),
                        findingIn("b.xml", "C001", "no entity", {"Roof"}),
                        findingIn("b.xml", "C001", "no entity", {"Door"})}),
                ElementsAre("A.exp E003; \"Door\" is used in 1 document; \"Wall\" is used in 2 documents",
                            "b.xml C001"));
}

TEST(JoinedFindings, ALossThatIsNoErrorHidesNothing) {
    auto warning = findingIn("A.exp", "E003", "lost", {"Wall"});
    warning.severity = Severity::Warning;
    EXPECT_THAT(joined({warning, findingIn("a.xml", "C001", "no entity", {"Wall"})}),
                ElementsAre("A.exp E003", "a.xml C001"));
}

TEST(JoinedFindings, WhatTheSchemaLacksIsThereOnceOfEachMessage) {
    EXPECT_THAT(joined({findingIn("a.xml", "R011", "no list"), findingIn("b.xml", "R011", "no list"),
                        findingIn("b.xml", "R011", "no table"), findingIn("b.xml", "R012", "x"),
                        findingIn("c.xml", "R012", "x")}),
                ElementsAre("a.xml R011", "b.xml R011", "b.xml R012", "c.xml R012"));
}

TEST(JoinedFindings, OfNoneThereAreNone) {
    EXPECT_THAT(joined({}), IsEmpty());
}

} // namespace

} // namespace kiv::kivifc::test
