#include "kivifc/Documents/SchemaFile.h"

#include "kivifc/Documents/ReadingLimits.h"
#include "kivifc/Documents/ShownFailure.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <utility>

namespace kiv::kivifc {

std::optional<SchemaFile> schemaFileRead(const std::string& path, Diagnostics& diagnostics) {
    const auto begin = std::chrono::steady_clock::now();
    auto file = kit::schemaFileRead(path, readingOptions());
    if (file.failure) {
        diagnostics.vFail(shownFailure(path, *file.failure));
        return std::nullopt;
    }
    if (file.names.size() > 1)
        diagnostics.vNote(path, fmt::format("holds {} schemas ({}); the last one is used", file.names.size(),
                                            fmt::join(file.names, ", ")));
    return SchemaFile{std::move(file), std::chrono::steady_clock::now() - begin};
}

} // namespace kiv::kivifc
