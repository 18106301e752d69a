#include "Kit/Names/MisspeltKeyword.h"

#include "kiv/Kit/Names/NearestName.h"

#include <algorithm>
#include <cstddef>

namespace kiv::kit {

std::string_view misspeltKeyword(std::string_view word, std::span<const std::string_view> keywords) {
    constexpr std::size_t MaxChanges = 2;
    const auto isCapital = [](char letter) { return (letter >= 'A' && letter <= 'Z') || letter == '_'; };
    if (!std::ranges::all_of(word, isCapital))
        return {};
    const auto meant = nearestName(word, keywords);
    const bool isNear = meant && !meant->isPart && meant->changes > 0 && meant->changes <= MaxChanges;
    return isNear ? meant->name : std::string_view();
}

} // namespace kiv::kit
