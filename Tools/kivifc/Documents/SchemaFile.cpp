#include "kivifc/Documents/SchemaFile.h"

#include "kiv/Kit/Findings/SchemaFindings.h"
#include "kivifc/Documents/ReadingLimits.h"
#include "kivifc/Documents/ShownFailure.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <utility>

namespace kiv::kivifc {

namespace {

/// The likely reason why a text has no schema, where there is one.
void vReasonNote(const kit::SchemaFile& file, Diagnostics& diagnostics) {
    if (file.text.empty())
        return;
    for (const auto& finding : kit::schemaFindingsOf(nullptr, {}, file.text, file.path)) {
        for (const auto& note : finding.notes)
            diagnostics.vNote(file.path, fmt::format("{}; {}", finding.message, note.message));
    }
}

} // namespace

std::optional<SchemaFile> schemaFileRead(const std::string& path, Diagnostics& diagnostics) {
    const auto begin = std::chrono::steady_clock::now();
    auto file = kit::schemaFileRead(path, readingOptions());
    if (file.failure) {
        diagnostics.vFail(shownFailure(path, *file.failure));
        vReasonNote(file, diagnostics);
        return std::nullopt;
    }
    if (file.names.size() > 1)
        diagnostics.vNote(path, fmt::format("holds {} schemas ({}); the last one is used", file.names.size(),
                                            fmt::join(file.names, ", ")));
    return SchemaFile{std::move(file), std::chrono::steady_clock::now() - begin};
}

} // namespace kiv::kivifc
