#include "kivifc/Findings/Baseline.h"
#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/Findings/SampleFindings.h"
#include "kivifc/Findings/Selection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace kiv::kivifc::test {

namespace {

using kit::Severity;
using kiv::test::sFileText;
using kiv::test::TemporaryFolder;
using testing::ElementsAre;
using testing::HasSubstr;

kit::Finding finding(const std::string& path, std::size_t line, std::string message = "m") {
    return sampleFinding("C001", Severity::Error, std::move(message), {line, 1, 1}, path);
}

class BaselineFile : public testing::Test {
protected:
    Baseline read() const {
        std::string failure;
        auto baseline = baselineRead(path_, failure);
        EXPECT_EQ(failure, "");
        return baseline.value_or(Baseline());
    }

    const TemporaryFolder folder_;
    const std::string path_ = folder_.sPath("baseline.json");
    const std::string document_ = folder_.sPath("Sets/a.xml");
};

TEST_F(BaselineFile, HidesEachFindingAsOftenAsItIsListedWhateverItsLine) {
    ASSERT_EQ(sBaselineWrite(path_, baselineOf(path_, {finding(document_, 3), finding(document_, 4),
                                                       finding(document_, 5, "n")})),
              "");
    std::vector<kit::Finding> findings{finding(document_, 13), finding(document_, 14),
                                       finding(document_, 15)};
    auto baseline = read();
    std::vector<std::string> fixed;
    EXPECT_EQ(baselineHide(findings, baseline, {{document_}, {}}, fixed), 2U);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].place.position.line, 15U);
    EXPECT_THAT(fixed, ElementsAre("Sets/a.xml: n [C001]"));
}

TEST_F(BaselineFile, NothingIsFixedWhereNobodyLooked) {
    const auto other = folder_.sPath("Sets/b.xml");
    const auto across = sampleFinding("X001", Severity::Error, "x", {3, 1, 1}, document_);
    ASSERT_EQ(sBaselineWrite(path_, baselineOf(path_, {finding(document_, 3), across, finding(other, 3)})),
              "");
    struct Row {
        BaselineScope scope;
        std::vector<std::string> fixed;
    };
    const std::string ofDocument = "Sets/a.xml: m [C001]";
    const std::string ofOther = "Sets/b.xml: m [C001]";
    const Row rows[] = {
        {{{document_, other}, {}}, {ofDocument, "Sets/a.xml: x [X001]", ofOther}},
        // Without the other document nothing can be said of rules that compare documents.
        {{{document_}, {}}, {ofDocument}},
        {{{other}, {}}, {ofOther}},
        {{{}, {}}, {}},
        {{{document_}, {{}, {"C"}, {}}}, {}},
        {{{document_, other}, {{"X"}, {}, {}}}, {"Sets/a.xml: x [X001]"}},
    };
    for (const auto& row : rows) {
        std::vector<kit::Finding> findings;
        auto baseline = read();
        std::vector<std::string> fixed;
        EXPECT_EQ(baselineHide(findings, baseline, row.scope, fixed), 0U);
        EXPECT_EQ(fixed, row.fixed) << testing::PrintToString(row.scope.paths);
    }
}

TEST_F(BaselineFile, HasPathsRelativeToItsFolder) {
    ASSERT_EQ(sBaselineWrite(path_, baselineOf(path_, {finding(document_, 3), finding(document_, 9)})), "");
    EXPECT_EQ(nlohmann::json::parse(sFileText(path_)), nlohmann::json::parse(R"({
        "format": "kivifc-baseline/1",
        "findings": [{"path": "Sets/a.xml", "code": "C001", "subject": "Pset_Wall", "message": "m", "count": 2}]
    })"));
}

TEST_F(BaselineFile, KnowsWhatIsNotUtf8Again) {
    const auto document = folder_.sPath("B\xFCro/\xE2\x82\xAC.xml");
    auto odd = finding(document, 3, "as in \"B\xFCro\"");
    odd.subject = "\xFF%41";
    // The same but for one byte that is not UTF-8.
    auto other = odd;
    other.subject = "\xFE%41";
    ASSERT_EQ(sBaselineWrite(path_, baselineOf(path_, {odd})), "");
    std::vector<kit::Finding> findings{odd, other};
    auto baseline = read();
    std::vector<std::string> fixed;
    EXPECT_EQ(baselineHide(findings, baseline, {{document}, {}}, fixed), 1U);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].subject, other.subject);
    EXPECT_THAT(fixed, ElementsAre());
}

TEST_F(BaselineFile, NeverHidesAFileThatCannotBeRead) {
    std::vector<kit::Finding> findings{sampleFinding("R044", Severity::Error, "m", {}, document_)};
    ASSERT_EQ(sBaselineWrite(path_, baselineOf(path_, findings)), "");
    auto baseline = read();
    EXPECT_TRUE(baseline.findings.empty());
    std::vector<std::string> fixed;
    EXPECT_EQ(baselineHide(findings, baseline, {{document_}, {}}, fixed), 0U);
}

TEST_F(BaselineFile, SaysWhyItCannotBeRead) {
    const std::pair<std::string, std::string> rows[] = {
        {"{", "not a baseline: no JSON from byte "},
        {"{}", "not a baseline: --write-baseline makes one"},
        {R"({"format": "kivifc-baseline/2"})", "its format is not \"kivifc-baseline/1\""},
        {R"({"format": "kivifc-baseline/1", "findings": [{"path": 1}]})", "not a baseline: "},
    };
    for (const auto& [text, reason] : rows) {
        folder_.sWrite("baseline.json", text);
        std::string failure;
        EXPECT_FALSE(baselineRead(path_, failure)) << text;
        EXPECT_THAT(failure, HasSubstr(reason)) << text;
    }
    std::string failure;
    EXPECT_FALSE(baselineRead(folder_.sPath("none.json"), failure));
    EXPECT_EQ(failure, "No such file or directory");
}

} // namespace

} // namespace kiv::kivifc::test
