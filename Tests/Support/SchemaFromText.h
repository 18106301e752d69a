/// Schemas for tests, from text in the test itself.
///
///     const auto schema = schemaFromText("ENTITY Wall;\n"
///                                        "  Name : STRING;\n"
///                                        "END_ENTITY;");
///     EXPECT_EQ(entityOf(*schema, "Wall").getAttributes().size(), 1U);
///
/// Ownership: the schema is the caller's; what the helpers below hand out belongs to it.
/// Errors:    whatever reading raises passes; a name that the schema lacks is std::logic_error, which fails
/// the test.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"

#include <istream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kiv::test {

/// The last schema of the stream; null when it holds none. The schema is not lost when the stream fails
/// after it.
inline std::unique_ptr<ifc::def::schema::Schema> schemaFromStream(std::istream& stream) {
    using ifc::def::schema::Schema;
    std::unique_ptr<Schema> schema;
    ifc::def::schema::pStepStreamRead(
        stream, [&schema](std::istream& in, const std::string& header, std::size_t pos) {
            schema = std::make_unique<Schema>(in, header, pos);
            return schema.get();
        });
    return schema;
}

/// The schema of a text that has its own SCHEMA line.
inline std::unique_ptr<ifc::def::schema::Schema> schemaFromWholeText(std::string_view text) {
    std::istringstream stream{std::string(text)};
    return schemaFromStream(stream);
}

/// The schema named TEST that these statements make up.
inline std::unique_ptr<ifc::def::schema::Schema> schemaFromText(std::string_view statements) {
    return schemaFromWholeText("SCHEMA TEST;\n" + std::string(statements) + "\nEND_SCHEMA;\n");
}

/// The object of this name.
inline const ifc::def::schema::ObjectBase& objectOf(const ifc::def::schema::Schema& schema,
                                                    std::string_view name) {
    const auto* object = schema.pObjectFromName(name);
    if (!object)
        throw std::logic_error("the schema has no object " + std::string(name));
    return *object;
}

/// The entity of this name.
inline const ifc::def::schema::Entity& entityOf(const ifc::def::schema::Schema& schema,
                                                std::string_view name) {
    const auto* entity = ifc::def::schema::Entity::pFrom(&objectOf(schema, name));
    if (!entity)
        throw std::logic_error(std::string(name) + " is no entity");
    return *entity;
}

/// The defined type of this name.
inline const ifc::def::schema::Type& typeOf(const ifc::def::schema::Schema& schema, std::string_view name) {
    const auto* type = ifc::def::schema::Type::pFrom(&objectOf(schema, name));
    if (!type)
        throw std::logic_error(std::string(name) + " is no defined type");
    return *type;
}

} // namespace kiv::test
