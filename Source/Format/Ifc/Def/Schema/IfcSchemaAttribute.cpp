#include "Format/Ifc/Def/Schema/IfcSchemaAttribute.h"

#include "Format/Ifc/Def/Schema/IfcSchema.h"
#include "Format/Ifc/Def/Schema/IfcSchemaText.h"

namespace kiv::ifc::def::schema {

AttributeBase::AttributeBase(Entity& entity, std::string&& name) :
    entity_(entity), name_(std::move(name)), nameUpper_(sUpper(name_)), nameHash_(schema::nameHash(name_)) {}

AttributeBase::AttributeBase(Entity& entity, std::string&& name, const std::string& line, std::size_t pos) :
    AttributeBase(entity, std::move(name)) {
    constexpr std::string_view optionalWord = "OPTIONAL";
    std::string_view text = std::string_view(line).substr(pos);
    if (const auto found = text.find(optionalWord); found != std::string_view::npos) {
        optional_ = true;
        text.remove_prefix(found + optionalWord.size());
    }
    text = trimmedLeft(text, BlankAndTab);
    typeText_ = text.substr(0, text.find(';'));
}

void AttributeBase::vUpdate(Schema& schema) {
    if (!resolvedTypes_.empty())
        return;
    if (const auto* named = schema.pObjectFromName(typeText_)) {
        resolvedTypes_.push_back(named);
        return;
    }
    // Each aggregate has resolved its own element when it was built; the chain only follows them.
    const ObjectBase* next = DataTypeBase::pTypeCreateOnSchema(schema, typeText_, true);
    while (next) {
        resolvedTypes_.push_back(next);
        const auto* aggregate = DataTypeListInterface::pFrom(next);
        next = aggregate ? aggregate->pElement() : nullptr;
    }
}

AttributeName::AttributeName(const Attribute& attribute) :
    name_(attribute.getName()), hash_(attribute.getNameHash()) {}

AttributeName::AttributeName(std::string_view name) : name_(name), hash_(nameHash(name)) {}

} // namespace kiv::ifc::def::schema
