#include "kivifc/Findings/FindingWriter.h"
#include "kivifc/Json/BytesJson.h"
#include "kivifc/Json/JsonWriter.h"

#include "kiv/Kit/Findings/Rule.h"
#include "kivifc/Program/Program.h"

#include <algorithm>
#include <deque>
#include <string>
#include <utility>
#include <vector>

// Findings as one JSON document.
namespace kiv::kivifc {

namespace {

using kit::Severity;

/// Adds path, line, column and length, as far as they are known.
void vPlaceAdd(Json& json, const kit::Place& place) {
    json["path"] = place.path;
    json = withBytes(std::move(json), "path");
    const auto& position = place.position;
    if (position.line != 0)
        json["line"] = position.line;
    if (position.line != 0 && position.column != 0)
        json["column"] = position.column;
    if (position.column != 0 && position.length != 0)
        json["length"] = position.length;
}

Json notesJson(const std::vector<kit::FindingNote>& notes) {
    Json list = Json::array();
    for (const auto& note : notes) {
        auto json = withBytes({{"message", note.message}}, "message");
        if (note.place)
            vPlaceAdd(json, *note.place);
        list.push_back(std::move(json));
    }
    return list;
}

Json editsJson(const std::vector<kit::FindingEdit>& edits) {
    Json list = Json::array();
    for (const auto& edit : edits)
        list.push_back({{"offset", edit.offset}, {"length", edit.length}, {"text", edit.text}});
    return list;
}

Json findingJson(const kit::Finding& finding) {
    Json json{{"code", finding.code}};
    if (const auto* rule = kit::pRuleFind(finding.code))
        json["rule"] = rule->name;
    json["severity"] = severityText(finding.severity);
    json["message"] = finding.message;
    json = withBytes(std::move(json), "message");
    vPlaceAdd(json, finding.place);
    json["subject"] = finding.subject;
    json = withBytes(std::move(json), "subject");
    json["notes"] = notesJson(finding.notes);
    json["edits"] = editsJson(finding.edits);
    if (finding.origin)
        json["origin"] = {{"function", finding.origin->function}, {"file", finding.origin->file}};
    return json;
}

Json summaryJson(const FindingCounts& counts) {
    return {{"errors", counts.getCount(Severity::Error)},
            {"warnings", counts.getCount(Severity::Warning)},
            {"notes", counts.getCount(Severity::Note)},
            {"documents", counts.documentsChecked},
            {"documentsWithFindings", counts.getDocuments()},
            {"documentsUnreadable", counts.documentsUnreadable},
            {"hiddenByBaseline", counts.hidden}};
}

class JsonFindings final : public FindingWriter {
public:
    explicit JsonFindings(Output& output) :
        output_(output), writer_([this](std::string_view text) { blocks_.emplace_back(text); }) {}

    void vBegin(const std::vector<kit::Finding>&, const CheckResult& result) override {
        writer_.vObjectBegin();
        writer_.vMember("format", "kivifc-check/1");
        writer_.vKey("schema");
        if (result.schemaName.empty())
            writer_.vValue(nullptr);
        else
            vJsonWrite(withBytes({{"path", result.schemaPath}, {"name", result.schemaName}}, "path"),
                       writer_);
        writer_.vKey("findings");
        writer_.vArrayBegin();
    }

    void vFindingWrite(const kit::Finding& finding) override { vJsonWrite(findingJson(finding), writer_); }

    void vEnd(const CheckResult& result) override {
        writer_.vArrayEnd();
        vOmittedWrite(result);
        vFixedWrite(result);
        vFailuresWrite(result);
        writer_.vKey("summary");
        vJsonWrite(summaryJson(result.counts), writer_);
        writer_.vObjectEnd();
        writer_.vEnd();
        vLastWordsSet({});
        for (const auto& block : blocks_)
            output_.vWrite(block);
    }

private:
    void vOmittedWrite(const CheckResult& result) {
        writer_.vKey("omitted");
        writer_.vObjectBegin();
        for (const auto& [code, count] : result.omitted)
            writer_.vMember(code, count);
        writer_.vObjectEnd();
    }

    /// The bytes of all of them when one is not UTF-8.
    void vFixedWrite(const CheckResult& result) {
        writer_.vMembers("fixed", result.fixed);
        if (std::ranges::all_of(result.fixed, isUtf8))
            return;
        std::vector<std::string> bytes;
        for (const auto& fixed : result.fixed)
            bytes.push_back(sPercentEncoded(fixed));
        writer_.vMembers("fixedBytes", bytes);
    }

    void vFailuresWrite(const CheckResult& result) {
        writer_.vKey("failures");
        writer_.vArrayBegin();
        for (const auto& [subject, reason] : result.failures)
            vJsonWrite(withBytes({{"subject", subject}, {"reason", reason}}, "subject"), writer_);
        writer_.vArrayEnd();
    }

    Output& output_;
    // All of it is made before any of it is written, so that a document is never half there.
    std::deque<std::string> blocks_;
    JsonWriter writer_;
};

constexpr std::string_view MemoryFailure =
    R"({
  "format": "kivifc-check/1",
  "schema": null,
  "findings": [],
  "omitted": {},
  "fixed": [],
  "failures": [{"subject": "this job", "reason": "not enough memory"}],
  "summary": {
    "errors": 0,
    "warnings": 0,
    "notes": 0,
    "documents": 0,
    "documentsWithFindings": 0,
    "documentsUnreadable": 0,
    "hiddenByBaseline": 0
  }
}
)";

} // namespace

void vJsonFindingsExpect() noexcept {
    vLastWordsSet(MemoryFailure);
}

std::unique_ptr<FindingWriter> pJsonFindings(Output& output) {
    return std::make_unique<JsonFindings>(output);
}

} // namespace kiv::kivifc
