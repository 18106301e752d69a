#include "kivifc/Site/ValueMembers.h"

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"
#include "kivifc/Site/RedeclaredName.h"

#include <cstddef>
#include <unordered_set>
#include <vector>

namespace kiv::kivifc::site {

namespace {

using namespace ifc::def::schema;

/// No chain of types that a schema has is as long; one in a circle is endless.
constexpr int LengthMax = 100;
/// Entities of a select that are looked at, and declarations of a name; with more, it has many meanings.
constexpr std::size_t EntitiesMax = 32;
constexpr std::size_t DeclarationsMax = 32;

/// The entity, or those of the select and of selects in it; none of a select that has too many members.
std::vector<const Entity*> entitiesOf(const ObjectBase& type) {
    std::vector<const Entity*> entities;
    std::vector<const ObjectBase*> ahead{&type};
    std::unordered_set<const ObjectBase*> known{&type};
    for (std::size_t next = 0; next < ahead.size(); ++next) {
        if (const auto* entity = Entity::pFrom(ahead[next]))
            entities.push_back(entity);
        const auto* select = pSelect(ahead[next]);
        if (!select)
            continue;
        if (select->getMembers().size() + ahead.size() > EntitiesMax)
            return {};
        for (const auto* member : select->getMembers()) {
            if (known.insert(member).second)
                ahead.push_back(member);
        }
    }
    return entities;
}

bool isBelow(const Entity& entity, const std::vector<const Entity*>& bases) {
    const std::unordered_set<const Entity*> known(bases.begin(), bases.end());
    const auto* each = &entity;
    for (int length = 0; each && length < LengthMax; ++length, each = each->pSupertype()) {
        if (known.contains(each))
            return true;
    }
    return false;
}

/// The one that is met, as long as there is no other.
class OnlyMember {
public:
    void vMeet(const ValueMember& member) {
        if (!member.owner)
            return;
        isOnly_ = isOnly_ && (!met_.owner || (met_.owner == member.owner && met_.name == member.name));
        met_ = member;
    }
    ValueMember get() const { return isOnly_ ? met_ : ValueMember(); }

private:
    ValueMember met_;
    bool isOnly_ = true;
};

/// What entities below those that do not know the name declare by it; false when that may be too much.
bool boBelowMeet(const SiteModel& model, const std::vector<const Entity*>& bases, const std::string& upper,
                 OnlyMember& only) {
    const auto& declaring = model.getDeclaredNames().declaring(upper);
    if (declaring.size() > DeclarationsMax)
        return bases.empty();
    for (const auto* entity : declaring) {
        if (isBelow(*entity, bases))
            only.vMeet(attributeOf(model, *entity, upper));
    }
    return true;
}

} // namespace

const DataTypeSelect* pSelect(const ObjectBase* object) {
    const auto* type = Type::pFrom(object);
    return dynamic_cast<const DataTypeSelect*>(type ? type->pDataType() : nullptr);
}

const ObjectBase* pElementType(const ObjectBase* type) {
    for (int length = 0; type && length < LengthMax; ++length) {
        if (Entity::pFrom(type) || pSelect(type))
            return type;
        if (const auto* named = Type::pFrom(type)) {
            if (dynamic_cast<const DataTypeEnum*>(named->pUnderlying()))
                return type;
            type = named->pUnderlying();
            continue;
        }
        const auto* aggregate = DataTypeBase::pFrom(type);
        type = aggregate && DataTypeListInterface::pFrom(aggregate) ? aggregate->pBaseType() : nullptr;
    }
    return nullptr;
}

ValueMember attributeOf(const SiteModel& model, const Entity& entity, const std::string& upper) {
    if (const auto* attribute = entity.pAttributeFromNameUpper(upper, true))
        return {&attribute->getEntity(), ownNameOf(attribute->getName()), attribute->pFirstType()};
    if (const auto* inverse = entity.pAttributeInverseFromNameUpper(upper, true))
        return {&inverse->getEntity(), inverse->getName(), inverse->pReferredEntity()};
    const auto derived = model.derivedOf(entity, upper);
    return derived.value ? ValueMember{derived.entity, ownNameOf(derived.value->getName()), derived.type}
                         : ValueMember();
}

ValueMember memberOf(const SiteModel& model, const ObjectBase& type, const std::string& upper) {
    const auto* element = pElementType(&type);
    if (!element)
        return {};
    if (const auto* named = Type::pFrom(element)) {
        if (const auto item = model.getDeclaredNames().itemOf(*named, upper); item.type)
            return {item.type, item.name, nullptr};
    }
    OnlyMember only;
    std::vector<const Entity*> others;
    for (const auto* entity : entitiesOf(*element)) {
        const auto member = attributeOf(model, *entity, upper);
        only.vMeet(member);
        if (!member.owner)
            others.push_back(entity);
    }
    return boBelowMeet(model, others, upper, only) ? only.get() : ValueMember();
}

} // namespace kiv::kivifc::site
