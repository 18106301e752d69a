/// The line tools that all readers of schema text share.
///
///     ReadLineHelper line;
///     while (line.boNextLine(stream))
///         use(line.getLine());
#pragma once

#include "Host/KivExport.h"

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::schema {

/// Holds the current line of a schema text. The position within the line is the callers' own.
///
/// Threads: one reader, one thread.
/// Errors:  a stream that fails without being at its end throws `kiv::exception` with an empty message.
class KIV_EXPORT ReadLineHelper {
public:
    /// Reads the next line, without its line feed and without one carriage return before that; false (and an
    /// empty line) when the stream was at its end. The last line needs no line feed: true, and the stream is
    /// at its end.
    bool boNextLine(std::istream& stream);

    /// Reads the next line and appends it to the current one, with nothing between them; false at the end.
    bool boNextLineAppend(std::istream& stream);

    /// The current line; valid until the next read.
    const std::string& getLine() const { return line_; }

    /// Removes a leading UTF-8 byte order mark from the current line, which is the first of its stream.
    void vByteOrderMarkRemove();

    /// Reads a parenthesised list of names, following it across lines; names as written, separated by tabs,
    /// blanks and commas. `pos` is a byte offset in the current line: where the search for '(' starts, and,
    /// on return, where the ')' stands in what is then the current line. A list that the stream's end leaves
    /// open throws `kiv::exception`.
    std::vector<std::string> getNamesInList(std::size_t& pos, std::istream& stream);

private:
    void vNextLineOfList(std::istream& stream);

    std::string line_;
};

/// Splits the rest of one line, from byte offset `pos`, at commas. Blanks before an item are skipped, blanks
/// behind it are kept; the last item ends at the first ';', else at the first blank, else with the text.
KIV_EXPORT std::vector<std::string> sListFromStringCommaSep(const std::string& text, std::size_t pos);

/// Lines kept as one text, each followed by a line feed.
///
/// One block of memory holds them all: clauses and bodies have thousands of lines, and parsing wants them
/// joined.
class KIV_EXPORT TextLines {
public:
    void vLineAdd(std::string_view line);

    /// Gives back memory that is not in use; for when the last line was added.
    void vFit() { text_.shrink_to_fit(); }

    /// All lines, each followed by a line feed.
    const std::string& getText() const { return text_; }

    /// The lines without their line feeds, as views that live as long as this object is not changed.
    std::vector<std::string_view> getLines() const;

private:
    std::string text_;
};

} // namespace kiv::ifc::def::schema
