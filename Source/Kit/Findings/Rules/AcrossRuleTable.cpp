#include "Kit/Findings/Rules/AcrossRules.h"

namespace kiv::kit {

namespace {

// clang-format off: the examples are documents, one rule after the other.
constexpr Rule AcrossGuidRules[] = {
    {"G101",
     "guid-in-two-documents",
     Severity::Error,
     "A GUID is in two documents.",
     "A GUID is there to identify one definition. A look-up by GUID finds the first one of the two and "
     "never the other. That of a set is not looked up, and is a warning.\n\nGive the later one a GUID of "
     "its own. Copies of one set are reported as two sets of one name instead.",
     {R"xml(---- Pset_WallCommon.xml
<PropertySetDef>
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses>
    <ClassName>IfcWall</ClassName>
  </ApplicableClasses>
  <PropertyDefs>
    <PropertyDef ifdguid="11111111-2222-3333-4444-555555555555">
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
    <PropertyDef ifdguid="11111111-2222-3333-4444-555555555555">
      <Name>Colour</Name>
      <Definition>What it looks like.</Definition>
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
    <PropertyDef ifdguid="11111111-2222-3333-4444-555555555555">
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
    <PropertyDef ifdguid="11111111-2222-3333-4444-666666666666">
      <Name>Colour</Name>
      <Definition>What it looks like.</Definition>
      <PropertyType>
        <TypePropertySingleValue>
          <DataType type="IfcLabel"/>
        </TypePropertySingleValue>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"}},
};
// clang-format on

// clang-format off: the examples are documents, one rule after the other.
constexpr Rule AcrossRules[] = {
    {"X001",
     "set-name-twice",
     Severity::Error,
     "Two sets have one name.",
     "Sets are looked up by name, in any letter case. Of two sets of one name only the first is kept, and "
     "the other is lost.\n\nRename one of them, or make them one set.",
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
      <Name>IsExternal</Name>
      <Definition>Whether it is outside.</Definition>
      <PropertyType><TypePropertySingleValue><DataType type="IfcBoolean"/></TypePropertySingleValue></PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
---- Pset_WallCommon2.xml
<PropertySetDef>
  <IfcVersion version="IFC4"/>
  <Name>PSET_WallCommon</Name>
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
      <Name>IsExternal</Name>
      <Definition>Whether it is outside.</Definition>
      <PropertyType><TypePropertySingleValue><DataType type="IfcBoolean"/></TypePropertySingleValue></PropertyType>
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
      <Name>IsExternal</Name>
      <Definition>Whether it is outside.</Definition>
      <PropertyType><TypePropertySingleValue><DataType type="IfcBoolean"/></TypePropertySingleValue></PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"}},
    {"X002",
     "set-name-in-two-contexts",
     Severity::Note,
     "Sets of one name are in different contexts.",
     "A set of a context that is searched first hides the sets of that name in others. That is how an "
     "office replaces a standard set by its own.\n\nNothing is to be done when the hiding is intended.",
     {R"xml(---- standard/Pset_WallCommon.xml
<PropertySetDef>
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
---- office/Pset_WallCommon.xml
<PropertySetDef>
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
)xml"},
     {R"xml(---- standard/Pset_WallCommon.xml
<PropertySetDef>
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
---- office/Pset_WallFinish.xml
<PropertySetDef>
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallFinish</Name>
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
    {"X003",
     "enumeration-with-other-items",
     Severity::Warning,
     "One enumeration has different items in different places.",
     "An enumeration of one name is one enumeration: in a model there is one list of items for it. Where "
     "the lists differ, values that are legal in one place are not in the other.\n\nMake the lists the "
     "same, or give one of the enumerations another name. The order of the items does not matter.",
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
      <Name>Status</Name>
      <Definition>How far it is built.</Definition>
      <PropertyType>
        <TypePropertyEnumeratedValue>
          <EnumList name="PEnum_Status">
            <EnumItem>NEW</EnumItem>
            <EnumItem>EXISTING</EnumItem>
          </EnumList>
        </TypePropertyEnumeratedValue>
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
      <Name>Status</Name>
      <Definition>How far it is built.</Definition>
      <PropertyType>
        <TypePropertyEnumeratedValue>
          <EnumList name="PEnum_Status">
            <EnumItem>NEW</EnumItem>
            <EnumItem>OLD</EnumItem>
          </EnumList>
        </TypePropertyEnumeratedValue>
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
      <Name>Status</Name>
      <Definition>How far it is built.</Definition>
      <PropertyType>
        <TypePropertyEnumeratedValue>
          <EnumList name="PEnum_Status">
            <EnumItem>NEW</EnumItem>
            <EnumItem>EXISTING</EnumItem>
          </EnumList>
        </TypePropertyEnumeratedValue>
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
      <Name>Status</Name>
      <Definition>How far it is built.</Definition>
      <PropertyType>
        <TypePropertyEnumeratedValue>
          <EnumList name="PEnum_Status">
            <EnumItem>EXISTING</EnumItem>
            <EnumItem>NEW</EnumItem>
          </EnumList>
        </TypePropertyEnumeratedValue>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"}},
    {"X004",
     "names-differ-in-case",
     Severity::Note,
     "Two names differ in letter case only.",
     "To some programs they are one name, to others two.\n\nWrite the name in one way everywhere.",
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
      <Name>THICKNESS</Name>
      <Definition>How thick it is.</Definition>
      <PropertyType>
        <TypePropertySingleValue>
          <DataType type="IfcPositiveLengthMeasure"/>
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

std::span<const Rule> getAcrossGuidRules() {
    return AcrossGuidRules;
}

std::span<const Rule> getAcrossRules() {
    return AcrossRules;
}

} // namespace kiv::kit
