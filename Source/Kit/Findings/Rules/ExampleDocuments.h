/// @file
/// The documents that rules show as examples: a few whole ones, and those that differ from them in a place or
/// two.
///
/// Private to the kit.
///
///     changed(WallSet, {{"<Name>IsExternal</Name>", "<Name/>"}})
///
/// Ownership: texts live as long as the process.
/// Threads:   any number of threads.
/// Errors:    std::logic_error for a part that is not there; std::bad_alloc.
#pragma once

#include "kiv/Kit/Findings/Rule.h"

#include <initializer_list>
#include <string_view>

namespace kiv::kit {

/// A property of one type and nothing more; the frame of most examples.
inline constexpr RuleExample WallSet = {R"xml(<PropertySetDef>
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>IsExternal</Name>
      <Definition>Whether it is outside.</Definition>
      <PropertyType><TypePropertySingleValue><DataType type="IfcBoolean"/></TypePropertySingleValue></PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"};

/// The same with its classes on lines of their own.
inline constexpr RuleExample WallClassSet = {R"xml(<PropertySetDef>
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
)xml"};

/// With the data type on a line of its own.
inline constexpr RuleExample ThicknessSet = {R"xml(<PropertySetDef>
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
)xml"};

/// An enumeration.
inline constexpr RuleExample StatusSet = {R"xml(<PropertySetDef>
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
)xml"};

/// A bounded value.
inline constexpr RuleExample WidthSet = {R"xml(<PropertySetDef>
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>Width</Name>
      <Definition>How wide it is.</Definition>
      <PropertyType>
        <TypePropertyBoundedValue>
          <DataType type="IfcReal"/>
        </TypePropertyBoundedValue>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"};

/// A reference.
inline constexpr RuleExample MaterialSet = {R"xml(<PropertySetDef>
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses>
    <ClassName>IfcWall</ClassName>
  </ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>Material</Name>
      <Definition>What it is made of.</Definition>
      <PropertyType>
        <TypePropertyReferenceValue reftype="IfcMaterial"/>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"};

/// A table with values.
inline constexpr RuleExample TableSet = {R"xml(<PropertySetDef>
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses>
    <ClassName>IfcWall</ClassName>
  </ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>Strength</Name>
      <Definition>How strong it is by its thickness.</Definition>
      <PropertyType>
        <TypePropertyTableValue>
          <DefiningValue>
            <DataType type="IfcLengthMeasure"/>
            <Values>
              <ValueItem>0.1</ValueItem>
              <ValueItem>0.2</ValueItem>
            </Values>
          </DefiningValue>
          <DefinedValue>
            <DataType type="IfcReal"/>
            <Values>
              <ValueItem>3.5</ValueItem>
              <ValueItem>7</ValueItem>
            </Values>
          </DefinedValue>
        </TypePropertyTableValue>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"};

/// A quantity.
inline constexpr RuleExample WallQuantities = {R"xml(<QtoSetDef>
  <IfcVersion version="IFC4"/>
  <Name>Qto_WallBaseQuantities</Name>
  <Definition>Quantities of all walls.</Definition>
  <ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>
  <QtoDefs>
    <QtoDef><Name>Width</Name><Definition>How wide.</Definition><QtoType>Q_LENGTH</QtoType></QtoDef>
  </QtoDefs>
</QtoSetDef>
)xml"};

/// What an example has in the place of a part of another one.
struct ExampleChange {
    /// Is there; where it is several times, the first is meant.
    std::string_view part;
    std::string_view instead;
};

/// The example with those changes, made one after the other.
RuleExample changed(const RuleExample& example, std::initializer_list<ExampleChange> changes);

struct ExampleFile {
    std::string_view path;
    RuleExample content;
};

/// An example of several files.
RuleExample inFiles(std::initializer_list<ExampleFile> files);

} // namespace kiv::kit
