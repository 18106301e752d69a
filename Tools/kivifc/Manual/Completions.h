/// @file
/// Completion scripts for shells.
///
///     std::ofstream("completions/bash/kivifc") << sBashCompletion(programTexts());
///
/// Threads:   free functions without state.
/// Errors:    std::bad_alloc.
#pragma once

#include "kivifc/Manual/CommandTexts.h"

#include <string>

namespace kiv::kivifc {

std::string sBashCompletion(const ProgramTexts& texts);
std::string sZshCompletion(const ProgramTexts& texts);
std::string sFishCompletion(const ProgramTexts& texts);

} // namespace kiv::kivifc
