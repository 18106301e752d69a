#include "Format/Ifc/Def/Schema/IfcSchemaText.h"

#include <algorithm>

namespace kiv::ifc::def::schema {

namespace {

bool isUpperCased(std::string_view text) {
    const auto last = lastBytes8(text);
    for (std::size_t pos = 0;; pos = std::min(pos + sizeof(std::uint64_t), last)) {
        const auto bytes = getBytes8(text, pos);
        if (getUpper8(bytes) != bytes)
            return false;
        if (pos == last)
            return true;
    }
}

} // namespace

std::string_view upperIn(Arena& arena, std::string_view text) {
    if (isUpperCased(text))
        return text;
    auto* const upper = static_cast<char*>(arena.pAllocateFor<char>(text.size()));
    const auto last = lastBytes8(text);
    if (text.size() < sizeof(std::uint64_t)) {
        std::transform(text.begin(), text.end(), upper, ascii::getUpper);
        return {upper, text.size()};
    }
    for (std::size_t pos = 0;; pos = std::min(pos + sizeof(std::uint64_t), last)) {
        const auto bytes = getUpper8(getBytes8(text, pos));
        std::memcpy(upper + pos, &bytes, sizeof(bytes));
        if (pos == last)
            return {upper, text.size()};
    }
}

std::string sUpper(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), ascii::getUpper);
    return upper;
}

UpperCopy::UpperCopy(std::string_view name) {
    if (name.size() > small_.size()) {
        large_ = sUpper(name);
        view_ = large_;
        return;
    }
    std::transform(name.begin(), name.end(), small_.begin(), ascii::getUpper);
    view_ = {small_.data(), name.size()};
}

} // namespace kiv::ifc::def::schema
