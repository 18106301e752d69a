#include "kivifc/Json/BytesJson.h"

#include "kivifc/Program/AsciiText.h"

#include <fmt/format.h>
#include <string>
#include <string_view>
#include <utility>

namespace kiv::kivifc {

namespace {

bool isUtf8(const Json& text) {
    return text.dump(-1, ' ', false, Json::error_handler_t::ignore) ==
           text.dump(-1, ' ', false, Json::error_handler_t::replace);
}

bool isKeptByte(char byte) {
    constexpr std::string_view Marks = "-._~/";
    return ascii::isLetter(byte) || (byte >= '0' && byte <= '9') ||
           Marks.find(byte) != std::string_view::npos;
}

} // namespace

std::string sPercentEncoded(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes)
        text += isKeptByte(byte) ? std::string(1, byte)
                                 : fmt::format("%{:02X}", static_cast<unsigned char>(byte));
    return text;
}

Json withBytes(Json&& object, const char* key) {
    if (!isUtf8(object.at(key)))
        object[std::string(key) + "Bytes"] = sPercentEncoded(object.at(key).get_ref<const std::string&>());
    return std::move(object);
}

} // namespace kiv::kivifc
