/// @file
/// The attributes of a start tag, where they are written.
///
/// Private to the kit.
///
///     XmlTagScanner scanner(text, nameEnd);
///     while (scanner.hasNext(tagEnd))
///         const auto written = scanner.next();
///
/// Ownership: refers to the text.
/// Threads:   one thread for each scanner.
/// Errors:    none; the tag is well-formed.
#pragma once

#include "Kit/Text/AsciiText.h"

#include <cstddef>
#include <string_view>

namespace kiv::kit {

/// Where an attribute is written: offsets in the text.
struct WrittenAttribute {
    std::size_t before = 0;
    std::size_t name = 0;
    std::size_t nameSize = 0;
    std::size_t value = 0;
    std::size_t valueSize = 0;
};

/// Finds them one after the other.
class XmlTagScanner {
public:
    XmlTagScanner(std::string_view text, std::size_t offset) : text_(text), offset_(offset) {}

    WrittenAttribute next() {
        WrittenAttribute written;
        written.before = offset_;
        written.name = offset_;
        while (isWhiteSpace(text_[written.name]))
            ++written.name;
        auto nameEnd = written.name;
        while (!isWhiteSpace(text_[nameEnd]) && text_[nameEnd] != '=')
            ++nameEnd;
        written.nameSize = nameEnd - written.name;
        auto quote = nameEnd;
        while (text_[quote] != '"' && text_[quote] != '\'')
            ++quote;
        written.value = quote + 1;
        const auto end = text_.find(text_[quote], written.value);
        written.valueSize = end - written.value;
        offset_ = end + 1;
        return written;
    }

    /// Whether there is one more before the end of the tag.
    bool hasNext(std::size_t tagEnd) const {
        auto at = offset_;
        while (at != tagEnd && isWhiteSpace(text_[at]))
            ++at;
        return at < tagEnd && text_[at] != '/' && text_[at] != '>';
    }

private:
    std::string_view text_;
    std::size_t offset_;
};

} // namespace kiv::kit
