/// @file
/// Short texts looked at eight bytes at a time: upper-casing, hashing, comparing, and finding the end of a
/// word.
///
///     if (isUpperOf("IfcWall", "IFCWALL")) ...
///
/// They look at bytes only and never at a locale, so that a host's global locale changes nothing.
///
/// Ownership: none.
/// Threads:   free functions without state; safe from any number of threads.
/// Errors:    none.
#pragma once

#include "Base/Ascii.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace kiv {

/// Eight bytes, each of a to z made A to Z. Names are hashed and compared in this many bytes at once.
constexpr std::uint64_t getUpper8(std::uint64_t bytes) {
    constexpr std::uint64_t every = 0x0101010101010101U;
    // In each of these, the highest bit of a byte says: not ASCII; at or after 'a'; after 'z'.
    const auto low = bytes & (0x7F * every);
    const auto fromA = low + (0x80 - 'a') * every;
    const auto behindZ = low + (0x7F - 'z') * every;
    const auto lower = ~bytes & (fromA ^ behindZ) & (0x80 * every);
    return bytes - (lower >> 2);
}

/// The shortest text that is looked at eight bytes at a time.
inline constexpr std::size_t LongText = sizeof(std::uint64_t);

/// Eight bytes of memory.
inline std::uint64_t getBytes8(const char* bytes) {
    std::uint64_t value = 0;
    std::memcpy(&value, bytes, sizeof(value));
    return value;
}

/// Of eight bytes, the highest bit of each that is an ASCII letter, a digit or an underscore.
constexpr std::uint64_t getWordBits8(std::uint64_t bytes) {
    constexpr std::uint64_t every = 0x0101010101010101U;
    const auto low = bytes & (0x7F * every);
    const auto lower = low | (0x20 * every);
    const auto letters = (lower + (0x80 - 'a') * every) & ~(lower + (0x7F - 'z') * every);
    const auto digits = (low + (0x80 - '0') * every) & ~(low + (0x7F - '9') * every);
    const auto underscores = 0x80 * every - (low ^ '_' * every);
    return (letters | digits | underscores) & ~bytes & (0x80 * every);
}

/// The end of the word that begins at `at`: the first byte that is no ASCII letter, no digit and no
/// underscore, or `end`. Looks at eight bytes at once: a loop over single bytes ends where the processor
/// cannot predict it, at every word.
inline const char* pWordEnd(const char* at, const char* end) {
    for (; static_cast<std::size_t>(end - at) >= LongText; at += LongText) {
        const auto others = getWordBits8(getBytes8(at)) ^ 0x8080808080808080U;
        if (others != 0)
            return at + (std::endian::native == std::endian::little ? std::countr_zero(others)
                                                                    : std::countl_zero(others)) /
                            8;
    }
    while (at != end && (ascii::isLetter(*at) || ascii::isDigit(*at) || *at == '_'))
        ++at;
    return at;
}

/// Four bytes of a text from `pos` on, which it has.
constexpr std::uint32_t getBytes4(std::string_view text, std::size_t pos) {
    return std::bit_cast<std::uint32_t>(std::array{text[pos], text[pos + 1], text[pos + 2], text[pos + 3]});
}

/// All bytes of a text shorter than eight, in one word; texts of one length have the same word only when they
/// are the same.
constexpr std::uint64_t getShortText(std::string_view text) {
    // The first and the last four; some in the middle may count twice.
    constexpr std::size_t half = sizeof(std::uint32_t);
    if (text.size() >= half)
        return std::uint64_t{getBytes4(text, 0)} << 32 | getBytes4(text, text.size() - half);
    std::uint64_t bytes = 0;
    for (const char byte : text)
        bytes = bytes << 8 | static_cast<unsigned char>(byte);
    return bytes;
}

/// Goes over a text of eight bytes or more by eight bytes from 0, 8, 16, ... on, and last over its last
/// eight, as long as `step` is true for where they begin. True when it was for all of them.
template <class Step>
bool boEach8(std::size_t size, Step step) {
    const auto last = size - LongText;
    for (std::size_t pos = 0; pos < last; pos += LongText) {
        if (!step(pos))
            return false;
    }
    return step(last);
}

/// What two texts of one length must have in common to be the same.
inline std::uint64_t getLastBytes8(std::string_view text) {
    return text.size() < LongText ? getShortText(text) : getBytes8(text.data() + text.size() - LongText);
}

/// A hash of a name in every letter case, for look-ups: it drops the bit in which the cases of a letter
/// differ, whatever that bit means in other bytes. Faster than `nameHash`; names can be chosen so that many
/// have the same.
inline std::uint64_t upperHash(std::string_view name) {
    constexpr std::uint64_t factor = 0x9E3779B97F4A7C15U;
    constexpr std::uint64_t caseless = 0xDFDFDFDFDFDFDFDFU;
    const auto step = [](std::uint64_t hash, std::uint64_t bytes) {
        hash = (hash ^ (bytes & caseless)) * factor;
        return hash ^ (hash >> 32);
    };
    auto hash = name.size() * factor;
    if (name.size() < LongText)
        return step(hash, getShortText(name)) * factor;
    const auto last = name.size() - LongText;
    for (std::size_t pos = 0; pos < last; pos += LongText)
        hash = step(hash, getBytes8(name.data() + pos));
    return step(hash, getBytes8(name.data() + last)) * factor;
}

/// Eight bytes of memory as a number whose order is that of the bytes, one after the other.
constexpr std::uint64_t getOrdered8(std::uint64_t bytes) {
    return std::endian::native == std::endian::little ? __builtin_bswap64(bytes) : bytes;
}

/// The order of texts byte by byte, as that of std::string_view, decided by the first eight bytes where these
/// differ.
inline bool boLessText(std::string_view left, std::string_view right) {
    if (std::endian::native == std::endian::little && std::min(left.size(), right.size()) >= LongText) {
        const auto different = getBytes8(left.data()) ^ getBytes8(right.data());
        if (different != 0) {
            const auto byte = static_cast<std::size_t>(std::countr_zero(different)) / 8;
            return static_cast<unsigned char>(left[byte]) < static_cast<unsigned char>(right[byte]);
        }
    }
    return left < right;
}

/// Whether the texts are the same when `change` was made to each eight bytes of the left one. Most texts that
/// are compared by this are the same, so all their bytes are compared and the one branch is the last.
template <class Change>
bool isSameChanged(std::string_view left, std::string_view right, Change change) {
    if (left.size() != right.size())
        return false;
    if (left.size() < LongText)
        return change(getShortText(left)) == getShortText(right);
    const auto last = left.size() - LongText;
    auto different = change(getBytes8(left.data() + last)) ^ getBytes8(right.data() + last);
    for (std::size_t pos = 0; pos < last; pos += LongText)
        different |= change(getBytes8(left.data() + pos)) ^ getBytes8(right.data() + pos);
    return different == 0;
}

/// Whether both texts have the same bytes; for names, which are short, quicker than a call of memcmp.
inline bool isSameText(std::string_view left, std::string_view right) {
    return isSameChanged(left, right, [](std::uint64_t bytes) { return bytes; });
}

/// Whether the upper-cased name is the one that is upper-case already.
inline bool isUpperOf(std::string_view name, std::string_view upperName) {
    return isSameChanged(name, upperName, [](std::uint64_t bytes) { return getUpper8(bytes); });
}

/// 0 when the upper-cased name is the one that is upper-case already; else negative or positive, by an order
/// that is of use for searching only.
inline int compareUpper(std::string_view name, std::string_view upperName) {
    if (name.size() != upperName.size())
        return name.size() < upperName.size() ? -1 : 1;
    int order = 0;
    const auto compare = [&order](std::uint64_t bytes, std::uint64_t wanted) {
        bytes = getUpper8(bytes);
        if (bytes != wanted)
            order = bytes < wanted ? -1 : 1;
        return bytes == wanted;
    };
    if (name.size() < LongText)
        compare(getShortText(name), getShortText(upperName));
    else
        boEach8(name.size(), [&](std::size_t pos) {
            return compare(getBytes8(name.data() + pos), getBytes8(upperName.data() + pos));
        });
    return order;
}

} // namespace kiv
