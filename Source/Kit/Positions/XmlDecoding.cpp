#include "kiv/Kit/Positions/XmlDecoding.h"

#include "Kit/Text/AsciiText.h"

#include <cstddef>
#include <cstdint>

namespace kiv::kit {

namespace {

constexpr char32_t replacement = 0xFFFD;

void vCharacterAppend(std::string& text, char32_t character) {
    const auto add = [&text](char32_t value) { text.push_back(static_cast<char>(value)); };
    if (character < 0x80) {
        add(character);
        return;
    }
    if (character < 0x800) {
        add(0xC0 | character >> 6);
    } else if (character < 0x10000) {
        add(0xE0 | character >> 12);
        add(0x80 | (character >> 6 & 0x3F));
    } else {
        add(0xF0 | character >> 18);
        add(0x80 | (character >> 12 & 0x3F));
        add(0x80 | (character >> 6 & 0x3F));
    }
    add(0x80 | (character & 0x3F));
}

bool isBigEndian(std::string_view bytes) {
    return bytes[0] == '\0' || bytes[0] == '\xFE';
}

constexpr bool isHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

constexpr bool isLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

std::string sFromUtf16(std::string_view bytes) {
    const std::size_t highByte = isBigEndian(bytes) ? 0 : 1;
    const auto unitAt = [&](std::size_t index) {
        const auto high = static_cast<unsigned char>(bytes[2 * index + highByte]);
        const auto low = static_cast<unsigned char>(bytes[2 * index + 1 - highByte]);
        return static_cast<char32_t>(high << 8 | low);
    };
    std::string text;
    text.reserve(bytes.size());
    const std::size_t units = bytes.size() / 2;
    for (std::size_t i = 0; i != units; ++i) {
        char32_t character = unitAt(i);
        if (isHighSurrogate(character) && i + 1 != units && isLowSurrogate(unitAt(i + 1)))
            character = 0x10000 + ((character - 0xD800) << 10) + (unitAt(++i) - 0xDC00);
        else if (isHighSurrogate(character) || isLowSurrogate(character))
            character = replacement;
        vCharacterAppend(text, character);
    }
    return text;
}

std::string sFromLatin1(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes)
        vCharacterAppend(text, static_cast<unsigned char>(byte));
    return text;
}

} // namespace

std::string_view declaredEncoding(std::string_view bytes) {
    if (!bytes.starts_with("<?xml"))
        return {};
    const auto declaration = bytes.substr(0, bytes.find("?>"));
    const auto name = declaration.find("encoding");
    if (name == std::string_view::npos)
        return {};
    const auto quote = declaration.find_first_of("\"'", name);
    if (quote == std::string_view::npos)
        return {};
    const auto end = declaration.find(declaration[quote], quote + 1);
    if (end == std::string_view::npos)
        return {};
    return declaration.substr(quote + 1, end - quote - 1);
}

XmlEncoding encodingOf(std::string_view bytes) {
    if (bytes.size() < 2)
        return XmlEncoding::Utf8;
    const auto mark = bytes.substr(0, 2);
    if (bytes[0] == '\0' || bytes[1] == '\0' || mark == "\xFE\xFF" || mark == "\xFF\xFE")
        return XmlEncoding::Utf16;
    return isEqualIgnoringCase(declaredEncoding(bytes), "iso-8859-1") ? XmlEncoding::Latin1
                                                                      : XmlEncoding::Utf8;
}

std::string sDecoded(std::string_view bytes, XmlEncoding encoding) {
    if (encoding == XmlEncoding::Utf8)
        return std::string(bytes);
    return encoding == XmlEncoding::Utf16 ? sFromUtf16(bytes) : sFromLatin1(bytes);
}

} // namespace kiv::kit
