/// @file
/// Paths in JSON that are not UTF-8, as JSON cannot hold them, and texts that name such paths.
///
///     json.push_back(withBytes({{"set", name}, {"path", path}}, "path"));
///
/// Threads:   free functions without state.
/// Errors:    std::bad_alloc.
#pragma once

#include "kivifc/Json/Json.h"

#include <string>
#include <string_view>

namespace kiv::kivifc {

/// The object, with a second member for a text that is not UTF-8: "pathBytes" for "path", in which each byte
/// but the letters and digits of ASCII and "-._~/" is "%XX", its number in hexadecimal digits. The object as
/// it is when the text is UTF-8.
Json withBytes(Json&& object, const char* key);

/// The same where an object is written: its second member for the text, when there is one.
void vBytesWrite(std::string_view key, std::string_view text, JsonWriter& writer);

/// The text of that member as it was, whether it was UTF-8 or not. Json::exception when it is not there, or
/// is no text.
std::string sWithBytes(const Json& object, const char* key);

bool isUtf8(std::string_view text);

/// The text with each byte but the letters and digits of ASCII and "-._~/" as "%XX".
std::string sPercentEncoded(std::string_view bytes);

/// The other way round. A "%" without two hexadecimal digits after it is one.
std::string sPercentDecoded(std::string_view text);

} // namespace kiv::kivifc
