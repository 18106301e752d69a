/// @file
/// The text of each object of a schema as its file has it.
///
///     const Declarations declarations(file);
///     declarations.textOf(*function); // "FUNCTION IfcDotProduct ... END_FUNCTION"
///
/// Ownership: refers to the file, which must outlive it.
/// Threads:   read-only once made.
/// Errors:    std::bad_alloc. An object that is not found has an empty text.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaObjectBase.h"
#include "kivifc/Documents/SchemaFile.h"

#include <cstddef>
#include <string_view>
#include <unordered_map>

namespace kiv::kivifc::site {

class Declarations {
public:
    explicit Declarations(const SchemaFile& file);

    /// From the keyword to the end, both included.
    std::string_view textOf(const ifc::def::schema::ObjectBase& object) const;
    /// Of the keyword; 0 when it is not found.
    std::size_t lineOf(const ifc::def::schema::ObjectBase& object) const;

private:
    struct Found {
        std::string_view text;
        std::size_t line;
    };

    const Found* pFound(const ifc::def::schema::ObjectBase& object) const;

    std::unordered_map<const ifc::def::schema::ObjectBase*, Found> found_;
};

} // namespace kiv::kivifc::site
