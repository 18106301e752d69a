#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlNamespace.h"

#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/XmlSchema/IfcXmlElementRead.h"

#include <string_view>

namespace kiv::ifc::def::xmlschema {

void Namespace::vInit(const kiv::xml::const_Element& element) {
    vElementRead(element, {Report::NamespaceAttributeUnknown, Report::NamespaceChildUnknown},
                 [this](std::string_view name, std::string_view value) {
                     if (name == "prefix")
                         prefix_ = value;
                     else if (name == "alias")
                         alias_ = value;
                     else
                         return false;
                     return true;
                 });
}

} // namespace kiv::ifc::def::xmlschema
