/// @file
/// The keywords that are searched in the lines of a schema text.
///
///     constexpr Keyword EndEntity("END_ENTITY", 3);
///     if (EndEntity.isIn(line)) ...
///
/// Threads: values; any number of threads may share one.
/// Errors:  none; what is not there is npos.
#pragma once

#include <cstddef>
#include <string_view>

namespace kiv::ifc::def::schema {

/// Blank and tab: what is trimmed around the names of a declaration.
inline constexpr std::string_view BlankAndTab = " \t";

/// A keyword that is searched in lines. `rare` is the offset of a byte in it that few lines hold.
class Keyword {
public:
    constexpr Keyword(std::string_view text, std::size_t rare) : text_(text), rare_(rare) {}

    constexpr std::size_t size() const { return text_.size(); }

    /// The first position of the word in the text, from `pos` on; npos when it is not there.
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

} // namespace kiv::ifc::def::schema
