#include "kiv/Kit/Names/KnownNames.h"

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"

namespace kiv::kit {

using ifc::def::schema::Entity;

std::vector<std::string_view> entityNames(const ifc::def::schema::Schema& schema) {
    std::vector<std::string_view> names;
    for (const auto* object : schema.getObjectsByName()) {
        if (Entity::pFrom(object))
            names.push_back(object->getName());
    }
    return names;
}

std::vector<std::string_view> setNames(const ifc::def::SchemaPset& schema) {
    std::vector<std::string_view> names;
    schema.forEachDefinition(
        [&](const auto&, const auto& definitions) {
            for (const auto* set : definitions.getXmlSets())
                names.push_back(set->getName());
        },
        {});
    return names;
}

} // namespace kiv::kit
