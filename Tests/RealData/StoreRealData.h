/// The real schemas with their standard sets, loaded and registered as a host does it.
///
///     class StoreRealDataTest...
///     const auto* const set = schema("IFC4").pXmlSetFromName("Pset_WallCommon", {});
#pragma once

#include "RealData/RealData.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/SchemaContextAndPropertySetDefinitions.h"
#include "kiv/Format/Ifc/Def/SchemaPset.h"

#include <array>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kiv::test {

/// The schemas made by the loader, their standard sets in the registry, and the same sets read once more:
/// what a test expects is worked out from these by walking through all of them.
class StoreRealDataTest : public RealDataTest {
public:
    using Sets = std::vector<std::unique_ptr<ifc::def::xml::SetDef>>;

protected:
    void SetUp() override;
    static void TearDownTestSuite();

    static ifc::def::SchemaContextAndPropertySetDefinitions& registry();

    /// By its name, "IFC4" or "IFC2X3".
    static ifc::def::SchemaPset& schema(const std::string& name);
    /// The file that it is read from.
    static std::filesystem::path schemaPath(const std::string& name);

    /// The sets of a release, in the order in which they were added.
    static const Sets& sets(const std::string& name) { return sets_.at(name); }
    /// The folders of a release's sets.
    static const std::vector<std::string>& setFolders(const std::string& name);

    /// The configuration of IFC4.
    static std::filesystem::path configPath() { return path("config/IFC4_ADD1_config.xml"); }

private:
    static void vStandardAdd(const std::string& name);

    static inline std::map<std::string, Sets> sets_;
};

/// The names of both schemas.
inline const std::array<std::string, 2> Releases{"IFC4", "IFC2X3"};

std::string sUpper(std::string text);
std::string sLower(std::string text);

/// The name in three letter cases.
std::array<std::string, 3> casesOf(const std::string& name);

std::vector<std::string> namesOf(const std::vector<const ifc::def::xml::SetDef*>& sets);

/// The members of a set, by pointer.
std::vector<const ifc::def::xml::Def*> membersOf(const ifc::def::xml::SetDef& set);

/// In the order of the schema's text.
std::vector<const ifc::def::schema::Entity*> entitiesOf(const ifc::def::SchemaPset& schema);

} // namespace kiv::test
