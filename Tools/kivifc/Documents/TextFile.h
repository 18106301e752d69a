/// @file
/// Files read whole, with the reason when that is not possible.
///
///     const auto file = textFileRead("walls.xml");
///     if (!file.failure.empty())
///         diagnostics.vFail("walls.xml", file.failure);
#pragma once

#include <string>

namespace kiv::kivifc {

struct TextFile {
    std::string text;
    /// Why the file could not be read, in the system's words; empty when it could. The text is then empty.
    std::string failure;
};

/// Reads a file, a pipe or a device to its end. A directory is a failure.
TextFile textFileRead(const std::string& path);

/// The same for a file that is open. It is closed.
TextFile descriptorRead(int descriptor);

/// Reads standard input to its end.
TextFile standardInputRead();

} // namespace kiv::kivifc
