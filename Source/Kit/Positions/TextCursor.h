/// @file
/// Lines and columns of places in a text that are asked for in order.
///
/// Private to the kit.
///
/// Ownership: refers to the text.
/// Threads:   each is used by one thread.
/// Errors:    none.
#pragma once

#include "Kit/Text/Utf8.h"
#include "kiv/Kit/Text/TextPosition.h"

#include <cstddef>
#include <string_view>

namespace kiv::kit {

/// All questions together cost as much as one walk through the text.
class TextCursor {
public:
    /// UTF-8, with LF, CR or CR LF at the ends of lines.
    explicit TextCursor(std::string_view text) : text_(text) {}

    /// The position of the byte at `offset`, which is not before that of the question before. `size` bytes
    /// are meant, as far as they are on one line.
    TextPosition at(std::size_t offset, std::size_t size = 0) {
        vAdvance(offset);
        return {line_, column_, codePoints(text_.substr(offset, size))};
    }

    /// Code points up to the first line end.
    static std::size_t codePoints(std::string_view text) {
        return codePointsIn(text.substr(0, text.find_first_of("\r\n")));
    }

private:
    void vAdvance(std::size_t offset) {
        for (; offset_ < offset; ++offset_) {
            const char byte = text_[offset_];
            if (byte == '\n' || (byte == '\r' && text_.substr(offset_ + 1, 1) != "\n")) {
                ++line_;
                column_ = 1;
            } else if (!isContinuation(byte)) {
                ++column_;
            }
        }
    }

    std::string_view text_;
    std::size_t offset_ = 0;
    std::size_t line_ = 1;
    std::size_t column_ = 1;
};

} // namespace kiv::kit
