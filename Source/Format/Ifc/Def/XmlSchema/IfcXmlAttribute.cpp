#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlAttribute.h"

#include "Format/Ifc/Def/IfcDefXmlNodes.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/XmlSchema/IfcXmlElementRead.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAttribute.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAttributeInverse.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlCommon.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"

#include <optional>
#include <string>
#include <string_view>

namespace kiv::ifc::def::xmlschema {

namespace {

/// The name that the element is about; absent, and reported, when it has none.
std::optional<std::string> selectOf(const kiv::xml::const_Element& element, Report report, WorkMeter* meter) {
    if (const auto select = element.AttributeNodeGet("select"))
        return select->getValue();
    xml::vReportTake(meter, report);
    return std::nullopt;
}

} // namespace

Attribute::Attribute(const kiv::xml::const_Element& element, WorkMeter* meter) {
    vElementRead(element, {Report::AttributeAttributeUnknown, Report::AttributeChildUnknown, meter},
                 [this, meter](std::string_view name, std::string_view value) {
                     if (name == "exp-attribute")
                         representation_ = expAttributeFromString(value, meter);
                     else if (name == "tagless")
                         tagless_ = boFromText(value);
                     else if (name == "keep")
                         keep_ = boFromText(value);
                     else
                         return name == "select";
                     return true;
                 });
}

void Attribute::vRead(Config& config, SchemaPset&, const schema::Entity& entity,
                      const kiv::xml::const_Element& element) {
    const auto select = selectOf(element, Report::AttributeSelectNotGiven, config.pMeter());
    if (!select)
        return;
    const auto* const attribute = config.pAttributeFind(entity, *select);
    if (!attribute) {
        xml::vReportTake(config.pMeter(), Report::AttributeNotFound);
        return;
    }
    config.vLink(*attribute, *config.pAttribute(Attribute(element, config.pMeter())));
}

AttributeInverse::AttributeInverse(const kiv::xml::const_Element& element, WorkMeter* meter) {
    vElementRead(element, {Report::InverseAttributeUnknown, Report::InverseChildUnknown, meter},
                 [this, meter](std::string_view name, std::string_view value) {
                     if (name != "exp-attribute")
                         return name == "select";
                     representation_ = expAttributeFromString(value, meter);
                     return true;
                 });
}

void AttributeInverse::vRead(Config& config, SchemaPset&, const schema::Entity& entity,
                             const kiv::xml::const_Element& element) {
    const auto select = selectOf(element, Report::InverseSelectNotGiven, config.pMeter());
    if (!select)
        return;
    const auto* const attribute = config.pAttributeInverseFind(entity, *select);
    if (!attribute) {
        xml::vReportTake(config.pMeter(), Report::InverseSelectNotFound);
        return;
    }
    config.vLink(*attribute, *config.pAttributeInverse(AttributeInverse(element, config.pMeter())));
}

} // namespace kiv::ifc::def::xmlschema
