#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlType.h"

#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/XmlSchema/IfcXmlElementRead.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"

#include <string_view>

namespace kiv::ifc::def::xmlschema {

void Type::vRead(Config& config, SchemaPset&, const kiv::xml::const_Element& element) {
    vElementRead(element, {Report::TypeAttributeUnknown, Report::TypeChildUnknown, config.pMeter()},
                 [](std::string_view name, std::string_view) {
                     return boIsOneOf(name, {"select", "map", "keep"});
                 });
}

} // namespace kiv::ifc::def::xmlschema
