#include "kiv/Format/Ifc/Def/IfcDefApplicableClasses.h"

#include "Base/NameHash.h"
#include "Format/Ifc/Def/IfcDefXmlNodes.h"

#include <utility>

namespace kiv::ifc::def::xml {

namespace {

constexpr char PredefinedTypeMark = '/';

} // namespace

ApplicableClasses::ApplicableClasses(std::string&& text, std::size_t line) :
    className_(std::move(text)), line_(line) {
    if (const auto mark = className_.find(PredefinedTypeMark); mark != std::string::npos) {
        predefinedType_ = className_.substr(mark + 1);
        className_.resize(mark);
    }
    classNameHash_ = className_.empty() ? 0 : nameHash(className_);
}

void ApplicableClasses::vExport(kiv::xml::Element& parent) const {
    vTextElementAppend(parent, "ClassName", sCombined());
}

std::string ApplicableClasses::sCombined() const {
    return predefinedType_.empty() ? className_ : className_ + PredefinedTypeMark + predefinedType_;
}

} // namespace kiv::ifc::def::xml
