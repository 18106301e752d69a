#include "kiv/Host/Id/KivId.h"

#include "Base/Ascii.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <random>

namespace kiv {

namespace {

/// The 16 bytes in the order of the hexadecimal text.
using Bytes = std::array<std::uint8_t, 16>;

constexpr std::string_view hexDigits = "0123456789abcdef";
constexpr std::string_view globalIdDigits =
    "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_$";
constexpr std::size_t hexLength = 32;
constexpr std::size_t hyphenatedLength = 36;
constexpr std::size_t globalIdLength = 22;

constexpr std::uint8_t notADigit = 0xFF;

constexpr std::uint8_t getHexValue(char c) {
    if (ascii::isDigit(c))
        return static_cast<std::uint8_t>(c - '0');
    if (c >= 'a' && c <= 'f')
        return static_cast<std::uint8_t>(c - 'a' + 10);
    if (c >= 'A' && c <= 'F')
        return static_cast<std::uint8_t>(c - 'A' + 10);
    return notADigit;
}

constexpr bool isHyphenPlace(std::size_t place) {
    return place == 8 || place == 13 || place == 18 || place == 23;
}

/// Most significant byte first.
template <typename Integer>
Integer getInteger(const Bytes& bytes, std::size_t first) {
    Integer value = 0;
    for (std::size_t i = first; i != first + sizeof(Integer); ++i)
        value = static_cast<Integer>(value << 8 | bytes[i]);
    return value;
}

Guid getGuid(const Bytes& bytes) {
    std::array<std::uint8_t, 8> part4{};
    std::copy_n(bytes.begin() + 8, part4.size(), part4.begin());
    return {getInteger<std::uint32_t>(bytes, 0), getInteger<std::uint16_t>(bytes, 4),
            getInteger<std::uint16_t>(bytes, 6), part4};
}

template <typename Integer>
void vHexAppend(std::string& text, Integer value) {
    for (int shift = static_cast<int>(sizeof(Integer)) * 8 - 4; shift >= 0; shift -= 4)
        text.push_back(hexDigits[static_cast<std::size_t>(value >> shift & 0xF)]);
}

/// hex = 32 * hexadecimal digit
std::optional<Bytes> readHex(std::string_view text) {
    Bytes bytes{};
    for (std::size_t i = 0; i != bytes.size(); ++i) {
        const std::uint8_t high = getHexValue(text[2 * i]);
        const std::uint8_t low = getHexValue(text[2 * i + 1]);
        if (high == notADigit || low == notADigit)
            return std::nullopt;
        bytes[i] = static_cast<std::uint8_t>(high << 4 | low);
    }
    return bytes;
}

/// hyphenated = 8 digits "-" 4 digits "-" 4 digits "-" 4 digits "-" 12 digits
std::optional<Bytes> readHyphenated(std::string_view text) {
    std::array<char, hexLength> digits{};
    auto digit = digits.begin();
    for (std::size_t place = 0; place != hyphenatedLength; ++place) {
        if (!isHyphenPlace(place))
            *digit++ = text[place];
        else if (text[place] != '-')
            return std::nullopt;
    }
    return readHex({digits.data(), digits.size()});
}

/// globalId = digit of 2 bits, 21 * digit of 6 bits: the 128 bits to the base of 64, highest digit first
std::optional<Bytes> readGlobalId(std::string_view text) {
    if (globalIdDigits.find(text.front()) > 3) // what is no digit is found nowhere, and that is more than 3
        return std::nullopt;
    Bytes bytes{};
    std::uint32_t bits = 0;
    int bitCount = -4; // 22 digits carry 132 bits; the first 4 are no part of the GUID
    auto byte = bytes.begin();
    for (const char c : text) {
        const std::size_t value = globalIdDigits.find(c);
        if (value == std::string_view::npos)
            return std::nullopt;
        bits = bits << 6 | static_cast<std::uint32_t>(value);
        bitCount += 6;
        if (bitCount < 8)
            continue;
        bitCount -= 8;
        *byte++ = static_cast<std::uint8_t>(bits >> bitCount & 0xFF);
    }
    return bytes;
}

std::optional<Bytes> readForm(std::string_view text) {
    switch (text.size()) {
    case hexLength:
        return readHex(text);
    case hyphenatedLength:
        return readHyphenated(text);
    case hexLength + 2:
    case hyphenatedLength + 2:
        if (text.front() != '{' || text.back() != '}')
            return std::nullopt;
        return readForm(text.substr(1, text.size() - 2));
    case globalIdLength:
        return readGlobalId(text);
    default:
        return std::nullopt;
    }
}

} // namespace

Guid Guid::generate() {
    std::random_device source;
    Bytes bytes{};
    for (std::size_t i = 0; i != bytes.size(); i += 4) {
        const std::uint32_t random = source();
        for (std::size_t k = 0; k != 4; ++k)
            bytes[i + k] = static_cast<std::uint8_t>(random >> 8 * k & 0xFF);
    }
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40); // version: 4, random
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80); // variant: that of RFC 4122
    return getGuid(bytes);
}

std::string Guid::toString(bool braced) const {
    std::string text;
    text.reserve(hyphenatedLength + 2);
    vHexAppend(text, part1_);
    vHexAppend(text, part2_);
    vHexAppend(text, part3_);
    for (const std::uint8_t byte : part4_)
        vHexAppend(text, byte);
    if (!braced)
        return text;
    for (std::size_t place = 0; place != hyphenatedLength; ++place)
        if (isHyphenPlace(place))
            text.insert(place, 1, '-');
    return "{" + text + "}";
}

bool Guid::boSet(std::string_view text) {
    const std::optional<Bytes> bytes = readForm(text);
    if (!bytes)
        return false;
    *this = getGuid(*bytes);
    return true;
}

} // namespace kiv
