/// @file
/// Files read whole within the limits of the command line, with the reason when that is not possible.
///
///     const auto file = textFileRead("walls.xml");
///     if (!file.failure.empty())
///         diagnostics.vFail("walls.xml", file.failure);
#pragma once

#include "kiv/Kit/Documents/TextFile.h"

#include <string>

namespace kiv::kivifc {

using kit::TextFile;

/// Reads a file, a pipe or a device to its end. A directory is a failure.
TextFile textFileRead(const std::string& path);

/// The same for a file that is open. It is closed.
TextFile descriptorRead(int descriptor);

} // namespace kiv::kivifc
