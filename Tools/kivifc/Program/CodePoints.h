/// @file
/// Code points of UTF-8 texts: how wide a terminal shows them, and which ones it must not be given.
///
///     for (std::string_view rest = line; !rest.empty();) {
///         const auto point = codePointTake(rest);
///         width += displayWidth(point);
///     }
///
/// Ownership: what is taken is a view of the text.
/// Threads:   any number of threads.
/// Errors:    a byte that is not UTF-8 is a code point of its own, marked as such.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv::kivifc {

struct CodePoint {
    char32_t value = 0;
    /// Its bytes in the text.
    std::string_view bytes;
    /// Whether it is UTF-8; if not, `value` is the byte.
    bool isValid = true;
};

/// Takes the first code point off a text that is not empty.
CodePoint codePointTake(std::string_view& text);

/// Where the character begins that the byte at `position` belongs to, so that a text can be cut before it.
std::size_t characterBegin(std::string_view text, std::size_t position);

/// How many columns of a terminal it takes: 2 for the wide letters of East Asia and for pictures, 0 for marks
/// that are drawn onto the letter before them.
std::size_t displayWidth(const CodePoint& point);

/// Whether a terminal obeys it or shows text in another order because of it: control characters, those that
/// set the direction of writing, separators of lines and paragraphs. The tab is one of them.
bool isUnsafe(const CodePoint& point);

/// The code points of a text one after the other, and which of them are shown escaped: unsafe ones, and those
/// that show nothing of their own, so that two texts look the same. Joiners are shown as they are where their
/// script needs them.
///
///     for (ShownPoints points(text); points.boNext();)
///         shown += points.isEscaped() ? sEscaped(points.getPoint()) : std::string(points.getPoint().bytes);
class ShownPoints {
public:
    explicit ShownPoints(std::string_view text) : rest_(text) {}

    /// Goes to the next one; false at the end of the text.
    bool boNext();
    const CodePoint& getPoint() const { return point_; }
    bool isEscaped() const { return isEscaped_; }

private:
    std::string_view rest_;
    CodePoint point_;
    // The last one that is no tag.
    char32_t before_ = 0;
    bool isEscaped_ = false;
};

/// How an escaped one is written: "\n", "\r" and "\t"; "\xNN" for each byte of another control character or
/// of what is no UTF-8; else "\u{202E}".
std::string sEscaped(const CodePoint& point);

} // namespace kiv::kivifc
