#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlUosElement.h"

#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/XmlSchema/IfcXmlElementRead.h"

#include <string_view>

namespace kiv::ifc::def::xmlschema {

void UosElement::vInit(const kiv::xml::const_Element& element) {
    vElementRead(element, {Report::UosElementAttributeUnknown, Report::UosElementChildUnknown},
                 [this](std::string_view name, std::string_view value) {
                     if (name != "name")
                         return false;
                     name_ = value;
                     return true;
                 });
}

} // namespace kiv::ifc::def::xmlschema
