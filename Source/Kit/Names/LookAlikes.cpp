#include "Kit/Names/LookAlikes.h"

#include "Kit/Text/AsciiText.h"
#include "Kit/Text/Utf8.h"
#include "kiv/Kit/Text/InvisibleCharacters.h"

#include <algorithm>
#include <iterator>

namespace kiv::kit {

namespace {

struct Pair {
    char32_t character;
    char ascii;
};

/// Those of which the common fonts make no difference. Greek letters that stand for quantities are none.
constexpr Pair Letters[] = {
    {0x0391, 'A'}, {0x0392, 'B'}, {0x0395, 'E'}, {0x0396, 'Z'}, {0x0397, 'H'}, {0x0399, 'I'}, {0x039A, 'K'},
    {0x039C, 'M'}, {0x039D, 'N'}, {0x039F, 'O'}, {0x03A1, 'P'}, {0x03A4, 'T'}, {0x03A5, 'Y'}, {0x03A7, 'X'},
    {0x03BF, 'o'}, {0x0405, 'S'}, {0x0406, 'I'}, {0x0408, 'J'}, {0x0410, 'A'}, {0x0412, 'B'}, {0x0415, 'E'},
    {0x041A, 'K'}, {0x041C, 'M'}, {0x041D, 'H'}, {0x041E, 'O'}, {0x0420, 'P'}, {0x0421, 'C'}, {0x0422, 'T'},
    {0x0423, 'Y'}, {0x0425, 'X'}, {0x0430, 'a'}, {0x0435, 'e'}, {0x043E, 'o'}, {0x0440, 'p'}, {0x0441, 'c'},
    {0x0443, 'y'}, {0x0445, 'x'}, {0x0455, 's'}, {0x0456, 'i'}, {0x0458, 'j'}, {0x04AE, 'Y'}, {0x04BB, 'h'},
    {0x04C0, 'I'}, {0x04CF, 'l'}, {0x0501, 'd'}, {0x051A, 'Q'}, {0x051B, 'q'}, {0x051C, 'W'}, {0x051D, 'w'},
};

/// Letters without or with a dot, hyphens and dashes, the minus, blanks that are no space, the division
/// slash.
constexpr Pair Others[] = {{0x00A0, ' '}, {0x0130, 'I'}, {0x0131, 'i'}, {0x2010, '-'}, {0x2011, '-'},
                           {0x2012, '-'}, {0x2013, '-'}, {0x2014, '-'}, {0x202F, ' '}, {0x2044, '/'},
                           {0x2212, '-'}, {0x2215, '/'}, {0x3000, ' '}};

constexpr CharacterRange Greek = {0x0370, 0x03FF};
constexpr CharacterRange Cyrillic = {0x0400, 0x052F};
constexpr CharacterRange Wide = {0xFF01, 0xFF5E};

constexpr bool isIn(char32_t character, const CharacterRange& range) {
    return range.first <= character && character <= range.last;
}

char letterLike(char32_t character) {
    const auto* const found = std::ranges::lower_bound(Letters, character, {}, &Pair::character);
    return found != std::end(Letters) && found->character == character ? found->ascii : '\0';
}

char asciiLike(char32_t character) {
    if (isIn(character, Wide))
        return static_cast<char>(character - Wide.first + '!');
    const auto* const found = std::ranges::find(Others, character, &Pair::character);
    return found == std::end(Others) ? letterLike(character) : found->ascii;
}

/// Goes over the code points of a text.
class Points {
public:
    explicit Points(std::string_view text) : text_(text) {}

    bool boNext() {
        offset_ += point_.size;
        if (offset_ >= text_.size())
            return false;
        before_ = kit::isTag(point_.value) ? before_ : point_.value;
        point_ = kit::codePointAt(text_, offset_);
        ++number_;
        return true;
    }
    char32_t value() const { return point_.value; }
    bool isUnseen() const { return isInvisible(point_.value, before_); }
    std::string_view bytes() const { return text_.substr(offset_, point_.size); }
    LookAlike found(char ascii) const { return {offset_, point_.size, point_.value, ascii, number_}; }

private:
    std::string_view text_;
    std::size_t offset_ = 0;
    CodePointBytes point_{0, 0};
    char32_t before_ = 0;
    std::size_t number_ = 0;
};

/// Of one word, which begins the text.
struct Word {
    std::size_t size = 0;
    std::optional<LookAlike> first;
    bool hasLatin = false;
    /// A letter of these scripts that no letter of Latin looks like.
    bool hasOther = false;

    bool isMixed() const { return first && hasLatin && !hasOther; }
};

Word wordAt(std::string_view text) {
    Word word;
    for (Points points(text); points.boNext();) {
        const auto value = points.value();
        const bool isLatin = value < 0x80 && isLetter(static_cast<char>(value));
        if (value < 0x80 && !isLatin && !isDigit(static_cast<char>(value)))
            return word;
        const auto like = letterLike(value);
        if (like != 0 && !word.first)
            word.first = points.found(like);
        word.hasLatin = word.hasLatin || isLatin;
        word.hasOther = word.hasOther || (like == 0 && (isIn(value, Greek) || isIn(value, Cyrillic)));
        word.size += points.bytes().size();
    }
    return word;
}

} // namespace

std::optional<LookAlike> lookAlikeIn(std::string_view text) {
    if (isAsciiOnly(text))
        return std::nullopt;
    for (Points points(text); points.boNext();) {
        const auto like = asciiLike(points.value());
        if (like != 0 || points.isUnseen())
            return points.found(like);
    }
    return std::nullopt;
}

std::optional<LookAlike> mixedLetterIn(std::string_view text) {
    if (isAsciiOnly(text))
        return std::nullopt;
    for (std::size_t begin = 0; begin < text.size();) {
        auto word = wordAt(text.substr(begin));
        if (word.isMixed()) {
            word.first->offset += begin;
            word.first->number += codePointsIn(text.substr(0, begin));
            return word.first;
        }
        begin += word.size + 1;
    }
    return std::nullopt;
}

std::string sAsciiOf(std::string_view text) {
    if (isAsciiOnly(text))
        return std::string(text);
    std::string ascii;
    for (Points points(text); points.boNext();) {
        const auto like = asciiLike(points.value());
        if (like != 0)
            ascii += like;
        else if (!points.isUnseen())
            ascii += points.bytes();
    }
    return ascii;
}

std::string sWithoutUnseen(std::string_view text) {
    if (isAsciiOnly(text))
        return std::string(text);
    std::string seen;
    for (Points points(text); points.boNext();) {
        if (!points.isUnseen())
            seen += points.bytes();
    }
    return seen;
}

std::string sUnmixed(std::string_view text) {
    if (isAsciiOnly(text))
        return std::string(text);
    std::string unmixed;
    for (std::size_t begin = 0; begin < text.size();) {
        const auto word = wordAt(text.substr(begin));
        const auto whole = text.substr(begin, word.size);
        unmixed += word.isMixed() ? sAsciiOf(whole) : std::string(whole);
        begin += word.size;
        // What ends the word is one byte.
        unmixed += text.substr(std::min(begin, text.size()), 1);
        ++begin;
    }
    return unmixed;
}

std::string sCodeOf(char32_t character) {
    constexpr std::string_view Digits = "0123456789ABCDEF";
    std::string digits;
    for (; character != 0 || digits.size() < 4; character >>= 4U)
        digits.insert(digits.begin(), Digits[character & 0xFU]);
    return "U+" + digits;
}

std::string sKindOf(const LookAlike& found) {
    if (found.ascii == 0)
        return "an invisible character";
    if (found.ascii == ' ')
        return "a blank that is no space";
    const std::string like = std::string(" that looks like \"").append(1, found.ascii).append("\"");
    if (isIn(found.character, Cyrillic))
        return "a letter of Cyrillic" + like;
    return (isIn(found.character, Greek) ? "a letter of Greek" : "a character") + like;
}

std::string sLookAlike(const LookAlike& found) {
    return "character " + std::to_string(found.number) + " is " + sCodeOf(found.character) + ", " +
           sKindOf(found);
}

} // namespace kiv::kit
