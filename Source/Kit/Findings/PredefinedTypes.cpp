#include "Kit/Findings/PredefinedTypes.h"

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"

#include <vector>

namespace kiv::kit {

namespace schema = ifc::def::schema;

const schema::Attribute* PredefinedTypes::pAttribute(const schema::Entity& entity) {
    const schema::Attribute* found = nullptr;
    std::vector<const schema::Entity*> asked;
    for (const auto* above = &entity; above && !found; above = above->pSupertype()) {
        if (const auto known = known_.find(above); known != known_.end()) {
            found = known->second;
            break;
        }
        asked.push_back(above);
        found = above->pAttributeFromNameUpper("PREDEFINEDTYPE", false);
    }
    for (const auto* one : asked)
        known_.emplace(one, found);
    return found;
}

const schema::DataTypeEnum* PredefinedTypes::pItems(const schema::Entity& entity) {
    const auto* attribute = pAttribute(entity);
    const auto* type = attribute ? schema::Type::pFrom(attribute->pFirstType()) : nullptr;
    return type ? dynamic_cast<const schema::DataTypeEnum*>(type->pDataType()) : nullptr;
}

} // namespace kiv::kit
