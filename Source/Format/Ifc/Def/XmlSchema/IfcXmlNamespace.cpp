#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlNamespace.h"

#include "Base/Metered.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/XmlSchema/IfcXmlElementRead.h"

#include <string_view>

namespace kiv::ifc::def::xmlschema {

void Namespace::vInit(const kiv::xml::const_Element& element, WorkMeter* meter) {
    vElementRead(element, {Report::NamespaceAttributeUnknown, Report::NamespaceChildUnknown, meter},
                 [this, meter](std::string_view name, std::string_view value) {
                     if (name == "prefix")
                         vTextSet(prefix_, value, meter);
                     else if (name == "alias")
                         vTextSet(alias_, value, meter);
                     else
                         return false;
                     return true;
                 });
}

} // namespace kiv::ifc::def::xmlschema
