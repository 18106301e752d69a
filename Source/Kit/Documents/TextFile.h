/// @file
/// Files read whole, with the reason when that is not possible.
///
///     const auto file = textFileRead("walls.xml", budget.maxInput);
///     if (!file.failure.empty())
///         vShow("walls.xml", file.failure);
///
/// Ownership: values.
/// Threads:   any number of threads, each with a stream of its own.
/// Errors:    `BudgetExceeded` for a file that is larger than allowed; what a meter throws; std::bad_alloc.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Base/WorkMeter.h"

#include <cstdint>
#include <cstdio>
#include <iosfwd>
#include <string>

namespace kiv::kit {

struct TextFile {
    std::string text;
    /// Why the file could not be read, in the system's words; empty when it could. The text is then empty.
    std::string failure;
};

/// Reads a file, a pipe or a device to its end, which may not have more bytes than `maxSize`. A folder is a
/// failure. A meter, which may be null, hears of the memory before it is taken.
KIV_EXPORT TextFile textFileRead(const std::string& path, std::uint64_t maxSize, WorkMeter* meter = nullptr);

/// The same for what is open; it is not closed.
KIV_EXPORT TextFile textFileRead(std::FILE* stream, std::uint64_t maxSize, WorkMeter* meter = nullptr);
KIV_EXPORT TextFile textFileRead(std::istream& stream, std::uint64_t maxSize, WorkMeter* meter = nullptr);

} // namespace kiv::kit
