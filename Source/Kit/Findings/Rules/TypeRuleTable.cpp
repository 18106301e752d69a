#include "Kit/Findings/Rules/TypeRules.h"

namespace kiv::kit {

namespace {

// clang-format off: the examples are documents, one rule after the other.
constexpr Rule TypeRules[] = {
    {"T001",
     "unknown-data-type",
     Severity::Error,
     "A data type is not in the schema.",
     "Values of a type that the schema does not have cannot be written to a model, and readers of the set "
     "do not know what to expect.\n\nWrite the name as the schema has it. The nearest name is shown when "
     "there is one.",
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
          <DataType type="IfcPositivLengthMeasure"/>
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
    {"T002",
     "type-of-another-release",
     Severity::Error,
     "A data type is in another release only.",
     "Types come and go with the releases of IFC. A set is for one of them, and its types have to be in "
     "that one.\n\nUse the type that the release has for this purpose, or declare the set for the release "
     "that has the type.",
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
          <DataType type="IfcHourInDay"/>
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
    {"T003",
     "no-value-type",
     Severity::Error,
     "An entity is named where the type of a value belongs.",
     "The value of a property is a number, a text or the like: of a defined type. A property that refers "
     "to an entity is of another kind, a reference value.\n\nName a defined type, or make the property a "
     "\"TypePropertyReferenceValue\" with the entity as its \"reftype\".",
     {R"xml(<PropertySetDef>
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
        <TypePropertySingleValue>
          <DataType type="IfcMaterial"/>
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
      <Name>Material</Name>
      <Definition>What it is made of.</Definition>
      <PropertyType>
        <TypePropertyReferenceValue reftype="IfcMaterial"/>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"}},
    {"T004",
     "no-entity-reference",
     Severity::Error,
     "A defined type is named where a reference needs an entity.",
     "A reference value refers to an entity of the model, such as a material. It cannot refer to a "
     "value.\n\nName an entity as \"reftype\", or make the property a \"TypePropertySingleValue\".",
     {R"xml(<PropertySetDef>
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
        <TypePropertyReferenceValue reftype="IfcLabel"/>
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
      <Name>Material</Name>
      <Definition>What it is made of.</Definition>
      <PropertyType>
        <TypePropertyReferenceValue reftype="IfcMaterial"/>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"}},
    {"T005",
     "type-not-selected",
     Severity::Warning,
     "A property cannot hold what its type describes.",
     "The schema lists in a SELECT which types the values of a property may have, and which entities a "
     "property may refer to. A type that is not among them is in the schema, but no model can hold it in "
     "a property.\n\nUse one of the types that the SELECT has.",
     {R"xml(<PropertySetDef>
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
        <TypePropertySingleValue>
          <DataType type="IfcWallTypeEnum"/>
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
      <Name>Status</Name>
      <Definition>How far it is built.</Definition>
      <PropertyType>
        <TypePropertySingleValue>
          <DataType type="IfcLabel"/>
        </TypePropertySingleValue>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"}},
    {"T006",
     "type-letter-case",
     Severity::Warning,
     "A type is written in another letter case than in the schema.",
     "EXPRESS does not look at letter case, and neither does the check. Programs that compare the name "
     "with that in the schema do.\n\nWrite the name as the schema has it.",
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
          <DataType type="IFCPositiveLengthMeasure"/>
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
    {"T007",
     "blanks-around-type",
     Severity::Error,
     "There is white space around the name of a type.",
     "The white space is a part of what is read, and a type of that name does not exist.\n\nRemove it.",
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
          <DataType type="IfcPositiveLengthMeasure "/>
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
    {"T008",
     "missing-type",
     Severity::Error,
     "A value has no data type.",
     "Without a type, nobody knows whether the value is a length, a text or a number.\n\nGive the value a "
     "\"DataType\" with the attribute \"type\".",
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
    {"T009",
     "empty-enumeration",
     Severity::Warning,
     "An enumeration has no items.",
     "A property with an enumeration has one of its items as its value. Where there are none, it can have "
     "no value.\n\nList the items as \"EnumItem\" in \"EnumList\".",
     {R"xml(<PropertySetDef>
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
          <EnumList name="PEnum_Status"/>
        </TypePropertyEnumeratedValue>
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
)xml"}},
    {"T010",
     "repeated-item",
     Severity::Warning,
     "An enumeration has an item twice.",
     "The second one adds nothing, and is often there in place of another.\n\nRemove it, or write what "
     "was meant.",
     {R"xml(<PropertySetDef>
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
            <EnumItem>NEW</EnumItem>
          </EnumList>
        </TypePropertyEnumeratedValue>
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
)xml"}},
    {"T011",
     "constant-without-item",
     Severity::Warning,
     "A constant of an enumeration is not among its items.",
     "\"ConstantList\" explains the items of \"EnumList\" one by one. A constant that is no item explains "
     "nothing.\n\nWrite the name of the constant as the item has it.",
     {R"xml(<PropertySetDef>
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
          <ConstantList>
            <ConstantDef><Name>NEW</Name></ConstantDef>
            <ConstantDef><Name>EXISTNG</Name></ConstantDef>
          </ConstantList>
        </TypePropertyEnumeratedValue>
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
      <Name>Status</Name>
      <Definition>How far it is built.</Definition>
      <PropertyType>
        <TypePropertyEnumeratedValue>
          <EnumList name="PEnum_Status">
            <EnumItem>NEW</EnumItem>
            <EnumItem>EXISTING</EnumItem>
          </EnumList>
          <ConstantList>
            <ConstantDef><Name>NEW</Name></ConstantDef>
            <ConstantDef><Name>EXISTING</Name></ConstantDef>
          </ConstantList>
        </TypePropertyEnumeratedValue>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"}},
    {"T012",
     "table-without-columns",
     Severity::Note,
     "A table does not say what is in its columns.",
     "A table value has two columns, the defining values and the defined values. Many documents leave "
     "open what is in them; then nobody knows how to fill the table. A table that describes only one of "
     "its columns is more likely a slip, and is a warning.\n\nGive the table a \"DefiningValue\" and a "
     "\"DefinedValue\", each with a \"DataType\".",
     {R"xml(<PropertySetDef>
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses>
    <ClassName>IfcWall</ClassName>
  </ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>Curve</Name>
      <Definition>How it bends.</Definition>
      <PropertyType>
        <TypePropertyTableValue/>
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
      <Name>Curve</Name>
      <Definition>How it bends.</Definition>
      <PropertyType>
        <TypePropertyTableValue>
          <DefiningValue>
            <DataType type="IfcReal"/>
          </DefiningValue>
          <DefinedValue>
            <DataType type="IfcPositiveLengthMeasure"/>
          </DefinedValue>
        </TypePropertyTableValue>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"}},
    {"T013",
     "list-without-type",
     Severity::Error,
     "A list does not say what it is a list of.",
     "Without a type, nobody knows what the items of the list are.\n\nGive the list a \"ListValue\" with "
     "a \"DataType\".",
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
        <TypePropertyListValue/>
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
        <TypePropertyListValue>
          <ListValue>
            <DataType type="IfcPositiveLengthMeasure"/>
          </ListValue>
        </TypePropertyListValue>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"}},
    {"T014",
     "swapped-bounds",
     Severity::Warning,
     "A lower bound is above the upper bound.",
     "No value is between them, so that every value would be wrong.\n\nExchange the bounds.",
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
        <TypePropertyBoundedValue>
          <ValueRangeDef>
            <LowerBoundValue value="0.5"/>
            <UpperBoundValue value="0.1"/>
          </ValueRangeDef>
          <DataType type="IfcPositiveLengthMeasure"/>
        </TypePropertyBoundedValue>
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
        <TypePropertyBoundedValue>
          <ValueRangeDef>
            <LowerBoundValue value="0.1"/>
            <UpperBoundValue value="0.5"/>
          </ValueRangeDef>
          <DataType type="IfcPositiveLengthMeasure"/>
        </TypePropertyBoundedValue>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"}},
    {"T015",
     "value-misfit",
     Severity::Warning,
     "A value is not of the type that is given for it.",
     "A number is needed where the type is defined as REAL, true or false where it is BOOLEAN, and one of "
     "its items where it is an enumeration. \"?\" is for a bound that is not known.\n\nWrite a value of "
     "the type, with a point and not a comma in numbers, or name the type that the value has.",
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
        <TypePropertyBoundedValue>
          <ValueRangeDef>
            <LowerBoundValue value="0,1"/>
            <UpperBoundValue value="0.5"/>
          </ValueRangeDef>
          <DataType type="IfcPositiveLengthMeasure"/>
        </TypePropertyBoundedValue>
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
        <TypePropertyBoundedValue>
          <ValueRangeDef>
            <LowerBoundValue value="0.1"/>
            <UpperBoundValue value="0.5"/>
          </ValueRangeDef>
          <DataType type="IfcPositiveLengthMeasure"/>
        </TypePropertyBoundedValue>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"}},
    {"T016",
     "unit-misfit",
     Severity::Warning,
     "A unit is not that of the measure.",
     "The schema has a unit for most measures, and its name says which: LENGTHUNIT is that of "
     "IfcLengthMeasure and of every type that is defined by it. With the unit of another measure, values "
     "are converted wrongly. Measures for which the schema has no unit of that name are not looked at.\n\n"
     "Write the unit of the measure, or leave \"UnitType\" out.",
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
          <UnitType type="AREAUNIT"/>
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
          <UnitType type="LENGTHUNIT"/>
        </TypePropertySingleValue>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"}},
    {"T017",
     "unit-without-number",
     Severity::Warning,
     "A unit is given for values that are no numbers.",
     "Texts, truth values and items of enumerations are in no unit. Usually the unit belongs to another "
     "type, or was left over when the type was changed.\n\nLeave \"UnitType\" out, or name the measure as "
     "the type.",
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
          <DataType type="IfcLabel"/>
          <UnitType type="LENGTHUNIT"/>
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
          <UnitType type="LENGTHUNIT"/>
        </TypePropertySingleValue>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"}},
    {"T018",
     "select-as-type",
     Severity::Warning,
     "A SELECT is named as the type of a value.",
     "A SELECT lists types, and each value is of one of them. A property whose type is a SELECT leaves "
     "open whether its values are lengths, texts or numbers, so that no two people fill it in "
     "alike.\n\nName one of the types that the SELECT has.",
     {R"xml(<PropertySetDef>
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses>
    <ClassName>IfcWall</ClassName>
  </ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>Mark</Name>
      <Definition>What is written on it.</Definition>
      <PropertyType>
        <TypePropertySingleValue>
          <DataType type="IfcValue"/>
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
      <Name>Mark</Name>
      <Definition>What is written on it.</Definition>
      <PropertyType>
        <TypePropertySingleValue>
          <DataType type="IfcLabel"/>
        </TypePropertySingleValue>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"}},
    {"T019",
     "columns-of-different-length",
     Severity::Warning,
     "The columns of a table have different numbers of values.",
     "Each defining value has one defined value, the one in the same place of the other column. Where "
     "one of them is missing, those after it belong to the wrong ones.\n\nAdd the values that are "
     "missing, or remove those that are too many.",
     {R"xml(<PropertySetDef>
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
            </Values>
          </DefinedValue>
        </TypePropertyTableValue>
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
)xml"}},
    {"T020",
     "item-without-text",
     Severity::Warning,
     "An enumeration has an item without text.",
     "Such an item is left out when the document is read, as if it were not there. It may have been "
     "meant as the value for \"nothing\"; values that are absent need no item.\n\nRemove it, or write "
     "what was meant.",
     {R"xml(<PropertySetDef>
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
            <EnumItem></EnumItem>
            <EnumItem>EXISTING</EnumItem>
          </EnumList>
        </TypePropertyEnumeratedValue>
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
)xml"}},
    {"T021",
     "items-in-two-letter-cases",
     Severity::Warning,
     "Two items of an enumeration differ in letter case only.",
     "People take both for the same item, and so do programs that do not look at letter case. It is one "
     "item, written in two ways.\n\nRemove one of them.",
     {R"xml(<PropertySetDef>
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
            <EnumItem>New</EnumItem>
            <EnumItem>EXISTING</EnumItem>
          </EnumList>
        </TypePropertyEnumeratedValue>
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
)xml"}},
    {"T022",
     "repeated-constant",
     Severity::Warning,
     "A constant of an enumeration is described twice.",
     "\"ConstantList\" explains the items of \"EnumList\" one by one. Of two descriptions of one item "
     "nobody knows which is right, and often one of them is of another item.\n\nRemove one of them, or "
     "correct its name.",
     {R"xml(<PropertySetDef>
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
          <ConstantList>
            <ConstantDef>
              <Name>NEW</Name>
            </ConstantDef>
            <ConstantDef>
              <Name>NEW</Name>
            </ConstantDef>
          </ConstantList>
        </TypePropertyEnumeratedValue>
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
      <Name>Status</Name>
      <Definition>How far it is built.</Definition>
      <PropertyType>
        <TypePropertyEnumeratedValue>
          <EnumList name="PEnum_Status">
            <EnumItem>NEW</EnumItem>
            <EnumItem>EXISTING</EnumItem>
          </EnumList>
          <ConstantList>
            <ConstantDef>
              <Name>NEW</Name>
            </ConstantDef>
            <ConstantDef>
              <Name>EXISTING</Name>
            </ConstantDef>
          </ConstantList>
        </TypePropertyEnumeratedValue>
      </PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"}},
    {"T023",
     "blanks-around-item",
     Severity::Note,
     "An item of an enumeration begins or ends with white space.",
     "Readers of this library leave it out. Others keep it, and do not find the item then.\n\nRemove "
     "the white space. It may be a line break between the tag and the text.",
     {R"xml(<PropertySetDef>
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
            <EnumItem>NEW </EnumItem>
            <EnumItem>EXISTING</EnumItem>
          </EnumList>
        </TypePropertyEnumeratedValue>
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
)xml"}},
};
// clang-format on

} // namespace

std::span<const Rule> getTypeRules() {
    return TypeRules;
}

} // namespace kiv::kit
