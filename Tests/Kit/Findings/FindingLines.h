/// @file
/// Findings as lines of text, for comparing them.
///
///     EXPECT_THAT(findingLines(text), ElementsAre("3:9-12 error S001 \"Nam\" is not known inside ..."));
///
/// Ownership: values.
/// Threads:   each thread has its own results.
/// Errors:    none.
#pragma once

#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Kit/Documents/SetDocument.h"
#include "kiv/Kit/Findings/AcrossDocuments.h"
#include "kiv/Kit/Findings/Findings.h"
#include "kiv/Kit/Findings/IgnoreComments.h"
#include "kiv/Kit/Findings/Rule.h"
#include "kiv/Kit/Positions/XmlPositions.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::test {

using namespace kiv::kit;

/// The schema of the examples, read once.
inline const ifc::def::schema::Schema& exampleSchema() {
    static const auto schema = schemaFromWholeText(std::string(getExampleSchema()));
    return *schema;
}

/// The release that examples name types and classes of which `exampleSchema` lacks.
inline const ifc::def::schema::Schema& olderExampleSchema() {
    static const auto schema = schemaFromWholeText(std::string(getOlderExampleSchema()));
    return *schema;
}

/// The files of an example of several, by path; the folder of a path is the context.
inline std::vector<std::pair<std::string, std::string>> exampleFiles(std::string_view text) {
    constexpr std::string_view Mark = "---- ";
    std::vector<std::pair<std::string, std::string>> files;
    while (text.starts_with(Mark)) {
        const auto nameEnd = text.find('\n');
        const auto end = std::min(text.find("\n---- "), text.size() - 1) + 1;
        files.emplace_back(text.substr(Mark.size(), nameEnd - Mark.size()),
                           text.substr(nameEnd + 1, end - nameEnd - 1));
        text.remove_prefix(end);
    }
    return files;
}

/// What is wrong with each of the files, and then between them. A schema counts for what comes after it.
inline std::vector<Finding> findingsBetween(std::string_view text) {
    std::vector<Finding> findings;
    AcrossDocuments across;
    std::unique_ptr<ifc::def::schema::Schema> ownSchema;
    for (const auto& [path, content] : exampleFiles(text)) {
        if (path.ends_with(".exp")) {
            ownSchema = schemaFromWholeText(content);
            continue;
        }
        const auto& schema = ownSchema ? *ownSchema : exampleSchema();
        const auto document = setTextCheck(content, path, schema);
        const auto own = findingsOf(document, {schema, {}, {}, false});
        findings.insert(findings.end(), own.begin(), own.end());
        const auto folderEnd = path.find('/');
        across.vAdd(document, folderEnd == std::string::npos ? "" : path.substr(0, folderEnd), own);
    }
    const auto between = across.getFindings();
    findings.insert(findings.end(), between.begin(), between.end());
    return findings;
}

inline std::vector<Finding> exampleFindings(std::string_view text, bool isVerbose = false) {
    if (text.starts_with("---- "))
        return findingsBetween(text);
    const auto document = setTextCheck(std::string(text), "Example.xml", exampleSchema());
    SetCheckContext context{exampleSchema(), {{"IFC2X3", olderExampleSchema()}}, {}, isVerbose};
    auto findings = findingsOf(document, context);
    if (!document.positions)
        return findings;
    IgnoreComments ignores(document.path, *document.positions);
    std::erase_if(findings, [&](const Finding& finding) { return ignores.boHide(finding); });
    for (auto& finding : ignores.unusedFindings())
        findings.push_back(std::move(finding));
    return findings;
}

inline std::string sSeverity(Severity severity) {
    if (severity == Severity::Error)
        return "error";
    return severity == Severity::Warning ? "warning" : "note";
}

/// "LINE:COLUMN+LENGTH severity CODE message", then a line for each note, and one for the edits.
inline std::string sFindingLine(const Finding& finding) {
    const auto& position = finding.place.position;
    std::string line = std::to_string(position.line) + ":" + std::to_string(position.column) + "+" +
                       std::to_string(position.length) + " " + sSeverity(finding.severity) + " " +
                       std::string(finding.code) + " " + finding.message;
    for (const auto& note : finding.notes) {
        line += " | " + note.message;
        if (note.place)
            line += " @" + std::to_string(note.place->position.line) + ":" +
                    std::to_string(note.place->position.column);
    }
    return line;
}

inline std::vector<std::string> findingLines(std::string_view text) {
    std::vector<std::string> lines;
    for (const auto& finding : exampleFindings(text))
        lines.push_back(sFindingLine(finding));
    return lines;
}

/// The text with the edits of all findings made, from the last to the first.
inline std::string sMended(std::string text) {
    std::vector<FindingEdit> edits;
    for (const auto& finding : exampleFindings(text))
        edits.insert(edits.end(), finding.edits.begin(), finding.edits.end());
    std::ranges::sort(edits, std::ranges::greater(), &FindingEdit::offset);
    for (const auto& edit : edits)
        text.replace(edit.offset, edit.length, edit.text);
    return text;
}

} // namespace kiv::test
