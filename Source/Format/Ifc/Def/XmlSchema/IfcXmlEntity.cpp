#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlEntity.h"

#include "Format/Ifc/Def/IfcDefXmlNodes.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/XmlSchema/IfcXmlElementRead.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/SchemaPset.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlAttribute.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"

#include <string_view>

namespace kiv::ifc::def::xmlschema {

void Entity::vRead(Config& config, SchemaPset& schema, const kiv::xml::const_Element& element) {
    const schema::Entity* entity = nullptr;
    const auto boAttribute = [&](std::string_view name, std::string_view value) {
        if (name != "select")
            return false;
        entity = schema::Entity::pFrom(schema.pObjectFromName(value));
        return true;
    };
    const auto boChild = [&](const kiv::xml::const_Element& child) {
        const auto tag = xml::tagOf(child);
        if (tag != "cnf:attribute" && tag != "cnf:inverse")
            return false;
        if (entity && tag == "cnf:attribute")
            Attribute::vRead(config, schema, *entity, child);
        else if (entity)
            AttributeInverse::vRead(config, schema, *entity, child);
        return true;
    };
    vElementRead(element, {Report::EntityAttributeUnknown, Report::EntityChildUnknown, config.pMeter()},
                 boAttribute, boChild);
}

} // namespace kiv::ifc::def::xmlschema
