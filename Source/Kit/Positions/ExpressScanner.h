/// @file
/// EXPRESS text (ISO 10303-11) in tokens, each with its line and column.
///
///     ExpressScanner scanner(text);
///     for (auto token = scanner.next(); token.kind != ExpressTokenKind::End; token = scanner.next())
///         vUse(token.text, token.position);
///
/// Private to the kit. Unlike the library's tokenizer, which reads rules alone, it reads whole schemas as the
/// standard defines them: comments nest, a tail comment ends nothing, two quotes in a string are one.
///
/// Ownership: tokens are views into the text, which must outlive them.
/// Threads:   each scanner is used by one thread.
/// Errors:    none: whatever the bytes are, each call goes on and the end is reached.
#pragma once

#include "kiv/Kit/Text/TextPosition.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kiv::kit {

enum class ExpressTokenKind : std::uint8_t {
    /// A name or a keyword; bytes of 128 and more count as letters.
    Word,
    Number,
    /// With its quotes. Ends with its line, closed or not.
    String,
    /// One character, or one of the operators `:=`, `:=:` and `:<>:`.
    Symbol,
    End,
};

struct ExpressToken {
    ExpressTokenKind kind = ExpressTokenKind::End;
    std::string_view text;
    TextPosition position;

    bool isSymbol(char symbol) const {
        return kind == ExpressTokenKind::Symbol && text.size() == 1 && text.front() == symbol;
    }
};

/// A place from which scanning can begin.
struct ExpressMark {
    /// In bytes.
    std::size_t offset = 0;
    std::size_t line = 1;
    std::size_t column = 1;
};

class ExpressScanner {
public:
    /// Begins after a byte order mark, if there is one.
    explicit ExpressScanner(std::string_view text);
    /// Scans what is before `end` from a place that another scanner of this text has passed.
    ExpressScanner(std::string_view text, const ExpressMark& begin, std::size_t end);

    ExpressToken next();

    /// Goes on at that byte, which has not been passed, whatever is before it.
    void vSkipTo(std::size_t offset) { vAdvanceTo(offset); }

    /// Where the next token is looked for.
    const ExpressMark& getMark() const { return mark_; }

    /// The first comment that nothing closes, which then ends with its line; line 0 for none.
    const TextPosition& getOpenComment() const { return openComment_; }

private:
    bool isAtEnd() const { return mark_.offset >= text_.size(); }
    char charAt(std::size_t distance) const;
    void vAdvance();
    void vAdvanceTo(std::size_t offset);
    void vLineSkip();
    void vBlanksSkip();
    void vGapSkip();
    void vCommentSkip();
    std::size_t commentEnd();
    std::size_t tokenSize(ExpressTokenKind kind) const;
    std::size_t lengthOf(std::string_view token) const;

    std::string_view text_;
    ExpressMark mark_;
    TextPosition openComment_;
    // From the first comment that nothing closes on, comments no longer nest.
    bool nests_ = true;
    // No comment that begins from here on is closed.
    std::size_t neverClosedFrom_ = std::string_view::npos;
};

} // namespace kiv::kit
