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

/// In a line of text a reason is worth reading that says what to do.
void vRemediesNote(const std::vector<kit::Finding>& reasons, Diagnostics& diagnostics) {
    for (const auto& finding : reasons) {
        const auto& [path, position] = finding.place;
        for (const auto& note : finding.notes)
            diagnostics.vNote(fmt::format("{}:{}:{}", path, position.line, position.column),
                              fmt::format("[{}] {}; {}", finding.code, finding.message, note.message));
    }
}

SchemaFile fileRead(const std::string& path) {
    const auto begin = std::chrono::steady_clock::now();
    auto file = kit::schemaFileRead(path, readingOptions());
    return {std::move(file), std::chrono::steady_clock::now() - begin};
}

std::optional<SchemaFile> lastSchemaOf(SchemaFile&& file, Diagnostics& diagnostics) {
    if (file.names.size() > 1)
        diagnostics.vNote(file.path, fmt::format("holds {} schemas ({}); the last one is used",
                                                 file.names.size(), fmt::join(file.names, ", ")));
    return std::move(file);
}

} // namespace

std::optional<SchemaFile> schemaFileRead(const std::string& path, Diagnostics& diagnostics) {
    auto file = fileRead(path);
    if (!file.failure)
        return lastSchemaOf(std::move(file), diagnostics);
    diagnostics.vFail(shownFailure(path, *file.failure));
    vRemediesNote(reasonsOf(file), diagnostics);
    return std::nullopt;
}

std::optional<SchemaFile> schemaFileRead(const std::string& path, Diagnostics& diagnostics,
                                         std::vector<kit::Finding>& reasons) {
    auto file = fileRead(path);
    if (!file.failure)
        return lastSchemaOf(std::move(file), diagnostics);
    reasons = reasonsOf(file);
    if (reasons.empty())
        diagnostics.vFail(shownFailure(path, *file.failure));
    else
        diagnostics.vFailureShown(shownFailure(path, *file.failure));
    return std::nullopt;
}

} // namespace kiv::kivifc
