#include "kiv/Kit/Findings/Rule.h"
#include "kivifc/Documents/Checksum.h"
#include "kivifc/Documents/SetDocument.h"
#include "kivifc/Findings/FindingWriter.h"
#include "kivifc/Json/BytesJson.h"
#include "kivifc/Program/Version.h"

#include <cstddef>
#include <fmt/format.h>
#include <map>
#include <tuple>
#include <utility>

// Findings as SARIF 2.1.0.
namespace kiv::kivifc {

namespace {

/// What uris are relative to, when that is the root of a repository.
constexpr std::string_view RepositoryRoot = "%SRCROOT%";

Json textJson(std::string_view text) {
    return {{"text", text}};
}

/// The message and what the notes say: most viewers show nothing else.
std::string sMessageWithNotes(const kit::Finding& finding) {
    auto text = finding.message;
    for (const auto& note : finding.notes)
        text += "\nnote: " + note.message;
    return text;
}

std::string sHelp(const kit::Rule& rule) {
    auto text = fmt::format("{}\n\n{}\n", rule.summary, rule.explanation);
    if (!rule.wrong.text.empty())
        text += fmt::format("\nWrong:\n\n{}\n\nRight:\n\n{}\n", rule.wrong.text, rule.right.text);
    return text;
}

Json ruleJson(std::string_view code) {
    const auto* rule = kit::pRuleFind(code);
    if (!rule)
        return {{"id", code}};
    return {{"id", code},
            {"name", rule->name},
            {"shortDescription", textJson(rule->summary)},
            {"fullDescription", textJson(rule->explanation.empty() ? rule->summary : rule->explanation)},
            {"help", textJson(sHelp(*rule))},
            {"defaultConfiguration", {{"level", severityText(rule->severity)}}}};
}

/// A byte that is in no text keeps them apart.
std::string sSubject(const kit::Finding& finding) {
    return fmt::format("{}\xFF{}\xFF{}", finding.code, finding.subject, finding.message);
}

class SarifFindings final : public FindingWriter {
public:
    SarifFindings(Output& output, SourceLines& sources, RepositoryPaths paths) :
        writer_([&output](std::string_view text) { output.vWrite(text); }),
        sources_(sources),
        paths_(std::move(paths)) {}

    void vBegin(const std::vector<kit::Finding>& findings, const CheckResult&) override {
        writer_.vObjectBegin();
        writer_.vMember("$schema", "https://json.schemastore.org/sarif-2.1.0.json");
        writer_.vMember("version", "2.1.0");
        writer_.vKey("runs");
        writer_.vArrayBegin();
        writer_.vObjectBegin();
        vToolWrite(findings);
        vBaseWrite();
        writer_.vMember("columnKind", "unicodeCodePoints");
        writer_.vKey("results");
        writer_.vArrayBegin();
    }

    void vFindingWrite(const kit::Finding& finding) override { vJsonWrite(resultJson(finding), writer_); }

    void vEnd(const CheckResult& result) override {
        writer_.vArrayEnd();
        writer_.vKey("invocations");
        vJsonWrite(Json::array({invocationJson(result)}), writer_);
        writer_.vObjectEnd();
        writer_.vArrayEnd();
        writer_.vObjectEnd();
        writer_.vEnd();
    }

private:
    /// Where the root is on this machine is nobody's business.
    void vBaseWrite() {
        if (!paths_.isInRepository())
            return;
        writer_.vKey("originalUriBaseIds");
        vJsonWrite(Json{{RepositoryRoot, {{"description", textJson("The root of the repository.")}}}},
                   writer_);
    }

    /// Relative, so that a service finds the file in its own copy.
    Json fileJson(const std::string& path) const {
        const auto shared = paths_.sShared(path);
        if (shared.starts_with('/'))
            return {{"uri", "file://" + sPercentEncoded(shared)}};
        Json file{{"uri", sPercentEncoded(shared)}};
        if (paths_.isInRepository() && path != StandardInputName)
            file["uriBaseId"] = RepositoryRoot;
        return file;
    }

    Json locationJson(const kit::Place& place) const {
        Json physical{{"artifactLocation", fileJson(place.path)}};
        const auto& position = place.position;
        if (position.line != 0) {
            Json region{{"startLine", position.line}};
            if (position.column != 0)
                region["startColumn"] = position.column;
            if (position.column != 0 && position.length != 0)
                region["endColumn"] = position.column + position.length;
            physical["region"] = std::move(region);
        }
        return {{"physicalLocation", std::move(physical)}};
    }

    Json relatedJson(const kit::Finding& finding) const {
        Json list = Json::array();
        for (const auto& note : finding.notes) {
            if (!note.place)
                continue;
            auto location = locationJson(*note.place);
            location["message"] = textJson(note.message);
            list.push_back(std::move(location));
        }
        return list;
    }

    /// The rules of these findings, in the order of their codes.
    void vToolWrite(const std::vector<kit::Finding>& findings) {
        for (const auto& finding : findings)
            ruleIndexes_.emplace(finding.code, 0);
        Json rules = Json::array();
        for (auto& [code, index] : ruleIndexes_) {
            index = rules.size();
            rules.push_back(ruleJson(code));
        }
        Json driver{{"name", "kivifc"}, {"fullName", sVersion()}, {"rules", std::move(rules)}};
        writer_.vKey("tool");
        vJsonWrite(Json{{"driver", std::move(driver)}}, writer_);
    }

    Json resultJson(const kit::Finding& finding) {
        Json json{{"ruleId", finding.code},
                  {"ruleIndex", ruleIndexes_.at(finding.code)},
                  {"level", severityText(finding.severity)},
                  {"message", textJson(sMessageWithNotes(finding))},
                  {"locations", Json::array({locationJson(finding.place)})},
                  {"partialFingerprints", {{"primaryLocationLineHash", sFingerprint(finding)}}}};
        if (auto related = relatedJson(finding); !related.empty())
            json["relatedLocations"] = std::move(related);
        if (!finding.edits.empty())
            json["fixes"] = Json::array({fixJson(finding)});
        return json;
    }

    /// The same however lines move; findings that are equal in all but their place are numbered.
    std::string sFingerprint(const kit::Finding& finding) {
        const auto occurrence =
            ++occurrences_[{finding.place.path, std::string(finding.code), finding.subject, finding.message}];
        return fmt::format("{:016x}:{}", checksum(sSubject(finding)), occurrence);
    }

    Json fixJson(const kit::Finding& finding) {
        Json replacements = Json::array();
        const auto& text = sources_.text(finding.place.path);
        for (const auto& edit : finding.edits) {
            const auto [startLine, startColumn] = text.lineAndColumn(edit.offset);
            const auto [endLine, endColumn] = text.lineAndColumn(edit.offset + edit.length);
            replacements.push_back({{"deletedRegion",
                                     {{"startLine", startLine},
                                      {"startColumn", startColumn},
                                      {"endLine", endLine},
                                      {"endColumn", endColumn}}},
                                    {"insertedContent", textJson(edit.text)}});
        }
        const Json change{{"artifactLocation", fileJson(finding.place.path)},
                          {"replacements", std::move(replacements)}};
        return {{"description", textJson("What kivifc check --fix does")},
                {"artifactChanges", Json::array({change})}};
    }

    static Json invocationJson(const CheckResult& result) {
        Json notifications = Json::array();
        for (const auto& [subject, reason] : result.failures)
            notifications.push_back(
                {{"level", "error"}, {"message", textJson(fmt::format("{}: {}", subject, reason))}});
        for (const auto& fixed : result.fixed)
            notifications.push_back(
                {{"level", "note"}, {"message", textJson("fixed since the baseline: " + fixed)}});
        const bool isSuccessful = result.failures.empty() && result.counts.documentsUnreadable == 0;
        return {{"executionSuccessful", isSuccessful},
                {"toolExecutionNotifications", std::move(notifications)}};
    }

    using Sameness = std::tuple<std::string, std::string, std::string, std::string>;

    JsonWriter writer_;
    SourceLines& sources_;
    RepositoryPaths paths_;
    std::map<std::string_view, std::size_t> ruleIndexes_;
    std::map<Sameness, std::size_t> occurrences_;
};

} // namespace

std::unique_ptr<FindingWriter> pSarifFindings(Output& output, SourceLines& sources,
                                              const RepositoryPaths& paths) {
    return std::make_unique<SarifFindings>(output, sources, paths);
}

} // namespace kiv::kivifc
