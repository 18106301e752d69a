#include "kivifc/Site/Declarations.h"

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"
#include "kivifc/Program/AsciiText.h"
#include "kivifc/Site/DistinctRules.h"
#include "kivifc/Site/RedeclaredName.h"

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

/// From the type to the end of the expression. Both are views of one text.
std::string_view statementOf(const kit::ExpressMember& member) {
    const auto* end = member.expression.data() + member.expression.size();
    return {member.type.data(), static_cast<std::size_t>(end - member.type.data())};
}

/// Null for an object that has none.
const ifc::def::schema::Where* pWhere(const ObjectBase& object) {
    if (const auto* entity = ifc::def::schema::Entity::pFrom(&object))
        return entity->pWhere();
    const auto* type = ifc::def::schema::Type::pFrom(&object);
    return type ? type->pWhere() : nullptr;
}

} // namespace

// Objects of a kind and a name have their declarations in the order of the text. What only the text has, such
// as constants and procedures, is passed over, however much of it there is.
Declarations::Declarations(const SchemaFile& file) : positions_(kit::expressPositions(file.text)) {
    std::span<const ExpressDeclaration> declarations(positions_.declarations);
    if (!positions_.schemas.empty())
        declarations = declarations.subspan(positions_.schemas.back().firstDeclaration);
    Waiting waiting(declarations);
    for (const auto* object : file.schema->getObjects()) {
        const auto* declaration = waiting.pTake(*object);
        if (!declaration)
            continue;
        found_.emplace(object, declaration);
        vDerivedFind(*object, *declaration);
        vUnreadFind(*object, *declaration);
    }
}

void Declarations::vDerivedFind(const ObjectBase& object, const ExpressDeclaration& declaration) {
    const auto* entity = ifc::def::schema::Entity::pFrom(&object);
    if (!entity || !entity->pDerive())
        return;
    std::unordered_map<std::string, std::deque<std::string_view>> byName;
    for (const auto& member : declaration.members) {
        if (member.kind == kit::ExpressMemberKind::Derived && !member.expression.empty())
            byName[sWordUpper(member.name.text)].push_back(statementOf(member));
    }
    for (const auto& value : entity->pDerive()->getValues()) {
        auto& texts = byName[sWordUpper(ownNameOf(value.getName()))];
        if (texts.empty())
            continue;
        derived_.emplace(&value, texts.front());
        texts.pop_front();
    }
}

void Declarations::vUnreadFind(const ObjectBase& object, const ExpressDeclaration& declaration) {
    // A label may be there twice.
    std::unordered_map<std::string, std::size_t> read;
    for (const auto* rule : distinctRules(pWhere(object)))
        ++read[sWordUpper(rule->label.getView())];
    std::vector<const kit::ExpressMember*> unread;
    for (const auto& member : declaration.members) {
        if (member.kind != kit::ExpressMemberKind::Where)
            continue;
        const auto found = read.find(sWordUpper(member.name.text));
        if (found == read.end() || found->second == 0)
            unread.push_back(&member);
        else
            --found->second;
    }
    unreadCount_ += unread.size();
    if (!unread.empty())
        unread_.emplace(&object, std::move(unread));
}

const ExpressDeclaration* Declarations::pFound(const ObjectBase& object) const {
    const auto found = found_.find(&object);
    return found == found_.end() ? nullptr : found->second;
}

std::string_view Declarations::textOf(const ObjectBase& object) const {
    const auto* found = pFound(object);
    return found ? found->text : std::string_view();
}

std::size_t Declarations::lineOf(const ObjectBase& object) const {
    const auto* found = pFound(object);
    return found ? positions_.positionOf(found->keyword).line : 0;
}

std::string_view Declarations::textOf(const ifc::def::schema::DeriveValue& value) const {
    const auto found = derived_.find(&value);
    return found == derived_.end() ? std::string_view() : found->second;
}

const std::vector<const kit::ExpressMember*>& Declarations::unreadRulesOf(const ObjectBase& object) const {
    static const std::vector<const kit::ExpressMember*> None;
    const auto found = unread_.find(&object);
    return found == unread_.end() ? None : found->second;
}

} // namespace kiv::kivifc::site
