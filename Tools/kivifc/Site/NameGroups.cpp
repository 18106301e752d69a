#include "kivifc/Site/NameGroups.h"

#include "kivifc/Program/AsciiText.h"

#include <algorithm>
#include <cstddef>
#include <map>

namespace kiv::kivifc::site {

namespace {

bool isUpper(char byte) {
    return byte >= 'A' && byte <= 'Z';
}

/// A letter and the lower-case ones after it, when an upper-case one follows.
std::string_view firstWordOf(std::string_view name) {
    constexpr std::size_t WordMax = 16;
    if (name.empty() || !ascii::isLetter(name.front()))
        return {};
    std::size_t size = 1;
    while (size < name.size() && ascii::isLetter(name[size]) && !isUpper(name[size]))
        ++size;
    const bool goesOn = size < name.size() && isUpper(name[size]);
    return goesOn && size <= WordMax ? name.substr(0, size) : std::string_view();
}

unsigned char foldedByte(char byte) {
    return static_cast<unsigned char>(ascii::getLower(byte));
}

} // namespace

std::string sCommonWord(const std::vector<std::string_view>& names) {
    std::map<std::string_view, std::size_t> counts;
    for (const auto& name : names)
        ++counts[firstWordOf(name)];
    counts.erase(std::string_view());
    const auto most = std::ranges::max_element(counts, {}, [](const auto& entry) { return entry.second; });
    // A single name has no other one to share a word with.
    if (most == counts.end() || most->second < 2 || most->second * 2 < names.size())
        return {};
    return std::string(most->first);
}

std::string sLetterOf(std::string_view name, std::string_view commonWord) {
    if (name.starts_with(commonWord) && name.size() > commonWord.size())
        name.remove_prefix(commonWord.size());
    if (name.empty())
        return "Other";
    const auto first = name.front();
    if (ascii::isLetter(first))
        return {ascii::getUpper(first)};
    return first >= '0' && first <= '9' ? "0-9" : "Other";
}

std::string_view prefixOf(std::string_view name) {
    constexpr std::size_t PrefixMax = 32;
    const auto end = name.find('_');
    return end < PrefixMax ? name.substr(0, end + 1) : std::string_view();
}

bool isBeforeInIndex(std::string_view left, std::string_view right) {
    const auto isBefore = [](std::string_view one, std::string_view other) {
        return std::ranges::lexicographical_compare(one, other, {}, foldedByte, foldedByte);
    };
    return isBefore(left, right) || (!isBefore(right, left) && left < right);
}

} // namespace kiv::kivifc::site
