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
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kivifc {

/// A text together with where its lines begin. A line ends with a line feed, a carriage return, or both.
class LinedText {
public:
    LinedText() = default;
    explicit LinedText(std::string text);

    const std::string& getText() const { return text_; }

    /// The line of that number, from 1, without its end; empty when there is none.
    std::string_view line(std::size_t number) const;

    /// The number of the line of a byte, from 1, and its column in code points.
    std::pair<std::size_t, std::size_t> lineAndColumn(std::size_t offset) const;

private:
    std::string text_;
    std::vector<std::size_t> begins_;
};

class SourceLines {
public:
    /// For what can be read only once: standard input and pipes. Another file is read when it is asked for.
    void vKeep(const std::string& path, std::string text);

    /// The line of that number, in UTF-8 if the file is UTF-16; empty when there is none.
    std::string_view line(const std::string& path, std::size_t number) { return text(path).line(number); }

    /// The file; that of the last question is at hand.
    const LinedText& text(const std::string& path);

private:
    std::map<std::string, std::string> kept_;
    std::string path_;
    LinedText current_;
};

} // namespace kiv::kivifc
