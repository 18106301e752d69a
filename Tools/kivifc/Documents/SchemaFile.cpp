#include "kivifc/Documents/SchemaFile.h"

#include "kiv/Kit/Findings/SchemaFindings.h"
#include "kivifc/Documents/ReadingLimits.h"
#include "kivifc/Documents/ShownFailure.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <string_view>
#include <utility>

namespace kiv::kivifc {

namespace {

/// The likely reason why a text has no schema, where there is one.
void vReasonNote(const kit::SchemaFile& file, Diagnostics& diagnostics) {
    // What was too large to be read is not read here either.
    constexpr std::size_t Looked = std::size_t{1} << 20U;
    const auto begin = std::string_view(file.text).substr(0, Looked);
    if (begin.empty())
        return;
    for (const auto& finding : kit::schemaFindingsOf(nullptr, {}, begin, file.path)) {
        const auto& position = finding.place.position;
        for (const auto& note : finding.notes)
            diagnostics.vNote(fmt::format("{}:{}:{}", file.path, position.line, position.column),
                              fmt::format("[{}] {}; {}", finding.code, finding.message, note.message));
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
