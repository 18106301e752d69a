/// @file
/// EXPRESS text in pieces, for whoever looks for names in it or shows it with its names as links.
///
///     for (ExpressWords words(text); words.boNext();)
///         if (words.getKind() == ExpressWords::Kind::Word)
///             use(words.getText());
///
/// The pieces joined are the text. Comments end with `*)` whatever they contain, as the library reads them.
///
/// Ownership: refers to the text, which must outlive it.
/// Threads:   one thread at a time.
/// Errors:    none: any bytes are pieces of some kind.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kiv::kivifc::site {

/// What 'SCHEMA.NAME' and 'SCHEMA.NAME.ATTRIBUTE' name, without quotes; empty for any other text. It is a
/// part of the text.
std::string_view literalTypeName(std::string_view text);

class ExpressWords {
public:
    enum class Kind : std::uint8_t {
        /// A name or a keyword.
        Word,
        /// With its quotes.
        String,
        Comment,
        /// A number, blanks, or other characters up to the next piece of another kind.
        Other,
    };

    explicit ExpressWords(std::string_view text) : rest_(text) {}

    /// Goes to the next piece; false at the end.
    bool boNext();

    Kind getKind() const { return kind_; }
    /// The piece as written.
    std::string_view getText() const { return piece_; }

private:
    std::size_t pieceSize();

    std::string_view rest_;
    std::string_view piece_;
    Kind kind_ = Kind::Other;
};

} // namespace kiv::kivifc::site
