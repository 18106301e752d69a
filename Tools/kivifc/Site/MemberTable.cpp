#include "kivifc/Site/MemberTable.h"

#include "kivifc/Site/MemberType.h"

namespace kiv::kivifc::site {

MemberTable::MemberTable(const SiteModel& model) : model_(model) {
    for (const auto& set : model.getSets()) {
        for (const auto& member : memberList(*set.set))
            vAdd(set, member);
    }
}

std::vector<const NamedMembers*> MemberTable::getNames() const {
    std::vector<const NamedMembers*> names;
    names.reserve(names_.size());
    for (const auto& named : names_)
        names.push_back(&named);
    return names;
}

void MemberTable::vAdd(const SiteSet& set, const ListedMember& member) {
    const std::string_view name = member.def->getName();
    const auto [found, isNew] = numbers_.try_emplace(name, names_.size());
    if (isNew) {
        names_.push_back({name, {}});
        typeNumbers_.emplace_back();
    }
    auto& typed = typedOf(found->second, *member.def);
    typed.places.emplace_back(&set, model_.getAddresses().of(*set.set).row(member.row));
}

/// Types are the same when what is shown of them is.
TypedMembers& MemberTable::typedOf(std::size_t number, const ifc::def::xml::Def& def) {
    auto& types = names_[number].types;
    const auto kind = memberKind(def);
    Html type("");
    vMemberTypeWrite(model_, def, {}, type);
    const auto key = std::string(kind.getView()) + type.getText();
    const auto [found, isNew] = typeNumbers_[number].try_emplace(key, types.size());
    if (isNew)
        types.push_back({kind, std::move(type), {}});
    return types[found->second];
}

} // namespace kiv::kivifc::site
