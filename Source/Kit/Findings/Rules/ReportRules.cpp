#include "Kit/Findings/Rules/ExampleDocuments.h"
#include "Kit/Findings/Rules/Rules.h"

namespace kiv::kit {

/// For what no other rule explains. Nearly every document in which the library finds something has a finding
/// that says more; then what it reports is a note there. The texts say which rule that is, and for what;
/// there is no example where none is small enough.
std::span<const Rule> getReportRules() {
    static const Rule rules[] = {
        {"R001",
         "unknown-node",
         Severity::Error,
         "The library records an element that it does not know.",
         "The element is not read. It comes of <PropertyDef><Foo/></PropertyDef>, for example, which is a "
         "finding S001 with this as a note. It is a finding of its own only in a document that has more "
         "findings of that code than are kept.",
         {},
         {}},
        {"R002",
         "unknown-node-in-range",
         Severity::Error,
         "The library records an element between the bounds of a range that it does not know.",
         "The element is not read. It comes of <ValueRangeDef><Foo/></ValueRangeDef>, for example, which is "
         "a finding S001 with this as a note. It is a finding of its own only in a document that has more "
         "findings of that code than are kept.",
         {},
         {}},
        {"R003",
         "illegal-guid",
         Severity::Error,
         "The library records a GUID that it cannot read.",
         "The definition has no GUID then. It comes of ifdguid=\"12\", for example, which is a finding G001 "
         "with this as a note. It is a finding of its own only in a document that has more findings of that "
         "code than are kept.",
         {},
         {}},
        {"R004",
         "illegal-template-type",
         Severity::Error,
         "The library records a template type that does not exist.",
         "The set counts as one whose template type is not defined. It comes of templatetype=\"PSET_OTHER\", "
         "for example, which is a finding S007 with this as a note. It is a finding of its own only in a "
         "document that has more findings of that code than are kept.",
         {},
         {}},
        {"R005",
         "class-not-found",
         Severity::Error,
         "The library records an applicable class that is no entity of the schema.",
         "The set is found for no element because of this class. It comes of <ClassName>IfcWal</ClassName>, "
         "for example, which is a finding C001 with this as a note. It is a finding of its own only in a "
         "document that has more findings of that code than are kept.",
         {},
         {}},
        {"R006",
         "predefined-type-not-declared",
         Severity::Error,
         "The library records a predefined type for an entity that has none.",
         "IfcRoot has no predefined types. It comes of <ClassName>IfcRoot/STANDARD</ClassName>, for example, "
         "which is a finding C009 with this as a note. It is a finding of its own only in a document that "
         "has more findings of that code than are kept.",
         {},
         {}},
        {"R007",
         "predefined-type-without-enumeration",
         Severity::Error,
         "The library records a predefined type for an entity whose attribute of that name has no defined "
         "type.",
         "The set may be refused. It comes of <ClassName>IfcWall/SOLIDWALL</ClassName> with a schema in "
         "which the attribute PredefinedType of IfcWall is a text, for example, which is a finding C009 with "
         "this as a note. It is a finding of its own only in a document that has more findings of that code "
         "than are kept. The schemas of IFC have no such entity.",
         {},
         {}},
        {"R008",
         "illegal-predefined-type",
         Severity::Error,
         "The library records a predefined type that the entity does not have.",
         "The value is not among the items of the enumeration. It comes of "
         "<ClassName>IfcWall/FOO</ClassName>, for example, which is a finding C008 with this as a note. It "
         "is a finding of its own only in a document that has more findings of that code than are kept.",
         {},
         {}},
        {"R009",
         "other-record",
         Severity::Error,
         "The library records something else.",
         "The message is the library's. It comes of records that newer libraries make and these rules do not "
         "know yet.",
         {},
         {}},
        {"R011", "property-entity-not-found", Severity::Error,
         "The schema has no entity for a kind of property.",
         "Each kind of property becomes an entity of a model, for example IfcPropertySingleValue. A schema "
         "without that entity is incomplete, or no IFC schema.",
         inFiles({{"Walls.exp", {R"xml(SCHEMA IFC4;
TYPE IfcBoolean = BOOLEAN;
END_TYPE;
ENTITY IfcWall;
END_ENTITY;
END_SCHEMA;
)xml"}},
                  {"Pset_WallCommon.xml", WallSet}}),
         inFiles({{"Walls.exp", {R"xml(SCHEMA IFC4;
TYPE IfcBoolean = BOOLEAN;
END_TYPE;
ENTITY IfcPropertySingleValue;
END_ENTITY;
ENTITY IfcWall;
END_ENTITY;
END_SCHEMA;
)xml"}},
                  {"Pset_WallCommon.xml", WallSet}})},
        {"R012",
         "property-type-not-known",
         Severity::Error,
         "The library does not know the kind of a property.",
         "The property has no type then. It comes of <PropertyType><Foo/></PropertyType>, for example, which "
         "is a finding S010 with this as a note. It is a finding of its own only in a document that has more "
         "findings of that code than are kept.",
         {},
         {}},
        {"R013",
         "data-type-not-found",
         Severity::Error,
         "The library finds a data type not in the schema.",
         "The name is looked up in the schema that is checked against. It comes of <DataType "
         "type=\"IfcFoo\"/>, for example, which is a finding T001 with this as a note. It is a finding of "
         "its own only in a document that has more findings of that code than are kept.",
         {},
         {}},
        {"R014",
         "unit-type-ends-with-blank",
         Severity::Error,
         "The library finds the type of a unit ending with a blank.",
         "With the blank it is no unit of the schema. It comes of <UnitType type=\"LENGTHUNIT \"/>, for "
         "example, which is a finding S019 with this as a note. It is a finding of its own where the schema "
         "has no units, and in a document that has more findings of that code than are kept.",
         {},
         {}},
        {"R015",
         "unit-type-not-given",
         Severity::Error,
         "The library finds a unit without a type.",
         "The property has no unit then. It comes of <UnitType/>, for example, which is a finding S005 with "
         "this as a note. It is a finding of its own only in a document that has more findings of that code "
         "than are kept.",
         {},
         {}},
        {"R016", "lower-bound-not-a-name", Severity::Note,
         "The lower bound of a bounded value is no name of the schema.",
         "The library looks bounds up as names, and reports those that it does not find, numbers included. "
         "Correct documents have it too; it is shown on request only.",
         changed(WidthSet, {{R"(<DataType type="IfcReal"/>)",
                             R"xml(<ValueRangeDef><LowerBoundValue value="0"/></ValueRangeDef>
          <DataType type="IfcReal"/>)xml"}}),
         WidthSet},
        {"R017", "upper-bound-not-a-name", Severity::Note,
         "The upper bound of a bounded value is no name of the schema.",
         "The library looks bounds up as names, and reports those that it does not find, numbers included. "
         "Correct documents have it too; it is shown on request only.",
         changed(WidthSet, {{R"(<DataType type="IfcReal"/>)",
                             R"xml(<ValueRangeDef><UpperBoundValue value="1"/></ValueRangeDef>
          <DataType type="IfcReal"/>)xml"}}),
         WidthSet},
        {"R018",
         "unknown-node-in-complex-property",
         Severity::Error,
         "The library does not know an element inside a complex property.",
         "The element is not read. It comes of <TypeComplexProperty><Foo/></TypeComplexProperty>, for "
         "example, which is a finding S001 with this as a note. It is a finding of its own only in a "
         "document that has more findings of that code than are kept.",
         {},
         {}},
        {"R019",
         "quantity-type-not-known",
         Severity::Error,
         "The library does not know the type of a quantity.",
         "The quantity has no type then. It comes of <QtoType>Q_FOO</QtoType>, for example, which is a "
         "finding S009 with this as a note. It is a finding of its own only in a document that has more "
         "findings of that code than are kept.",
         {},
         {}},
        {"R020",
         "quantity-type-not-given",
         Severity::Error,
         "The library finds a quantity whose type is empty.",
         "The quantity has no type then. It comes of <QtoType/>, for example, which is a finding S009 with "
         "this as a note. It is a finding of its own only in a document that has more findings of that code "
         "than are kept.",
         {},
         {}},
        {"R021",
         "other-assertion",
         Severity::Error,
         "The library reports something else.",
         "The message is the library's. It comes of reports that newer libraries make and these rules do not "
         "know yet.",
         {},
         {}},
        {"R040",
         "unreadable-file",
         Severity::Error,
         "The file cannot be read.",
         "The system refuses it: there is no such file, it is a folder, or it may not be read. The message "
         "is the system's. It comes of \"kivifc check IFC4.exp Walls.xml\" where there is no Walls.xml, for "
         "example.\n\nA pipe, a socket or a device in a folder is not opened, even if it is named like a "
         "document: that may wait for ever or have effects. Give its own path to have it read.",
         {},
         {}},
        {"R041", "empty-file", Severity::Error, "The file has no bytes.",
         "There is nothing to check in it. Often a program stopped before it had written anything: make the "
         "file again.",
         inFiles({{"Pset_WallCommon.xml", {}}}), inFiles({{"Pset_WallCommon.xml", WallSet}})},
        {"R042",
         "over-budget",
         Severity::Error,
         "The document takes more than it may.",
         "What one file may take is limited: its bytes, the memory for it and the number of its parts, so "
         "that no document can keep a program busy or use up its memory. The message says which limit it is; "
         "kivifc --limits lists them with the options that change them. It comes of \"kivifc check IFC4.exp "
         "Walls.xml --max-input 1K\" where Walls.xml has more than 1024 bytes, for example.",
         {},
         {}},
        {"R043",
         "out-of-memory",
         Severity::Error,
         "There is not enough memory for the document.",
         "The document was not checked. It comes of a document that is larger than the memory that the "
         "program may use; check it alone, or on a larger machine.",
         {},
         {}},
        {"R044", "not-xml", Severity::Error, "The document is not well-formed XML.",
         "Nothing can be read from a document that breaks the rules of XML. Usually a tag is not closed, "
         "\"&\" is not written as \"&amp;\", a value is not in quotes, or the bytes are of another encoding "
         "than the one that the document declares.\n\nMend what the message says. Where a tag is open, a "
         "note shows where it begins: its end tag is missing or misspelt between there and the place of the "
         "finding.",
         changed(WallSet, {{"<Name>Pset_WallCommon</Name>", "<Name>Pset_WallCommon</Nam>"}}), WallSet},
    };
    return rules;
}

} // namespace kiv::kit
