#include "Format/Ifc/Def/Schema/IfcSchemaText.h"

#include <algorithm>

namespace kiv::ifc::def::schema {

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
