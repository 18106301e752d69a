#include "kivifc/Site/MemberList.h"

#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"
#include "kiv/Kit/Documents/SetMembers.h"

#include <cstddef>
#include <fmt/format.h>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
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
        members_.push_back({&def, sRow(def.getName()), whole});
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
    std::string sRow(const std::string& name) {
        auto& count = counts_[name];
        auto row = name;
        while (!rows_.insert(row).second)
            row = fmt::format("{}\n{}", name, ++count + 1);
        return row;
    }

    std::vector<ListedMember> members_;
    std::unordered_map<std::string_view, std::size_t> counts_;
    std::unordered_set<std::string> rows_;
};

} // namespace

std::vector<ListedMember> memberList(const ifc::def::xml::SetDef& set) {
    Lister lister;
    for (const auto* member : kit::setMembers(set))
        lister.vAdd(*member, nullptr);
    return lister.takeMembers();
}

} // namespace kiv::kivifc::site
