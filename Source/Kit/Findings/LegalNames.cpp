#include "Kit/Findings/LegalNames.h"

#include "Kit/Names/LookAlikes.h"
#include "Kit/Text/AsciiText.h"
#include "kiv/Kit/Names/NearestName.h"

#include <algorithm>
#include <cstddef>

namespace kiv::kit {

namespace {

/// Blanks that take more than a byte: no-break space, those of U+2000 to U+200B, narrow no-break space,
/// ideographic space and the mark U+FEFF.
constexpr std::string_view WideBlanks[] = {"\xC2\xA0",     "\xE2\x80\x80", "\xE2\x80\x81", "\xE2\x80\x82",
                                           "\xE2\x80\x83", "\xE2\x80\x84", "\xE2\x80\x85", "\xE2\x80\x86",
                                           "\xE2\x80\x87", "\xE2\x80\x88", "\xE2\x80\x89", "\xE2\x80\x8A",
                                           "\xE2\x80\x8B", "\xE2\x80\xAF", "\xE3\x80\x80", "\xEF\xBB\xBF"};

/// The byte after the first of a wide blank, and the one before its last: letters of most scripts have others
/// there.
constexpr std::string_view SecondBytes = "\xA0\x80\xBB";
constexpr std::string_view LastBytesButOne = "\xC2\x80\xBB";

bool isAmong(char byte, std::string_view bytes) {
    return std::ranges::any_of(bytes, [byte](char one) { return one == byte; });
}

/// How many bytes of a blank the text begins with; 0 when it begins with none.
std::size_t blankAtFront(std::string_view text) {
    if (text.empty() || isAscii(text.front()))
        return !text.empty() && isWhiteSpace(text.front()) ? 1 : 0;
    if (text.size() < 2 || !isAmong(text[1], SecondBytes))
        return 0;
    const auto isThere = [text](std::string_view blank) { return text.starts_with(blank); };
    const auto* const found = std::ranges::find_if(WideBlanks, isThere);
    return found == std::end(WideBlanks) ? 0 : found->size();
}

std::size_t blankAtBack(std::string_view text) {
    if (text.empty() || isAscii(text.back()))
        return !text.empty() && isWhiteSpace(text.back()) ? 1 : 0;
    if (text.size() < 2 || !isAmong(text[text.size() - 2], LastBytesButOne))
        return 0;
    const auto isThere = [text](std::string_view blank) { return text.ends_with(blank); };
    const auto* const found = std::ranges::find_if(WideBlanks, isThere);
    return found == std::end(WideBlanks) ? 0 : found->size();
}

/// Up to a quarter of the letters may be wrong.
std::size_t allowedDistance(std::string_view name) {
    return std::max<std::size_t>(name.size() / 4, name.size() > 2 ? 1 : 0);
}

/// More changes than that make it a guess.
constexpr std::size_t SureChanges = 2;

/// The corrected spelling of a name; empty when there is none, or several would do.
LegalMatch corrected(std::string_view name, std::span<const std::string_view> legal) {
    std::string_view found;
    auto best = allowedDistance(name) + 1;
    for (const auto& match : nearestNames(name, legal, legal.size())) {
        if (match.isPart || match.changes > best)
            continue;
        found = match.changes == best ? std::string_view() : match.name;
        best = match.changes;
    }
    return {found, false, !found.empty() && best <= SureChanges};
}

bool endsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && isEqualIgnoringCase(text.substr(text.size() - end.size()), end);
}

/// Whether the one is the beginning or the end of the other.
bool isPartOf(std::string_view name, std::string_view candidate) {
    constexpr std::size_t ShortestPart = 3;
    constexpr std::size_t ShortestWhole = 4;
    if (name.size() < candidate.size())
        return name.size() >= ShortestPart &&
               (startsWithIgnoringCase(candidate, name) || endsWith(candidate, name));
    if (candidate.size() < ShortestWhole)
        return false;
    // With much after it, the name is that of something else: "NameOfTheOwner".
    return endsWith(name, candidate) ||
           (startsWithIgnoringCase(name, candidate) && name.size() <= 2 * candidate.size());
}

/// The only legal name of which it is a part, or that is a part of it.
LegalMatch partMatch(std::string_view name, std::span<const std::string_view> legal) {
    std::string_view found;
    for (const auto candidate : legal) {
        if (!isPartOf(name, candidate))
            continue;
        if (!found.empty())
            return {};
        found = candidate;
    }
    return {found, false, false};
}

} // namespace

std::string_view trimmedBlanks(std::string_view text) {
    const auto isPlain = [](char byte) { return byte > ' ' && byte <= '~'; };
    if (!text.empty() && isPlain(text.front()) && isPlain(text.back()))
        return text;
    while (const auto size = blankAtFront(text))
        text.remove_prefix(size);
    while (const auto size = blankAtBack(text))
        text.remove_suffix(size);
    return text;
}

LegalMatch legalMatch(std::string_view written, std::span<const std::string_view> legal) {
    // A letter of another script is no other letter case.
    const auto name = sAsciiOf(written);
    for (const auto candidate : legal) {
        if (isEqualIgnoringCase(name, candidate))
            return {candidate, name == written, true};
    }
    const auto spelling = corrected(name, legal);
    if (spelling.isSure)
        return spelling;
    const auto part = partMatch(name, legal);
    return part.name.empty() ? spelling : part;
}

} // namespace kiv::kit
