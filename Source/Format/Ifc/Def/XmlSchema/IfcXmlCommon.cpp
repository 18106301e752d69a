#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlCommon.h"

#include "Format/Ifc/Def/IfcDefXmlNodes.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"

namespace kiv::ifc::def::xmlschema {

ExpAttribute expAttributeFromString(std::string_view text, WorkMeter* meter) {
    if (text == "attribute-tag")
        return ExpAttribute::AttributeTag;
    if (text == "double-tag")
        return ExpAttribute::DoubleTag;
    if (text != "attribute-content")
        xml::vReportTake(meter, Report::ExpAttributeIllegal);
    return ExpAttribute::AttributeContent;
}

} // namespace kiv::ifc::def::xmlschema
