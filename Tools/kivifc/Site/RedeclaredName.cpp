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

const Attribute* pRedeclared(const Attribute& attribute, const Schema& schema) {
    const auto name = attribute.getName();
    const auto begin = name.find('\\');
    const auto point = name.rfind('.');
    if (begin == std::string_view::npos || point == std::string_view::npos || point < begin)
        return nullptr;
    const auto* entity = Entity::pFrom(schema.pObjectFromName(name.substr(begin + 1, point - begin - 1)));
    if (!entity)
        return nullptr;
    const AttributeName own(name.substr(point + 1));
    return entity->pAttributeFromName(own, true);
}

} // namespace kiv::kivifc::site
