/// The text tools that every layer shares: the name hash, ASCII upper-casing, and those of `kiv::ascii`.
///
/// They look at bytes only and never at a locale, so that a host's global locale changes nothing.
///
/// Threads: free functions without state; safe from any number of threads.
#pragma once

#include "Host/KivArena.h"
#include "Host/KivAscii.h"
#include "Host/KivExport.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace kiv::ifc::def::schema {

using ascii::trimmed;
using ascii::trimmedLeft;

/// Blank and tab: what is trimmed around the names of a declaration.
inline constexpr std::string_view BlankAndTab = " \t";

/// What one more byte makes of the hash of a name.
constexpr std::uint32_t nameHashStep(std::uint32_t hash, char byte) {
    return (hash ^ static_cast<std::uint32_t>(static_cast<std::int32_t>(static_cast<signed char>(byte)))) *
           0x01000193U;
}

/// 32-bit FNV-1a of a name; the empty name gives 0x811C9DC5.
///
/// Each byte is widened as a signed char on purpose: a byte of 0x80 or more flips the upper 24 bits too.
/// Stored hashes and look-up hashes are both made here, so they agree.
constexpr std::uint32_t nameHash(std::string_view name) {
    std::uint32_t hash = 0x811C9DC5U;
    for (const char byte : name)
        hash = nameHashStep(hash, byte);
    return hash;
}

/// `nameHash` of two texts of one length, which takes hardly longer than that of one.
constexpr std::array<std::uint32_t, 2> nameHashes(std::string_view first, std::string_view second) {
    std::array<std::uint32_t, 2> hashes{nameHash({}), nameHash({})};
    for (std::size_t index = 0; index < first.size(); ++index) {
        hashes[0] = nameHashStep(hashes[0], first[index]);
        hashes[1] = nameHashStep(hashes[1], second[index]);
    }
    return hashes;
}

/// Eight bytes, each of a to z made A to Z. Names are hashed and compared in this many bytes at once.
constexpr std::uint64_t getUpper8(std::uint64_t bytes) {
    constexpr std::uint64_t every = 0x0101010101010101U;
    // The highest bit of a byte tells: no ASCII above; from here on, at or behind 'a'; behind 'z'.
    const auto low = bytes & (0x7F * every);
    const auto fromA = low + (0x80 - 'a') * every;
    const auto behindZ = low + (0x7F - 'z') * every;
    const auto lower = ~bytes & (fromA ^ behindZ) & (0x80 * every);
    return bytes - (lower >> 2);
}

/// The eight bytes from `pos` on, which the text must have. Of a text shorter than eight bytes all of it, whatever `pos` is,
/// put together so that texts of one length give the same only when they are the same.
inline std::uint64_t getBytes8(std::string_view text, std::size_t pos) {
    std::uint64_t bytes = 0;
    if (text.size() >= sizeof(bytes)) {
        std::memcpy(&bytes, text.data() + pos, sizeof(bytes));
        return bytes;
    }
    if (text.size() < sizeof(std::uint32_t)) {
        for (const char byte : text)
            bytes = bytes << 8 | static_cast<unsigned char>(byte);
        return bytes;
    }
    // The first and the last four; in the middle some may be told twice.
    std::uint32_t half = 0;
    std::memcpy(&half, text.data(), sizeof(half));
    bytes = std::uint64_t{half} << 32;
    std::memcpy(&half, text.data() + text.size() - sizeof(half), sizeof(half));
    return bytes | half;
}

/// A keyword that is searched in lines. `rare` is the offset of a byte in it that few lines hold.
class Keyword {
public:
    constexpr Keyword(std::string_view text, std::size_t rare) : text_(text), rare_(rare) {}

    constexpr std::size_t size() const { return text_.size(); }

    /// Where the word first stands in the text, from `pos` on; npos when it does not.
    std::size_t findIn(std::string_view text, std::size_t pos = 0) const {
        for (auto found = text.find(text_[rare_], pos + rare_); found != std::string_view::npos;
             found = text.find(text_[rare_], found + 1)) {
            if (isAt(text, found - rare_))
                return found - rare_;
        }
        return std::string_view::npos;
    }

    bool isIn(std::string_view text) const { return findIn(text) != std::string_view::npos; }

private:
    bool isAt(std::string_view text, std::size_t pos) const {
        std::size_t index = 0;
        while (index < text_.size() && pos + index < text.size() && text[pos + index] == text_[index])
            ++index;
        return index == text_.size();
    }

    std::string_view text_;
    std::size_t rare_;
};

/// Where the last eight bytes of a text begin; 0 for a shorter text.
constexpr std::size_t lastBytes8(std::string_view text) {
    return text.size() < sizeof(std::uint64_t) ? 0 : text.size() - sizeof(std::uint64_t);
}

/// What two texts of one length must have in common to be the same.
inline std::uint64_t getLastBytes8(std::string_view text) {
    return getBytes8(text, lastBytes8(text));
}

/// A hash of a text for look-ups, eight bytes at a time, each of them first combined with `mask`. Faster than `nameHash`, and
/// seen by nobody. With a seed that nobody knows, nobody can choose texts that have the same.
inline std::uint64_t textHash(std::string_view text, std::uint64_t mask, std::uint64_t seed = 0) {
    constexpr std::uint64_t factor = 0x9E3779B97F4A7C15U;
    const auto last = lastBytes8(text);
    auto hash = seed ^ (text.size() * factor);
    for (std::size_t pos = 0;; pos = std::min(pos + sizeof(hash), last)) {
        hash = (hash ^ (getBytes8(text, pos) & mask)) * factor;
        hash ^= hash >> 32;
        if (pos == last)
            return hash * factor;
    }
}

/// The same for a name in every letter case: it drops the bit that tells the cases of a letter apart, whatever that bit
/// means elsewhere.
inline std::uint64_t upperHash(std::string_view name) {
    return textHash(name, 0xDFDFDFDFDFDFDFDFU);
}

/// The order of texts byte by byte, as that of std::string_view, decided by the first eight bytes where these differ.
inline bool boLessText(std::string_view left, std::string_view right) {
    if (std::endian::native == std::endian::little &&
        std::min(left.size(), right.size()) >= sizeof(std::uint64_t)) {
        const auto different = getBytes8(left, 0) ^ getBytes8(right, 0);
        if (different != 0) {
            const auto byte = static_cast<std::size_t>(std::countr_zero(different)) / 8;
            return static_cast<unsigned char>(left[byte]) < static_cast<unsigned char>(right[byte]);
        }
    }
    return left < right;
}

/// Whether both texts have the same bytes; for names, which are short, quicker than a call of memcmp.
inline bool isSameText(std::string_view left, std::string_view right) {
    if (left.size() != right.size())
        return false;
    const auto last = lastBytes8(left);
    for (std::size_t pos = 0;; pos = std::min(pos + sizeof(std::uint64_t), last)) {
        if (getBytes8(left, pos) != getBytes8(right, pos))
            return false;
        if (pos == last)
            return true;
    }
}

/// 0 when the upper-cased name is the one that is upper-case already; else negative or positive, by an order that is of
/// use for searching only.
inline int compareUpper(std::string_view name, std::string_view upperName) {
    if (name.size() != upperName.size())
        return name.size() < upperName.size() ? -1 : 1;
    const auto last = lastBytes8(name);
    for (std::size_t pos = 0;; pos = std::min(pos + sizeof(std::uint64_t), last)) {
        const auto bytes = getUpper8(getBytes8(name, pos));
        const auto wanted = getBytes8(upperName, pos);
        if (bytes != wanted)
            return bytes < wanted ? -1 : 1;
        if (pos == last)
            return 0;
    }
}

/// The text upper-cased byte by byte, in the arena; the text itself when that has no lower-case letter.
KIV_EXPORT std::string_view upperIn(Arena& arena, std::string_view text);

/// The text upper-cased byte by byte.
KIV_EXPORT std::string sUpper(std::string_view text);

/// An upper-cased copy of a name, for one look-up; names up to 64 bytes are copied without an allocation.
class KIV_EXPORT UpperCopy {
public:
    explicit UpperCopy(std::string_view name);
    UpperCopy(const UpperCopy&) = delete;
    UpperCopy& operator=(const UpperCopy&) = delete;

    /// The upper-cased name; lives as long as this object.
    std::string_view getView() const { return view_; }

private:
    std::array<char, 64> small_;
    std::string large_;
    std::string_view view_;
};

} // namespace kiv::ifc::def::schema
