/// @file
/// IFC-XML configurations: read into a schema, with what was reported on the way.
///
///     if (const auto reports = configFileRead("config.xml", *file.schema, diagnostics))
///         vShow(*file.schema->pXmlSchemaConfig(), *reports);
///
/// Ownership: the schema owns the configuration; reports are the caller's.
/// Threads:   one thread while a configuration is read into a schema.
/// Errors:    a file that is no XML is a failure in `diagnostics`; what is wrong in it is a report.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAttributeInverse.h"
#include "kiv/Format/Ifc/Def/SchemaPset.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlAttribute.h"
#include "kiv/Host/Assert/KivAssert.h"
#include "kivifc/Program/Diagnostics.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kivifc {

/// Reads the file and links the schema's attributes to it; returns the reports. Absent, with the schema
/// unchanged, when the file cannot be read or is no well-formed XML, which goes to `diagnostics`.
std::optional<std::vector<assert::AssertRecord>>
configFileRead(const std::string& path, ifc::def::SchemaPset& schema, Diagnostics& diagnostics);

/// "attribute-tag" and so on; "not given" when nothing is said.
std::string_view sRepresentation(ifc::def::xmlschema::ExpAttribute representation);

/// How the configuration has the attribute written, "attribute-content, keep" perhaps; empty when it does not
/// say.
std::string sConfigured(const ifc::def::schema::Attribute& attribute);
std::string sConfigured(const ifc::def::schema::AttributeInverse& attribute);

} // namespace kiv::kivifc
