#include "kivifc/Findings/FindingCounts.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc {

namespace {

using kit::Severity;

kit::Finding findingOf(Severity severity, const std::string& path) {
    kit::Finding finding;
    finding.severity = severity;
    finding.place.path = path;
    return finding;
}

TEST(FindingCounts, NothingIsFound) {
    FindingCounts counts;
    EXPECT_EQ(sSummary(counts), "no findings in 0 documents");
    counts.documentsChecked = 1;
    EXPECT_EQ(sSummary(counts), "no findings in 1 document");
    counts.hidden = 3;
    EXPECT_EQ(sSummary(counts), "no findings in 1 document; 3 hidden by the baseline");
}

TEST(FindingCounts, EachSeverityIsCountedAndEachDocumentOnce) {
    FindingCounts counts;
    counts.documentsChecked = 4;
    counts.vAdd(findingOf(Severity::Error, "a.xml"));
    EXPECT_EQ(sSummary(counts), "1 error in 1 of 4 documents");
    counts.vAdd(findingOf(Severity::Error, "a.xml"));
    counts.vAdd(findingOf(Severity::Note, "b.xml"));
    EXPECT_EQ(sSummary(counts), "2 errors, 1 note in 2 of 4 documents");
    counts.vAdd(findingOf(Severity::Warning, "b.xml"));
    EXPECT_EQ(sSummary(counts), "2 errors, 1 warning, 1 note in 2 of 4 documents");
    EXPECT_EQ(counts.getCount(Severity::Error), 2U);
    EXPECT_EQ(counts.getDocuments(), 2U);
}

TEST(FindingCounts, SchemaThatCannotBeReadIsNoReasonToCountDocuments) {
    FindingCounts counts;
    counts.vAdd(findingOf(Severity::Error, "T.exp"), true);
    EXPECT_EQ(sSummary(counts), "1 error in the schema; no document was checked");
}

TEST(FindingCounts, TheSchemaIsNoDocument) {
    FindingCounts counts;
    counts.documentsChecked = 2;
    counts.vAdd(findingOf(Severity::Warning, "T.exp"), true);
    EXPECT_EQ(counts.getDocuments(), 0U);
    EXPECT_TRUE(counts.hasSchemaFindings());
    EXPECT_EQ(sSummary(counts), "1 warning in the schema, none in 2 documents");
    counts.vAdd(findingOf(Severity::Warning, "a.xml"));
    EXPECT_EQ(sSummary(counts), "2 warnings in 1 of 2 documents and in the schema");
}

} // namespace

} // namespace kiv::kivifc
