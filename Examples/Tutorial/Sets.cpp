// The program of Docs/Tutorial/2-Sets.md: reads Building.exp and the documents of Sets in the current folder.
#include <kiv/Format/Ifc/Def/PropertyNameSearcher.h>
#include <kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h>
#include <kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h>
#include <kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h>
#include <kiv/Format/Ifc/Def/SchemaPset.h>
#include <kiv/Host/Xml/KivXml.h>

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <set>

namespace fs = std::filesystem;
namespace def = kiv::ifc::def;

std::unique_ptr<def::xml::SetDef> pSetRead(const fs::path& path, def::xml::XmlSetErrors& errors) {
    std::ifstream stream(path, std::ios::binary);
    kiv::xml::File file(nullptr, kiv::xml::VerboseLevel::Quiet, kiv::xml::ValidateLevel::None);
    const auto root = file.parse(stream, path.string(), nullptr);
    if (root && root->boNodeNameIs("PropertySetDef"))
        return std::make_unique<def::pset::PropertySetDef>(*root, errors);
    if (root && root->boNodeNameIs("QtoSetDef"))
        return std::make_unique<def::qto::QuantitySetDef>(*root, errors);
    return nullptr;
}

void vSetsRegister(const def::SchemaPset& schema, const fs::path& folder) {
    def::SchemaPropertySetDefinitions sets;
    for (const auto& path : std::set<fs::path>(fs::directory_iterator(folder), {})) {
        def::xml::XmlSetErrors errors;
        auto set = pSetRead(path, errors);
        if (!set || !sets.xmlSetAdd(schema, std::move(set), errors))
            std::cerr << path.string() << ": not kept\n";
        for (const auto& record : errors.getRecords())
            std::cerr << path.string() << ':' << record.line << ": " << record.item << ": " << record.message
                      << '\n';
    }
    auto& registry = def::SchemaContextAndPropertySetDefinitions::instance();
    registry.addPropertySets({std::string(schema.getName()), true}, std::move(sets));
}

int main() try {
    std::ifstream text("Building.exp", std::ios::binary);
    const auto schema = def::SchemaPset::pStepStreamRead(text);
    if (!schema)
        return 1;
    vSetsRegister(*schema, "Sets");

    const auto* wall = def::schema::Entity::pFrom(schema->pObjectFromName("BldWall"));
    if (!wall)
        return 1;
    for (const auto* set : schema->getXmlSetsAllToEntity(*wall, true, {}))
        std::cout << set->getName() << '\n';

    const auto type = kiv::ifc::findPropertyTypeName("Pset_BldWall.Mark", *schema);
    std::cout << "Pset_BldWall.Mark: " << type.value_or("no single type") << '\n';
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
