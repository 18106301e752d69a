/// Reads schemas and set definitions the way a host does, from texts that are in memory.
///
///     const auto schema = pSchemaRead(schemaText);
///     auto documents = documentsFrom(setTexts);
///     const auto sets = definitionsRead(documents, *schema);
///
/// Errors: what cannot be read ends the program, see `vRequire`.
#pragma once

#include "kiv/Format/Ifc/Def/SchemaPropertySetDefinitions.h"
#include "kiv/Format/Ifc/Def/SchemaPset.h"
#include "kiv/Host/Xml/KivXml.h"

#include <functional>
#include <istream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace kiv::bench {

/// Documents as streams, made before anything is timed, because streams are what the library reads from.
using Documents = std::vector<std::istringstream>;

Documents documentsFrom(std::vector<std::string> texts);

/// Makes a stream that was read to its end readable from its beginning.
void vRewind(std::istream& stream);

/// Reads the schema, from the beginning of the stream.
std::unique_ptr<ifc::def::schema::Schema> pSchemaRead(std::istream& stream);
std::unique_ptr<ifc::def::schema::Schema> pSchemaRead(const std::string& text);

/// The same as the object that hosts work with.
std::unique_ptr<ifc::def::SchemaPset> pSchemaPsetRead(const std::string& text);

/// Reads one document, from the beginning of the stream; the element belongs to the file.
xml::Element elementRead(xml::File& file, std::istream& document);

/// A file as `elementRead` takes it.
xml::File newFile();

/// Reads one document and adds its set, which is what checks it.
void vDocumentAdd(std::istream& document, const ifc::def::schema::Schema& schema,
                  ifc::def::SchemaPropertySetDefinitions& sets);

/// Reads all documents into a collection.
ifc::def::SchemaPropertySetDefinitions definitionsRead(Documents& documents,
                                                       const ifc::def::schema::Schema& schema);

} // namespace kiv::bench
