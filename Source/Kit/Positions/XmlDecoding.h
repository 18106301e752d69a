/// @file
/// The bytes of an XML file as UTF-8, for showing its lines.
///
///     const auto text = sDecoded(bytes, encodingOf(bytes));
///
/// Ownership: results are copies.
/// Threads:   free functions without state.
/// Errors:    what is no character of the encoding becomes U+FFFD.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Kit/Positions/XmlPositions.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv::kit {

/// By the byte order mark, by the first character, or else by the XML declaration.
KIV_EXPORT XmlEncoding encodingOf(std::string_view bytes);

/// The value of "encoding" in the XML declaration that a text begins with; empty when it says none.
KIV_EXPORT std::string_view declaredEncoding(std::string_view text);

/// How many bytes `sDecoded` gives for these.
KIV_EXPORT std::size_t decodedSize(std::string_view bytes, XmlEncoding encoding);

/// The text in UTF-8; a byte order mark stays.
KIV_EXPORT std::string sDecoded(std::string_view bytes, XmlEncoding encoding);

} // namespace kiv::kit
