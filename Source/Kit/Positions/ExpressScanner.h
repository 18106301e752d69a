/// @file
/// EXPRESS text (ISO 10303-11) in tokens.
///
///     ExpressScanner scanner(text);
///     for (auto token = scanner.next(); token.kind != ExpressTokenKind::End; token = scanner.next())
///         vUse(token.text);
///
/// Private to the kit. Unlike the library's tokenizer, which reads rules alone, it reads whole schemas as the
/// standard defines them: comments nest, a tail comment ends nothing, two quotes in a string are one.
///
/// Ownership: tokens are views into the text, which must outlive them.
/// Threads:   each scanner is used by one thread.
/// Errors:    none: whatever the bytes are, each call goes on and the end is reached.
#pragma once

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
    /// A view of the text that is scanned. At the end an empty one.
    std::string_view text;
    ExpressTokenKind kind = ExpressTokenKind::End;
    /// A line ends between the token before and this one. True of the first one.
    bool startsLine = false;

    bool isSymbol(char symbol) const {
        return kind == ExpressTokenKind::Symbol && text.size() == 1 && text.front() == symbol;
    }
};

class ExpressScanner {
public:
    /// Begins after a byte order mark, if there is one.
    explicit ExpressScanner(std::string_view text);
    /// Begins at that byte, whatever is before it.
    ExpressScanner(std::string_view text, std::size_t begin) : text_(text), offset_(begin) {}

    ExpressToken next();

    /// "(*" of the first comment that nothing closes, which then ends with its line; empty for none.
    std::string_view getOpenComment() const { return openComment_; }

private:
    bool isAtEnd() const { return offset_ == text_.size(); }
    /// Zero after the end.
    char charAt(std::size_t distance) const {
        return text_.size() - offset_ > distance ? text_[offset_ + distance] : '\0';
    }
    void vGapSkip();
    void vCommentSkip();
    std::size_t commentEnd();

    std::string_view text_;
    std::size_t offset_ = 0;
    bool startsLine_ = true;
    std::string_view openComment_;
    // From the first comment that nothing closes on, comments no longer nest.
    bool nests_ = true;
    // No comment that begins from here on is closed.
    std::size_t neverClosedFrom_ = std::string_view::npos;
};

} // namespace kiv::kit
