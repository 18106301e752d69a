#include "Kit/Findings/Rules/RuleNames.h"

#include "Kit/Names/LookAlikes.h"
#include "Kit/Text/AsciiText.h"
#include "kiv/Kit/Names/NearestName.h"

namespace kiv::kit {

namespace schema = ifc::def::schema;

const OtherSchema* RuleNames::pOtherWith(std::string_view name) const {
    for (const auto& other : run_.context.others) {
        if (other.schema.get().pObjectFromName(name))
            return &other;
    }
    return nullptr;
}

const std::vector<std::string_view>& RuleNames::namesOf(SchemaNames kind) {
    const bool wantsTypes = kind == SchemaNames::Types;
    auto& names = wantsTypes ? types_ : entities_;
    if (!names.empty())
        return names;
    const auto wanted = wantsTypes ? schema::ObjectBase::Type::Type : schema::ObjectBase::Type::Entity;
    for (const auto* object : run_.schema.getObjects()) {
        if (object->getKind() == wanted)
            names.push_back(object->getName());
    }
    return names;
}

std::string_view RuleNames::nearestOf(std::string_view name,
                                      const std::vector<std::string_view>& candidates) {
    if (searches_ == maxSearches)
        return {};
    ++searches_;
    const auto match = nearestName(trimmed(sAsciiOf(name)), candidates);
    return match ? match->name : std::string_view();
}

std::string_view RuleNames::nearest(std::string_view name, SchemaNames kind) {
    return nearestOf(name, namesOf(kind));
}

void RuleNames::vNearestNote(FindingDraft& draft, std::string_view name, SchemaNames kind) {
    if (const auto meant = nearest(name, kind); !meant.empty())
        draft.vNote("did you mean " + sQuoted(meant) + "?");
}

std::string sKindOf(const schema::ObjectBase& object) {
    switch (object.getKind()) {
    case schema::ObjectBase::Type::Entity:
        return "an entity";
    case schema::ObjectBase::Type::Type:
        return "a defined type";
    case schema::ObjectBase::Type::Function:
        return "a function";
    case schema::ObjectBase::Type::Rule:
        return "a rule";
    case schema::ObjectBase::Type::DataType:
        break;
    }
    return "a data type";
}

} // namespace kiv::kit
