#include "Tools/kivifc/Findings/SampleFindings.h"
#include "Tools/kivifc/Findings/Validation.h"

#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace kiv::kivifc::test {

namespace {

using kit::Severity;
using nlohmann::json;

constexpr const char* WideDocument = "<A>\n  <N\xC3\xA4me/>\n</A>\n";

std::string sLog(const std::vector<kit::Finding>& findings, const CheckResult& result = {}) {
    SourceLines sources;
    sources.vKeep("walls.xml", WideDocument);
    return sWrittenBy([&](Output& output) { return pSarifFindings(output, sources); }, findings, result);
}

json run(const std::vector<kit::Finding>& findings, const CheckResult& result = {}) {
    return json::parse(sLog(findings, result))["runs"][0];
}

kit::Finding findingWithFix() {
    auto finding = sampleFinding("S001", Severity::Error, "no such element", {2, 4, 4});
    finding.notes.push_back({"did you mean \"Name\"?", {}});
    finding.notes.push_back({"the other one", kit::Place{"b c.xml", {7, 2, 0}}});
    // All of "N\u00E4me", whose letters are five bytes.
    finding.edits.push_back({7, 5, "Name"});
    return finding;
}

TEST(SarifFindings, ResultHasItsRuleMessagePlaceAndFix) {
    const auto result = run({findingWithFix()})["results"][0];
    EXPECT_EQ(result["ruleId"], "S001");
    EXPECT_EQ(result["level"], "error");
    EXPECT_EQ(result["message"]["text"],
              "no such element\nnote: did you mean \"Name\"?\nnote: the other one");
    EXPECT_EQ(result["locations"][0]["physicalLocation"],
              json::parse(R"({"artifactLocation": {"uri": "walls.xml"},
                              "region": {"startLine": 2, "startColumn": 4, "endColumn": 8}})"));
    EXPECT_EQ(result["relatedLocations"][0],
              json::parse(R"({"physicalLocation": {"artifactLocation": {"uri": "b%20c.xml"},
                                                   "region": {"startLine": 7, "startColumn": 2}},
                              "message": {"text": "the other one"}})"));
    EXPECT_EQ(result["fixes"][0]["artifactChanges"],
              json::parse(R"([{"artifactLocation": {"uri": "walls.xml"},
                               "replacements": [{"deletedRegion": {"startLine": 2, "startColumn": 4,
                                                                   "endLine": 2, "endColumn": 8},
                                                 "insertedContent": {"text": "Name"}}]}])"));
}

TEST(SarifFindings, RulesAreThoseOfTheResultsWithTheirHelp) {
    const auto all =
        run({sampleFinding("S001", Severity::Error, "a", {}), sampleFinding("N001", Severity::Error, "b", {}),
             sampleFinding("S001", Severity::Error, "c", {})});
    const auto& rules = all["tool"]["driver"]["rules"];
    ASSERT_EQ(rules.size(), 2U);
    EXPECT_EQ(rules[0]["id"], "N001");
    EXPECT_EQ(rules[1]["id"], "S001");
    EXPECT_THAT(rules[1]["help"]["text"].get<std::string>(), testing::HasSubstr("Right:"));
    EXPECT_EQ(all["results"][0]["ruleIndex"], 1);
    EXPECT_EQ(all["results"][1]["ruleIndex"], 0);
    EXPECT_EQ(all["columnKind"], "unicodeCodePoints");
}

std::string sFingerprint(const json& result) {
    return result["partialFingerprints"]["primaryLocationLineHash"];
}

TEST(SarifFindings, FingerprintStaysWhenLinesMoveAndDistinguishesEqualFindings) {
    const auto before = run({sampleFinding("S001", Severity::Error, "a", {3, 1, 1}),
                             sampleFinding("S001", Severity::Error, "a", {5, 1, 1}),
                             sampleFinding("S001", Severity::Error, "b", {6, 1, 1})})["results"];
    const auto after = run({sampleFinding("S001", Severity::Error, "a", {13, 4, 1}),
                            sampleFinding("S001", Severity::Error, "a", {15, 4, 1})})["results"];
    EXPECT_EQ(sFingerprint(before[0]), sFingerprint(after[0]));
    EXPECT_EQ(sFingerprint(before[1]), sFingerprint(after[1]));
    EXPECT_NE(sFingerprint(before[0]), sFingerprint(before[1]));
    EXPECT_NE(sFingerprint(before[0]), sFingerprint(before[2]));
}

TEST(SarifFindings, UrisAreRelativeToTheFolderOneIsIn) {
    const auto below = (std::filesystem::current_path() / "Sets" / "a.xml").native();
    const auto results = run({sampleFinding("S001", Severity::Error, "a", {}, below),
                              sampleFinding("S001", Severity::Error, "a", {}, "./b:%\xC3\xA4.xml"),
                              sampleFinding("S001", Severity::Error, "a", {}, "/else/where.xml")})["results"];
    const auto uri = [&](int number) {
        return results[static_cast<std::size_t>(number)]["locations"][0]["physicalLocation"]
                      ["artifactLocation"]["uri"];
    };
    EXPECT_EQ(uri(0), "Sets/a.xml");
    EXPECT_EQ(uri(1), "b%3A%25%C3%A4.xml");
    EXPECT_EQ(uri(2), "file:///else/where.xml");
}

TEST(SarifFindings, FailuresAreNotificationsOfTheRun) {
    CheckResult result;
    result.failures = {{"Sets", "Permission denied"}};
    const auto invocation = run({}, result)["invocations"][0];
    EXPECT_EQ(invocation["executionSuccessful"], false);
    EXPECT_EQ(invocation["toolExecutionNotifications"][0]["message"]["text"], "Sets: Permission denied");
    EXPECT_EQ(run({})["invocations"][0]["executionSuccessful"], true);
}

/// The official schema is not ours to keep: `./dev sarif` fetches it.
TEST(SarifFindings, LogsAreWhatTheOfficialSchemaDescribes) {
    const auto* const schema = std::getenv("KIV_SARIF_SCHEMA");
    const std::string path = schema ? schema : KIVIFC_BUILD "/sarif-2.1.0.json";
    if (!std::filesystem::exists(path))
        GTEST_SKIP() << "left out: no schema of SARIF at " << path << "; ./dev sarif fetches it";
    CheckResult failed;
    failed.failures = {{"Sets", "Permission denied"}};
    for (const auto& log :
         {sLog({findingWithFix(), sampleFinding("Z999", Severity::Note, "m", {})}), sLog({}, failed)}) {
        const auto validation = validated(path, log);
        if (validation.isLeftOut)
            GTEST_SKIP() << "left out: " << validation.text;
        EXPECT_TRUE(validation.isValid) << validation.text;
    }
}

} // namespace

} // namespace kiv::kivifc::test
