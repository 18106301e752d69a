#include "kivifc/Site/Declarations.h"

#include "kiv/Kit/Positions/ExpressPositions.h"
#include "kivifc/Program/AsciiText.h"

#include <algorithm>
#include <array>
#include <deque>
#include <iterator>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>

namespace kiv::kivifc::site {

namespace {

using ifc::def::schema::ObjectBase;
using kit::ExpressDeclaration;
using kit::ExpressDeclarationKind;

constexpr std::array<std::pair<ExpressDeclarationKind, ObjectBase::Type>, 4> Kinds{
    {{ExpressDeclarationKind::Type, ObjectBase::Type::Type},
     {ExpressDeclarationKind::Entity, ObjectBase::Type::Entity},
     {ExpressDeclarationKind::Function, ObjectBase::Type::Function},
     {ExpressDeclarationKind::Rule, ObjectBase::Type::Rule}}};

constexpr bool isWordByte(char byte) {
    return ascii::isLetter(byte) || (byte >= '0' && byte <= '9') || byte == '_';
}

/// In upper case. The library ends a name at a blank, so that it may have more than the name: "A;".
std::string sWordUpper(std::string_view name) {
    std::string word;
    std::transform(name.begin(), std::ranges::find_if_not(name, isWordByte), std::back_inserter(word),
                   [](char byte) { return ascii::getUpper(byte); });
    return word;
}

/// The declarations of a kind and a name that no object has yet, the next one first.
class Waiting {
public:
    explicit Waiting(std::span<const ExpressDeclaration> declarations) {
        for (const auto& declaration : declarations) {
            // Constants and procedures would be looked through for each object of their name.
            if (std::ranges::find(Kinds, declaration.kind, [](const auto& kinds) { return kinds.first; }) !=
                Kinds.end())
                byName_[sWordUpper(declaration.name.text)].push_back(&declaration);
        }
    }

    /// Null when there is none.
    const ExpressDeclaration* pTake(const ObjectBase& object) {
        const auto found = byName_.find(sWordUpper(object.getName()));
        if (found == byName_.end())
            return nullptr;
        auto& waiting = found->second;
        const auto place = std::ranges::find_if(waiting, [&](const ExpressDeclaration* declaration) {
            return isSameKind(declaration->kind, object.getKind());
        });
        if (place == waiting.end())
            return nullptr;
        const auto* declaration = *place;
        waiting.erase(place);
        return declaration;
    }

private:
    static bool isSameKind(ExpressDeclarationKind declared, ObjectBase::Type kind) {
        return std::ranges::find(Kinds, std::pair(declared, kind)) != Kinds.end();
    }

    std::unordered_map<std::string, std::deque<const ExpressDeclaration*>> byName_;
};

} // namespace

// Objects of a kind and a name have their declarations in the order of the text. What only the text has, such
// as constants and procedures, is passed over, however much of it there is.
Declarations::Declarations(const SchemaFile& file) {
    const auto positions = kit::expressPositions(file.text);
    std::span declarations(positions.declarations);
    if (!positions.schemas.empty())
        declarations = declarations.subspan(positions.schemas.back().firstDeclaration);
    Waiting waiting(declarations);
    for (const auto* object : file.schema->getObjects()) {
        if (const auto* declaration = waiting.pTake(*object))
            found_.emplace(object, Found{declaration->text, declaration->keyword.position.line});
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
