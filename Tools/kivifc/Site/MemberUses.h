/// @file
/// The properties and quantities whose values are of each type, or refer to each entity, of a schema.
///
///     const MemberUses uses(schema, sets);
///     for (const auto& use : uses.of(*label))
///         write(use.set->getName(), use.row);
///
/// Ownership: refers to the schema and the sets, which must outlive it.
/// Threads:   read-only once made.
/// Errors:    std::bad_alloc. What no member names has an empty list.
#pragma once

#include "kiv/Format/Ifc/Def/IfcDefBase.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kivifc/Site/Address.h"

#include <unordered_map>
#include <vector>

namespace kiv::kivifc::site {

/// A member of a set.
struct MemberUse {
    const ifc::def::xml::SetDef* set;
    /// On the page of the set.
    RowId row;
    const ifc::def::xml::Def* member;
};

class MemberUses {
public:
    MemberUses() = default;
    MemberUses(const ifc::def::schema::Schema& schema, const std::vector<const ifc::def::xml::SetDef*>& sets);

    /// In the order of the sets and of their members.
    const std::vector<MemberUse>& of(const ifc::def::schema::ObjectBase& object) const;

private:
    std::unordered_map<const ifc::def::schema::ObjectBase*, std::vector<MemberUse>> uses_;
    std::vector<MemberUse> none_;
};

} // namespace kiv::kivifc::site
