#include "kivifc/MissingName.h"

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kivifc/NameSuggestion.h"

#include <fmt/format.h>

namespace kiv::kivifc {

using ifc::def::schema::Entity;

std::string sNoName(std::string_view kind, std::string_view name,
                    const std::vector<std::string_view>& candidates) {
    const auto closest = sClosestName(name, candidates);
    return fmt::format("no {} \"{}\"{}", kind, name,
                       closest.empty() ? "" : fmt::format("; did you mean \"{}\"?", closest));
}

std::string sNoEntity(const ifc::def::schema::Schema& schema, const std::string& name) {
    if (schema.pObjectFromName(name))
        return fmt::format("\"{}\" is no entity", name);
    return sNoName("entity", name, entityNames(schema));
}

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

} // namespace kiv::kivifc
