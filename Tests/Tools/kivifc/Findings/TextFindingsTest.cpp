#include "Tools/kivifc/Findings/SampleFindings.h"

#include <gtest/gtest.h>

namespace kiv::kivifc::test {

namespace {

using kit::Severity;

constexpr const char* MisspeltDocument = "<PropertySetDef>\n\t<Name>Pset_Wal</Name>\n</PropertySetDef>\n";

std::string sText(const std::vector<kit::Finding>& findings, const TextFindingOptions& options,
                  const CheckResult& result = {}) {
    SourceLines sources;
    sources.vKeep("walls.xml", MisspeltDocument);
    return sWrittenBy([&](Output& output) { return pTextFindings(output, sources, options); }, findings,
                      result);
}

kit::Finding nameFinding() {
    auto finding = sampleFinding("N001", Severity::Error, "no class \"Wal\"", {2, 8, 8});
    finding.notes.push_back({"did you mean \"Wall\"?", {}});
    finding.notes.push_back({"the other one is here", kit::Place{"walls.xml", {3, 3, 14}}});
    return finding;
}

TEST(TextFindings, FindingHasItsLineACaretAndItsNotes) {
    EXPECT_EQ(sText({nameFinding()}, {.hasSummary = false}), "walls.xml:2:8: error: no class \"Wal\" [N001]\n"
                                                             "\t<Name>Pset_Wal</Name>\n"
                                                             "\t      ^~~~~~~~\n"
                                                             "walls.xml:2:8: note: did you mean \"Wall\"?\n"
                                                             "walls.xml:3:3: note: the other one is here\n"
                                                             "</PropertySetDef>\n"
                                                             "  ^~~~~~~~~~~~~~\n");
}

TEST(TextFindings, ContextMayBeLeftOut) {
    EXPECT_EQ(sText({nameFinding()}, {.hasContext = false, .hasSummary = false}),
              "walls.xml:2:8: error: no class \"Wal\" [N001]\n"
              "walls.xml:2:8: note: did you mean \"Wall\"?\n"
              "walls.xml:3:3: note: the other one is here\n");
}

TEST(TextFindings, PlaceIsAsExactAsItIsKnown) {
    EXPECT_EQ(sText({sampleFinding("A001", Severity::Warning, "a", {0, 0, 0}),
                     sampleFinding("A001", Severity::Note, "b", {2, 0, 0}),
                     sampleFinding("A001", Severity::Note, "c", {1, 1, 0}, "gone\n.xml")},
                    {.hasSummary = false}),
              "walls.xml: warning: a [A001]\n"
              "walls.xml:2: note: b [A001]\n"
              "gone\\n.xml:1:1: note: c [A001]\n");
}

TEST(TextFindings, ColoursAreThoseOfCompilers) {
    EXPECT_EQ(sText({sampleFinding("A001", Severity::Warning, "a", {2, 8, 1})},
                    {.isColoured = true, .hasSummary = false}),
              "\033[1mwalls.xml:2:8:\033[0m \033[1;35mwarning:\033[0m \033[1ma [A001]\033[0m\n"
              "\t<Name>Pset_Wal</Name>\n"
              "\033[1;32m\t      ^\033[0m\n");
}

TEST(TextFindings, WhatIsLeftOutAndFixedComesBeforeTheSummary) {
    CheckResult result;
    result.omitted["N001"] = 312;
    result.fixed = {"a.xml: no class [C001]"};
    result.counts.documentsChecked = 408;
    result.counts.vAdd(nameFinding());
    EXPECT_EQ(sText({}, {}, result), "... and 312 more [N001]\n"
                                     "fixed since the baseline: a.xml: no class [C001]\n"
                                     "1 error in 1 of 408 documents\n");
}

TEST(FindingCounts, SummaryNamesOnlyWhatThereIs) {
    FindingCounts counts;
    counts.documentsChecked = 1;
    EXPECT_EQ(sSummary(counts), "no findings in 1 document");
    counts.documentsChecked = 408;
    counts.vAdd(sampleFinding("E001", Severity::Warning, "a", {}), true);
    EXPECT_EQ(sSummary(counts), "1 warning in the schema, none in 408 documents");
    for (int i = 0; i < 3; ++i)
        counts.vAdd(sampleFinding("A001", Severity::Error, "a", {}, i == 0 ? "a.xml" : "b.xml"));
    counts.vAdd(sampleFinding("A001", Severity::Note, "a", {}, "a.xml"));
    EXPECT_EQ(sSummary(counts), "3 errors, 1 warning, 1 note in 2 of 408 documents and in the schema");
    counts.hidden = 7;
    EXPECT_EQ(
        sSummary(counts),
        "3 errors, 1 warning, 1 note in 2 of 408 documents and in the schema; 7 hidden by the baseline");
}

} // namespace

} // namespace kiv::kivifc::test
