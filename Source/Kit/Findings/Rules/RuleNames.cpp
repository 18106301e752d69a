#include "Kit/Findings/Rules/RuleNames.h"

#include "Kit/Findings/Rules/RuleText.h"
#include "Kit/Positions/XmlChildren.h"

#include <numeric>

namespace kiv::kit {

namespace schema = ifc::def::schema;

namespace {

constexpr std::size_t maxComparedSize = 100;

/// The Levenshtein distance, row by row.
std::size_t distanceOf(std::string_view left, std::string_view right) {
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < left.size(); ++i) {
        auto diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < right.size(); ++j) {
            const auto replaced = diagonal + (left[i] == right[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

} // namespace

std::string sNearestOf(std::string_view name, const std::vector<std::string_view>& candidates) {
    const auto upper = sUpperCase(name);
    if (upper.size() > maxComparedSize)
        return {};
    const std::size_t prefix = upper.starts_with("IFC") ? 3 : 0;
    auto limit = (upper.size() - prefix) / 3;
    std::string nearest;
    for (const auto candidate : candidates) {
        const auto [shorter, longer] = std::minmax({upper.size(), candidate.size()});
        if (longer > maxComparedSize || longer - shorter > limit)
            continue;
        const auto changes = distanceOf(upper, sUpperCase(candidate));
        if (changes < limit || (changes == limit && nearest.empty())) {
            nearest = candidate;
            limit = changes;
        }
    }
    return nearest;
}

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

std::string RuleNames::sNearest(std::string_view name, SchemaNames kind) {
    if (searches_ == maxSearches)
        return {};
    ++searches_;
    return sNearestOf(name, namesOf(kind));
}

void RuleNames::vNearestNote(FindingDraft& draft, std::string_view name, SchemaNames kind) {
    if (const auto nearest = sNearest(name, kind); !nearest.empty())
        draft.vNote("did you mean " + sQuoted(nearest) + "?");
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

XmlIndex childOf(const XmlPositions& xml, XmlIndex parent, std::string_view tag) {
    for (const auto child : XmlChildren(xml, parent)) {
        if (xml.getElement(child).name == tag)
            return child;
    }
    return NoXmlElement;
}

} // namespace kiv::kit
