#include "kivifc/Documents/SchemaFile.h"

#include "kiv/Kit/Findings/SchemaFindings.h"
#include "kivifc/Documents/ReadingLimits.h"
#include "kivifc/Documents/ShownFailure.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <span>
#include <string_view>
#include <utility>

namespace kiv::kivifc {

namespace {

/// The likely reasons why a text has no schema; none for a file without text.
std::vector<kit::Finding> reasonsOf(const kit::SchemaFile& file) {
    const auto kind = file.failure->kind;
    if (kind != kit::FailureKind::NotASchema && kind != kit::FailureKind::Empty)
        return {};
    // What was too large to be read is not read here either.
    constexpr std::size_t Looked = std::size_t{1} << 20U;
    return kit::schemaFindingsOf(nullptr, std::span<const kit::Assertion>(),
                                 std::string_view(file.text).substr(0, Looked), file.path);
}

void vReasonNote(const kit::Finding& finding, std::string_view remedy, Diagnostics& diagnostics) {
    const auto& [path, position] = finding.place;
    diagnostics.vNote(fmt::format("{}:{}:{}", path, position.line, position.column),
                      fmt::format("[{}] {}{}", finding.code, finding.message, remedy));
}

/// In a line of text a reason is worth reading that says what to do.
void vRemediesNote(const std::vector<kit::Finding>& reasons, Diagnostics& diagnostics) {
    for (const auto& finding : reasons) {
        for (const auto& note : finding.notes)
            vReasonNote(finding, "; " + note.message, diagnostics);
    }
}

/// Whether why the file was not read says as much already.
bool isSaid(const kit::Finding& finding) {
    return finding.message.find("SCHEMA") != std::string::npos || finding.message.ends_with("is empty");
}

/// Those that say what the file is instead.
void vOtherReasonsNote(const std::vector<kit::Finding>& reasons, Diagnostics& diagnostics) {
    for (const auto& finding : reasons) {
        if (finding.notes.empty() && !isSaid(finding))
            vReasonNote(finding, {}, diagnostics);
    }
}

std::optional<SchemaFile> fileRead(const std::string& path, Diagnostics& diagnostics,
                                   std::vector<kit::Finding>& reasons) {
    const auto begin = std::chrono::steady_clock::now();
    auto file = kit::schemaFileRead(path, readingOptions());
    if (file.failure) {
        diagnostics.vFail(shownFailure(path, *file.failure));
        reasons = reasonsOf(file);
        vRemediesNote(reasons, diagnostics);
        return std::nullopt;
    }
    if (file.names.size() > 1)
        diagnostics.vNote(path, fmt::format("holds {} schemas ({}); the last one is used", file.names.size(),
                                            fmt::join(file.names, ", ")));
    return SchemaFile{std::move(file), std::chrono::steady_clock::now() - begin};
}

} // namespace

std::optional<SchemaFile> schemaFileRead(const std::string& path, Diagnostics& diagnostics) {
    std::vector<kit::Finding> reasons;
    return fileRead(path, diagnostics, reasons);
}

std::optional<SchemaFile> schemaFileRead(const std::string& path, Diagnostics& diagnostics,
                                         std::vector<kit::Finding>& reasons) {
    auto file = fileRead(path, diagnostics, reasons);
    vOtherReasonsNote(reasons, diagnostics);
    return file;
}

} // namespace kiv::kivifc
