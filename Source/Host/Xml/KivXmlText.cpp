#include "Host/Xml/KivXmlText.h"

#include "Base/Ascii.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <expat.h>
#include <memory>
#include <new>

namespace kiv::xml {

namespace {

constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD"; // U+FFFD

/// The first character of a text.
struct Character {
    /// In bytes, 1 for a byte that begins no UTF-8 sequence.
    std::size_t size = 1;
    /// Whether it is UTF-8 and in the range "Char".
    bool isCarriable = false;
};

constexpr std::uint8_t getByte(std::string_view text, std::size_t index) {
    return index < text.size() ? static_cast<std::uint8_t>(text[index]) : std::uint8_t{0};
}

constexpr std::size_t getSequenceSize(std::uint8_t lead) {
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        return 2;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 3;
    return lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
}

/// Whether the second byte keeps the sequence out of overlong forms, surrogates and what lies above U+10FFFF.
constexpr bool isSecondByteOf(std::uint8_t lead, std::uint8_t second) {
    switch (lead) {
    case 0xE0:
        return second >= 0xA0;
    case 0xED:
        return second < 0xA0;
    case 0xF0:
        return second >= 0x90;
    case 0xF4:
        return second < 0x90;
    default:
        return true;
    }
}

constexpr bool isCarriableAscii(char c) {
    return c >= ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// `text` is not empty.
Character getFirst(std::string_view text) {
    const std::uint8_t lead = getByte(text, 0);
    const std::size_t size = getSequenceSize(lead);
    if (size == 1)
        return {1, isCarriableAscii(text.front())};
    for (std::size_t i = 1; i < size; ++i)
        if ((getByte(text, i) & 0xC0) != 0x80)
            return {};
    if (size == 0 || !isSecondByteOf(lead, getByte(text, 1)))
        return {};
    const std::string_view sequence = text.substr(0, size);
    return {size, sequence != "\xEF\xBF\xBE" && sequence != "\xEF\xBF\xBF"};
}

constexpr bool isAsciiNameStart(char c) {
    return ascii::isLetter(c) || c == '_' || c == ':';
}
constexpr bool isAsciiNamePart(char c) {
    return isAsciiNameStart(c) || ascii::isDigit(c) || c == '-' || c == '.';
}

/// Asks the parser, which must take the name in the end and holds the tables of letters of all scripts. The
/// name holds nothing of ASCII but what is allowed in a name.
bool isNameToParser(std::string_view name) {
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(XML_ParserCreate("UTF-8"),
                                                                              &XML_ParserFree);
    if (parser == nullptr)
        throw std::bad_alloc();
    const std::string element = std::string("<").append(name).append("/>");
    const auto status = XML_Parse(parser.get(), element.data(), static_cast<int>(element.size()), XML_TRUE);
    if (status != XML_STATUS_OK && XML_GetErrorCode(parser.get()) == XML_ERROR_NO_MEMORY)
        throw std::bad_alloc();
    return status == XML_STATUS_OK;
}

/// Whether the character is allowed as the first of a name, or further on.
bool isNameCharacter(std::string_view character, bool isFirst) {
    if (ascii::isAscii(character.front()))
        return isFirst ? isAsciiNameStart(character.front()) : isAsciiNamePart(character.front());
    return isNameToParser(std::string(isFirst ? "" : "_").append(character));
}

bool isAsciiName(std::string_view name) {
    return !name.empty() && isAsciiNameStart(name.front()) && std::ranges::all_of(name, isAsciiNamePart);
}

} // namespace

std::string sCarriableText(std::string_view text) {
    std::string carriable;
    carriable.reserve(text.size());
    while (!text.empty()) {
        const Character first = getFirst(text);
        carriable.append(first.isCarriable ? text.substr(0, first.size) : replacementCharacter);
        text.remove_prefix(first.size);
    }
    return carriable;
}

std::string sCarriableName(std::string_view name) {
    if (isAsciiName(name))
        return std::string(name);
    std::string carriable;
    while (!name.empty()) {
        const Character first = getFirst(name);
        const std::string_view character = name.substr(0, first.size);
        const bool isKept = first.isCarriable && isNameCharacter(character, carriable.empty());
        carriable.append(isKept ? character : "_");
        name.remove_prefix(first.size);
    }
    return carriable.empty() ? "_" : carriable;
}

} // namespace kiv::xml
