#include "Kit/Findings/Rules/DocumentationRules.h"

namespace kiv::kit {

namespace {

// clang-format off: the examples are documents, one rule after the other.
constexpr Rule DocumentationRules[] = {
    {"D001",
     "set-without-definition",
     Severity::Note,
     "A set has no definition.",
     "The definition is what people read who have to choose a set, and what translations start from.\n\n"
     "Say in \"Definition\" what the set is for.",
     {R"xml(<PropertySetDef>
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallCommon</Name>
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
    {"D002",
     "member-without-definition",
     Severity::Note,
     "A property or quantity has no definition.",
     "A name alone leaves open what is meant, and people fill in different things.\n\nSay in "
     "\"Definition\" what the value is, and from where to where it is measured.",
     {R"xml(<PropertySetDef>
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses>
    <ClassName>IfcWall</ClassName>
  </ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>Thickness</Name>
      <PropertyType>
        <TypePropertySingleValue>
          <DataType type="IfcPositiveLengthMeasure"/>
        </TypePropertySingleValue>
      </PropertyType>
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
      <Name>Thickness</Name>
      <Definition>How thick it is.</Definition>
      <PropertyType>
        <TypePropertySingleValue>
          <DataType type="IfcPositiveLengthMeasure"/>
        </TypePropertySingleValue>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"}},
    {"D003",
     "name-with-several-types",
     Severity::Note,
     "One name has different types in different sets.",
     "People who know the one expect the other to be the same, and so do programs that look for a "
     "property by its name alone. Where most sets agree on a type, the others are reported.\n\nUse the "
     "same type, or another name.",
     {R"xml(---- Pset_WallCommon.xml
<PropertySetDef>
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses>
    <ClassName>IfcWall</ClassName>
  </ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>Thickness</Name>
      <Definition>How thick it is.</Definition>
      <PropertyType>
        <TypePropertySingleValue>
          <DataType type="IfcPositiveLengthMeasure"/>
        </TypePropertySingleValue>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
---- Pset_WallFinish.xml
<PropertySetDef>
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallFinish</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses>
    <ClassName>IfcWall</ClassName>
  </ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>Thickness</Name>
      <Definition>How thick it is.</Definition>
      <PropertyType>
        <TypePropertySingleValue>
          <DataType type="IfcLabel"/>
        </TypePropertySingleValue>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"},
     {R"xml(---- Pset_WallCommon.xml
<PropertySetDef>
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses>
    <ClassName>IfcWall</ClassName>
  </ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>Thickness</Name>
      <Definition>How thick it is.</Definition>
      <PropertyType>
        <TypePropertySingleValue>
          <DataType type="IfcPositiveLengthMeasure"/>
        </TypePropertySingleValue>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
---- Pset_WallFinish.xml
<PropertySetDef>
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallFinish</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses>
    <ClassName>IfcWall</ClassName>
  </ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>Thickness</Name>
      <Definition>How thick it is.</Definition>
      <PropertyType>
        <TypePropertySingleValue>
          <DataType type="IfcPositiveLengthMeasure"/>
        </TypePropertySingleValue>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"}},
};
// clang-format on

} // namespace

std::span<const Rule> getDocumentationRules() {
    return DocumentationRules;
}

} // namespace kiv::kit
