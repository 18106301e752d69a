#include "kivifc/Site/Declarations.h"

#include "kiv/Kit/Positions/ExpressPositions.h"

#include <array>
#include <span>
#include <utility>

namespace kiv::kivifc::site {

namespace {

using ifc::def::schema::ObjectBase;
using kit::ExpressDeclarationKind;

constexpr std::array<std::pair<ExpressDeclarationKind, ObjectBase::Type>, 4> Kinds{
    {{ExpressDeclarationKind::Type, ObjectBase::Type::Type},
     {ExpressDeclarationKind::Entity, ObjectBase::Type::Entity},
     {ExpressDeclarationKind::Function, ObjectBase::Type::Function},
     {ExpressDeclarationKind::Rule, ObjectBase::Type::Rule}}};

bool isSameKind(ExpressDeclarationKind declared, ObjectBase::Type kind) {
    for (const auto& [each, object] : Kinds) {
        if (each == declared)
            return object == kind;
    }
    return false;
}

/// The library ends a name at a blank, so that it may have more than the name: "A;".
bool isSameName(std::string_view declared, std::string_view name) {
    return kit::isSameExpressWord(declared, name.substr(0, declared.size()));
}

} // namespace

// Both lists are in the order of the text, so that one goes along the other; what only one of them has is
// passed over.
Declarations::Declarations(const SchemaFile& file) {
    const auto positions = kit::expressPositions(file.text);
    std::span declarations(positions.declarations);
    if (!positions.schemas.empty())
        declarations = declarations.subspan(positions.schemas.back().firstDeclaration);
    std::size_t next = 0;
    for (const auto* object : file.schema->getObjects()) {
        auto place = next;
        // Near, as else many objects that are not found would each look through all of the text.
        constexpr std::size_t Looked = 64;
        while (place < declarations.size() && place < next + Looked &&
               !(isSameKind(declarations[place].kind, object->getKind()) &&
                 isSameName(declarations[place].name.text, object->getName())))
            ++place;
        if (place >= declarations.size() || place == next + Looked)
            continue;
        found_.emplace(object, Found{declarations[place].text, declarations[place].keyword.position.line});
        next = place + 1;
    }
}

const Declarations::Found* Declarations::pFound(const ObjectBase& object) const {
    const auto found = found_.find(&object);
    return found == found_.end() ? nullptr : &found->second;
}

std::string_view Declarations::textOf(const ObjectBase& object) const {
    const auto* found = pFound(object);
    return found ? found->text : std::string_view();
}

std::size_t Declarations::lineOf(const ObjectBase& object) const {
    const auto* found = pFound(object);
    return found ? found->line : 0;
}

} // namespace kiv::kivifc::site
