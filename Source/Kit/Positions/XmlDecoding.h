/// @file
/// The bytes of an XML file as UTF-8.
///
/// Private to the kit.
///
/// Ownership: results are copies.
/// Threads:   free functions without state.
/// Errors:    what is no character of the encoding becomes U+FFFD.
#pragma once

#include "kiv/Kit/Positions/XmlPositions.h"

#include <string>
#include <string_view>

namespace kiv::kit {

/// By the byte order mark, by the first character, or else by the XML declaration.
XmlEncoding encodingOf(std::string_view bytes);

/// The text in UTF-8, for UTF-16 and Latin-1; a byte order mark stays.
std::string sDecoded(std::string_view bytes, XmlEncoding encoding);

} // namespace kiv::kit
