#include "kivifc/Pictures/NameSuggestion.h"

#include "kivifc/Program/AsciiText.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace kiv::kivifc {

namespace {

/// Longer names are not compared: the cost grows with the product of both lengths.
constexpr std::size_t LengthMax = 100;

/// The Levenshtein distance, row by row.
std::size_t distance(std::string_view left, std::string_view right) {
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < left.size(); ++i) {
        auto diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < right.size(); ++j) {
            const bool isSame = ascii::getLower(left[i]) == ascii::getLower(right[j]);
            const auto replaced = diagonal + (isSame ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

/// Whether the lengths alone allow the names to be that close.
bool isWorthComparing(std::string_view name, std::string_view candidate, std::size_t limit) {
    const auto [shorter, longer] = std::minmax({name.size(), candidate.size()});
    return longer <= LengthMax && longer - shorter <= limit;
}

} // namespace

std::string sClosestName(std::string_view name, const std::vector<std::string_view>& candidates) {
    std::string_view closest;
    auto limit = name.size() / 3;
    for (const auto candidate : candidates) {
        if (!isWorthComparing(name, candidate, limit))
            continue;
        const auto changes = distance(name, candidate);
        if (changes < limit || (changes == limit && closest.empty())) {
            closest = candidate;
            limit = changes;
        }
    }
    return std::string(closest);
}

} // namespace kiv::kivifc
