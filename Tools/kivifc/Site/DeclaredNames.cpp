#include "kivifc/Site/DeclaredNames.h"

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDerive.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaFunction.h"
#include "kivifc/Program/AsciiText.h"
#include "kivifc/Site/ExpressWords.h"
#include "kivifc/Site/RedeclaredName.h"

namespace kiv::kivifc::site {

using namespace ifc::def::schema;

namespace {

/// The last word of the header: "FUNCTION F (a : Wall; b : Door) : LIST OF Roof;".
std::string_view resultTypeOf(std::string_view text) {
    std::string_view last;
    int depth = 0;
    for (ExpressWords words(text); words.boNext();) {
        if (words.getKind() == ExpressWords::Kind::Word)
            last = words.getText();
        if (words.getKind() != ExpressWords::Kind::Other)
            continue;
        for (const char byte : words.getText()) {
            depth += byte == '(' ? 1 : 0;
            depth -= byte == ')' ? 1 : 0;
            if (byte == ';' && depth <= 0)
                return last;
        }
    }
    return {};
}

} // namespace

DeclaredNames::DeclaredNames(const Schema& schema, const Declarations& declarations) {
    for (const auto* object : schema.getObjects()) {
        if (const auto* entity = Entity::pFrom(object)) {
            vEntityAdd(*entity);
        } else if (const auto* type = Type::pFrom(object)) {
            if (const auto* items = dynamic_cast<const DataTypeEnum*>(type->pUnderlying()))
                vItemsAdd(*type, *items);
        } else if (dynamic_cast<const Function*>(object)) {
            if (const auto result = resultTypeOf(declarations.textOf(*object)); !result.empty())
                results_.emplace(object, schema.pObjectFromName(result));
        }
    }
}

void DeclaredNames::vEntityAdd(const Entity& entity) {
    const auto add = [&](std::string_view name) {
        auto& entities = declaring_[ascii::sUpperCase(ownNameOf(name))];
        if (entities.empty() || entities.back() != &entity)
            entities.push_back(&entity);
    };
    for (const auto& attribute : entity.getAttributes())
        add(attribute.getName());
    for (const auto& inverse : entity.getAttributesInverse())
        add(inverse.getName());
    if (!entity.pDerive())
        return;
    for (const auto& value : entity.pDerive()->getValues())
        add(value.getName());
}

void DeclaredNames::vItemsAdd(const Type& type, const DataTypeEnum& items) {
    auto& known = items_[&type];
    for (const auto item : items.getItems()) {
        const auto upper = ascii::sUpperCase(item);
        if (!known.try_emplace(upper, item).second)
            continue;
        const auto [only, isNew] = onlyItems_.try_emplace(upper, Item{&type, item});
        if (!isNew)
            only->second.type = nullptr;
    }
}

DeclaredNames::Item DeclaredNames::itemOf(const Type& type, const std::string& upper) const {
    const auto known = items_.find(&type);
    if (known == items_.end())
        return {};
    const auto found = known->second.find(upper);
    return found == known->second.end() ? Item() : Item{&type, found->second};
}

DeclaredNames::Item DeclaredNames::onlyItem(const std::string& upper) const {
    const auto found = onlyItems_.find(upper);
    return found == onlyItems_.end() || !found->second.type ? Item() : found->second;
}

const std::vector<const Entity*>& DeclaredNames::declaring(const std::string& upper) const {
    static const std::vector<const Entity*> None;
    const auto found = declaring_.find(upper);
    return found == declaring_.end() ? None : found->second;
}

const ObjectBase* DeclaredNames::pResultOf(const ObjectBase& function) const {
    const auto found = results_.find(&function);
    return found == results_.end() ? nullptr : found->second;
}

} // namespace kiv::kivifc::site
