#include "Kit/Findings/Rules/ExampleDocuments.h"
#include "Kit/Findings/Rules/Rules.h"

namespace kiv::kit {

std::span<const Rule> getStructureRules() {
    static const Rule rules[] = {
        {"S001", "unknown-element", Severity::Error, "An element is not known in its place.",
         "What readers of set documents do not know they pass over, with everything inside it. Usually the "
         "name is misspelt, or the element is in the wrong place.\n\n"
         "The note lists what may be there. Elements of your own have no place in a set document. Inside "
         "\"EnumList\", where readers take every element for an item, and where they do not look, it is a "
         "warning.",
         changed(WallSet, {{"<PropertyType>", "<PropertyTyp>"}, {"</PropertyType>", "</PropertyTyp>"}}),
         WallSet},
        {"S002", "unknown-attribute", Severity::Error, "An attribute is not known on its element.",
         "An attribute that readers do not know is passed over, and its value is lost. Attributes with a "
         "prefix, such as \"xsi:schemaLocation\", are left alone unless they have a name that belongs there.",
         changed(WallSet,
                 {{"<PropertySetDef>", R"(<PropertySetDef ifdgiud="aa3b8880d21511e1800000215ad4efdf">)"}}),
         changed(WallSet,
                 {{"<PropertySetDef>", R"(<PropertySetDef ifdguid="aa3b8880d21511e1800000215ad4efdf">)"}})},
        {"S003", "name-letter-case", Severity::Error,
         "The name of an element or attribute is written in another letter case.",
         "Names of XML are compared letter by letter: \"propertyType\" is another name than "
         "\"PropertyType\", and what is written in such an element or attribute is lost. Documents that this "
         "library exports have \"nameAliases\" and \"nameAlias\", which readers pass over; write "
         "\"NameAliases\" and \"NameAlias\".",
         changed(WallSet, {{"<PropertyType>", "<propertyType>"}, {"</PropertyType>", "</propertyType>"}}),
         WallSet},
        {"S004", "missing-element", Severity::Error, "An element that is needed is missing.",
         "A property without \"PropertyType\", or a quantity without \"QtoType\", has no type, so that "
         "nobody knows what its values are. A set without \"PropertyDefs\" or \"QtoDefs\" says nothing about "
         "an element of a model.",
         changed(
             WallSet,
             {{R"(<PropertyType><TypePropertySingleValue><DataType type="IfcBoolean"/></TypePropertySingleValue></PropertyType>)",
               ""}}),
         WallSet},
        {"S005", "missing-attribute", Severity::Error, "An attribute that is needed is missing.",
         "A \"UnitType\" without \"type\" names no unit, an \"IfcVersion\" without \"version\" no release: "
         "readers pass over them. A bound without \"value\" is no bound. An \"EnumList\" without \"name\" "
         "gets the name of its property, which may be that of another enumeration. The last two are "
         "warnings.",
         changed(WallSet,
                 {{R"(<DataType type="IfcBoolean"/>)", R"(<DataType type="IfcLengthMeasure"/><UnitType/>)"}}),
         changed(WallSet, {{R"(<DataType type="IfcBoolean"/>)",
                            R"(<DataType type="IfcLengthMeasure"/><UnitType type="LENGTHUNIT"/>)"}})},
        {"S006", "repeated-element", Severity::Error, "An element is repeated that counts only once.",
         "Of several names, definitions, types or units only the last one counts, and of several kinds in "
         "one \"PropertyType\" only the first; the others are lost. An empty one leaves what the others say, "
         "which is a warning; an empty type at the end leaves none. Several enumerations, ranges or columns "
         "in one place are joined, but of their names, bounds and types only the last one counts.\n\n"
         "Remove all but one.",
         changed(
             WallSet,
             {{R"(<PropertyType><TypePropertySingleValue><DataType type="IfcBoolean"/></TypePropertySingleValue></PropertyType>)",
               R"xml(<Definition>Whether it is inside.</Definition>
      <PropertyType><TypePropertySingleValue><DataType type="IfcBoolean"/></TypePropertySingleValue></PropertyType>)xml"}}),
         WallSet},
        {"S007", "unknown-template-type", Severity::Error,
         "The value of \"templatetype\" is not one of the template types.",
         "A template type says whether a set belongs to types, to occurrences or to both. Another text is "
         "not understood, and the set counts as one whose template type is not defined. An empty one is a "
         "warning: readers take it for none.",
         changed(WallSet, {{"<PropertySetDef>", R"(<PropertySetDef templatetype="PSET_TYPEDRIVEN">)"}}),
         changed(WallSet, {{"<PropertySetDef>", R"(<PropertySetDef templatetype="PSET_TYPEDRIVENONLY">)"}})},
        {"S008", "unknown-unit-type", Severity::Error,
         "The type of a unit is not one of the units of the schema.",
         "The types of units are the items of the enumerations IfcUnitEnum and IfcDerivedUnitEnum of the "
         "schema. A unit of another name cannot be made in a model. Names of measures, such as "
         "IfcLengthMeasure, are no units. Inside \"TypeSimpleProperty\", where readers do not look, it is a "
         "warning.",
         changed(WallSet, {{R"(<DataType type="IfcBoolean"/>)",
                            R"(<DataType type="IfcLengthMeasure"/><UnitType type="METREUNIT"/>)"}}),
         changed(WallSet, {{R"(<DataType type="IfcBoolean"/>)",
                            R"(<DataType type="IfcLengthMeasure"/><UnitType type="LENGTHUNIT"/>)"}})},
        {"S009", "unknown-quantity-type", Severity::Error,
         "The type of a quantity is not one of the six quantity types.",
         "Quantities are counts, weights, lengths, areas, volumes or times, written as Q_COUNT, Q_WEIGHT, "
         "Q_LENGTH, Q_AREA, Q_VOLUME and Q_TIME. With another text the quantity has no type. The official "
         "XML schema lists names of entities instead, such as IfcQuantityLength; the official documents do "
         "not use them.",
         changed(WallQuantities, {{"Q_LENGTH", "IfcQuantityLength"}}), WallQuantities},
        {"S010", "unknown-property-kind", Severity::Error,
         "The kind of a property is not one of those that exist.",
         "The first element inside \"PropertyType\" says whether a property has a single value, one of an "
         "enumeration, a range, a table, a list, a reference, or properties of its own. With another name "
         "the property has no type, and what is inside is lost.",
         changed(WallSet, {{"<TypePropertySingleValue>", "<TypePropertyScalar>"},
                           {"</TypePropertySingleValue>", "</TypePropertyScalar>"}}),
         WallSet},
        {"S011", "value-letter-case", Severity::Error,
         "A value of a fixed vocabulary is written in another letter case.",
         "Template types, types of units, types of quantities and the other fixed values are written in "
         "capitals and compared letter by letter; in another letter case they are not understood.",
         changed(WallQuantities, {{"Q_LENGTH", "q_length"}}), WallQuantities},
        {"S012", "unknown-namespace", Severity::Warning,
         "The namespace of the document is not one of set documents.",
         "The official documents are in a namespace such as "
         "\"http://buildingSMART-tech.org/xml/psd/PSD_IFC4.xsd\" for property sets and "
         "\"http://www.buildingsmart-tech.org/xml/qto/QTO_IFC4.xsd\" for quantity sets, the older ones in "
         "none. Programs that look at the namespace do not take a document of another one for a set "
         "document.",
         changed(WallSet, {{"<PropertySetDef>", R"(<PropertySetDef xmlns="http://example.org/sets">)"}}),
         changed(WallSet,
                 {{"<PropertySetDef>",
                   R"(<PropertySetDef xmlns="http://buildingSMART-tech.org/xml/psd/PSD_IFC4.xsd">)"}})},
        {"S013", "prefixed-root", Severity::Error, "The root element has a prefix.",
         "Prefixes of namespaces are not supported in set documents: with them no element has the name that "
         "readers look for, and the set would be empty. The document is refused.\n\n"
         "Make the namespace the default one, with \"xmlns\" in place of \"xmlns:psd\", and remove the "
         "prefixes.",
         changed(WallSet,
                 {{"<PropertySetDef>",
                   R"(<psd:PropertySetDef xmlns:psd="http://buildingSMART-tech.org/xml/psd/PSD_IFC4.xsd">)"},
                  {"</PropertySetDef>", "</psd:PropertySetDef>"}}),
         WallSet},
        {"S014", "unknown-root", Severity::Error, "The root element is that of no set.",
         "A set document has the root element \"PropertySetDef\" or \"QtoSetDef\"; what has another one is "
         "another kind of document.",
         changed(WallSet, {{"<PropertySetDef>", "<PropertySet>"}, {"</PropertySetDef>", "</PropertySet>"}}),
         WallSet},
        {"S015", "prefixed-element", Severity::Error, "An element or attribute has a prefix.",
         "Prefixes of namespaces are not supported in set documents. Readers look for the name as it is "
         "written, prefix included, and pass over the element with everything inside it, or over the "
         "attribute with its value. Attributes of other vocabularies may have prefixes.",
         changed(
             WallSet,
             {{"<Name>IsExternal</Name>",
               R"(<psd:Name xmlns:psd="http://buildingSMART-tech.org/xml/psd/PSD_IFC4.xsd">IsExternal</psd:Name>)"}}),
         WallSet},
        {"S016", "text-between-elements", Severity::Error,
         "There is text where elements or attributes belong.",
         "Readers take no text from this element, so that it is lost. Often it is the rest of a deleted "
         "element, or a value that belongs in an attribute.",
         changed(WallSet, {{"</PropertyDefs>", "  walls\n"
                                               "  </PropertyDefs>"}}),
         WallSet},
        {"S017", "unread-text", Severity::Error, "A text has a part that is not read.",
         "Of a text only what comes before the first comment or processing instruction is read, and when a "
         "comment comes first, the comment is read in place of the text.\n\n"
         "Move the comment out of the element.",
         changed(WallSet, {{"<Name>IsExternal</Name>", "<Name>IsExternal<!-- new -->Wall</Name>"}}), WallSet},
        {"S018", "wrong-kind-of-set", Severity::Error,
         "A property set contains quantities, or a quantity set properties.",
         "Property sets contain \"PropertyDefs\" with \"PropertyDef\", quantity sets \"QtoDefs\" with "
         "\"QtoDef\". What belongs to the other kind is passed over.\n\n"
         "Put the quantities in a document of their own, with the root element \"QtoSetDef\".",
         changed(WallSet, {{"</PropertySetDef>", "  <QtoDefs>\n"
                                                 "    <QtoDef><Name>Width</Name><Definition>How "
                                                 "wide.</Definition><QtoType>Q_LENGTH</QtoType></QtoDef>\n"
                                                 "  </QtoDefs>\n"
                                                 "</PropertySetDef>"}}),
         WallSet},
        {"S019", "blanks-around-value", Severity::Error,
         "A value of a fixed vocabulary has white space around it.",
         "White space is part of a value: \"LENGTHUNIT \" is no type of a unit, and a quantity whose type "
         "begins with a blank has none. It may be a line break between the tag and the text.",
         changed(WallQuantities, {{"Q_LENGTH", "Q_LENGTH "}}), WallQuantities},
        {"S020",
         "empty-set",
         Severity::Warning,
         "A set has no properties or quantities, or a complex property no properties.",
         "A set whose \"PropertyDefs\" or \"QtoDefs\" is empty says nothing about an element of a model, and "
         "neither does a \"TypeComplexProperty\" without a \"PropertyDef\". "
         "Usually the members were lost, or are still to be written.\n\nAdd what it is for, or leave "
         "it out.",
         {R"xml(<PropertySetDef>
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>
  <PropertyDefs/>
</PropertySetDef>
)xml"},
         WallSet},
        {"S021", "repeated-list", Severity::Note, "A list is repeated.",
         "Readers of this library join the lists, as if all were in the first one. Others read only one of "
         "them: the official XML schema has one.\n\nMove everything into the first list.",
         changed(WallSet, {{"</PropertySetDef>", R"xml(  <PropertyDefs>
    <PropertyDef>
      <Name>IsBearing</Name>
      <Definition>Whether it is load-bearing.</Definition>
      <PropertyType><TypePropertySingleValue><DataType type="IfcBoolean"/></TypePropertySingleValue></PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>)xml"}}),
         changed(WallSet, {{"</PropertyDefs>", R"xml(  <PropertyDef>
      <Name>IsBearing</Name>
      <Definition>Whether it is load-bearing.</Definition>
      <PropertyType><TypePropertySingleValue><DataType type="IfcBoolean"/></TypePropertySingleValue></PropertyType>
    </PropertyDef>
  </PropertyDefs>)xml"}})},
        {"S022", "empty-unit-type", Severity::Note, "The type of a unit is empty.",
         "Some programs write it for a value without a unit, as older official documents do. It says "
         "nothing, and others take it for a unit without a name.\n\nLeave \"UnitType\" out.",
         changed(WallSet,
                 {{R"(<DataType type="IfcBoolean"/>)", R"(<DataType type="IfcReal"/><UnitType type=""/>)"}}),
         WallSet},
    };
    return rules;
}

} // namespace kiv::kit
