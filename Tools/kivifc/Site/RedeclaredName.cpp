#include "kivifc/Site/RedeclaredName.h"

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"

namespace kiv::kivifc::site {

using namespace ifc::def::schema;

std::string_view ownNameOf(std::string_view name) {
    const auto point = name.rfind('.');
    return name.find('\\') == std::string_view::npos || point == std::string_view::npos
               ? name
               : name.substr(point + 1);
}

std::string_view qualifierOf(std::string_view name) {
    const auto begin = name.find('\\');
    const auto point = name.rfind('.');
    if (begin == std::string_view::npos || point == std::string_view::npos || point < begin)
        return {};
    return name.substr(begin + 1, point - begin - 1);
}

const Attribute* pRedeclared(const Attribute& attribute, const Schema& schema) {
    const auto qualifier = qualifierOf(attribute.getName());
    const auto* entity = qualifier.empty() ? nullptr : Entity::pFrom(schema.pObjectFromName(qualifier));
    if (!entity)
        return nullptr;
    const ifc::def::schema::AttributeName own(ownNameOf(attribute.getName()));
    return entity->pAttributeFromName(own, true);
}

} // namespace kiv::kivifc::site
