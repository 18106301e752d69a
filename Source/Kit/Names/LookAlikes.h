/// @file
/// Characters that are taken for others: letters of Cyrillic and Greek that look like those of Latin, dashes
/// and wide forms that look like ASCII, and what cannot be seen at all.
///
///     const auto found = lookAlikeIn("IfcW\u0430ll");
///     sLookAlike(*found);         // "character 5 is U+0430, a letter of Cyrillic that looks like \"a\""
///     sAsciiOf("IfcW\u0430ll");   // "IfcWall"
///     mixedLetterIn("\u0441\u0442\u0435\u043D\u0430"); // absent: a whole word of Cyrillic is right
///
/// Private to the kit.
///
/// Ownership: values.
/// Threads:   free functions without state.
/// Errors:    std::bad_alloc from those that copy.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kiv::kit {

struct LookAlike {
    /// In bytes.
    std::size_t offset = 0;
    std::size_t size = 0;
    char32_t character = 0;
    /// What it looks like; 0 when it cannot be seen.
    char ascii = 0;
    /// From 1, in code points.
    std::size_t number = 0;
};

/// The first character of the text that is not what it looks like.
std::optional<LookAlike> lookAlikeIn(std::string_view text);

/// The first letter of Cyrillic or Greek in a word that has letters of Latin, and no letter that only the
/// other script has. Names may be of any script, or of several word by word: "_" ends a word.
std::optional<LookAlike> mixedLetterIn(std::string_view text);

/// The text as it looks, without what cannot be seen.
std::string sAsciiOf(std::string_view text);

/// The same for the words alone in which letters are mixed.
std::string sUnmixed(std::string_view text);

/// The text without what cannot be seen, and otherwise as it is.
std::string sWithoutUnseen(std::string_view text);

/// "U+0430"
std::string sCodeOf(char32_t character);

/// "a letter of Cyrillic that looks like \"a\"", "an invisible character".
std::string sKindOf(const LookAlike& found);

/// Which character of its text it is, and what it looks like.
std::string sLookAlike(const LookAlike& found);

} // namespace kiv::kit
