/// @file
/// What XML can carry ("Char" and "Name" of XML 1.0), and what replaces what it cannot.
///
/// Private to the XML library.
///
/// Ownership: the results are copies.
/// Threads:   free functions without state; safe from any number of threads.
/// Errors:    std::bad_alloc.
#pragma once

#include <string>
#include <string_view>

namespace kiv::xml {

/// The text as XML can carry it: a character outside "Char" and a byte that is not UTF-8 become U+FFFD each.
std::string sCarriableText(std::string_view text);

/// The name as XML can carry it: each character that is not allowed in its place, and each byte that is not
/// UTF-8, becomes "_", and so does an empty name.
std::string sCarriableName(std::string_view name);

} // namespace kiv::xml
