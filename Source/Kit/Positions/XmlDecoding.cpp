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
    return bytes.starts_with('\0') || bytes.starts_with('\xFE');
}

constexpr bool isHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

constexpr bool isLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

std::size_t sizeOf(char32_t character) {
    return character < 0x80 ? 1U : character < 0x800 ? 2U : character < 0x10000 ? 3U : 4U;
}

/// Hands each character to `take`.
template <class Take>
void vUtf16Walk(std::string_view bytes, Take take) {
    const std::size_t highByte = isBigEndian(bytes) ? 0 : 1;
    const auto unitAt = [&](std::size_t index) {
        const auto high = static_cast<unsigned char>(bytes[2 * index + highByte]);
        const auto low = static_cast<unsigned char>(bytes[2 * index + 1 - highByte]);
        return static_cast<char32_t>(high << 8 | low);
    };
    const std::size_t units = bytes.size() / 2;
    for (std::size_t i = 0; i != units; ++i) {
        char32_t character = unitAt(i);
        if (isHighSurrogate(character) && i + 1 != units && isLowSurrogate(unitAt(i + 1)))
            character = 0x10000 + ((character - 0xD800) << 10) + (unitAt(++i) - 0xDC00);
        else if (isHighSurrogate(character) || isLowSurrogate(character))
            character = replacement;
        take(character);
    }
    // The last byte is half of a character.
    if (bytes.size() % 2 != 0)
        take(replacement);
}

/// Hands each character to `take`; the encoding is not UTF-8.
template <class Take>
void vWalk(std::string_view bytes, XmlEncoding encoding, Take take) {
    if (encoding == XmlEncoding::Utf16)
        return vUtf16Walk(bytes, take);
    for (const char byte : bytes)
        take(static_cast<unsigned char>(byte));
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

std::size_t decodedSize(std::string_view bytes, XmlEncoding encoding) {
    if (encoding == XmlEncoding::Utf8)
        return bytes.size();
    std::size_t size = 0;
    vWalk(bytes, encoding, [&size](char32_t character) { size += sizeOf(character); });
    return size;
}

std::string sDecoded(std::string_view bytes, XmlEncoding encoding) {
    if (encoding == XmlEncoding::Utf8)
        return std::string(bytes);
    std::string text;
    text.reserve(decodedSize(bytes, encoding));
    vWalk(bytes, encoding, [&text](char32_t character) { vCharacterAppend(text, character); });
    return text;
}

} // namespace kiv::kit
