#include "Reading.h"

#include "Require.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"

#include <utility>

namespace kiv::bench {

namespace {

using ifc::def::xml::SetDef;
using ifc::def::xml::XmlSetErrors;

std::unique_ptr<SetDef> pSetMake(const xml::Element& root, XmlSetErrors& errors) {
    if (root.boNodeNameIs("QtoSetDef"))
        return std::make_unique<ifc::def::qto::QuantitySetDef>(root, errors);
    return std::make_unique<ifc::def::pset::PropertySetDef>(root, errors);
}

} // namespace

Documents documentsFrom(std::vector<std::string> texts) {
    Documents documents;
    documents.reserve(texts.size());
    for (auto& text : texts)
        documents.emplace_back(std::move(text));
    return documents;
}

void vRewind(std::istream& stream) {
    stream.clear();
    stream.seekg(0);
}

std::unique_ptr<ifc::def::schema::Schema> pSchemaRead(std::istream& stream) {
    vRewind(stream);
    std::unique_ptr<ifc::def::schema::Schema> schema;
    ifc::def::schema::pStepStreamRead(
        stream, [&](std::istream& in, const std::string& header, std::size_t pos) {
            schema = std::make_unique<ifc::def::schema::Schema>(in, header, pos);
            return schema.get();
        });
    vRequire(schema && !schema->getObjects().empty(), "the text holds no schema");
    return schema;
}

std::unique_ptr<ifc::def::schema::Schema> pSchemaRead(const std::string& text) {
    std::istringstream stream(text);
    return pSchemaRead(stream);
}

std::unique_ptr<ifc::def::SchemaPset> pSchemaPsetRead(const std::string& text) {
    std::istringstream stream(text);
    auto schema = ifc::def::SchemaPset::pStepStreamRead(stream);
    vRequire(schema && !schema->getObjects().empty(), "the text holds no schema");
    return schema;
}

xml::Element elementRead(xml::File& file, std::istream& document) {
    vRewind(document);
    const auto root = file.parse(document, "", nullptr);
    vRequire(root.has_value(), "a set document is not well-formed");
    return *root;
}

xml::File newFile() {
    return {nullptr, xml::VerboseLevel::Quiet, xml::ValidateLevel::None};
}

void vDocumentAdd(std::istream& document, const ifc::def::schema::Schema& schema,
                  ifc::def::SchemaPropertySetDefinitions& sets) {
    auto file = newFile();
    XmlSetErrors errors;
    auto set = pSetMake(elementRead(file, document), errors);
    vRequire(sets.xmlSetAdd(schema, std::move(set), errors), "a set is refused");
}

ifc::def::SchemaPropertySetDefinitions definitionsRead(Documents& documents,
                                                       const ifc::def::schema::Schema& schema) {
    ifc::def::SchemaPropertySetDefinitions sets;
    for (auto& document : documents)
        vDocumentAdd(document, schema, sets);
    return sets;
}

} // namespace kiv::bench
