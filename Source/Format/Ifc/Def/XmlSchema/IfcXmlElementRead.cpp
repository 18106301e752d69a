#include "Format/Ifc/Def/XmlSchema/IfcXmlElementRead.h"

#include "Format/Ifc/Def/IfcDefXmlNodes.h"

#include <algorithm>
#include <cstdint>

namespace kiv::ifc::def::xmlschema {

bool boFromText(std::string_view text) {
    return kiv::xml::const_Node::from_string<bool>(text).value_or(false);
}

void vElementRead(const kiv::xml::const_Element& element, const ElementReports& reports,
                  const std::function<bool(std::string_view, std::string_view)>& boAttribute,
                  const std::function<bool(const kiv::xml::const_Element&)>& boChild) {
    const auto attributes = element.AttributesGet();
    for (std::uint64_t index = 0; attributes && index < attributes->LengthGet(); ++index) {
        const auto attribute = kiv::xml::const_Attr::toWrapper(attributes->ItemGet(index));
        if (attribute && !boAttribute(xml::nameOf(*attribute), xml::valueOf(*attribute)))
            xml::vReportTake(reports.meter, reports.unknownAttribute);
    }
    xml::vChildrenOffer(
        element, boChild,
        [&](const kiv::xml::const_Element&) { xml::vReportTake(reports.meter, reports.unknownChild); },
        reports.meter);
}

void vElementRead(const kiv::xml::const_Element& element, const ElementReports& reports,
                  const std::function<bool(std::string_view, std::string_view)>& boAttribute) {
    vElementRead(element, reports, boAttribute, [](const auto&) { return false; });
}

bool boIsOneOf(std::string_view name, std::initializer_list<std::string_view> known) {
    return std::find(known.begin(), known.end(), name) != known.end();
}

} // namespace kiv::ifc::def::xmlschema
