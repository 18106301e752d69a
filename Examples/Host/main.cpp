// A host program in the small: what a CAD or BIM program does with the library, from the first schema to the
// last report, through the public headers alone.
//
//     kiv_host_example SCHEMA-FOLDER SCHEMA SETS-FOLDER OUT-FOLDER ENTITY SET.MEMBER
//
// Reads SCHEMA-FOLDER/SCHEMA.exp and the documents of SETS-FOLDER, says which sets apply to the entity and
// what type the member's values have, and leaves the sets and the report of what was wrong with them in
// OUT-FOLDER.
#include "kiv/Format/Ifc/Def/PropertyNameSearcher.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/SchemaLoader.h"
#include "kiv/Host/Xml/KivXml.h"

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <set>
#include <string>
#include <utility>

namespace {

namespace fs = std::filesystem;
namespace def = kiv::ifc::def;

/// The document as a set of its kind; null when it is none, as standard error then says.
std::unique_ptr<def::xml::SetDef> pSetRead(const fs::path& path, def::xml::XmlSetErrors& errors) {
    std::ifstream stream(path, std::ios::binary);
    kiv::xml::File file(nullptr, kiv::xml::VerboseLevel::Quiet, kiv::xml::ValidateLevel::None);
    const auto root = file.parse(stream, path.string(), nullptr);
    if (root && root->boNodeNameIs("PropertySetDef"))
        return std::make_unique<def::pset::PropertySetDef>(*root, errors);
    if (root && root->boNodeNameIs("QtoSetDef"))
        return std::make_unique<def::qto::QuantitySetDef>(*root, errors);
    std::cerr << path.string() << ": " << (root ? "not a set" : file.pError()->reason) << '\n';
    return nullptr;
}

/// Reads all sets of the folder, and registers those that pass their check as the schema's standard ones.
def::xml::XmlSetsErrors setsRegister(const def::SchemaPset& schema, const fs::path& folder) {
    def::xml::XmlSetsErrors report;
    def::SchemaPropertySetDefinitions sets;
    // In the order of their names: of two sets of one name the first is kept.
    for (const auto& document : std::set<fs::path>(fs::directory_iterator(folder), {})) {
        def::xml::XmlSetErrors errors;
        if (auto set = pSetRead(document, errors))
            sets.xmlSetAdd(schema, std::move(set), errors);
        report.sets.insert(std::move(errors));
    }
    auto& registry = def::SchemaContextAndPropertySetDefinitions::instance();
    registry.addPropertySets({std::string(schema.getName()), true}, std::move(sets));
    return report;
}

/// Writes every set to a file of its own; true when all could be written.
bool boSetsExport(const def::SchemaPset& schema, const fs::path& folder) {
    bool isWritten = true;
    for (const auto* set : schema.getStandardDefinitions()->getXmlSets()) {
        kiv::xml::Document document;
        auto root = document.getNode().ElementNodeAppend(set->pXmlElementName());
        // The name comes from a document: it may say which file of the folder, not which folder.
        std::ofstream file(folder / fs::path(set->getName() + ".xml").filename(), std::ios::binary);
        set->exportDef(root, nullptr).vWrite(file, kiv::xml::WriteStyle::Indented);
        file.close();
        isWritten = isWritten && !file.fail();
    }
    return isWritten;
}

int run(const fs::path& schemas, const std::string& name, const fs::path& setsFolder, const fs::path& out,
        const std::string& entityName, const std::string& question) {
    // The library does not know where schemas live: the host says how one is made, and it is made once.
    auto& loader = kiv::ifc::SchemaLoader::curr();
    loader.newSchemaCallback = [schemas](const std::string& wanted) {
        std::ifstream text(schemas / (wanted + ".exp"), std::ios::binary);
        return text ? def::SchemaPset::pStepStreamRead(text).release() : nullptr;
    };
    const def::SchemaPset* found = loader.pSchemaFromName(name);
    if (!found) {
        std::cerr << name << ": no such schema\n";
        return 2;
    }
    const auto& schema = *found;

    // Sets are read, checked and kept; what is wrong with them is in the report.
    const auto report = setsRegister(schema, setsFolder);

    // From here on, any number of threads may ask.
    const auto* entity = def::schema::Entity::pFrom(schema.pObjectFromName(entityName));
    if (!entity) {
        std::cerr << entityName << ": no such entity\n";
        return 2;
    }
    for (const auto* set : schema.getXmlSetsAllToEntity(*entity, true, {}))
        std::cout << set->getName() << '\n';
    const auto type = kiv::ifc::findPropertyTypeName(question, schema);
    std::cout << question << ": " << type.value_or("no single type") << '\n';

    // And back to XML, with the report beside it.
    fs::create_directories(out);
    report.vDump((out / "report.txt").c_str());
    return boSetsExport(schema, out) ? 0 : 2;
}

} // namespace

int main(int argc, char** argv) try {
    if (argc != 7) {
        std::cerr
            << "usage: kiv_host_example SCHEMA-FOLDER SCHEMA SETS-FOLDER OUT-FOLDER ENTITY SET.MEMBER\n";
        return 2;
    }
    return run(argv[1], argv[2], argv[3], argv[4], argv[5], argv[6]);
} catch (const std::exception& error) {
    std::cerr << "kiv_host_example: " << error.what() << '\n';
    return 2;
}
