/// @file
/// Lines and columns of places in a text that are asked for in order.
///
/// Private to the kit.
///
/// Ownership: refers to the text.
/// Threads:   each is used by one thread.
/// Errors:    none.
#pragma once

#include "kiv/Kit/Text/TextPosition.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace kiv::kit {

/// All questions together cost as much as one walk through the text. Where a line is of ASCII, as most are,
/// columns are differences of offsets.
class TextCursor {
public:
    /// UTF-8, with LF, CR or CR LF at the ends of lines.
    explicit TextCursor(std::string_view text);

    /// The position of the byte at `offset`, which is not before that of the question before. `size` bytes
    /// are meant, as far as they are on one line.
    TextPosition at(std::size_t offset, std::size_t size = 0) {
        if (offset > lineEnd_)
            vLineOf(offset);
        const auto length = offset < contentEnd_ ? std::min(size, contentEnd_ - offset) : 0;
        const auto column = offset - lineBegin_ + 1;
        return offset + length <= asciiEnd_ ? TextPosition{line_, column, length} : countedAt(offset, length);
    }

    /// Code points up to the first line end.
    static std::size_t codePoints(std::string_view text);

private:
    /// Goes on to the line of a later place.
    void vLineOf(std::size_t offset);
    std::size_t lineEndFrom(std::size_t begin) const;
    void vLineLook();
    /// Where other letters come before the end of it on the line.
    TextPosition countedAt(std::size_t offset, std::size_t length);

    std::string_view text_;
    /// Carriage returns that end lines by themselves, which hardly any text has.
    bool hasLoneReturns_;
    // The line.
    std::size_t line_ = 1;
    std::size_t lineBegin_ = 0;
    std::size_t lineEnd_ = 0;
    /// Before a CR that belongs to the end.
    std::size_t contentEnd_ = 0;
    /// Up to here all of the line is of ASCII.
    std::size_t asciiEnd_ = 0;
    // After that, the last place that was asked for.
    std::size_t countedTo_ = 0;
    std::size_t column_ = 1;
};

} // namespace kiv::kit
