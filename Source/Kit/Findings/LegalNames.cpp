#include "Kit/Findings/LegalNames.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>

namespace kiv::kit {

namespace {

/// No legal name is longer, so that comparing takes a limited time.
constexpr std::size_t longestName = 64;

/// Blanks that take more than a byte: no-break space, those of U+2000 to U+200B, narrow no-break space,
/// ideographic space and the mark U+FEFF.
constexpr std::string_view WideBlanks[] = {"\xC2\xA0",     "\xE2\x80\x80", "\xE2\x80\x81", "\xE2\x80\x82",
                                           "\xE2\x80\x83", "\xE2\x80\x84", "\xE2\x80\x85", "\xE2\x80\x86",
                                           "\xE2\x80\x87", "\xE2\x80\x88", "\xE2\x80\x89", "\xE2\x80\x8A",
                                           "\xE2\x80\x8B", "\xE2\x80\xAF", "\xE3\x80\x80", "\xEF\xBB\xBF"};
constexpr std::string_view NarrowBlanks = " \t\r\n";

char lowerCase(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// How many bytes of a blank the text begins with; 0 when it begins with none.
std::size_t blankAtFront(std::string_view text) {
    if (!text.empty() && NarrowBlanks.find(text.front()) != std::string_view::npos)
        return 1;
    const auto isThere = [text](std::string_view blank) { return text.starts_with(blank); };
    const auto* const found = std::ranges::find_if(WideBlanks, isThere);
    return found == std::end(WideBlanks) ? 0 : found->size();
}

std::size_t blankAtBack(std::string_view text) {
    if (!text.empty() && NarrowBlanks.find(text.back()) != std::string_view::npos)
        return 1;
    const auto isThere = [text](std::string_view blank) { return text.ends_with(blank); };
    const auto* const found = std::ranges::find_if(WideBlanks, isThere);
    return found == std::end(WideBlanks) ? 0 : found->size();
}

using Row = std::array<std::size_t, longestName + 1>;

/// The least number of letters to insert, leave out, replace or swap with their neighbour.
std::size_t distance(std::string_view left, std::string_view right) {
    Row before{};
    Row last{};
    Row current{};
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= left.size(); ++i) {
        current[0] = i;
        for (std::size_t j = 1; j <= right.size(); ++j) {
            const bool isSame = lowerCase(left[i - 1]) == lowerCase(right[j - 1]);
            current[j] = std::min({last[j] + 1, current[j - 1] + 1, last[j - 1] + (isSame ? 0 : 1)});
            const bool isSwapped = i > 1 && j > 1 && lowerCase(left[i - 1]) == lowerCase(right[j - 2]) &&
                                   lowerCase(left[i - 2]) == lowerCase(right[j - 1]);
            if (isSwapped)
                current[j] = std::min(current[j], before[j - 2] + 1);
        }
        before = last;
        last = current;
    }
    return last[right.size()];
}

/// Up to a quarter of the letters may be wrong.
std::size_t allowedDistance(std::string_view name) {
    return std::max<std::size_t>(name.size() / 4, name.size() > 2 ? 1 : 0);
}

std::string_view nearest(std::string_view name, std::span<const std::string_view> legal) {
    std::size_t best = allowedDistance(name) + 1;
    std::string_view found;
    for (const auto candidate : legal) {
        if (candidate.size() > longestName || candidate.size() > name.size() + best ||
            name.size() > candidate.size() + best)
            continue;
        const auto changes = distance(name, candidate);
        if (changes < best) {
            best = changes;
            found = candidate;
        } else if (changes == best) {
            found = {};
        }
    }
    return found;
}

} // namespace

bool isEqualIgnoringCase(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right, {}, lowerCase, lowerCase);
}

std::string_view trimmedBlanks(std::string_view text) {
    while (const auto size = blankAtFront(text))
        text.remove_prefix(size);
    while (const auto size = blankAtBack(text))
        text.remove_suffix(size);
    return text;
}

LegalMatch legalMatch(std::string_view name, std::span<const std::string_view> legal) {
    for (const auto candidate : legal) {
        if (isEqualIgnoringCase(name, candidate))
            return {candidate, true};
    }
    if (name.size() > longestName)
        return {};
    return {nearest(name, legal), false};
}

} // namespace kiv::kit
