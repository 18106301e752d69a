/// @file
/// Paths in JSON that are not UTF-8, as JSON cannot hold them.
///
///     json.push_back(withBytes({{"set", name}, {"path", path}}, "path"));
#pragma once

#include "kivifc/Json/Json.h"

#include <string>
#include <string_view>

namespace kiv::kivifc {

/// The object, with a second member for a text that is not UTF-8: "pathBytes" for "path", in which each byte
/// but the letters and digits of ASCII and "-._~/" is "%XX", its number in hexadecimal digits. The object as
/// it is when the text is UTF-8.
Json withBytes(Json&& object, const char* key);

/// The text with each byte but the letters and digits of ASCII and "-._~/" as "%XX".
std::string sPercentEncoded(std::string_view bytes);

} // namespace kiv::kivifc
