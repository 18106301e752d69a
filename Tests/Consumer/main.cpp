// A host that was given nothing but the package: reads a schema and a set, registers it, asks, and writes it
// back. Ends with 0 when every answer is the expected one, else says which one is not.
#include <kiv/KivIfcSchemaPset.h>

#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <utility>

static_assert(KIV_VERSION_MAJOR == 0 && KIV_VERSION_MINOR == 1, "headers of another version");

namespace {

namespace def = kiv::ifc::def;

const char* const SchemaText = "SCHEMA HOUSE;\n"
                               "TYPE HsLabel = STRING;\n"
                               "END_TYPE;\n"
                               "ENTITY HsWall;\n"
                               "\tMark : OPTIONAL HsLabel;\n"
                               "END_ENTITY;\n"
                               "END_SCHEMA;\n";
const char* const SetText =
    "<PropertySetDef><Name>Pset_Wall</Name>"
    "<ApplicableClasses><ClassName>HsWall</ClassName></ApplicableClasses>"
    "<PropertyDefs><PropertyDef><Name>Colour</Name><PropertyType><TypePropertySingleValue>"
    "<DataType type=\"HsLabel\"/></TypePropertySingleValue></PropertyType></PropertyDef>"
    "</PropertyDefs></PropertySetDef>";

/// A kind of set that the library does not know, as a host writes it.
class HostSet : public def::xml::SetDef {
public:
    using SetDef::SetDef;

    kiv::xml::Element exportDef(kiv::xml::Element& element, def::xml::ExtraExportInfo*) const override {
        vExportCommon(element);
        return element;
    }
    const char* pXmlElementName() const override { return "HostSet"; }
};

int failures = 0;

void vExpect(bool isAsExpected, const char* what) {
    if (!isAsExpected) {
        std::cerr << "consumer: not as expected: " << what << '\n';
        ++failures;
    }
}

std::unique_ptr<def::pset::PropertySetDef> pSetRead(def::xml::XmlSetErrors& errors) {
    std::istringstream text(SetText);
    kiv::xml::File file(nullptr, kiv::xml::VerboseLevel::Quiet, kiv::xml::ValidateLevel::None);
    const auto root = file.parse(text, "Pset_Wall.xml", nullptr);
    return root ? std::make_unique<def::pset::PropertySetDef>(*root, errors) : nullptr;
}

void vSetRegister(const def::SchemaPset& schema) {
    def::xml::XmlSetErrors errors;
    def::SchemaPropertySetDefinitions sets;
    auto set = pSetRead(errors);
    vExpect(set != nullptr, "the set is read");
    if (!set)
        return;
    sets.xmlSetAdd(schema, std::move(set), errors);
    auto& registry = def::SchemaContextAndPropertySetDefinitions::instance();
    registry.addPropertySets({std::string(schema.getName()), true}, std::move(sets));
}

std::string sExported(const def::xml::SetDef& set) {
    kiv::xml::Document document;
    auto root = document.getNode().ElementNodeAppend(set.pXmlElementName());
    std::ostringstream text;
    set.exportDef(root, nullptr).vWrite(text, kiv::xml::WriteStyle::Indented);
    return text.str();
}

void vAsk(const def::SchemaPset& schema) {
    const auto* wall = def::schema::Entity::pFrom(schema.pObjectFromName("hswall"));
    vExpect(wall != nullptr, "an entity is found whatever the case of its letters");
    if (!wall)
        return;
    const auto type = kiv::ifc::findPropertyTypeName("Pset_Wall.Colour", schema);
    vExpect(type == "HsLabel", "the type of a property");
    int sets = 0;
    for (const auto* set : schema.getXmlSetsAllToEntity(*wall, true, {})) {
        ++sets;
        vExpect(sExported(*set).find("Pset_Wall") != std::string::npos, "the set is written back");
    }
    vExpect(sets == 1, "one set applies to the entity");
}

void vHostSetAdd(const def::SchemaPset& schema) {
    def::xml::XmlSetErrors errors;
    errors.vErrorAdd(def::xml::ErrorKind::Error, "item", "a problem of the host's own");
    vExpect(errors.getRecords().at(0).line == 0, "a record needs no line");
    def::SchemaPropertySetDefinitions sets;
    vExpect(sets.xmlSetAdd(schema, std::make_unique<HostSet>("Host_Set"), errors),
            "a set of the host's is taken");
    const auto* const set = sets.getXmlSetFromName("host_set");
    vExpect(set && sExported(*set).find("Host_Set") != std::string::npos, "a set of the host's is written");
}

void vExceptionPass() {
    // Thrown in the library, caught here: both must mean the same class.
    try {
        kiv::ifc::SchemaLoader::curr().newSchemaCallback = nullptr;
        kiv::ifc::SchemaLoader::curr().pSchemaFromName("NONE");
        vExpect(false, "a loader without a callback throws");
    } catch (const kiv::exception&) {
    }
}

} // namespace

int main() {
    std::istringstream text(SchemaText);
    const auto schema = def::SchemaPset::pStepStreamRead(text);
    vExpect(schema != nullptr, "the schema is read");
    if (schema) {
        vSetRegister(*schema);
        vAsk(*schema);
        vHostSetAdd(*schema);
    }
    vExceptionPass();
    if (failures == 0)
        std::cout << "consumer of KivIfcSchemaPset " << KIV_VERSION << ": all answers as expected\n";
    return failures == 0 ? 0 : 1;
}
