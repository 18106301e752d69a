/// @file
/// Keywords of EXPRESS, found in any letter case.
///
///     constexpr KeywordSet Clauses(std::array<std::string_view, 2>{"DERIVE", "WHERE"});
///     Clauses.find("where");      // "WHERE"
///     Clauses.contains("IfcWall") // false
///
/// Private to the kit. Most words of a schema are names: by its first letter and its length alone nearly none
/// of them may be a keyword.
///
/// Ownership: keywords live as long as the process.
/// Threads:   unchanged once made; any number of threads may read one.
/// Errors:    none.
#pragma once

#include "Kit/Text/AsciiText.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kiv::kit {

/// Keywords have fewer than 32 letters.
template <std::size_t Count>
class KeywordSet {
    static_assert(Count < 256, "places of keywords are kept in one byte");

public:
    explicit constexpr KeywordSet(const std::array<std::string_view, Count>& keywords) {
        std::size_t next = 0;
        for (std::size_t letter = 0; letter < Letters; ++letter) {
            auto& range = ranges_[letter];
            range.begin = static_cast<std::uint8_t>(next);
            for (const auto keyword : keywords) {
                if (letterOf(keyword.front()) != letter)
                    continue;
                range.lengths |= std::uint32_t{1} << keyword.size();
                keywords_[next++] = keyword;
            }
            range.end = static_cast<std::uint8_t>(next);
        }
    }

    /// The keyword that the word is; empty when it is none.
    constexpr std::string_view find(std::string_view word) const {
        if (word.empty() || word.size() >= MaxLength)
            return {};
        const auto& range = ranges_[letterOf(word.front())];
        if ((range.lengths >> word.size() & 1U) == 0)
            return {};
        for (std::size_t index = range.begin; index < range.end; ++index) {
            if (isEqualIgnoringCase(keywords_[index], word))
                return keywords_[index];
        }
        return {};
    }

    constexpr bool contains(std::string_view word) const { return !find(word).empty(); }

private:
    static constexpr std::size_t Letters = 32;
    static constexpr std::size_t MaxLength = 32;

    /// The same for both cases of a letter; other characters share the numbers.
    static constexpr std::size_t letterOf(char letter) {
        return static_cast<unsigned char>(letter) % Letters;
    }

    /// The keywords with one first letter.
    struct Range {
        /// A bit for each length.
        std::uint32_t lengths = 0;
        std::uint8_t begin = 0;
        std::uint8_t end = 0;
    };

    std::array<std::string_view, Count> keywords_{};
    std::array<Range, Letters> ranges_{};
};

} // namespace kiv::kit
