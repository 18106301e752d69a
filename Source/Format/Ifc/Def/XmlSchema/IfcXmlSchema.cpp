#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlSchema.h"

#include "Base/Metered.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/XmlSchema/IfcXmlElementRead.h"

#include <string_view>

namespace kiv::ifc::def::xmlschema {

void Schema::vInit(const kiv::xml::const_Element& element, WorkMeter* meter) {
    const auto boAttribute = [this, meter](std::string_view name, std::string_view value) {
        if (name != "targetNamespace")
            return boIsOneOf(name, {"elementFormDefault", "attributeFormDefault", "embed-schema-items"});
        vTextSet(targetNamespace_, value, meter);
        return true;
    };
    const auto boChild = [&](const kiv::xml::const_Element& child) {
        if (!child.boNodeNameIs("cnf:namespace"))
            return false;
        namespace_ = Namespace();
        namespace_.vInit(child, meter);
        return true;
    };
    vElementRead(element, {Report::SchemaAttributeUnknown, Report::SchemaChildUnknown, meter}, boAttribute,
                 boChild);
}

} // namespace kiv::ifc::def::xmlschema
