/// @file
/// Characters that show nothing of their own: they make another name of one that looks the same, or turn the
/// direction of writing.
///
///     isInvisible(U'\u200B', U'a'); // true: a zero width space
///     isInvisible(U'\u200C', U'\u06CC'); // false: Persian needs it to keep letters apart
///
/// Ownership: none.
/// Threads:   free functions without state.
/// Errors:    none.
#pragma once

#include <algorithm>
#include <array>

namespace kiv::kit {

/// From the first to the last of them.
struct CharacterRange {
    char32_t first;
    char32_t last;
};

/// Soft hyphen, the letter mark of Arabic, the vowel separator of Mongolian, zero width space, marks of
/// direction, separators of lines and paragraphs, embeddings and overrides of direction, word joiner and
/// invisible operators, isolates, zero width no-break space, marks of annotations.
inline constexpr std::array<CharacterRange, 10> InvisibleRanges = {{{0x00AD, 0x00AD},
                                                                    {0x061C, 0x061C},
                                                                    {0x180E, 0x180E},
                                                                    {0x200B, 0x200B},
                                                                    {0x200E, 0x200F},
                                                                    {0x2028, 0x202E},
                                                                    {0x2060, 0x2064},
                                                                    {0x2066, 0x2069},
                                                                    {0xFEFF, 0xFEFF},
                                                                    {0xFFF9, 0xFFFB}}};

/// Whether letters of that script may be joined to the next one, or kept from it: those of Arabic and what
/// comes after it, as scripts of India and pictures, but no Latin, Greek or punctuation.
constexpr bool isJoinable(char32_t letter) {
    return letter >= 0x0600 && (letter < 0x1E00 || letter > 0x206F);
}

/// Whether it is one of the characters that, after a black flag, make the flag of a region.
constexpr bool isTag(char32_t character) {
    return 0xE0000 <= character && character <= 0xE007F;
}

/// Whether the character shows nothing where it comes after `before`: the last character that is no tag, in
/// UTF-32; 0 at the beginning of a text.
constexpr bool isInvisible(char32_t character, char32_t before) {
    constexpr CharacterRange Joiners = {0x200C, 0x200D};
    constexpr char32_t BlackFlag = 0x1F3F4;
    const auto isIn = [](char32_t value, const CharacterRange& range) {
        return range.first <= value && value <= range.last;
    };
    if (isIn(character, Joiners))
        return !isJoinable(before);
    if (isTag(character))
        return before != BlackFlag;
    return std::ranges::any_of(InvisibleRanges,
                               [&](const CharacterRange& range) { return isIn(character, range); });
}

} // namespace kiv::kit
