/// FUNCTION and RULE: statements that are kept as their body lines and never interpreted.
///
/// Ownership: belong to their schema.
/// Threads:   read-only once the schema is built.
#pragma once

#include "Format/Ifc/Def/Schema/IfcSchemaObjectBase.h"
#include "Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"

#include <cstddef>
#include <iosfwd>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::schema {

class KIV_EXPORT Function final : public ObjectBase {
public:
    /// Reads up to the first line that contains END_FUNCTION, wherever in the line, or to the end of the
    /// stream.
    Function(Schema& schema, ReadLineHelper& line, std::size_t keywordPos, std::istream& stream);
    ~Function() override;

    /// The non-empty lines between the header line and the end line, as read; they live as long as this
    /// object.
    std::vector<std::string_view> getBodyLines() const { return body_.getLines(); }

private:
    Function(ReadLineHelper& line, std::size_t namePos, std::size_t nameEnd, std::istream& stream);

    TextLines body_;
};

class KIV_EXPORT Rule final : public ObjectBase {
public:
    /// Reads up to the first line that contains END_RULE, wherever in the line, or to the end of the stream.
    Rule(Schema& schema, ReadLineHelper& line, std::size_t keywordPos, std::istream& stream);
    ~Rule() override;

    /// The non-empty lines between the header line and the end line, as read; they live as long as this
    /// object.
    std::vector<std::string_view> getBodyLines() const { return body_.getLines(); }

private:
    Rule(ReadLineHelper& line, std::size_t namePos, std::size_t nameEnd, std::istream& stream);

    TextLines body_;
};

} // namespace kiv::ifc::def::schema
