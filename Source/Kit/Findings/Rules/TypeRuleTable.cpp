#include "Kit/Findings/Rules/TypeRules.h"

#include "Kit/Findings/Rules/ExampleDocuments.h"

namespace kiv::kit {

std::span<const Rule> getTypeRules() {
    static const Rule rules[] = {
        {"T001", "unknown-data-type", Severity::Error, "A data type is not in the schema.",
         "Values of a type that the schema does not have cannot be written to a model, and readers of the "
         "set do not know what to expect.\n\nWrite the name as the schema has it. The nearest name is shown "
         "when there is one.",
         changed(ThicknessSet, {{R"(<DataType type="IfcPositiveLengthMeasure"/>)",
                                 R"(<DataType type="IfcPositivLengthMeasure"/>)"}}),
         ThicknessSet},
        {"T002", "type-of-another-release", Severity::Error, "A data type is in another release only.",
         "Types come and go with the releases of IFC. A set is for one of them, and its types have to be in "
         "that one.\n\nUse the type that the release has for this purpose, or declare the set for the "
         "release that has the type.",
         changed(ThicknessSet,
                 {{R"(<DataType type="IfcPositiveLengthMeasure"/>)", R"(<DataType type="IfcHourInDay"/>)"}}),
         ThicknessSet},
        {"T003", "no-value-type", Severity::Error, "An entity is named where the type of a value belongs.",
         "The value of a property is a number, a text or the like: of a defined type. A property that refers "
         "to an entity is of another kind, a reference value.\n\nName a defined type, or make the property a "
         "\"TypePropertyReferenceValue\" with the entity as its \"reftype\".",
         changed(MaterialSet,
                 {{R"(<TypePropertyReferenceValue reftype="IfcMaterial"/>)", R"xml(<TypePropertySingleValue>
          <DataType type="IfcMaterial"/>
        </TypePropertySingleValue>)xml"}}),
         MaterialSet},
        {"T004", "no-entity-reference", Severity::Error,
         "A defined type is named where a reference needs an entity.",
         "A reference value refers to an entity of the model, such as a material. It cannot refer to a "
         "value.\n\nName an entity as \"reftype\", or make the property a \"TypePropertySingleValue\".",
         changed(MaterialSet, {{R"(<TypePropertyReferenceValue reftype="IfcMaterial"/>)",
                                R"(<TypePropertyReferenceValue reftype="IfcLabel"/>)"}}),
         MaterialSet},
        {"T005", "type-not-selected", Severity::Warning, "A property cannot hold what its type describes.",
         "The schema lists in a SELECT which types the values of a property may have, and which entities a "
         "property may refer to. A type that is not among them is in the schema, but no model can hold it in "
         "a property.\n\nUse one of the types that the SELECT has.",
         changed(
             ThicknessSet,
             {{"<Name>Thickness</Name>", "<Name>Status</Name>"},
              {"<Definition>How thick it is.</Definition>", "<Definition>How far it is built.</Definition>"},
              {R"(<DataType type="IfcPositiveLengthMeasure"/>)", R"(<DataType type="IfcWallTypeEnum"/>)"}}),
         changed(
             ThicknessSet,
             {{"<Name>Thickness</Name>", "<Name>Status</Name>"},
              {"<Definition>How thick it is.</Definition>", "<Definition>How far it is built.</Definition>"},
              {R"(<DataType type="IfcPositiveLengthMeasure"/>)", R"(<DataType type="IfcLabel"/>)"}})},
        {"T006", "type-letter-case", Severity::Warning,
         "A type is written in another letter case than in the schema.",
         "EXPRESS does not look at letter case, and neither does the check. Programs that compare the name "
         "with that in the schema do.\n\nWrite the name as the schema has it.",
         changed(ThicknessSet, {{R"(<DataType type="IfcPositiveLengthMeasure"/>)",
                                 R"(<DataType type="IFCPositiveLengthMeasure"/>)"}}),
         ThicknessSet},
        {"T007", "blanks-around-type", Severity::Error, "There is white space around the name of a type.",
         "The white space is a part of what is read, and a type of that name does not exist.\n\nRemove it.",
         changed(ThicknessSet, {{R"(<DataType type="IfcPositiveLengthMeasure"/>)",
                                 R"(<DataType type="IfcPositiveLengthMeasure "/>)"}}),
         ThicknessSet},
        {"T008", "missing-type", Severity::Error, "A value has no data type.",
         "Without a type, nobody knows whether the value is a length, a text or a number.\n\nGive the value "
         "a \"DataType\" with the attribute \"type\".",
         changed(ThicknessSet, {{R"xml(          <DataType type="IfcPositiveLengthMeasure"/>
)xml",
                                 ""}}),
         ThicknessSet},
        {"T009", "empty-enumeration", Severity::Warning, "An enumeration has no items.",
         "A property with an enumeration has one of its items as its value. Where there are none, it can "
         "have no value.\n\nList the items as \"EnumItem\" in \"EnumList\".",
         changed(StatusSet, {{R"xml(<EnumList name="PEnum_Status">
            <EnumItem>NEW</EnumItem>
            <EnumItem>EXISTING</EnumItem>
          </EnumList>)xml",
                              R"(<EnumList name="PEnum_Status"/>)"}}),
         StatusSet},
        {"T010", "repeated-item", Severity::Warning, "An enumeration has an item twice.",
         "The second one adds nothing, and is often there in place of another.\n\nRemove it, or write what "
         "was meant.",
         changed(StatusSet, {{"</EnumList>", "  <EnumItem>NEW</EnumItem>\n"
                                             "          </EnumList>"}}),
         StatusSet},
        {"T011", "constant-without-item", Severity::Warning,
         "A constant of an enumeration is not among its items.",
         "\"ConstantList\" explains the items of \"EnumList\" one by one. A constant that is no item "
         "explains nothing.\n\nWrite the name of the constant as the item has it.",
         changed(StatusSet, {{"</TypePropertyEnumeratedValue>", R"xml(  <ConstantList>
            <ConstantDef><Name>NEW</Name></ConstantDef>
            <ConstantDef><Name>EXISTNG</Name></ConstantDef>
          </ConstantList>
        </TypePropertyEnumeratedValue>)xml"}}),
         changed(StatusSet, {{"</TypePropertyEnumeratedValue>", R"xml(  <ConstantList>
            <ConstantDef><Name>NEW</Name></ConstantDef>
            <ConstantDef><Name>EXISTING</Name></ConstantDef>
          </ConstantList>
        </TypePropertyEnumeratedValue>)xml"}})},
        {"T012", "table-without-columns", Severity::Note, "A table does not say what is in its columns.",
         "A table value has two columns, the defining values and the defined values. Many documents leave "
         "open what is in them; then nobody knows how to fill the table. A table that describes only one of "
         "its columns is more likely a slip, and is a warning.\n\nGive the table a \"DefiningValue\" and a "
         "\"DefinedValue\", each with a \"DataType\".",
         changed(MaterialSet,
                 {{"<Name>Material</Name>", "<Name>Curve</Name>"},
                  {"<Definition>What it is made of.</Definition>", "<Definition>How it bends.</Definition>"},
                  {R"(<TypePropertyReferenceValue reftype="IfcMaterial"/>)", "<TypePropertyTableValue/>"}}),
         changed(MaterialSet,
                 {{"<Name>Material</Name>", "<Name>Curve</Name>"},
                  {"<Definition>What it is made of.</Definition>", "<Definition>How it bends.</Definition>"},
                  {R"(<TypePropertyReferenceValue reftype="IfcMaterial"/>)", R"xml(<TypePropertyTableValue>
          <DefiningValue>
            <DataType type="IfcReal"/>
          </DefiningValue>
          <DefinedValue>
            <DataType type="IfcPositiveLengthMeasure"/>
          </DefinedValue>
        </TypePropertyTableValue>)xml"}})},
        {"T013", "list-without-type", Severity::Error, "A list does not say what it is a list of.",
         "Without a type, nobody knows what the items of the list are.\n\nGive the list a \"ListValue\" with "
         "a \"DataType\".",
         changed(ThicknessSet, {{R"xml(<TypePropertySingleValue>
          <DataType type="IfcPositiveLengthMeasure"/>
        </TypePropertySingleValue>)xml",
                                 "<TypePropertyListValue/>"}}),
         changed(ThicknessSet, {{R"xml(<TypePropertySingleValue>
          <DataType type="IfcPositiveLengthMeasure"/>
        </TypePropertySingleValue>)xml",
                                 R"xml(<TypePropertyListValue>
          <ListValue>
            <DataType type="IfcPositiveLengthMeasure"/>
          </ListValue>
        </TypePropertyListValue>)xml"}})},
        {"T014", "swapped-bounds", Severity::Warning, "A lower bound is above the upper bound.",
         "No value is between them, so that every value would be wrong.\n\nExchange the bounds.",
         changed(ThicknessSet, {{"<TypePropertySingleValue>", R"xml(<TypePropertyBoundedValue>
          <ValueRangeDef>
            <LowerBoundValue value="0.5"/>
            <UpperBoundValue value="0.1"/>
          </ValueRangeDef>)xml"},
                                {"</TypePropertySingleValue>", "</TypePropertyBoundedValue>"}}),
         changed(ThicknessSet, {{"<TypePropertySingleValue>", R"xml(<TypePropertyBoundedValue>
          <ValueRangeDef>
            <LowerBoundValue value="0.1"/>
            <UpperBoundValue value="0.5"/>
          </ValueRangeDef>)xml"},
                                {"</TypePropertySingleValue>", "</TypePropertyBoundedValue>"}})},
        {"T015", "value-misfit", Severity::Warning, "A value is not of the type that is given for it.",
         "A number is needed where the type is defined as REAL, true or false where it is BOOLEAN, and one "
         "of its items where it is an enumeration; bounds must fulfil the rules of the type, such as SELF > "
         "0. \"?\" is for a bound that is not known. The values of a table or a list are looked at where "
         "each is a \"ValueItem\"; how several in one text are separated is nowhere laid down.\n\nWrite a "
         "value of the type, with a point and not a comma in numbers, or name the type that the value has.",
         changed(ThicknessSet, {{"<TypePropertySingleValue>", R"xml(<TypePropertyBoundedValue>
          <ValueRangeDef>
            <LowerBoundValue value="0,1"/>
            <UpperBoundValue value="0.5"/>
          </ValueRangeDef>)xml"},
                                {"</TypePropertySingleValue>", "</TypePropertyBoundedValue>"}}),
         changed(ThicknessSet, {{"<TypePropertySingleValue>", R"xml(<TypePropertyBoundedValue>
          <ValueRangeDef>
            <LowerBoundValue value="0.1"/>
            <UpperBoundValue value="0.5"/>
          </ValueRangeDef>)xml"},
                                {"</TypePropertySingleValue>", "</TypePropertyBoundedValue>"}})},
        {"T016", "unit-misfit", Severity::Warning, "A unit is not that of the measure.",
         "The schema has a unit for most measures, and its name says which: LENGTHUNIT is that of "
         "IfcLengthMeasure and of every type that is defined by it. With the unit of another measure, "
         "values are converted wrongly. So they are where the schema has no unit for the measure, and the "
         "unit is that of another.\n\nWrite the unit of the measure, or leave \"UnitType\" out.",
         changed(ThicknessSet, {{"</TypePropertySingleValue>", R"xml(  <UnitType type="AREAUNIT"/>
        </TypePropertySingleValue>)xml"}}),
         changed(ThicknessSet, {{"</TypePropertySingleValue>", R"xml(  <UnitType type="LENGTHUNIT"/>
        </TypePropertySingleValue>)xml"}})},
        {"T017", "unit-without-number", Severity::Warning, "A unit is given for values that are no numbers.",
         "Texts, truth values and items of enumerations are in no unit. Usually the unit belongs to another "
         "type, or was left over when the type was changed.\n\nLeave \"UnitType\" out, or name the measure "
         "as the type.",
         changed(ThicknessSet,
                 {{R"(<DataType type="IfcPositiveLengthMeasure"/>)", R"xml(<DataType type="IfcLabel"/>
          <UnitType type="LENGTHUNIT"/>)xml"}}),
         changed(ThicknessSet, {{"</TypePropertySingleValue>", R"xml(  <UnitType type="LENGTHUNIT"/>
        </TypePropertySingleValue>)xml"}})},
        {"T018", "select-as-type", Severity::Warning, "A SELECT is named as the type of a value.",
         "A SELECT lists types, and each value is of one of them. A property whose type is a SELECT leaves "
         "open whether its values are lengths, texts or numbers, so that no two people fill it in "
         "alike.\n\nName one of the types that the SELECT has.",
         changed(ThicknessSet,
                 {{"<Name>Thickness</Name>", "<Name>Mark</Name>"},
                  {"<Definition>How thick it is.</Definition>",
                   "<Definition>What is written on it.</Definition>"},
                  {R"(<DataType type="IfcPositiveLengthMeasure"/>)", R"(<DataType type="IfcValue"/>)"}}),
         changed(ThicknessSet,
                 {{"<Name>Thickness</Name>", "<Name>Mark</Name>"},
                  {"<Definition>How thick it is.</Definition>",
                   "<Definition>What is written on it.</Definition>"},
                  {R"(<DataType type="IfcPositiveLengthMeasure"/>)", R"(<DataType type="IfcLabel"/>)"}})},
        {"T019", "columns-of-different-length", Severity::Warning,
         "The columns of a table have different numbers of values.",
         "Each defining value has one defined value, the one in the same place of the other column. Where "
         "one of them is missing, those after it belong to the wrong ones. Columns that are one text, "
         "without a \"ValueItem\" for each value, are not counted.\n\nAdd the values that are missing, or "
         "remove those that are too many.",
         changed(TableSet, {{"              <ValueItem>7</ValueItem>\n", ""}}), TableSet},
        {"T020", "item-without-text", Severity::Warning, "An enumeration has an item without text.",
         "Such an item is left out when the document is read, as if it were not there. It may have been "
         "meant as the value for \"nothing\"; values that are absent need no item.\n\nRemove it, or write "
         "what was meant.",
         changed(StatusSet, {{"<EnumItem>EXISTING</EnumItem>", "<EnumItem></EnumItem>\n"
                                                               "            <EnumItem>EXISTING</EnumItem>"}}),
         StatusSet},
        {"T021", "items-in-two-letter-cases", Severity::Warning,
         "Two items of an enumeration differ in letter case only.",
         "People take both for the same item, and so do programs that do not look at letter case. It is one "
         "item, written in two ways.\n\nRemove one of them.",
         changed(StatusSet, {{"<EnumItem>EXISTING</EnumItem>", "<EnumItem>New</EnumItem>\n"
                                                               "            <EnumItem>EXISTING</EnumItem>"}}),
         StatusSet},
        {"T022", "repeated-constant", Severity::Warning, "A constant of an enumeration is described twice.",
         "\"ConstantList\" explains the items of \"EnumList\" one by one. Of two descriptions of one item "
         "nobody knows which is right, and often one of them is of another item.\n\nRemove one of them, or "
         "correct its name.",
         changed(StatusSet, {{"</TypePropertyEnumeratedValue>", R"xml(  <ConstantList>
            <ConstantDef>
              <Name>NEW</Name>
            </ConstantDef>
            <ConstantDef>
              <Name>NEW</Name>
            </ConstantDef>
          </ConstantList>
        </TypePropertyEnumeratedValue>)xml"}}),
         changed(StatusSet, {{"</TypePropertyEnumeratedValue>", R"xml(  <ConstantList>
            <ConstantDef>
              <Name>NEW</Name>
            </ConstantDef>
            <ConstantDef>
              <Name>EXISTING</Name>
            </ConstantDef>
          </ConstantList>
        </TypePropertyEnumeratedValue>)xml"}})},
        {"T023", "blanks-around-item", Severity::Note,
         "An item of an enumeration begins or ends with white space.",
         "Readers of this library leave it out. Others keep it, and do not find the item then.\n\nRemove the "
         "white space. It may be a line break between the tag and the text.",
         changed(StatusSet, {{"<EnumItem>NEW</EnumItem>", "<EnumItem>NEW </EnumItem>"}}), StatusSet},
        {"T024", "reference-contradicts-type", Severity::Error,
         "\"reftype\" and \"DataType\" of a reference contradict each other.",
         "What a reference value refers to is named by \"reftype\", or by \"DataType\". Readers take "
         "DataType when both are there, so that \"reftype\" is lost. Beside an entity that holds values, "
         "such as a time series, it says of which type they are; beside another one it can only say the "
         "same again.\n\nRemove the one that is not meant.",
         changed(MaterialSet, {{R"(<TypePropertyReferenceValue reftype="IfcMaterial"/>)",
                                R"xml(<TypePropertyReferenceValue reftype="IfcMaterial">
          <DataType type="IfcLabel"/>
        </TypePropertyReferenceValue>)xml"}}),
         changed(MaterialSet, {{R"(<TypePropertyReferenceValue reftype="IfcMaterial"/>)",
                                R"xml(<TypePropertyReferenceValue reftype="IfcTimeSeries">
          <DataType type="IfcReal"/>
        </TypePropertyReferenceValue>)xml"}})},
        {"T025", "type-not-first", Severity::Error, "The type of a column or list does not come first.",
         "Readers take the type of a column of a table, or of the items of a list, from the first element "
         "inside, whatever it is: they read the name of a unit as the type, or no type at all.\n\nMake "
         "\"DataType\" the first element.",
         changed(TableSet, {{R"(<DataType type="IfcLengthMeasure"/>)", R"xml(<UnitType type="LENGTHUNIT"/>
            <DataType type="IfcLengthMeasure"/>)xml"}}),
         changed(TableSet,
                 {{R"(<DataType type="IfcLengthMeasure"/>)", R"xml(<DataType type="IfcLengthMeasure"/>
            <UnitType type="LENGTHUNIT"/>)xml"}})},
        {"T026", "simple-property", Severity::Error, "A property is of a kind that is not read.",
         "Older documents have \"TypeSimpleProperty\" for properties of performance histories. Readers of "
         "this library accept it and pass over what is inside, so that the property has no type and no "
         "unit.\n\nMake it a \"TypePropertySingleValue\", or, for what changes with time, a "
         "\"TypePropertyReferenceValue\" to IfcTimeSeries.",
         changed(ThicknessSet, {{"<TypePropertySingleValue>", "<TypeSimpleProperty>"},
                                {"</TypePropertySingleValue>", "</TypeSimpleProperty>"}}),
         ThicknessSet},
        {"T027", "items-in-one", Severity::Warning, "An item of an enumeration looks like several.",
         "Each \"EnumItem\" is one item, with all that is inside: \"NEW,EXISTING\" is an item of that name, "
         "and neither \"NEW\" nor \"EXISTING\" is one.\n\nWrite each item as an \"EnumItem\" of its own.",
         changed(StatusSet, {{R"xml(<EnumItem>NEW</EnumItem>
            <EnumItem>EXISTING</EnumItem>)xml",
                              "<EnumItem>NEW,EXISTING</EnumItem>"}}),
         StatusSet},
        {"T028", "unit-without-measure", Severity::Note, "A unit is given for numbers that are no measure.",
         "IfcReal and IfcInteger are numbers of any kind, and the schema has no unit for them. The unit "
         "says what the number is, but only to those who look at it: programs take the type.\n\nName the "
         "measure as the type, or leave \"UnitType\" out.",
         changed(ThicknessSet,
                 {{R"(<DataType type="IfcPositiveLengthMeasure"/>)", R"xml(<DataType type="IfcInteger"/>
          <UnitType type="LENGTHUNIT"/>)xml"}}),
         changed(ThicknessSet, {{"</TypePropertySingleValue>", R"xml(  <UnitType type="LENGTHUNIT"/>
        </TypePropertySingleValue>)xml"}})},
    };
    return rules;
}

} // namespace kiv::kit
