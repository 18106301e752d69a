#include "kivifc/Site/ExpressWords.h"

#include "kivifc/Program/AsciiText.h"

#include <algorithm>

namespace kiv::kivifc::site {

namespace {

bool isOfWord(char byte) {
    return ascii::isLetter(byte) || ascii::isDigit(byte) || byte == '_';
}

/// From the first to the one that ends the piece, included; all of the text when there is none.
std::size_t sizeThrough(std::string_view text, std::string_view end, std::size_t from) {
    const auto found = text.find(end, from);
    return found == std::string_view::npos ? text.size() : found + end.size();
}

template <typename IsPart>
std::size_t sizeOf(std::string_view text, const IsPart& isPart) {
    return static_cast<std::size_t>(std::ranges::find_if_not(text, isPart) - text.begin());
}

/// Up to the line end, which may be of two bytes: they are not parted.
std::size_t lineSize(std::string_view text) {
    const auto end = std::min(text.find('\n'), text.size());
    return end < text.size() && text[end - 1] == '\r' ? end - 1 : end;
}

bool isPieceBegin(std::string_view text) {
    return ascii::isLetter(text.front()) || ascii::isDigit(text.front()) || text.front() == '\'' ||
           text.starts_with("(*") || text.starts_with("--");
}

} // namespace

std::string_view literalTypeName(std::string_view text) {
    const auto point = text.find('.');
    if (point == std::string_view::npos)
        return {};
    const auto name = text.substr(point + 1);
    return name.substr(0, name.find('.'));
}

bool ExpressWords::boNext() {
    if (rest_.empty())
        return false;
    const auto size = pieceSize();
    piece_ = rest_.substr(0, size);
    rest_.remove_prefix(size);
    return true;
}

/// Sets the kind too.
std::size_t ExpressWords::pieceSize() {
    const auto first = rest_.front();
    if (ascii::isLetter(first)) {
        kind_ = Kind::Word;
        return sizeOf(rest_, isOfWord);
    }
    if (first == '\'') {
        kind_ = Kind::String;
        return std::min(sizeThrough(rest_, "'", 1), sizeThrough(rest_, "\n", 1));
    }
    if (rest_.starts_with("(*") || rest_.starts_with("--")) {
        kind_ = Kind::Comment;
        return rest_.front() == '(' ? sizeThrough(rest_, "*)", 2) : lineSize(rest_);
    }
    kind_ = Kind::Other;
    // A digit takes the letters with it: the E of an exponent is no name.
    if (ascii::isDigit(first))
        return sizeOf(rest_, isOfWord);
    std::size_t size = 1;
    while (size < rest_.size() && !isPieceBegin(rest_.substr(size)))
        ++size;
    return size;
}

} // namespace kiv::kivifc::site
