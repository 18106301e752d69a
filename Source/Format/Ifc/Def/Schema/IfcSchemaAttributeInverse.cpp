#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAttributeInverse.h"

#include "Base/Size32.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/Schema/IfcSchemaBuilder.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"

namespace kiv::ifc::def::schema {

AttributeInverse::AttributeInverse(Entity& entity, ReadLineHelper& line, std::string_view name,
                                   std::string_view typeText, std::string_view forAttribute) :
    AttributeBase(entity, line, name),
    forAttributeSize_(size32(forAttribute.size())),
    forAttributeName_(line.getKept(forAttribute).data()) {
    vTypeTextSet(line.getKept(typeText));
}

void AttributeInverse::vUpdate(Schema& schema) {
    AttributeBase::vUpdate(schema);
    if (referredAttribute_)
        return;
    const auto* aggregate = DataTypeListInterface::pFrom(pFirstType());
    referredEntity_ = Entity::pFrom(aggregate ? aggregate->pElement() : pFirstType());
    if (referredEntity_)
        referredAttribute_ =
            SchemaBuilder::pAttribute(schema, *referredEntity_, AttributeName(getForAttributeName()));
    if (!referredAttribute_)
        SchemaBuilder::vReport(schema, Report::InverseNotFound);
}

} // namespace kiv::ifc::def::schema
