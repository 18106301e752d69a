#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlUosElement.h"

#include "Base/Metered.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/XmlSchema/IfcXmlElementRead.h"

#include <string_view>

namespace kiv::ifc::def::xmlschema {

void UosElement::vInit(const kiv::xml::const_Element& element, WorkMeter* meter) {
    vElementRead(element, {Report::UosElementAttributeUnknown, Report::UosElementChildUnknown, meter},
                 [this, meter](std::string_view name, std::string_view value) {
                     if (name != "name")
                         return false;
                     vTextSet(name_, value, meter);
                     return true;
                 });
}

} // namespace kiv::ifc::def::xmlschema
