#include "Tools/kivifc/Findings/SampleFindings.h"

#include <gtest/gtest.h>

namespace kiv::kivifc::test {

namespace {

std::string sCommands(const std::vector<kit::Finding>& findings) {
    return sWrittenBy([](Output& output) { return pGithubFindings(output); }, findings);
}

TEST(GithubFindings, PropertiesAndMessageAreEscapedByTheirRules) {
    auto finding =
        sampleFinding("Z999", kit::Severity::Error, "100% wrong: a,b\r\nc", {2, 8, 3}, "a:b,c%.xml");
    finding.notes.push_back({"did you mean \"d\"?", {}});
    finding.notes.push_back({"the other one", kit::Place{"d.xml", {4, 0, 0}}});
    EXPECT_EQ(sCommands({finding}),
              "::error file=a%3Ab%2Cc%25.xml,line=2,col=8,endColumn=10,title=Z999::100%25 wrong: "
              "a,b%0D%0Ac%0Anote: did you mean \"d\"?%0Ad.xml:4: note: the other one\n"
              "no findings in 0 documents\n");
}

TEST(GithubFindings, WhatTurnsOrEndsLinesForTheReaderIsEscaped) {
    EXPECT_EQ(sCommands({sampleFinding("Z999", kit::Severity::Error, "a\u202Eb\u2028c\u00E4", {1, 0, 0},
                                       "d\u2066.xml")}),
              "::error file=d\\u{2066}.xml,line=1,title=Z999::a\\u{202E}b\\u{2028}c\u00E4\n"
              "no findings in 0 documents\n");
}

TEST(GithubFindings, FailureOfTheJobIsAnError) {
    CheckResult result;
    result.failures.push_back({"Sets\n", "100% gone"});
    EXPECT_EQ(sWrittenBy([](Output& output) { return pGithubFindings(output); }, {}, result),
              "::error::Sets%0A: 100%25 gone\n");
    result.counts.documentsChecked = 1;
    EXPECT_EQ(sWrittenBy([](Output& output) { return pGithubFindings(output); }, {}, result),
              "::error::Sets%0A: 100%25 gone\nno findings in 1 document\n");
}

TEST(GithubFindings, NoteIsANoticeAndUnknownPlacesAreLeftOut) {
    EXPECT_EQ(sCommands({sampleFinding("Z999", kit::Severity::Note, "a", {0, 0, 0}),
                         sampleFinding("Z999", kit::Severity::Warning, "b", {3, 0, 0})}),
              "::notice file=walls.xml,title=Z999::a\n"
              "::warning file=walls.xml,line=3,title=Z999::b\n"
              "no findings in 0 documents\n");
}

} // namespace

} // namespace kiv::kivifc::test
