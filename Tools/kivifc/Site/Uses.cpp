#include "kivifc/Site/Uses.h"

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaFunction.h"
#include "kiv/Kit/Express/ExpressionWalk.h"
#include "kivifc/Program/AsciiText.h"
#include "kivifc/Site/DistinctRules.h"
#include "kivifc/Site/ExpressWords.h"
#include "kivifc/Site/LocalNames.h"
#include "kivifc/Site/RedeclaredName.h"

#include <cstddef>
#include <functional>
#include <string>
#include <utility>

namespace kiv::kivifc::site {

namespace {

using namespace ifc::def::schema;

/// The names in a rule. Whether they are names of objects is for who takes them.
class RuleNames final : public kit::ExpressionWalk {
public:
    using Take = std::function<void(std::string_view)>;

    explicit RuleNames(Take take) : take_(std::move(take)) {}

    using ExpressionWalk::visit;
    void visit(const FunctionCallExpression& node) override {
        take_(node.getName());
        ExpressionWalk::visit(node);
    }
    void visit(const EnumerationValueExpression& node) override { take_(node.getTypeName()); }
    /// TYPEOF compares with 'SCHEMA.NAME'.
    void visit(const StringValueExpression& node) override { take_(literalTypeName(node.getValue())); }
    void visit(const GetExpression& node) override {
        if (node.getQualifier() == Qualifier::Group ||
            (node.getQualifier() == Qualifier::None && !isVariable(node.getName())))
            take_(node.getName());
        ExpressionWalk::visit(node);
    }
    void visit(const QueryExpression& node) override {
        ++variables_[ascii::sUpperCase(node.getVariable())];
        ExpressionWalk::visit(node);
    }

private:
    void vLeave(const Expression& node) override {
        if (const auto* query = dynamic_cast<const QueryExpression*>(&node))
            --variables_[ascii::sUpperCase(query->getVariable())];
    }

    bool isVariable(std::string_view name) const {
        if (variables_.empty())
            return false;
        const auto found = variables_.find(ascii::sUpperCase(name));
        return found != variables_.end() && found->second > 0;
    }

    Take take_;
    // Of the queries that the walk is in; a query within another one may have its variable too.
    std::unordered_map<std::string, std::size_t> variables_;
};

bool isSame(const RuleUse& left, const RuleUse& right) {
    return left.owner == right.owner && left.label == right.label;
}

} // namespace

class UseTable::Builder {
public:
    Builder(const Schema& schema, const Declarations& declarations, const DeclaredNames& names,
            std::unordered_map<const ObjectBase*, Uses>& uses) :
        schema_(schema), declarations_(declarations), names_(names), uses_(uses) {}

    void vTake(const ObjectBase& object) {
        if (const auto* entity = Entity::pFrom(&object))
            vEntityTake(*entity);
        else if (const auto* type = Type::pFrom(&object))
            vTypeTake(*type);
        else
            vTextTake(declarations_.textOf(object), {&object, {}});
    }

private:
    void vEntityTake(const Entity& entity) {
        for (const auto& attribute : entity.getAttributes()) {
            if (const auto* named = pNamed(attribute.pFirstType()))
                uses_[named].attributes.push_back(&attribute);
            vQualifierTake(attribute.getName(), {&entity, ownNameOf(attribute.getName())});
        }
        for (const auto& inverse : entity.getAttributesInverse()) {
            if (inverse.pReferredEntity())
                uses_[inverse.pReferredEntity()].inverses.push_back(&inverse);
        }
        if (entity.pDerive()) {
            for (const auto& value : entity.pDerive()->getValues()) {
                vQualifierTake(value.getName(), {&entity, ownNameOf(value.getName())});
                const auto text = declarations_.textOf(value);
                vTextTake(text.empty() ? value.getRest() : text, {&entity, ownNameOf(value.getName())});
            }
        }
        vUniqueTake(entity);
        vRulesTake(entity, entity.pWhere());
    }

    void vUniqueTake(const Entity& entity) {
        if (!entity.pUnique())
            return;
        for (const auto& rule : entity.pUnique()->getRules()) {
            for (const auto& name : rule.attributeNames)
                vQualifierTake(name, {&entity, rule.label});
        }
    }

    /// SELF\Entity.Name refers to the entity.
    void vQualifierTake(std::string_view name, const RuleUse& use) { vNameTake(qualifierOf(name), use); }

    void vTypeTake(const Type& type) {
        if (const auto* select = dynamic_cast<const DataTypeSelect*>(type.pUnderlying())) {
            for (const auto* member : select->getMembers())
                uses_[member].types.push_back(&type);
        } else if (const auto* named = pNamed(type.pUnderlying())) {
            uses_[named].types.push_back(&type);
        }
        vRulesTake(type, type.pWhere());
    }

    void vRulesTake(const ObjectBase& owner, const Where* where) {
        for (const auto* rule : distinctRules(where)) {
            RuleNames names([&](std::string_view name) { vNameTake(name, {&owner, rule->label}); });
            names.vWalk(*rule->expression);
        }
        for (const auto* rule : declarations_.unreadRulesOf(owner))
            vTextTake(rule->expression, {&owner, rule->name.text});
    }

    void vTextTake(std::string_view text, const RuleUse& use) {
        LocalNames locals;
        bool isAfterPoint = false;
        for (ExpressWords words(text); words.boNext();) {
            const bool isLocal = locals.boTake(words);
            const bool isMember =
                std::exchange(isAfterPoint, ascii::trimmed(words.getText(), " \t\r\n").ends_with('.'));
            if (words.getKind() == ExpressWords::Kind::Word && !isLocal && !isMember)
                vNameTake(words.getText(), use);
            else if (words.getKind() == ExpressWords::Kind::String)
                vNameTake(typeNameOf(words.getText()), use);
        }
    }

    static std::string_view typeNameOf(std::string_view literal) {
        return literalTypeName(ascii::trimmed(literal, "'"));
    }

    void vNameTake(std::string_view name, const RuleUse& use) {
        const auto* object = name.empty() ? nullptr : pNamedBy(name);
        if (!object || object == use.owner)
            return;
        auto& rules = uses_[object].rules;
        // A rule that names an object again does so before the next rule is looked at.
        if (rules.empty() || !isSame(rules.back(), use))
            rules.push_back(use);
    }

    /// The object of that name, or the type of an item that stands alone. Where entities have an attribute of
    /// that name, it may be that.
    const ObjectBase* pNamedBy(std::string_view name) const {
        if (const auto* object = schema_.pObjectFromName(name))
            return object;
        const auto upper = ascii::sUpperCase(name);
        return names_.declaring(upper).empty() ? names_.onlyItem(upper).type : nullptr;
    }

    /// The named object that a type is or, as an aggregate, is made of; null for none.
    static const ObjectBase* pNamed(const ObjectBase* object) {
        const auto* dataType = DataTypeBase::pFrom(object);
        if (!dataType)
            return object;
        const auto* base = DataTypeListInterface::pFrom(dataType) ? dataType->pBaseType() : nullptr;
        return DataTypeBase::pFrom(base) ? nullptr : base;
    }

    const Schema& schema_;
    const Declarations& declarations_;
    const DeclaredNames& names_;
    std::unordered_map<const ObjectBase*, Uses>& uses_;
};

UseTable::UseTable(const Schema& schema, const Declarations& declarations, const DeclaredNames& names) {
    Builder builder(schema, declarations, names, uses_);
    for (const auto* object : schema.getObjects())
        builder.vTake(*object);
}

const Uses& UseTable::of(const ObjectBase& object) const {
    const auto found = uses_.find(&object);
    return found == uses_.end() ? none_ : found->second;
}

} // namespace kiv::kivifc::site
