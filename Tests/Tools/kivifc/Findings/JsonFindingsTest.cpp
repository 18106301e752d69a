#include "Tools/kivifc/Findings/SampleFindings.h"
#include "Tools/kivifc/Findings/Validation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace kiv::kivifc::test {

namespace {

using kit::Severity;
using nlohmann::json;

/// Every member that a finding can have.
kit::Finding wholeFinding() {
    auto finding = sampleFinding("S001", Severity::Warning, "a \"message\"", {2, 8, 3});
    finding.notes.push_back({"a note", {}});
    finding.notes.push_back({"the other place", kit::Place{"b.xml", {4, 1, 0}}});
    finding.edits.push_back({10, 2, "x"});
    finding.origin = kit::FindingOrigin{"kiv::f", "Source/F", 316};
    return finding;
}

CheckResult wholeResult() {
    CheckResult result;
    result.schemaPath = "IFC4.exp";
    result.schemaName = "IFC4";
    result.failures = {{"Sets\xFF", "Permission denied"}};
    result.omitted["T001"] = 3;
    result.fixed = {"a.xml: m [C001]"};
    result.counts.documentsChecked = 2;
    result.counts.vAdd(wholeFinding());
    return result;
}

std::string sDocument(const std::vector<kit::Finding>& findings, const CheckResult& result) {
    return sWrittenBy([](Output& output) { return pJsonFindings(output); }, findings, result);
}

TEST(JsonFindings, FindingHasAllThatIsKnown) {
    const auto document = json::parse(sDocument({wholeFinding()}, wholeResult()));
    const auto finding = json::parse(R"({
        "code": "S001", "rule": "unknown-element", "severity": "warning", "message": "a \"message\"",
        "path": "walls.xml", "line": 2, "column": 8, "length": 3, "subject": "Pset_Wall",
        "notes": [{"message": "a note"},
                  {"message": "the other place", "path": "b.xml", "line": 4, "column": 1}],
        "edits": [{"offset": 10, "length": 2, "text": "x"}],
        "origin": {"function": "kiv::f", "file": "Source/F"}})");
    EXPECT_EQ(document["findings"], json::array({finding}));
}

TEST(JsonFindings, TextsThatAreNotUtf8HaveTheirBytesBesideThem) {
    auto finding = sampleFinding("S001", Severity::Warning, "in \xFF", {}, "a\xFE.xml");
    finding.subject = "\xFD";
    finding.notes.push_back({"also in \xFC", {}});
    CheckResult result;
    result.fixed = {"a.xml: m [C001]", "b\xFB.xml: m [C001]"};
    const auto text = sDocument({finding}, result);
    const auto document = json::parse(text);
    const auto& shown = document["findings"][0];
    EXPECT_EQ(shown["messageBytes"], "in%20%FF");
    EXPECT_EQ(shown["pathBytes"], "a%FE.xml");
    EXPECT_EQ(shown["subjectBytes"], "%FD");
    EXPECT_EQ(shown["notes"][0]["messageBytes"], "also%20in%20%FC");
    EXPECT_EQ(document["fixedBytes"],
              json::array({"a.xml%3A%20m%20%5BC001%5D", "b%FB.xml%3A%20m%20%5BC001%5D"}));
    const auto validation = validated(KIVIFC_SOURCES "/Findings/check.schema.json", text);
    EXPECT_TRUE(validation.isLeftOut || validation.isValid) << validation.text;
}

TEST(JsonFindings, WhatIsNotKnownIsLeftOut) {
    const auto document = json::parse(sDocument({sampleFinding("Z999", Severity::Note, "m", {0, 0, 0}),
                                                 sampleFinding("Z999", Severity::Note, "m", {3, 0, 0})},
                                                {}));
    const auto& findings = document["findings"];
    EXPECT_EQ(findings[0],
              json::parse(R"({"code": "Z999", "severity": "note", "message": "m", "path": "walls.xml",
                                          "subject": "Pset_Wall", "notes": [], "edits": []})"));
    EXPECT_EQ(findings[1]["line"], 3);
    EXPECT_FALSE(findings[1].contains("column"));
}

TEST(JsonFindings, DocumentSaysWhatTheRunCameTo) {
    const auto document = json::parse(sDocument({}, wholeResult()));
    EXPECT_EQ(document["format"], "kivifc-check/1");
    EXPECT_EQ(document["schema"], json::parse(R"({"path": "IFC4.exp", "name": "IFC4"})"));
    EXPECT_EQ(document["omitted"], json::parse(R"({"T001": 3})"));
    EXPECT_EQ(document["fixed"], json::parse(R"(["a.xml: m [C001]"])"));
    EXPECT_EQ(document["failures"][0]["subjectBytes"], "Sets%FF");
    EXPECT_EQ(document["summary"], json::parse(R"({"errors": 0, "warnings": 1, "notes": 0, "documents": 2,
                                                   "documentsWithFindings": 1, "documentsUnreadable": 0,
                                                   "hiddenByBaseline": 0})"));
}

TEST(JsonFindings, RunWithoutASchemaIsADocumentToo) {
    EXPECT_EQ(json::parse(sDocument({}, {}))["schema"], nullptr);
}

TEST(JsonFindings, DocumentsAreWhatTheSchemaDescribes) {
    for (const auto& text : {sDocument({wholeFinding(), wholeFinding()}, wholeResult()), sDocument({}, {})}) {
        const auto validation = validated(KIVIFC_SOURCES "/Findings/check.schema.json", text);
        if (validation.isLeftOut)
            GTEST_SKIP() << "left out: " << validation.text;
        EXPECT_TRUE(validation.isValid) << validation.text;
    }
}

/// A schema that took anything would prove nothing.
TEST(JsonFindings, SchemaRefusesWhatItDoesNotDescribe) {
    auto document = json::parse(sDocument({wholeFinding()}, wholeResult()));
    document["findings"][0]["hash"] = 1;
    const auto validation = validated(KIVIFC_SOURCES "/Findings/check.schema.json", document.dump());
    if (validation.isLeftOut)
        GTEST_SKIP() << "left out: " << validation.text;
    EXPECT_FALSE(validation.isValid);
}

} // namespace

} // namespace kiv::kivifc::test
