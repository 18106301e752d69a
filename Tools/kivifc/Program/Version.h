/// @file
/// Which kivifc this is.
///
///     sVersion() // "kivifc 0.1.0 (commit abc1234, GCC 12.2.0)"
#pragma once

#include <string>

namespace kiv::kivifc {

/// Version of the project, commit of the sources ("unknown" when they are not a clone) and compiler.
std::string sVersion();

} // namespace kiv::kivifc
