/// @file
/// The line tools that all readers of schema text share.
///
///     ReadLineHelper line;
///     while (line.boNextLine(stream))
///         use(line.getLine());
///
/// Ownership: what readers build out of lines refers to the arena of the helper.
/// Threads:   not thread-safe.
/// Errors:    a stream that fails without being at its end throws `kiv::exception` with an empty message.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Base/WorkMeter.h"

#include <cstddef>
#include <ios>
#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {
class Arena;
}

namespace kiv::ifc::def::schema {

/// The lines of a text, each without its line feed, which follows every one of them. Views that live as long
/// as the text.
KIV_EXPORT std::vector<std::string_view> linesOfText(std::string_view text);

/// Lines kept as one text, each followed by a line feed.
///
/// One block of memory holds them all: clauses and bodies have thousands of lines, and parsing wants them
/// joined. Lines that lie joined in memory already, as most do, are not copied.
class KIV_EXPORT TextLines {
public:
    /// Adds a line, which is copied. A meter hears of the memory for that.
    void vLineAdd(std::string_view line, WorkMeter* meter = nullptr);

    /// Adds a line that outlives the text and is followed by a line feed.
    void vKeptLineAdd(std::string_view line, WorkMeter* meter = nullptr);

    /// Forgets all lines, but keeps their memory for the next ones.
    void vClear();

    /// The memory of the copies.
    std::size_t getMemory() const;

    /// All lines, each followed by a line feed.
    std::string_view getText() const { return copied_.empty() ? joined_ : std::string_view(copied_); }

    /// True when the text lies where the lines lay.
    bool isKept() const { return copied_.empty(); }

    /// The lines without their line feeds, as views that live as long as this object is not changed.
    std::vector<std::string_view> getLines() const { return linesOfText(getText()); }

private:
    // As long as every line is the neighbour of the one before.
    std::string_view joined_;
    std::string copied_;
};

/// Holds the current line of a schema text, and the arena in which readers keep what they need of it. The
/// position within the line is the callers' own.
///
/// Ownership: what readers build out of lines refers to the arena; so that lives as long as they do.
/// Threads:   not thread-safe.
/// Errors:    a stream that fails without being at its end throws `kiv::exception` with an empty message; one
///            that is set to throw at its end std::ios::failure there.
class KIV_EXPORT ReadLineHelper {
public:
    /// With an arena of its own; takes no more from the stream than the lines that it hands out.
    ReadLineHelper();
    /// With an arena that outlives this object; reads ahead in the one stream that it is used with, as far as
    /// that has bytes at hand, until `vAheadGiveBack`.
    explicit ReadLineHelper(Arena& arena);
    /// The same two with a meter, which outlives this object and hears of all that is read; null for none.
    explicit ReadLineHelper(WorkMeter* meter);
    ReadLineHelper(Arena& arena, WorkMeter* meter);
    ~ReadLineHelper();

    /// Reads the next line, without its line feed and without one carriage return before that; false (and an
    /// empty line) when the stream was at its end. The last line needs no line feed: true, and the stream is
    /// at its end.
    bool boNextLine(std::istream& stream);

    /// Reads the next line and appends it to the current one, with nothing between them; false at the end.
    bool boNextLineAppend(std::istream& stream);

    /// The current line; valid until the next read.
    std::string_view getLine() const { return line_; }

    /// A part of the current line, in the arena.
    std::string_view getKept(std::string_view part) { return isLineKept_ ? part : getCopy(part); }

    /// Adds the current line to others.
    void vLineAddTo(TextLines& lines) const;

    /// The text of lines, in the arena.
    std::string_view getKept(const TextLines& lines) {
        return lines.isKept() ? lines.getText() : getCopy(lines.getText());
    }

    /// Puts what was read ahead back into the stream, which is then after the current line again.
    void vAheadGiveBack(std::istream& stream) noexcept;

    /// Removes a leading UTF-8 byte order mark from the current line, which is the first of its stream.
    void vByteOrderMarkRemove();

    /// Reads a parenthesised list of names, following it across lines; names as written, separated by tabs,
    /// blanks and commas. `pos` is a byte offset in the current line: where the search for '(' starts, and,
    /// on return, where the ')' is in what is then the current line. A list that the stream's end leaves
    /// open throws `kiv::exception`.
    std::vector<std::string> getNamesInList(std::size_t& pos, std::istream& stream);

    /// The same names, kept in the arena.
    std::span<const std::string_view> getNamesKept(std::size_t& pos, std::istream& stream);

    /// Where readers keep what is no part of a line; it lives as long as this object, or longer.
    Arena& getArena() { return arena_; }

    /// No lines yet, for a reader to collect those of a clause or body in.
    TextLines& getEmptyLines();

    /// Null for none.
    WorkMeter* pMeter() const { return meter_; }

private:
    template <bool IsMetered>
    bool boLineOfStream(std::istream& stream);
    void vBytesTake(std::size_t count);
    bool boLineAcrossBlocks(std::istream& stream);
    bool boBlockRead(std::istream& stream);
    void vLineSet(std::string_view line, bool isKept);
    std::string_view getCopy(std::string_view text);
    void vNamesRead(std::size_t& pos, std::istream& stream);
    void vNextLineOfList(std::istream& stream);
    bool boNamesOfLineRead(std::size_t& pos);

    std::unique_ptr<Arena> own_;
    Arena& arena_;
    WorkMeter* meter_ = nullptr;
    bool isReadingAhead_;
    // How much the next block holds at most.
    std::streamsize aheadMax_;
    std::string_view line_;
    // The line lies in the arena; else in `joined_` when lines were appended to it, and in `text_` when not.
    bool isLineKept_ = false;
    bool isLineJoined_ = false;
    // A carriage return was taken off.
    bool isLineCut_ = false;
    std::string text_;
    std::string joined_;
    // Lies in the arena: what was taken from the stream and not handed out yet.
    std::string_view ahead_;
    TextLines lines_;
    // Those of the list that is being read; kept for the memory.
    std::vector<std::string_view> names_;
};

/// Splits the rest of one line, from byte offset `pos`, at commas. Blanks before an item are skipped, blanks
/// after it are kept; the last item ends at the first ';', else at the first blank, else with the text.
KIV_EXPORT std::vector<std::string> sListFromStringCommaSep(const std::string& text, std::size_t pos);

} // namespace kiv::ifc::def::schema
