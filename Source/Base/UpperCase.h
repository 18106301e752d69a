/// @file
/// Texts made upper-case, in ASCII alone: a to z become A to Z and every other byte is kept.
///
///     const auto key = sUpper("Pset_WallCommon"); // PSET_WALLCOMMON
///
/// Ownership: what is made in an arena belongs to it.
/// Threads:   free functions without state; an arena is used by one thread at a time.
/// Errors:    std::bad_alloc.
#pragma once

#include "Base/Arena.h"

#include <string>
#include <string_view>

namespace kiv {

/// The text upper-cased byte by byte, in the arena; the text itself when that has no lower-case letter.
std::string_view upperIn(Arena& arena, std::string_view text);

/// The text upper-cased byte by byte.
std::string sUpper(std::string_view text);

} // namespace kiv
