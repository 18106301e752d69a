#include "Kit/Findings/Rules/ReleaseRules.h"

namespace kiv::kit {

namespace {

// clang-format off: the examples are documents, one rule after the other.
constexpr Rule ReleaseRules[] = {
    {"V001",
     "other-release",
     Severity::Warning,
     "A document is written for another release than the loaded schema.",
     "Classes and types come and go with the releases of IFC, so that much of what is reported may only "
     "be the difference. Editions of one release count as the same, and so do the names it goes by: "
     "\"2x4\" is IFC4.\n\nCheck the document with the schema of its release, or correct the release.",
     {R"xml(<PropertySetDef>
  <IfcVersion version="2x3"/>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses>
    <ClassName>IfcWall</ClassName>
  </ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>IsExternal</Name>
      <Definition>Whether it is outside.</Definition>
      <PropertyType><TypePropertySingleValue><DataType type="IfcBoolean"/></TypePropertySingleValue></PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"},
     {R"xml(<PropertySetDef>
  <IfcVersion version="2x4"/>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses>
    <ClassName>IfcWall</ClassName>
  </ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>IsExternal</Name>
      <Definition>Whether it is outside.</Definition>
      <PropertyType><TypePropertySingleValue><DataType type="IfcBoolean"/></TypePropertySingleValue></PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"}},
    {"V002",
     "no-release",
     Severity::Warning,
     "A document does not say which release it is written for.",
     "Readers choose the schema by the release, and cannot when there is none.\n\nGive the document an "
     "\"IfcVersion\" with the attribute \"version\".",
     {R"xml(<PropertySetDef>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses>
    <ClassName>IfcWall</ClassName>
  </ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>IsExternal</Name>
      <Definition>Whether it is outside.</Definition>
      <PropertyType><TypePropertySingleValue><DataType type="IfcBoolean"/></TypePropertySingleValue></PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"},
     {R"xml(<PropertySetDef>
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses>
    <ClassName>IfcWall</ClassName>
  </ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>IsExternal</Name>
      <Definition>Whether it is outside.</Definition>
      <PropertyType><TypePropertySingleValue><DataType type="IfcBoolean"/></TypePropertySingleValue></PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"}},
    {"V003",
     "unknown-release",
     Severity::Warning,
     "A document names a release that is not known.",
     "Readers choose the schema by the release. A name that is none of IFC leads nowhere.\n\nWrite the "
     "release as it is usually named: \"IFC4\", \"IFC2X3\", \"IFC4X3_ADD2\".",
     {R"xml(<PropertySetDef>
  <IfcVersion version="Revision 4"/>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses>
    <ClassName>IfcWall</ClassName>
  </ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>IsExternal</Name>
      <Definition>Whether it is outside.</Definition>
      <PropertyType><TypePropertySingleValue><DataType type="IfcBoolean"/></TypePropertySingleValue></PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"},
     {R"xml(<PropertySetDef>
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses>
    <ClassName>IfcWall</ClassName>
  </ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>IsExternal</Name>
      <Definition>Whether it is outside.</Definition>
      <PropertyType><TypePropertySingleValue><DataType type="IfcBoolean"/></TypePropertySingleValue></PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"}},
};
// clang-format on

} // namespace

std::span<const Rule> getReleaseRules() {
    return ReleaseRules;
}

} // namespace kiv::kit
