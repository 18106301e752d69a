#include "Format/Ifc/Def/Schema/IfcSchemaText.h"

#include <algorithm>

namespace kiv::ifc::def::schema {

std::string sUpper(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), toUpper);
    return upper;
}

std::string_view trimmedLeft(std::string_view text, std::string_view bytes) {
    const auto first = text.find_first_not_of(bytes);
    return first == std::string_view::npos ? std::string_view{} : text.substr(first);
}

std::string_view trimmed(std::string_view text, std::string_view bytes) {
    const auto rest = trimmedLeft(text, bytes);
    return rest.substr(0, rest.find_last_not_of(bytes) + 1);
}

UpperCopy::UpperCopy(std::string_view name) {
    if (name.size() > small_.size()) {
        large_ = sUpper(name);
        view_ = large_;
        return;
    }
    std::transform(name.begin(), name.end(), small_.begin(), toUpper);
    view_ = {small_.data(), name.size()};
}

} // namespace kiv::ifc::def::schema
