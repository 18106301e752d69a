#include "Kit/Positions/IgnoreText.h"

#include "Kit/Text/AsciiText.h"
#include "kiv/Kit/Names/NearestName.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace kiv::kit {

namespace {

constexpr std::string_view Program = "kivifc";
constexpr std::string_view Ignore = "ignore";

/// The codes of a comment that is written as it should be.
std::optional<std::string_view> rightCodes(std::string_view comment) {
    for (const auto word : {std::string_view("kivifc:"), Ignore}) {
        comment = trimmed(comment);
        if (!comment.starts_with(word))
            return std::nullopt;
        comment.remove_prefix(word.size());
    }
    if (!comment.empty() && !isWhiteSpace(comment.front()))
        return std::nullopt;
    return trimmed(comment);
}

/// The letters that the text begins with.
std::string_view lettersAt(std::string_view text) {
    const auto* const end = std::ranges::find_if_not(text, isLetter);
    return {text.data(), static_cast<std::size_t>(end - text.begin())};
}

/// Without those of the characters that it begins with.
std::string_view after(std::string_view text, std::string_view characters) {
    return text.substr(std::min(text.find_first_not_of(characters), text.size()));
}

bool isNear(std::string_view word, std::string_view right) {
    const std::array candidates{right};
    const auto match = nearestName(word, candidates);
    return match && !match->isPart && match->changes <= 2;
}

/// What other programs have in the place of "ignore".
bool isVerb(std::string_view word) {
    constexpr std::string_view Others[] = {"disable", "hide", "nolint", "noqa", "skip", "suppress"};
    return isNear(word, Ignore) || std::ranges::find(Others, sLowerCase(word)) != std::end(Others);
}

/// "T001", "t12" and "TOO1": letters alone may be a family or a word.
bool isCode(std::string_view word) {
    constexpr std::size_t longest = 5;
    const auto isLikeDigit = [](char letter) {
        return isDigit(letter) || std::string_view("OoIl").find(letter) != std::string_view::npos;
    };
    return word.size() > 1 && word.size() <= longest && isLetter(word.front()) &&
           std::ranges::all_of(word.substr(1), isLikeDigit) && std::ranges::any_of(word, isDigit);
}

bool isFamily(std::string_view word) {
    return word.size() == 1 && 'A' <= word.front() && word.front() <= 'Z';
}

enum class CommentWords : std::uint8_t { None, AllCodes, CodeFirst, Other };

/// What the text consists of.
CommentWords wordsOf(std::string_view text) {
    constexpr std::string_view Separators = ",;. \t\r\n";
    const auto begin = after(text, Separators);
    const auto first = begin.substr(0, begin.find_first_of(Separators));
    auto words = CommentWords::None;
    for (auto rest = begin; !rest.empty(); rest = after(rest, Separators)) {
        const auto word = rest.substr(0, rest.find_first_of(Separators));
        rest.remove_prefix(word.size());
        const bool isFirst = words == CommentWords::None;
        if (isFirst && (isCode(word) || isFamily(word)))
            words = CommentWords::AllCodes;
        else if (isFirst || (!isCode(first) && !isCode(word) && !isFamily(word)))
            return CommentWords::Other;
        else if (!isCode(word) && !isFamily(word))
            words = CommentWords::CodeFirst;
    }
    return words;
}

/// A comment as far as it begins like one that ignores something.
struct Beginning {
    bool hasColon = false;
    bool hasVerb = false;
    /// "ignored" and "ignores" are words of sentences, unless codes come after them.
    bool isOrder = false;
    /// What comes after that.
    std::string_view rest;
};

std::optional<Beginning> beginningOf(std::string_view comment) {
    constexpr std::string_view Separators = " \t\r\n:=-_.";
    const auto program = lettersAt(comment);
    if (!isNear(program, Program))
        return std::nullopt;
    const auto rest = after(comment.substr(program.size()), Separators);
    const auto between = comment.substr(program.size(), comment.size() - program.size() - rest.size());
    Beginning beginning{between.find(':') != std::string_view::npos, false, false, rest};
    const auto verb = lettersAt(rest);
    if (!isVerb(verb))
        return beginning;
    beginning.hasVerb = true;
    beginning.isOrder = !startsWithIgnoringCase(verb, Ignore) || verb.size() == Ignore.size();
    beginning.rest = rest.substr(verb.size());
    // "ignore-next", "ignore: T001"
    if (beginning.rest.starts_with('-'))
        beginning.rest.remove_prefix(
            std::min(beginning.rest.find_first_of(" \t\r\n:=,"), beginning.rest.size()));
    beginning.rest = after(beginning.rest, " \t\r\n:=,");
    return beginning;
}

bool isMeant(const Beginning& beginning) {
    switch (wordsOf(beginning.rest)) {
    case CommentWords::None:
        return beginning.hasVerb && beginning.isOrder;
    case CommentWords::AllCodes:
        return beginning.hasVerb || beginning.hasColon;
    case CommentWords::CodeFirst:
        return beginning.hasVerb && beginning.hasColon;
    case CommentWords::Other:
        break;
    }
    return false;
}

} // namespace

std::optional<IgnoreText> ignoreTextOf(std::string_view comment) {
    if (const auto codes = rightCodes(comment))
        return IgnoreText{*codes};
    comment = trimmed(comment);
    const auto beginning = beginningOf(comment);
    if (!beginning || !isMeant(*beginning))
        return std::nullopt;
    const auto size = static_cast<std::size_t>(beginning->rest.data() - comment.data());
    return IgnoreText{beginning->rest, trimmed(comment.substr(0, size))};
}

} // namespace kiv::kit
