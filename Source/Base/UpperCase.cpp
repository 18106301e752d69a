#include "Base/UpperCase.h"

#include "Base/Ascii.h"
#include "Base/Words8.h"

#include <algorithm>

namespace kiv {

namespace {

bool isUpperCased(std::string_view text) {
    const auto isUpper = [](std::uint64_t bytes) { return getUpper8(bytes) == bytes; };
    if (text.size() < LongText)
        return isUpper(getShortText(text));
    return boEach8(text.size(), [&](std::size_t pos) { return isUpper(getBytes8(text.data() + pos)); });
}

} // namespace

std::string_view upperIn(Arena& arena, std::string_view text) {
    if (isUpperCased(text))
        return text;
    auto* const upper = arena.pAllocateText(text.size());
    if (text.size() < LongText)
        std::transform(text.begin(), text.end(), upper, ascii::getUpper);
    else
        boEach8(text.size(), [&](std::size_t pos) {
            const auto bytes = getUpper8(getBytes8(text.data() + pos));
            std::memcpy(upper + pos, &bytes, sizeof(bytes));
            return true;
        });
    return {upper, text.size()};
}

std::string sUpper(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), ascii::getUpper);
    return upper;
}

} // namespace kiv
