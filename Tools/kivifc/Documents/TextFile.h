/// @file
/// Files read whole within the limits of the command line, with the reason when that is not possible.
///
///     const auto file = textFileRead("walls.xml");
///     if (!file.failure.empty())
///         diagnostics.vFail("walls.xml", file.failure);
///
/// Ownership: the text is the caller's.
/// Threads:   free functions without state.
/// Errors:    the reason as a text; the text of the file is then empty.
#pragma once

#include "kiv/Kit/Documents/TextFile.h"

#include <string>

namespace kiv::kivifc {

using kit::TextFile;

/// Reads a file, a pipe or a device to its end. A directory is a failure.
TextFile textFileRead(const std::string& path);

/// Whether it can be read a second time: a pipe is not opened again, as nobody may write to it any more.
bool isReadableAgain(const std::string& path);

/// Reads a file that was read before; empty when it cannot be read again.
std::string sReadAgain(const std::string& path);

} // namespace kiv::kivifc
