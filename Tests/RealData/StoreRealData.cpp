#include "RealData/StoreRealData.h"

#include "Support/SetFromText.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "kiv/Format/Ifc/Def/SchemaLoader.h"

#include <sstream>
#include <typeinfo>

namespace kiv::test {

namespace defs = ifc::def::xml;
namespace pset = ifc::def::pset;
namespace qto = ifc::def::qto;
using ifc::SchemaLoader;
using ifc::def::SchemaPset;

void StoreRealDataTest::SetUp() {
    RealDataTest::SetUp();
    if (IsSkipped() || HasFatalFailure() || !sets_.empty())
        return;
    SchemaLoader::curr().newSchemaCallback = [](const std::string& name) {
        std::istringstream stream(sText(schemaPath(name)));
        return SchemaPset::pStepStreamRead(stream).release();
    };
    for (const auto& release : Releases)
        vStandardAdd(release);
}

void StoreRealDataTest::TearDownTestSuite() {
    registry().clear();
    SchemaLoader::vCurrFree();
    sets_.clear();
}

ifc::def::SchemaContextAndPropertySetDefinitions& StoreRealDataTest::registry() {
    return ifc::def::SchemaContextAndPropertySetDefinitions::instance();
}

SchemaPset& StoreRealDataTest::schema(const std::string& name) {
    return *SchemaLoader::curr().pSchemaFromName(name);
}

std::filesystem::path StoreRealDataTest::schemaPath(const std::string& name) {
    return path(name == "IFC4" ? "schema/IFC4_ADD2.exp" : "schema/IFC2X3_TC1.exp");
}

const std::vector<std::string>& StoreRealDataTest::setFolders(const std::string& name) {
    static const std::map<std::string, std::vector<std::string>> folders{{"IFC4", {"IFC4", "IFC4_QTO"}},
                                                                         {"IFC2X3", {"IFC2X3"}}};
    return folders.at(name);
}

void StoreRealDataTest::vStandardAdd(const std::string& name) {
    ifc::def::SchemaPropertySetDefinitions standard;
    for (const auto& folder : setFolders(name)) {
        for (const auto& setPath : setPaths(folder)) {
            const auto text = sText(setPath);
            defs::XmlSetErrors errors;
            EXPECT_TRUE(standard.xmlSetAdd(schema(name), pSetFromText(text), errors)) << setPath;
            sets_[name].push_back(pSetFromText(text));
        }
    }
    registry().addPropertySets({name, true}, std::move(standard));
}

std::string sUpper(std::string text) {
    for (char& byte : text)
        byte = byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 32) : byte;
    return text;
}

std::string sLower(std::string text) {
    for (char& byte : text)
        byte = byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + 32) : byte;
    return text;
}

std::array<std::string, 3> casesOf(const std::string& name) {
    return {name, sUpper(name), sLower(name)};
}

std::vector<std::string> namesOf(const std::vector<const defs::SetDef*>& sets) {
    std::vector<std::string> names;
    for (const auto* const set : sets)
        names.push_back(set->getName());
    return names;
}

std::vector<const defs::Def*> membersOf(const defs::SetDef& set) {
    std::vector<const defs::Def*> members;
    if (typeid(set) == typeid(pset::PropertySetDef)) {
        for (const auto& property : dynamic_cast<const pset::PropertySetDef&>(set).getProperties())
            members.push_back(&property);
    } else {
        for (const auto& quantity : dynamic_cast<const qto::QuantitySetDef&>(set).getQuantities())
            members.push_back(&quantity);
    }
    return members;
}

std::vector<const ifc::def::schema::Entity*> entitiesOf(const SchemaPset& schema) {
    std::vector<const ifc::def::schema::Entity*> entities;
    for (const auto* const object : schema.getObjects()) {
        if (const auto* const entity = ifc::def::schema::Entity::pFrom(object))
            entities.push_back(entity);
    }
    return entities;
}

} // namespace kiv::test
