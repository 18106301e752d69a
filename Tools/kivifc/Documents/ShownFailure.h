/// @file
/// Why a file was not read, with the place as editors and compilers write it and the option that sets a
/// limit.
///
///     shownFailure("walls.xml", *document.failure).subject // "walls.xml:3:7"
///
/// Threads:   free function without state.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Kit/Documents/ReadFailure.h"
#include "kivifc/Program/Diagnostics.h"

#include <string>

namespace kiv::kivifc {

Failure shownFailure(const std::string& path, const kit::ReadFailure& failure);

} // namespace kiv::kivifc
