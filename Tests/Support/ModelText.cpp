#include "Support/ModelText.h"

#include "Support/ExpressionText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaFunction.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"

#include <cstdint>
#include <ostream>
#include <sstream>

namespace kiv::test {

namespace {

using namespace ifc::def::schema;

std::ostream& operator<<(std::ostream& out, const ObjectBase* object) {
    return object ? out << object->getName() << '#' << static_cast<std::uint32_t>(object->getKind())
                  : out << "null";
}

void vBoundWrite(std::ostream& out, const Bound& bound) {
    out << static_cast<std::uint32_t>(bound.state) << '/' << bound.value << ' ';
}

void vDataTypeWrite(std::ostream& out, const DataTypeBase& type) {
    out << "  data type " << type.getName() << ' ' << static_cast<std::uint32_t>(type.getDataTypeKind())
        << ' ';
    if (const auto* list = DataTypeListInterface::pFrom(&type)) {
        vBoundWrite(out, list->getLowerBound());
        vBoundWrite(out, list->getUpperBound());
        out << list->getElementText() << " -> " << list->pElement();
    }
    if (const auto* list = dynamic_cast<const DataTypeList*>(&type))
        out << (list->isUnique() ? " unique" : "");
    if (const auto* string = dynamic_cast<const DataTypeString*>(&type))
        out << string->getWidth() << (string->isFixed() ? " fixed" : "");
    if (const auto* binary = dynamic_cast<const DataTypeBinary*>(&type))
        out << binary->getWidth();
    if (const auto* enumeration = dynamic_cast<const DataTypeEnum*>(&type))
        for (const auto& item : enumeration->getItems())
            out << item << ';';
    if (const auto* select = dynamic_cast<const DataTypeSelect*>(&type)) {
        for (const auto& name : select->getMemberNames())
            out << name << ';';
        for (const auto* member : select->getMembers())
            out << " -> " << member;
        out << (select->isAllEntities() ? " all entities" : "");
    }
    out << '\n';
}

void vAttributeWrite(std::ostream& out, const AttributeBase& attribute) {
    out << "  attribute " << attribute.getName() << (attribute.isOptional() ? " optional " : " ")
        << attribute.getTypeText();
    for (const auto* type : attribute.getResolvedTypes())
        out << " -> " << type;
    out << '\n';
    if (const auto* type = DataTypeBase::pFrom(attribute.pFirstType()))
        vDataTypeWrite(out, *type);
}

void vWhereWrite(std::ostream& out, const Where* where) {
    if (!where)
        return;
    out << "  where\n" << where->getText();
    for (const auto& rule : where->getRules())
        out << "  rule " << rule.label.getView() << ": " << sExpressionText(*rule.expression) << '\n';
}

void vTypeWrite(std::ostream& out, const Type& type) {
    out << "  = " << type.getUnderlyingText() << '|' << type.getUnderlyingKeyword() << " -> "
        << type.pUnderlying() << " -> " << type.pDataType() << '\n';
    for (const auto* derived : type.getDerivedTypes())
        out << "  derived " << derived << '\n';
    if (type.pDataType())
        vDataTypeWrite(out, *type.pDataType());
    vWhereWrite(out, type.pWhere());
}

void vClausesWrite(std::ostream& out, const Entity& entity) {
    for (const auto& inverse : entity.getAttributesInverse()) {
        vAttributeWrite(out, inverse);
        out << "    for " << inverse.getForAttributeName() << " -> " << inverse.pReferredEntity() << " -> "
            << (inverse.pReferredAttribute() ? inverse.pReferredAttribute()->getName() : "null") << '\n';
    }
    if (const auto* unique = entity.pUnique())
        for (const auto& rule : unique->getRules()) {
            out << "  unique " << rule.label << " :";
            for (const auto& name : rule.attributeNames)
                out << ' ' << name << ';';
            out << '\n';
        }
    if (const auto* derive = entity.pDerive())
        for (const auto& value : derive->getValues())
            out << "  derive " << value.getName() << " : " << value.getRest() << " -> "
                << (value.pRedeclared() ? value.pRedeclared()->getName() : "null") << '\n';
    vWhereWrite(out, entity.pWhere());
}

void vEntityWrite(std::ostream& out, const Entity& entity) {
    out << "  of " << entity.getSupertypeName() << " -> " << entity.pSupertype()
        << (entity.isAbstract() ? " abstract " : " ") << entity.getFirstNumber() << ".."
        << entity.getLastNumber() << '\n';
    for (const auto& name : entity.getSupertypeOfNames())
        out << "  over " << name << '\n';
    for (const auto* subtype : entity.getSubtypes())
        out << "  subtype " << subtype << '\n';
    for (const auto& attribute : entity.getAttributes())
        vAttributeWrite(out, attribute);
    vClausesWrite(out, entity);
}

template <typename Statement>
void vBodyWrite(std::ostream& out, const Statement& statement) {
    for (const auto line : statement.getBodyLines())
        out << "  body " << line << '\n';
}

void vObjectWrite(std::ostream& out, const ObjectBase& object) {
    out << &object << ' ' << object.getNameUpper() << '\n';
    if (const auto* type = Type::pFrom(&object))
        vTypeWrite(out, *type);
    if (const auto* entity = Entity::pFrom(&object))
        vEntityWrite(out, *entity);
    if (const auto* function = dynamic_cast<const Function*>(&object))
        vBodyWrite(out, *function);
    if (const auto* rule = dynamic_cast<const Rule*>(&object))
        vBodyWrite(out, *rule);
}

} // namespace

std::string sModelText(const Schema& schema) {
    std::ostringstream out;
    out << "schema " << schema.getName() << '\n';
    for (const auto* object : schema.getObjects())
        vObjectWrite(out, *object);
    for (const auto& type : schema.getDataTypes())
        vDataTypeWrite(out, *type);
    return out.str();
}

} // namespace kiv::test
