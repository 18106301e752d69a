// A schema text: it loads, or throws what the headers allow; every look-up of every name that it holds
// answers that object or one of the same name, and what is linked leads to an end.
#include "FuzzTarget.h"

#include "kiv/Base/Exception.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"
#include "kiv/Format/Ifc/Def/SchemaPset.h"
#include "kiv/Host/Assert/KivAssert.h"

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <string>

namespace {

using namespace kiv::ifc::def;
using kiv::fuzz::vLaw;

/// Null for a text without schema and for one that may not be read.
std::unique_ptr<SchemaPset> pSchemaOf(std::string_view input) {
    std::istringstream stream{std::string(input)};
    try {
        return SchemaPset::pStepStreamRead(stream);
    } catch (const kiv::exception&) {
        return nullptr;
    } catch (const std::out_of_range&) {
        return nullptr;
    }
}

std::string sOtherCase(std::string_view name) {
    std::string text(name);
    for (char& character : text) {
        if (character >= 'a' && character <= 'z')
            character = static_cast<char>(character - 'a' + 'A');
        else if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    }
    return text;
}

template <class Found, class Wanted>
bool boSameName(const Found* found, const Wanted& wanted) {
    return found && found->getNameUpper() == wanted.getNameUpper();
}

void vAttributesFound(const schema::Schema& schema, const schema::Entity& entity) {
    // Of two entities of one name the schema answers for the first.
    const bool isFirst = schema.pObjectFromName(entity.getName()) == &entity;
    for (const auto& attribute : entity.getAttributes()) {
        const std::string name(attribute.getName());
        vLaw(entity.pAttributeFromName(schema::AttributeName(attribute), true) != nullptr,
             "attribute of the entity");
        vLaw(boSameName(entity.pAttributeFromNameUpper(std::string(attribute.getNameUpper()), false),
                        attribute),
             "attribute by its upper-cased name");
        vLaw(!isFirst ||
                 boSameName(schema.pAttributeGet(std::string(entity.getName()), sOtherCase(name)), attribute),
             "attribute by both names");
        const auto all = schema.attributesGet(name);
        vLaw(std::ranges::any_of(all, [&](const auto& found) { return &found.get() == &attribute; }),
             "attribute among those of its name");
    }
    for (const auto& inverse : entity.getAttributesInverse())
        vLaw(boSameName(entity.pAttributeInverseFromName(sOtherCase(inverse.getName()), true), inverse),
             "inverse attribute by its name");
}

void vLinesEnd(const schema::Schema& schema, const schema::Entity& entity) {
    std::size_t steps = 0;
    for (const auto* above = &entity; above; above = above->pSupertype()) {
        vLaw(++steps <= schema.getObjects().size(), "a line of supertypes ends");
        vLaw(entity.isSameOrSubtypeOf(*above), "an entity is what it is a subtype of");
        vLaw(schema::Entity::pCommonBaseGet(entity, *above) == above, "and shares that with it");
    }
}

void vTypesEnd(const schema::Schema& schema, const schema::Type& type) {
    std::size_t steps = 0;
    const schema::ObjectBase* underlying = &type;
    while (const auto* named = schema::Type::pFrom(underlying)) {
        underlying = named->pUnderlying();
        if (++steps > schema.getObjects().size())
            break;
    }
    const bool ends = steps <= schema.getObjects().size();
    vLaw(ends || !type.pDataType(), "a type that is a circle has no data type");
    vLaw(!ends || underlying == type.pDataType(), "a chain of types ends in its data type");
}

} // namespace

void kiv::fuzz::vRun(std::string_view input) {
    kiv::assert::CollectingSink sink;
    const kiv::assert::ScopedSink installed(sink);
    const auto schema = pSchemaOf(input);
    if (!schema)
        return;
    for (const auto* object : schema->getObjects()) {
        vLaw(boSameName(schema->pObjectFromName(object->getName()), *object), "object by its name");
        vLaw(schema->pObjectFromName(sOtherCase(object->getName())) ==
                 schema->pObjectFromName(object->getName()),
             "in any letter case");
        if (const auto* entity = schema::Entity::pFrom(object)) {
            vAttributesFound(*schema, *entity);
            vLinesEnd(*schema, *entity);
        }
        if (const auto* type = schema::Type::pFrom(object))
            vTypesEnd(*schema, *type);
    }
}
