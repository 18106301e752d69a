/// @file
/// The lines of the files that findings are about.
///
///     SourceLines sources;
///     sources.line("walls.xml", 3) // "  <Name>Pset_Wall</Name>"
///
/// Ownership: owns the texts that it keeps; a view lives until the next question.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc; a file that cannot be read any more has no lines.
#pragma once

#include <cstddef>
#include <list>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::kivifc {

/// A line, or what of a long one is near a place.
struct LinePart {
    std::string_view text;
    /// Of its first code point in the line, from 1.
    std::size_t column = 1;
};

/// A text together with where its lines begin. A line ends with a line feed, a carriage return, or both.
/// A question about one place of a line takes no longer where the line is long.
class LinedText {
public:
    LinedText() = default;
    explicit LinedText(std::string text);

    const std::string& getText() const { return text_; }
    /// What it takes, its own size included.
    std::size_t heldBytes() const;

    /// The line of that number, from 1, without its end; empty when there is none.
    std::string_view line(std::size_t number) const;

    /// The line from its beginning, or from a code point on that is at least 500 before the column.
    LinePart part(std::size_t number, std::size_t column) const;

    /// The number of the line of a byte, from 1, and its column in code points.
    std::pair<std::size_t, std::size_t> lineAndColumn(std::size_t offset) const;

private:
    /// The column of a byte inside a long line.
    struct Mark {
        std::size_t offset = 0;
        std::size_t column = 1;
    };

    std::size_t endOf(std::size_t number) const;
    void vLongLineMark(std::size_t begin, std::size_t end);

    std::string text_;
    std::vector<std::size_t> begins_;
    // By offset, and so by line and column.
    std::vector<Mark> marks_;
};

class SourceLines {
public:
    /// Texts that are kept at hand take this many bytes at most, the one asked for last not counted.
    explicit SourceLines(std::size_t maxBytesAtHand = std::size_t{64} << 20U) :
        maxBytesAtHand_(maxBytesAtHand) {}
    SourceLines(const SourceLines&) = delete;
    SourceLines& operator=(const SourceLines&) = delete;

    /// For what can be read only once: standard input and pipes. Another file is read when it is asked for.
    void vKeep(const std::string& path, std::string text);

    /// The line of that number, in UTF-8 if the file is UTF-16; empty when there is none.
    std::string_view line(const std::string& path, std::size_t number) { return text(path).line(number); }

    /// The same, but of a long line the part near the column.
    LinePart part(const std::string& path, std::size_t number, std::size_t column) {
        return text(path).part(number, column);
    }

    /// The file; those of the last questions are at hand.
    const LinedText& text(const std::string& path);

private:
    struct Source {
        std::string path;
        LinedText text;
    };

    void vOldestDrop();

    std::map<std::string, std::string> kept_;
    // Those asked for last come first.
    std::list<Source> sources_;
    std::map<std::string, std::list<Source>::iterator> byPath_;
    std::size_t maxBytesAtHand_;
    std::size_t bytesAtHand_ = 0;
};

} // namespace kiv::kivifc
