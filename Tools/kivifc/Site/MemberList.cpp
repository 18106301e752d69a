#include "kivifc/Site/MemberList.h"

#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"
#include "kiv/Kit/Documents/SetMembers.h"
#include "kivifc/Site/RowIds.h"

#include <utility>

namespace kiv::kivifc::site {

namespace {

using ifc::def::pset::PropertyDef;
using ifc::def::pset::TypeComplexProperty;
using ifc::def::xml::Def;

class Lister {
public:
    /// Properties nest no deeper than documents may, so recursing is safe.
    void vAdd(const Def& def, const Def* whole) {
        members_.push_back({&def, ids_.take(def.getName()), whole});
        const auto* property = dynamic_cast<const PropertyDef*>(&def);
        const auto* complex =
            property ? dynamic_cast<const TypeComplexProperty*>(property->pType()) : nullptr;
        if (!complex)
            return;
        for (const auto& part : complex->getProperties())
            vAdd(part, &def);
    }

    std::vector<ListedMember> takeMembers() { return std::move(members_); }

private:
    RowIds ids_;
    std::vector<ListedMember> members_;
};

} // namespace

std::vector<ListedMember> memberList(const ifc::def::xml::SetDef& set) {
    Lister lister;
    for (const auto* member : kit::setMembers(set))
        lister.vAdd(*member, nullptr);
    return lister.takeMembers();
}

} // namespace kiv::kivifc::site
