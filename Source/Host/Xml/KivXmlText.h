/// What XML can carry ("Char" and "Name" of XML 1.0), and what stands in for what it cannot.
///
/// Private to the XML library.
#pragma once

#include <string>
#include <string_view>

namespace kiv::xml {

/// The text as XML can carry it: a character outside "Char" and a byte that is not UTF-8 become U+FFFD each.
std::string sCarriableText(std::string_view text);

/// The name as XML can carry it: each character, or byte that is not UTF-8, that may not stand where it
/// stands becomes "_", and an empty name becomes "_".
std::string sCarriableName(std::string_view name);

} // namespace kiv::xml
