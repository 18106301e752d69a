#include "kivifc/Site/MemberUses.h"

#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityType.h"
#include "kivifc/Site/MemberList.h"

namespace kiv::kivifc::site {

namespace {

namespace pset = ifc::def::pset;
namespace qto = ifc::def::qto;
using ifc::def::xml::Def;

std::vector<std::string> typeNamesOf(const pset::PropertyType& type) {
    if (const auto* single = dynamic_cast<const pset::TypePropertySingleValue*>(&type))
        return {single->getDataTypeName()};
    if (const auto* reference = dynamic_cast<const pset::TypePropertyReferenceValue*>(&type))
        return {reference->getDataTypeName()};
    if (const auto* table = dynamic_cast<const pset::TypePropertyTableValue*>(&type))
        return {table->getDefiningTypeName(), table->getDefinedTypeName()};
    if (const auto* list = dynamic_cast<const pset::TypePropertyListValue*>(&type))
        return {list->getListItemTypeName()};
    return {};
}

/// As the document writes them; parts of a complex property are members of their own.
std::vector<std::string> typeNamesOf(const Def& member) {
    if (const auto* property = dynamic_cast<const pset::PropertyDef*>(&member))
        return property->pType() ? typeNamesOf(*property->pType()) : std::vector<std::string>();
    const auto* quantity = dynamic_cast<const qto::QuantityDef*>(&member);
    if (!quantity || !quantity->pType())
        return {};
    return {quantity->pType()->sMeasureTypeName()};
}

} // namespace

MemberUses::MemberUses(const ifc::def::schema::Schema& schema,
                       const std::vector<const ifc::def::xml::SetDef*>& sets) {
    for (const auto* set : sets) {
        for (const auto& member : memberList(*set)) {
            for (const auto& name : typeNamesOf(*member.def)) {
                const auto* object = name.empty() ? nullptr : schema.pObjectFromName(name);
                if (!object)
                    continue;
                auto& uses = uses_[object];
                // A table may have one type for both of its columns.
                if (uses.empty() || uses.back().member != member.def)
                    uses.push_back({set, member.row, member.def});
            }
        }
    }
}

const std::vector<MemberUse>& MemberUses::of(const ifc::def::schema::ObjectBase& object) const {
    const auto found = uses_.find(&object);
    return found == uses_.end() ? none_ : found->second;
}

} // namespace kiv::kivifc::site
