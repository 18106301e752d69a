/// @file
/// Reads an IFC schema, written in EXPRESS (ISO 10303-11), into objects that are looked up by name. The
/// folder holds the objects, their readers, and the parser of their rules.
///
///     std::unique_ptr<Schema> schema;
///     pStepStreamRead(stream, [&](std::istream& in, const std::string& header, std::size_t pos) {
///         schema = std::make_unique<Schema>(in, header, pos);
///         return schema.get();
///     });
///     const auto* wall = schema->pObjectFromName("IfcWall");
///
/// Ownership: a schema owns every object and data type it hands out; they live as long as it does.
/// Threads:   built by one thread; look-ups may then run from any number of threads at once.
/// Errors:    an unknown name is an answer (null), never an error. A stream that fails while the schema is
///            read throws `kiv::exception` with an empty message; a rule with a literal out of range throws
///            std::out_of_range; a single name, type text or list of 4 GiB or more throws std::length_error.
///            What the stream itself is set to throw passes on, as from std::getline: with badbit among its
///            `exceptions()` what its buffer throws, with failbit or eofbit std::ios::failure at its end. The
///            first schema of a process passes on what std::random_device throws when the system has no
///            random source. Names that the text leaves unresolved are reported to the host's assertion
///            service.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAttribute.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaObjectBase.h"

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::ifc::def {
class BudgetMeter;
}

namespace kiv::ifc::def::schema {

class SchemaBuilder;

class KIV_EXPORT Schema {
public:
    /// Reads the statements that follow the header line, up to END_SCHEMA or the end of the stream, and
    /// resolves them. `schemaPos` is the byte offset of "SCHEMA" in the header line.
    Schema(std::istream& stream, const std::string& headerLine, std::size_t schemaPos);
    /// The same within a budget, which must last until the schema is read; what goes beyond it throws
    /// `BudgetExceeded`.
    Schema(std::istream& stream, const std::string& headerLine, std::size_t schemaPos, BudgetMeter& meter);
    virtual ~Schema();
    Schema(const Schema&) = delete;
    Schema& operator=(const Schema&) = delete;

    /// The schema's name, such as IFC4: everything between SCHEMA and the ';', but for leading blanks.
    std::string_view getName() const;

    /// The object of this name, in any letter case; null when there is none. Of two objects of one name, the
    /// one read first. Nothing is allocated; cost: that of looking at the name once.
    const ObjectBase* pObjectFromName(std::string_view name) const;

    /// The same for a key that is made already.
    const ObjectBase* pObjectFromName(const ObjectName& name) const;

    /// The explicit attribute that this entity itself declares, both names in any letter case; null when
    /// there is none.
    const Attribute* pAttributeGet(const std::string& entityName, const std::string& attributeName) const;

    /// Every explicit attribute of this name, in any letter case; those of one entity in the order of its
    /// declaration.
    std::vector<std::reference_wrapper<const Attribute>>
    attributesGet(const std::string& attributeName) const;

    /// Every object, in the order of the text; objects of the same name are all there.
    std::span<const ObjectBase* const> getObjects() const;

    /// The objects in the order of their upper-cased names, each name once: the one read first.
    std::span<const ObjectBase* const> getObjectsByName() const;

    /// The data types that are not shared, in the order in which they were made. Cost: a list of them.
    std::vector<const DataTypeBase*> getDataTypes() const;

    /// The data types of which the schema has one each, as far as it uses them, in the order of their kinds.
    std::vector<const DataTypeBase*> getSharedDataTypes() const;

    /// Every explicit attribute by its upper-cased name, equal names in the order in which `attributesGet`
    /// has them. Cost: a sorted list of them.
    std::vector<std::reference_wrapper<const Attribute>> getAttributesByName() const;

private:
    friend class SchemaBuilder;

    struct Model;
    std::unique_ptr<Model> model_;
    // Null once the schema is built.
    SchemaBuilder* pBuilder_ = nullptr;
};

/// Finds the line with "SCHEMA" outside a comment that starts its line, calls the factory with the stream,
/// that line and the byte offset of "SCHEMA" in it, and returns what the factory made.
///
/// The factory keeps what it makes owned: the stream is read to its end, each further header line calls it
/// again and only the last result is returned, and none is when reading on fails. Null when there is no
/// header line. A UTF-8 byte order mark at the start is skipped. Throws `kiv::exception` when the stream
/// fails, and std::bad_function_call when a header is found and the factory is empty. A stream with eofbit in
/// `exceptions()` therefore always throws, after the factory was called.
KIV_EXPORT Schema*
pStepStreamRead(std::istream& stream,
                std::function<Schema*(std::istream&, const std::string&, std::size_t)> factory);

/// The same within a budget, which covers the lines outside of schemas; the factory hands the meter to the
/// schema that it makes.
KIV_EXPORT Schema*
pStepStreamRead(std::istream& stream,
                std::function<Schema*(std::istream&, const std::string&, std::size_t)> factory,
                BudgetMeter& meter);

} // namespace kiv::ifc::def::schema
