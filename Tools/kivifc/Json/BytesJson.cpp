#include "kivifc/Json/BytesJson.h"

#include "kivifc/Program/AsciiText.h"
#include "kivifc/Program/CodePoints.h"

#include <charconv>
#include <fmt/format.h>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace kiv::kivifc {

namespace {

bool isKeptByte(char byte) {
    constexpr std::string_view Marks = "-._~/";
    return ascii::isLetter(byte) || (byte >= '0' && byte <= '9') ||
           Marks.find(byte) != std::string_view::npos;
}

/// The byte that "%XX" at the beginning of the text means; absent when there is none.
std::optional<char> byteAt(std::string_view text) {
    constexpr std::size_t Size = 3;
    unsigned char byte = 0;
    if (text.size() < Size || text[0] != '%')
        return std::nullopt;
    const auto* const end = text.data() + Size;
    if (std::from_chars(text.data() + 1, end, byte, 16).ptr != end)
        return std::nullopt;
    return static_cast<char>(byte);
}

std::string sBytesKey(std::string_view key) {
    return std::string(key) + "Bytes";
}

} // namespace

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        if (!codePointTake(text).isValid)
            return false;
    }
    return true;
}

std::string sPercentDecoded(std::string_view text) {
    std::string bytes;
    while (!text.empty()) {
        const auto byte = byteAt(text);
        bytes += byte.value_or(text.front());
        text.remove_prefix(byte ? 3 : 1);
    }
    return bytes;
}

std::string sWithBytes(const Json& object, const char* key) {
    const auto bytes = object.find(sBytesKey(key));
    return bytes == object.end() ? object.at(key).get<std::string>()
                                 : sPercentDecoded(bytes->get_ref<const std::string&>());
}

std::string sPercentEncoded(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes)
        text += isKeptByte(byte) ? std::string(1, byte)
                                 : fmt::format("%{:02X}", static_cast<unsigned char>(byte));
    return text;
}

Json withBytes(Json&& object, const char* key) {
    const auto& text = object.at(key).get_ref<const std::string&>();
    if (!isUtf8(text)) {
        // Made first: the member it is made of moves when another one is added.
        auto bytes = sPercentEncoded(text);
        object[sBytesKey(key)] = std::move(bytes);
    }
    return std::move(object);
}

void vBytesWrite(std::string_view key, std::string_view text, JsonWriter& writer) {
    if (!isUtf8(text))
        writer.vMember(sBytesKey(key), sPercentEncoded(text));
}

} // namespace kiv::kivifc
