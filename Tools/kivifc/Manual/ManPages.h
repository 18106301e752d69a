/// @file
/// Man pages, as roff for man(7).
///
///     sCommandManPage(texts, texts.commands.front()) // ".TH KIVIFC\-SCHEMA 1 ..."
///
/// Pages are the same for the same texts: they have no date.
///
/// Threads:   free functions without state.
/// Errors:    std::bad_alloc.
#pragma once

#include "kivifc/Manual/CommandTexts.h"

#include <string>
#include <string_view>

namespace kiv::kivifc {

/// The page kivifc(1).
std::string sProgramManPage(const ProgramTexts& texts);

/// The page kivifc-COMMAND(1).
std::string sCommandManPage(const ProgramTexts& texts, const CommandText& command);

/// The text with everything that roff would interpret escaped.
std::string sRoff(std::string_view text);

} // namespace kiv::kivifc
