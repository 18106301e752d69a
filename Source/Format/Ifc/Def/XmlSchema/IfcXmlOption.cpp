#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlOption.h"

#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/XmlSchema/IfcXmlElementRead.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlCommon.h"

#include <string_view>

namespace kiv::ifc::def::xmlschema {

void Option::vInit(const kiv::xml::const_Element& element, WorkMeter* meter) {
    vElementRead(element, {Report::OptionAttributeUnknown, Report::OptionChildUnknown, meter},
                 [this, meter](std::string_view name, std::string_view value) {
                     if (name == "concrete-attribute")
                         concreteAttribute_ = expAttributeFromString(value, meter);
                     else if (name == "entity-attribute")
                         entityAttribute_ = expAttributeFromString(value, meter);
                     else
                         return boIsOneOf(name, {"inheritance", "exp-type", "tagless", "naming-convention",
                                                 "generate-key"});
                     return true;
                 });
}

} // namespace kiv::ifc::def::xmlschema
