/// @file
/// The data types of a schema as JSON.
///
///     DataTypesJson dataTypes(schema, writer);
///     writer.vKey("types");
///     dataTypes.vChainWrite(attribute.pFirstType());
///
/// Data types have no names of their own, so they are written in full where they are used, and referred to by
/// their place in the list of all data types elsewhere. What a reference looks like:
///
///     {"object": "IfcLabel"}  a named object
///     {"dataType": 3}         a data type, by its place in the list
///     {"shared": "REAL"}      a shared data type
///     null                    nothing
///
/// Ownership: refers to the schema and the writer, which must outlive it.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"
#include "kivifc/Json/JsonWriter.h"

#include <cstddef>
#include <map>
#include <string_view>
#include <unordered_map>

namespace kiv::kivifc {

class DataTypesJson {
public:
    DataTypesJson(const ifc::def::schema::Schema& schema, JsonWriter& writer);

    /// A reference; the object may be null.
    void vReferenceWrite(const ifc::def::schema::ObjectBase* object);

    /// What the object is made of, from outside in: a named object as a reference, a data type in full, and
    /// after an aggregate what its elements are. Empty for null.
    void vChainWrite(const ifc::def::schema::ObjectBase* object);

    /// Every data type that is not shared, in the order in which they were made.
    void vAllWrite();

    /// Those shared data types that anything written so far refers to, by name.
    void vSharedWrite();

private:
    void vDescriptionWrite(const ifc::def::schema::DataTypeBase& dataType);
    void vAggregateWrite(const ifc::def::schema::DataTypeListInterface& aggregate);
    void vSelectWrite(const ifc::def::schema::DataTypeSelect& select);
    void vSharedNote(const ifc::def::schema::ObjectBase* object);
    bool isShared(const ifc::def::schema::DataTypeBase& dataType) const;

    const ifc::def::schema::Schema& schema_;
    JsonWriter& writer_;
    std::unordered_map<const ifc::def::schema::DataTypeBase*, std::size_t> places_;
    std::map<std::string_view, const ifc::def::schema::DataTypeBase*> shared_;
};

} // namespace kiv::kivifc
