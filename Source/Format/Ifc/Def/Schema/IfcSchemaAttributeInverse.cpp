#include "Format/Ifc/Def/Schema/IfcSchemaAttributeInverse.h"

#include "Format/Ifc/Def/Schema/IfcSchemaAssert.h"
#include "Format/Ifc/Def/Schema/IfcSchemaDataType.h"
#include "Format/Ifc/Def/Schema/IfcSchemaEntity.h"

namespace kiv::ifc::def::schema {

AttributeInverse::AttributeInverse(Entity& entity, std::string&& name, std::string&& typeText,
                                   std::string&& forAttribute) :
    AttributeBase(entity, std::move(name)), forAttributeName_(std::move(forAttribute)) {
    vTypeTextSet(std::move(typeText));
}

void AttributeInverse::vUpdate(Schema& schema) {
    AttributeBase::vUpdate(schema);
    if (referredAttribute_)
        return;
    const auto* aggregate = DataTypeListInterface::pFrom(pFirstType());
    referredEntity_ = Entity::pFrom(aggregate ? aggregate->pElement() : pFirstType());
    if (referredEntity_)
        referredAttribute_ = referredEntity_->pAttributeFromName(AttributeName(forAttributeName_), true);
    if (!referredAttribute_)
        vAssertReport("Entity not found", "kiv::ifc::def::schema::AttributeInverse::vUpdate",
                      "Source/Format/Ifc/Def/Schema/IfcSchemaAttributeInverse", 0);
}

} // namespace kiv::ifc::def::schema
