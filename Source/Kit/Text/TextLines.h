/// @file
/// Lines and columns of places in a text.
///
///     const TextLines lines(text);
///     const auto position = lines.at(text.find("IfcWall"), 7);
///     std::cout << "line " << position.line << ", column " << position.column << '\n';
///
/// Most places of a document are never shown, so they are kept as offsets, and a line and a column are found
/// when they are asked for.
///
/// Ownership: refers to the text, which must outlive it.
/// Threads:   unchanged once made; any number of threads may read one.
/// Errors:    std::bad_alloc when it is made.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Kit/Text/TextPosition.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace kiv::kit {

/// UTF-8, with LF, CR LF or CR at the ends of lines. A byte order mark is a character like others: whoever
/// does not want to count it leaves it out of the text.
///
/// Making it takes one look at the text. A question takes as long as to look at `BlockSize` bytes, and at
/// those whose length is asked for.
class KIV_EXPORT TextLines {
public:
    static constexpr std::size_t BlockSize = 512;

    /// Of an empty text.
    TextLines() = default;
    explicit TextLines(std::string_view text);

    /// The position of the byte at `offset`, at most that of the end. `size` bytes are meant, as far as they
    /// are on one line.
    TextPosition at(std::size_t offset, std::size_t size = 0) const;
    /// Of a part of the text: a view of the same bytes. What is returned for other views has no meaning.
    TextPosition of(std::string_view part) const {
        return at(static_cast<std::size_t>(part.data() - text_.data()), part.size());
    }

    /// How many bytes one takes besides itself, for a text of that size.
    static constexpr std::size_t memoryFor(std::size_t size) {
        return (size / BlockSize + 1) * sizeof(Point);
    }

private:
    /// Of a byte: its line and its column.
    struct Point {
        std::size_t line = 1;
        std::size_t column = 1;
    };

    KIV_NO_EXPORT Point after(Point begin, std::size_t from, std::size_t to) const;
    KIV_NO_EXPORT bool isLoneReturn(std::size_t offset) const;

    std::string_view text_;
    /// Carriage returns that end lines by themselves, which hardly any text has.
    bool hasLoneReturns_ = false;
    /// Of the first byte of each block.
    std::vector<Point> blocks_;
};

/// How many code points the first line of a text has, without its end.
KIV_EXPORT std::size_t codePointsOfLine(std::string_view text);

} // namespace kiv::kit
