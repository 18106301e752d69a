/// @file
/// FUNCTION and RULE: statements that are kept as their body lines and never interpreted.
///
///     if (object->getKind() == ObjectBase::Type::Function)
///         for (const auto line : static_cast<const Function*>(object)->getBodyLines()) ...
///
/// Ownership: belong to their schema.
/// Threads:   read-only once the schema is built; readable from any number of threads.
/// Errors:    a stream that fails throws `kiv::exception`.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaObjectBase.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"

#include <cstddef>
#include <iosfwd>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::schema {

/// What functions and rules have in common.
class KIV_EXPORT BodyObject : public ObjectBase {
public:
    ~BodyObject() override;

    /// The non-empty lines between the header line and the end line, as read; they live as long as this
    /// object.
    std::vector<std::string_view> getBodyLines() const;

protected:
    /// Reads up to the first line that contains the end marker, wherever in the line, or to the end of the
    /// stream.
    BodyObject(ObjectBase::Type kind, ReadLineHelper& line, std::size_t namePos, std::string_view endMarker,
               std::istream& stream);

private:
    BodyObject(ObjectBase::Type kind, ReadLineHelper& line, std::size_t namePos, std::size_t nameEnd);

    // Includes the empty lines, so that the body is a view of the text as it was read and no copy.
    std::string_view body_;
};

class KIV_EXPORT Function final : public BodyObject {
public:
    /// Reads the declaration whose keyword is at byte offset `keywordPos` of the current line, up to
    /// END_FUNCTION.
    Function(Schema& schema, ReadLineHelper& line, std::size_t keywordPos, std::istream& stream);
    ~Function() override;
};

class KIV_EXPORT Rule final : public BodyObject {
public:
    /// Reads the declaration whose keyword is at byte offset `keywordPos` of the current line, up to
    /// END_RULE.
    Rule(Schema& schema, ReadLineHelper& line, std::size_t keywordPos, std::istream& stream);
    ~Rule() override;
};

} // namespace kiv::ifc::def::schema
