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
    explicit TextCursor(std::string_view text) : text_(text), hasLoneReturns_(hasLoneReturns(text)) {}

    /// The position of the byte at `offset`, which is not before that of the question before. `size` bytes
    /// are meant, as far as they are on one line.
    TextPosition at(std::size_t offset, std::size_t size = 0) {
        vAdvance(offset);
        return {line_, column_, codePoints(text_.substr(offset, size))};
    }

    /// Code points up to the first line end.
    static std::size_t codePoints(std::string_view text) {
        std::size_t codePoints = 0;
        while (text.size() >= EightBytes) {
            const auto bytes = eightBytesAt(text.data());
            if (hasByte(bytes, '\r') || hasByte(bytes, '\n'))
                break;
            codePoints += EightBytes - continuationsIn(bytes);
            text.remove_prefix(EightBytes);
        }
        for (const char byte : text) {
            if (byte == '\r' || byte == '\n')
                break;
            codePoints += isContinuation(byte) ? 0U : 1U;
        }
        return codePoints;
    }

private:
    static bool hasLoneReturns(std::string_view text) {
        for (auto at = text.find('\r'); at != std::string_view::npos; at = text.find('\r', at + 1)) {
            if (text.substr(at + 1, 1) != "\n")
                return true;
        }
        return false;
    }

    void vAdvance(std::size_t offset) {
        while (!hasLoneReturns_ && offset_ + EightBytes <= offset) {
            const auto bytes = eightBytesAt(text_.data() + offset_);
            if (hasByte(bytes, '\n')) {
                vAdvanceByBytes(offset_ + EightBytes);
                continue;
            }
            column_ += EightBytes - continuationsIn(bytes);
            offset_ += EightBytes;
        }
        vAdvanceByBytes(offset);
    }

    void vAdvanceByBytes(std::size_t offset) {
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
    /// Carriage returns that end lines by themselves, which hardly any text has.
    bool hasLoneReturns_;
    std::size_t offset_ = 0;
    std::size_t line_ = 1;
    std::size_t column_ = 1;
};

} // namespace kiv::kit
