/// Schemas that search for set definitions, from text in the test itself.
///
///     const auto schema = schemaPsetFromText("ENTITY IfcWall;\nEND_ENTITY;", "IFC4");
///     EXPECT_EQ(schema->getStandardDefinitions(), nullptr);
///
/// Ownership: the schema is the caller's.
/// Errors:    whatever reading raises passes.
#pragma once

#include "kiv/Format/Ifc/Def/SchemaPset.h"

#include <memory>
#include <sstream>
#include <string>
#include <string_view>

namespace kiv::test {

/// The schema of a text that has its own SCHEMA line; null when the text has none.
inline std::unique_ptr<ifc::def::SchemaPset> schemaPsetFromWholeText(std::string_view text) {
    std::istringstream stream{std::string(text)};
    return ifc::def::SchemaPset::pStepStreamRead(stream);
}

/// The schema of this name that these statements make up.
inline std::unique_ptr<ifc::def::SchemaPset> schemaPsetFromText(std::string_view statements,
                                                                std::string_view name = "TEST") {
    return schemaPsetFromWholeText("SCHEMA " + std::string(name) + ";\n" + std::string(statements) +
                                   "\nEND_SCHEMA;\n");
}

} // namespace kiv::test
