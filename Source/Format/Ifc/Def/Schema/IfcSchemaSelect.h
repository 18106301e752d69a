/// @file
/// SELECT: a data type whose values are those of its members.
///
///     if (select.isCompatible(wall)) ...
///
/// Ownership: belongs to its schema, as its members do.
/// Threads:   read-only once the schema is built; readable from any number of threads.
/// Errors:    a name that names no object is an assertion report, and is left out of the members.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataTypeBase.h"

#include <cstddef>
#include <iosfwd>
#include <span>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::schema {

class KIV_EXPORT DataTypeSelect final : public DataType<8> {
public:
    /// Without members: the text of an attribute's type is not searched for them.
    explicit DataTypeSelect(std::string_view rest);
    DataTypeSelect(ReadLineHelper& line, std::size_t pos, std::istream& stream);
    ~DataTypeSelect() override;

    void vUpdate(Schema& schema) override;
    bool isConstructed() const override;

    /// The names as written, in the order of the declaration.
    std::span<const std::string_view> getMemberNames() const { return memberNames_; }

    /// What the names were resolved to, in the same order; names of no object are left out.
    const std::vector<const ObjectBase*>& getMembers() const { return members_; }

    /// True when every resolved member is an entity.
    bool isAllEntities() const { return allEntities_; }

    /// True when a value of the object's type is a value of this select: the object is a member, a subtype of
    /// a member, or compatible with a member that is a defined type of a select. Selects that select each
    /// other end.
    bool isCompatible(const ObjectBase& object) const;

private:
    class Candidate;

    bool boMemberMatches(Candidate& candidate, std::vector<const DataTypeSelect*>& nested) const;

    std::span<const std::string_view> memberNames_;
    std::vector<const ObjectBase*> members_;
    bool allEntities_ = false;
};

} // namespace kiv::ifc::def::schema
