#include "Messages/MessageTable.h"

namespace kiv::test {

namespace {

using enum InputKind;

constexpr std::string_view Record;

const std::vector<MessageRow> Rows{
    // ---- Schema texts
    {Schema, "ENTITY A;\n SUBTYPE OF (B);\nEND_ENTITY;", "Entity not found",
     "kiv::ifc::def::schema::Entity::vUpdate"},
    {Schema, "ENTITY A;\n SUPERTYPE OF (ONEOF (B));\nEND_ENTITY;", "Entity not found",
     "kiv::ifc::def::schema::Entity::vUpdate"},
    {Schema, "ENTITY A;\n INVERSE\n  B : A FOR C;\nEND_ENTITY;", "Entity not found",
     "kiv::ifc::def::schema::AttributeInverse::vUpdate"},
    {Schema, "ENTITY A;\n DERIVE\n  SELF\\B.C : REAL := 1;\nEND_ENTITY;", "Attribute not found",
     "kiv::ifc::def::schema::DeriveValue::update"},
    {Schema, "TYPE A = B;\nEND_TYPE;", "Not type found", "kiv::ifc::def::schema::Type::vUpdate"},
    {Schema, "TYPE A = SELECT (B);\nEND_TYPE;", "Object not found",
     "kiv::ifc::def::schema::DataTypeSelect::vUpdate"},
    {Schema, "ENTITY A;\n B : ARRAY [1:2] OF C;\nEND_ENTITY;", "Type not found",
     "kiv::ifc::def::schema::DataTypeListBase<9>::vUpdate"},
    {Schema, "ENTITY A;\n B : LIST OF C;\nEND_ENTITY;", "Type not found",
     "kiv::ifc::def::schema::DataTypeListBase<10>::vUpdate"},
    {Schema, "ENTITY A;\n B : SET OF C;\nEND_ENTITY;", "Type not found",
     "kiv::ifc::def::schema::DataTypeListBase<11>::vUpdate"},
    // The columns of a clause's first line are one greater than those of the others.
    {Schema, "ENTITY A;\n WHERE\nW:;\nEND_ENTITY;",
     "Got SyntaxError when parsing an express rule: Unexpected token at 1:4\n\nRule: W:;\n",
     "kiv::ifc::def::schema::Where::parseRules"},
    {Schema, "ENTITY A;\n WHERE\nW:b\n;c:d e;f\nEND_ENTITY;",
     "Got SyntaxError when parsing an express rule: Expected token SEMICOLON but got IDENTIFIER at 2:7\n\n"
     "Rule: W:b\n;c:d e;f\n",
     "kiv::ifc::def::schema::Where::parseRules"},
    {Schema, "ENTITY A;\n WHERE\nW:{0>b};\nEND_ENTITY;",
     "Got SyntaxError when parsing an express rule: Expected a interval operator at 1:6\n\nRule: W:{0>b};\n",
     "kiv::ifc::def::schema::Where::parseRules"},
    {Schema, "ENTITY A;\n WHERE\n:;\nEND_ENTITY;",
     "Got SyntaxError when parsing an express rule: Expected at least one rule in where clause at 1:2\n\n"
     "Rule: :;\n",
     "kiv::ifc::def::schema::Where::parseRules"},
    {Schema, "ENTITY A;\n WHERE\nW:_b;\nEND_ENTITY;",
     "Got SyntaxError when parsing an express rule: ExpressTokenizer didn't expect the character _ "
     "here...\n\n"
     "Rule: W:_b;\n",
     "kiv::ifc::def::schema::Where::parseRules"},

    // ---- Set documents
    {Set, "<PropertySetDef><A/></PropertySetDef>", "Unknown xml node", Record},
    {Set, "<QtoSetDef><A/></QtoSetDef>", "Unknown xml node", Record},
    {Set, "<PropertySetDef ifdguid='A'/>", "Illegal ifdguid in xml file", Record},
    {Set, "<PropertySetDef templatetype='A'/>", "Illegal templatetype used", Record},
    {Set, "<PropertySetDef><ApplicableClasses><ClassName>A</ClassName></ApplicableClasses></PropertySetDef>",
     "Applicable class in xml set is not defined in schema (contain spaces?)", Record},
    {Set,
     "<PropertySetDef><ApplicableClasses><ClassName>Plain/A</ClassName></ApplicableClasses></PropertySetDef>",
     "Predefined type set on xml set, but no \"PredefinedType\" attribute found on entity", Record},
    {Set,
     "<PropertySetDef><ApplicableClasses><ClassName>Text/A</ClassName></ApplicableClasses></PropertySetDef>",
     "Attribute predefinedType is doesnt exist on entity", Record},
    {Set,
     "<PropertySetDef><ApplicableClasses><ClassName>Kind/A</ClassName></ApplicableClasses></PropertySetDef>",
     "Predefined type set on xml set, but the value is illegal for this enumeration", Record},
    {Set,
     "<PropertySetDef><PropertyDefs><PropertyDef><PropertyType><TypePropertyBoundedValue><ValueRangeDef><A/>"
     "</ValueRangeDef></TypePropertyBoundedValue></PropertyType></PropertyDef></PropertyDefs></"
     "PropertySetDef>",
     "Unknown xml node in ValueRangeDef", Record},
    {Set,
     "<PropertySetDef><PropertyDefs><PropertyDef><PropertyType><A/></PropertyType></PropertyDef></"
     "PropertyDefs>"
     "</PropertySetDef>",
     "Unknown node", "kiv::ifc::def::pset::PropertyType::pCreate"},
    {Set,
     "<PropertySetDef><PropertyDefs><PropertyDef><PropertyType><TypeComplexProperty><A/></"
     "TypeComplexProperty>"
     "</PropertyType></PropertyDef></PropertyDefs></PropertySetDef>",
     "Unknown node", "kiv::ifc::def::pset::TypeComplexProperty::TypeComplexProperty"},
    {Set,
     "<PropertySetDef><PropertyDefs><PropertyDef><PropertyType><TypePropertySingleValue/></PropertyType>"
     "</PropertyDef></PropertyDefs></PropertySetDef>",
     "Entity not found", "kiv::ifc::def::pset::PropertyDef::checkForErrors"},
    {Set,
     "<PropertySetDef><PropertyDefs><PropertyDef><PropertyType><TypePropertySingleValue><UnitType/>"
     "</TypePropertySingleValue></PropertyType></PropertyDef></PropertyDefs></PropertySetDef>",
     "Could not find attribute", "kiv::ifc::def::pset::TypePropertySingleValue::boCheck"},
    {Set,
     "<PropertySetDef><PropertyDefs><PropertyDef><PropertyType><TypePropertySingleValue><UnitType type='A '/>"
     "</TypePropertySingleValue></PropertyType></PropertyDef></PropertyDefs></PropertySetDef>",
     "Name should not end with space", "kiv::ifc::def::pset::TypePropertySingleValue::boCheck"},
    {Set,
     "<PropertySetDef><PropertyDefs><PropertyDef><PropertyType><TypePropertyReferenceValue reftype='A'/>"
     "</PropertyType></PropertyDef></PropertyDefs></PropertySetDef>",
     "Excpeted name to exist in schema", "kiv::ifc::def::pset::TypePropertyReferenceValue::checkForErrors"},
    {Set,
     "<PropertySetDef><PropertyDefs><PropertyDef><PropertyType><TypePropertyBoundedValue><ValueRangeDef>"
     "<LowerBoundValue value='A'/></ValueRangeDef></TypePropertyBoundedValue></PropertyType></PropertyDef>"
     "</PropertyDefs></PropertySetDef>",
     "Excpeted name to exist in schema", "kiv::ifc::def::pset::TypePropertyBoundedValue::checkForErrors"},
    {Set,
     "<PropertySetDef><PropertyDefs><PropertyDef><PropertyType><TypePropertyBoundedValue><ValueRangeDef>"
     "<UpperBoundValue value='A'/></ValueRangeDef></TypePropertyBoundedValue></PropertyType></PropertyDef>"
     "</PropertyDefs></PropertySetDef>",
     "Excpeted name to exist in schema", "kiv::ifc::def::pset::TypePropertyBoundedValue::checkForErrors"},
    {Set, "<QtoSetDef><QtoDefs><QtoDef><QtoType/></QtoDef></QtoDefs></QtoSetDef>", "Child not found",
     "kiv::ifc::def::qto::QuantityType::pCreate"},
    {Set, "<QtoSetDef><QtoDefs><QtoDef><QtoType>A</QtoType></QtoDef></QtoDefs></QtoSetDef>", "Unknown node",
     "kiv::ifc::def::qto::QuantityType::pCreate"},
    {Set, "<QtoSetDef><QtoDefs><QtoDef><QtoType>Q_AREA</QtoType></QtoDef></QtoDefs></QtoSetDef>",
     "Entity not found", "kiv::ifc::def::qto::QuantityDef::checkForErrors"},
    {Set, "<QtoSetDef><QtoDefs><QtoDef><QtoType>Q_AREA</QtoType></QtoDef></QtoDefs></QtoSetDef>",
     "Entity not found", "kiv::ifc::def::qto::QuantityTypeSimple::checkForErrors"},

    // ---- Configurations
    {WholeConfig, "<A", "Illegal xml document", "kiv::ifc::def::xmlschema::Config::Config"},
    {WholeConfig, "<A id='B'/>", "Illegal ifc version", "kiv::ifc::def::xmlschema::Config::Config"},
    {Config, "<A/>", "Unknown nodename", "kiv::ifc::def::xmlschema::Config::{ctor}::<lambda_1>::operator ()"},
    {Config, "<cnf:option entity-attribute='A'/>", "Illegal string",
     "kiv::ifc::def::xmlschema::expAttributeFromString"},
    {Config, "<cnf:entity A=''/>", "Unknown attribute",
     "kiv::ifc::def::xmlschema::Entity::vRead::<lambda_1>::operator ()"},
    {Config, "<cnf:entity><A/></cnf:entity>", "Unknown element",
     "kiv::ifc::def::xmlschema::Entity::vRead::<lambda_2>::operator ()"},
    {Config, "<cnf:type A=''/>", "Unknown attribute",
     "kiv::ifc::def::xmlschema::Type::vRead::<lambda_1>::operator ()"},
    {Config, "<cnf:type><A/></cnf:type>", "Unknown element",
     "kiv::ifc::def::xmlschema::Type::vRead::<lambda_2>::operator ()"},
    {Config, "<cnf:option A=''/>", "Unknown attribute",
     "kiv::ifc::def::xmlschema::Option::vInit::<lambda_1>::operator ()"},
    {Config, "<cnf:option><A/></cnf:option>", "Unknown element",
     "kiv::ifc::def::xmlschema::Option::vInit::<lambda_2>::operator ()"},
    {Config, "<cnf:schema A=''/>", "Unknown attribute",
     "kiv::ifc::def::xmlschema::Schema::vInit::<lambda_1>::operator ()"},
    {Config, "<cnf:schema><A/></cnf:schema>", "Unknown element",
     "kiv::ifc::def::xmlschema::Schema::vInit::<lambda_2>::operator ()"},
    {Config, "<cnf:schema><cnf:namespace A=''/></cnf:schema>", "Unknown attribute",
     "kiv::ifc::def::xmlschema::Namespace::vInit::<lambda_1>::operator ()"},
    {Config, "<cnf:schema><cnf:namespace><A/></cnf:namespace></cnf:schema>", "Unknown element",
     "kiv::ifc::def::xmlschema::Namespace::vInit::<lambda_2>::operator ()"},
    {Config, "<cnf:uosElement A=''/>", "Unknown attribute",
     "kiv::ifc::def::xmlschema::UosElement::vInit::<lambda_1>::operator ()"},
    {Config, "<cnf:uosElement><A/></cnf:uosElement>", "Unknown element",
     "kiv::ifc::def::xmlschema::UosElement::vInit::<lambda_2>::operator ()"},
    {Config, "<cnf:entity select='Kind'><cnf:attribute/></cnf:entity>", "XML Attribute not found",
     "kiv::ifc::def::xmlschema::Attribute::vRead"},
    {Config, "<cnf:entity select='Kind'><cnf:attribute select='A'/></cnf:entity>", "Attribute not found",
     "kiv::ifc::def::xmlschema::Attribute::vRead"},
    {Config, "<cnf:entity select='Kind'><cnf:attribute select='PredefinedType' A=''/></cnf:entity>",
     "Unknown attribute", "kiv::ifc::def::xmlschema::Attribute::{ctor}::<lambda_1>::operator ()"},
    {Config,
     "<cnf:entity select='Kind'><cnf:attribute select='PredefinedType'><A/></cnf:attribute></cnf:entity>",
     "Unknown element", "kiv::ifc::def::xmlschema::Attribute::{ctor}::<lambda_2>::operator ()"},
    {Config, "<cnf:entity select='Kind'><cnf:inverse/></cnf:entity>", "XML Attribute not found",
     "kiv::ifc::def::xmlschema::AttributeInverse::vRead"},
    {Config, "<cnf:entity select='Kind'><cnf:inverse select='A'/></cnf:entity>", "Attribute not found",
     "kiv::ifc::def::xmlschema::AttributeInverse::vRead"},
    {Config, "<cnf:entity select='Kind'><cnf:inverse select='Texts' A=''/></cnf:entity>", "Unknown attribute",
     "kiv::ifc::def::xmlschema::AttributeInverse::{ctor}::<lambda_1>::operator ()"},
    {Config, "<cnf:entity select='Kind'><cnf:inverse select='Texts'><A/></cnf:inverse></cnf:entity>",
     "Unknown element", "kiv::ifc::def::xmlschema::AttributeInverse::{ctor}::<lambda_2>::operator ()"},

    // ---- Type names
    {TypeName,
     "<PropertySetDef><Name>S</Name><PropertyDefs><PropertyDef><Name>M</Name></PropertyDef></PropertyDefs>"
     "</PropertySetDef>",
     "Not implemented", "kiv::ifc::findPropertyTypeName"},
    {TypeName, "<QtoSetDef><Name>S</Name><QtoDefs><QtoDef><Name>M</Name></QtoDef></QtoDefs></QtoSetDef>",
     "Not implemented", "kiv::ifc::findPropertyTypeName"},
};

} // namespace

const std::vector<MessageRow>& messageTable() {
    return Rows;
}

} // namespace kiv::test
