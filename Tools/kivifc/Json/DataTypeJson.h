/// @file
/// The data types of a schema as JSON.
///
///     DataTypesJson dataTypes(schema);
///     json["types"] = dataTypes.getChain(attribute.pFirstType());
///
/// Data types have no names of their own, so they are written in full where they are used, and referred to by
/// their place in the list of all data types elsewhere. What a reference looks like:
///
///     {"object": "IfcLabel"}  a named object
///     {"dataType": 3}         a data type, by its place in the list
///     {"shared": "REAL"}      a shared data type
///     null                    nothing
///
/// Ownership: refers to the schema, which must outlive it.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"
#include "kivifc/Json/Json.h"

#include <cstddef>
#include <map>
#include <string>
#include <unordered_map>

namespace kiv::kivifc {

class DataTypesJson {
public:
    explicit DataTypesJson(const ifc::def::schema::Schema& schema);

    /// A reference; the object may be null.
    Json getReference(const ifc::def::schema::ObjectBase* object);

    /// What the object is made of, from outside in: a named object as a reference, a data type in full, and
    /// after an aggregate what its elements are. Empty for null.
    Json getChain(const ifc::def::schema::ObjectBase* object);

    /// Every data type that is not shared, in the order in which they were made.
    Json getAll();

    /// Those shared data types that anything met so far refers to, by name.
    Json getShared() const;

private:
    Json getDescription(const ifc::def::schema::DataTypeBase& dataType);
    void vAggregateDescribe(Json& json, const ifc::def::schema::DataTypeListInterface& aggregate);
    void vSelectDescribe(Json& json, const ifc::def::schema::DataTypeSelect& select);

    const ifc::def::schema::Schema& schema_;
    std::unordered_map<const ifc::def::schema::DataTypeBase*, std::size_t> places_;
    std::map<std::string, Json> shared_;
};

} // namespace kiv::kivifc
