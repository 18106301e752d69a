#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAttribute.h"

#include "Base/Arena.h"
#include "Base/Ascii.h"
#include "Base/NameHash.h"
#include "Base/Size32.h"
#include "Base/UpperCase.h"
#include "Base/Words8.h"
#include "Format/Ifc/Def/Schema/IfcSchemaBuilder.h"
#include "Format/Ifc/Def/Schema/IfcSchemaKeyword.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"

namespace kiv::ifc::def::schema {

namespace {

/// What the elements of an aggregate are; null for everything else.
const ObjectBase* pElementOf(const ObjectBase* type) {
    const auto* const aggregate = DataTypeListInterface::pFrom(type);
    return aggregate ? aggregate->pElement() : nullptr;
}

} // namespace

AttributeBase::AttributeBase(Entity& entity, ReadLineHelper& line, std::string_view name) :
    entity_(entity), name_(line.getKept(name).data()), nameSize_(size32(name.size())) {
    nameEnd_ = AttributeName(getName()).shortEnd_;
    nameUpper_ = upperIn(line.getArena(), getName()).data();
}

AttributeBase::AttributeBase(Entity& entity, ReadLineHelper& line, std::string_view name,
                             std::string_view rest) :
    AttributeBase(entity, line, name) {
    constexpr Keyword optionalWord("OPTIONAL", 1);
    if (const auto found = optionalWord.findIn(rest); found != std::string_view::npos) {
        optional_ = true;
        rest.remove_prefix(found + optionalWord.size());
    }
    rest = ascii::trimmedLeft(rest, BlankAndTab);
    vTypeTextSet(line.getKept(rest.substr(0, rest.find(';'))));
}

void AttributeBase::vTypeTextSet(std::string_view text) {
    typeText_ = text.data();
    typeTextSize_ = size32(text.size());
}

void AttributeBase::vUpdate(Schema& schema) {
    if (typesCount_ != 0)
        return;
    const ObjectBase* first = schema.pObjectFromName(getTypeText());
    if (!first)
        first = DataTypeBase::pTypeCreateOnSchema(schema, getTypeText(), true);
    // Each aggregate has resolved its own element when it was built; the chain only follows them.
    std::size_t count = 0;
    for (const auto* type = first; type; type = pElementOf(type))
        ++count;
    if (count < 2) {
        type_ = first;
        typesCount_ = static_cast<std::uint16_t>(count);
        return;
    }
    auto** types = SchemaBuilder::arenaOf(schema).pMakeArray<const ObjectBase*>(count);
    types_ = types;
    typesCount_ = static_cast<std::uint16_t>(count);
    for (const auto* type = first; type; type = pElementOf(type))
        *types++ = type;
}

std::uint32_t AttributeBase::getNameHash() const {
    return nameHash(getName());
}

AttributeName::AttributeName(std::string_view name) :
    name_(name),
    nameEnd_(getLastBytes8(name)),
    shortEnd_(static_cast<std::uint32_t>(nameEnd_ ^ nameEnd_ >> 32)) {}

bool AttributeName::isSameName(const AttributeBase& attribute) const {
    return isSameText(attribute.getName(), name_);
}

std::uint32_t AttributeName::getHash() const {
    return nameHash(name_);
}

} // namespace kiv::ifc::def::schema
