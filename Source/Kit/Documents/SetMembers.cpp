#include "kiv/Kit/Documents/SetMembers.h"

#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"

namespace kiv::kit {

namespace {

using ifc::def::pset::PropertySetDef;
using ifc::def::qto::QuantitySetDef;
using ifc::def::xml::Def;
using ifc::def::xml::SetDef;

template <class Member>
std::vector<const Def*> pointersTo(const std::vector<Member>& members) {
    std::vector<const Def*> pointers;
    pointers.reserve(members.size());
    for (const auto& member : members)
        pointers.push_back(&member);
    return pointers;
}

} // namespace

std::vector<const Def*> setMembers(const SetDef& set) {
    if (const auto* properties = dynamic_cast<const PropertySetDef*>(&set))
        return pointersTo(properties->getProperties());
    if (const auto* quantities = dynamic_cast<const QuantitySetDef*>(&set))
        return pointersTo(quantities->getQuantities());
    return {};
}

const char* pSetKind(const SetDef& set) {
    return dynamic_cast<const QuantitySetDef*>(&set) ? "quantity set" : "property set";
}

std::string sSetClasses(const SetDef& set) {
    std::string text;
    for (const auto& applicable : set.getApplicableClasses())
        text.append(text.empty() ? "" : ", ").append(applicable.sCombined());
    return text.empty() ? "every class" : text;
}

} // namespace kiv::kit
