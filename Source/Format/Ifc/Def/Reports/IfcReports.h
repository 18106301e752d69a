/// @file
/// Everything that the library can say about what it reads, each once: the reports to the host's assertion
/// service, the messages of error records, and those of syntax errors in rules.
///
///     if (!underlying)
///         vReport(Report::TypeNotFound);
///
/// Hosts filter reports by function, file and line, and compare messages as they are, slips of spelling
/// included. All of them are that contract: the lines are no positions in today's files, and none of this
/// changes when the code moves.
///
/// Ownership: constants.
/// Threads:   everything may be used from any number of threads.
/// Errors:    a report never throws; without a host that listens it does nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kiv::ifc::def {

/// The reports, named after what is wrong.
enum class Report : std::uint8_t {
    SupertypeNotFound,
    SubtypeNotFound,
    InverseNotFound,
    DerivedNotFound,
    TypeNotFound,
    SelectMemberNotFound,
    ArrayElementNotFound,
    ListElementNotFound,
    SetElementNotFound,
    RuleRefused,

    PropertyEntityNotFound,
    PropertyTypeUnknown,
    DataTypeNotFound,
    UnitTypeEndsWithBlank,
    UnitTypeNotGiven,
    LowerBoundNotFound,
    UpperBoundNotFound,
    ComplexPropertyChildUnknown,
    QuantityEntityNotFound,
    QuantityTypeUnknown,
    QuantityTypeNotGiven,
    MeasureTypeNotFound,

    PropertyTypeNameNotKnown,
    QuantityTypeNameNotKnown,

    ConfigNotWellFormed,
    ConfigOfOtherSchema,
    ConfigChildUnknown,
    ExpAttributeIllegal,
    EntityAttributeUnknown,
    EntityChildUnknown,
    TypeAttributeUnknown,
    TypeChildUnknown,
    OptionAttributeUnknown,
    OptionChildUnknown,
    SchemaAttributeUnknown,
    SchemaChildUnknown,
    NamespaceAttributeUnknown,
    NamespaceChildUnknown,
    UosElementAttributeUnknown,
    UosElementChildUnknown,
    AttributeSelectNotGiven,
    AttributeNotFound,
    AttributeAttributeUnknown,
    AttributeChildUnknown,
    InverseSelectNotGiven,
    InverseSelectNotFound,
    InverseAttributeUnknown,
    InverseChildUnknown,

    /// No report: how many there are.
    Count
};

/// The messages of error records.
enum class RecordMessage : std::uint8_t {
    UnknownNode,
    UnknownNodeInRange,
    IllegalGuid,
    IllegalTemplateType,
    ClassNotFound,
    PredefinedTypeNotDeclared,
    PredefinedTypeNotDefinedType,
    PredefinedTypeIllegal,

    /// No message: how many there are.
    Count
};

/// What the messages of syntax errors begin with; the name of a token, a character or a position may follow.
enum class SyntaxMessage : std::uint8_t {
    UnexpectedToken,
    OtherTokenExpected,
    IntervalOperatorExpected,
    RuleExpected,
    UnexpectedCharacter,

    /// No message: how many there are.
    Count
};

/// A report as hosts see it. The members are in the order in which the table is read, not in that of their
/// sizes.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding)
struct ReportPlace {
    Report report;
    std::string_view message;
    /// The operation that reports, with its namespace.
    std::string_view function;
    /// Its module's path without suffix.
    std::string_view file;
    /// 0 when hosts know no line for it.
    std::int32_t line;
};

template <class Id>
struct MessageText {
    Id id;
    std::string_view text;
};

namespace detail {

// The files that reports name.
inline constexpr std::string_view AttributeInverseFile =
    "Source/Format/Ifc/Def/Schema/IfcSchemaAttributeInverse";
inline constexpr std::string_view DataTypeFile = "Source/Format/Ifc/Def/Schema/IfcSchemaDataType";
inline constexpr std::string_view DeriveFile = "Source/Format/Ifc/Def/Schema/IfcSchemaDerive";
inline constexpr std::string_view EntityFile = "Source/Format/Ifc/Def/Schema/IfcSchemaEntity";
inline constexpr std::string_view TypeFile = "Source/Format/Ifc/Def/Schema/IfcSchemaType";
inline constexpr std::string_view WhereFile = "Source/Format/Ifc/Def/Schema/IfcSchemaWhere";
inline constexpr std::string_view PropertyFile = "Source/Format/Ifc/Def/Pset/IfcPropertyDef";
inline constexpr std::string_view PropertyTypeFile = "Source/Format/Ifc/Def/Pset/IfcPropertyType";
inline constexpr std::string_view PropertyKindFile = "Source/Format/Ifc/Def/Pset/IfcPropertyTypeDerived";
inline constexpr std::string_view QuantityFile = "Source/Format/Ifc/Def/Qto/IfcQuantityDef";
inline constexpr std::string_view QuantityTypeFile = "Source/Format/Ifc/Def/Qto/IfcQuantityType";
inline constexpr std::string_view SearcherFile = "Source/Format/Ifc/Def/PropertyNameSearcher";
inline constexpr std::string_view XmlAttributeFile = "Source/Format/Ifc/Def/XmlSchema/IfcXmlAttribute";
inline constexpr std::string_view XmlCommonFile = "Source/Format/Ifc/Def/XmlSchema/IfcXmlCommon";
inline constexpr std::string_view XmlConfigFile = "Source/Format/Ifc/Def/XmlSchema/IfcXmlConfig";
inline constexpr std::string_view XmlEntityFile = "Source/Format/Ifc/Def/XmlSchema/IfcXmlEntity";
inline constexpr std::string_view XmlNamespaceFile = "Source/Format/Ifc/Def/XmlSchema/IfcXmlNamespace";
inline constexpr std::string_view XmlOptionFile = "Source/Format/Ifc/Def/XmlSchema/IfcXmlOption";
inline constexpr std::string_view XmlSchemaFile = "Source/Format/Ifc/Def/XmlSchema/IfcXmlSchema";
inline constexpr std::string_view XmlTypeFile = "Source/Format/Ifc/Def/XmlSchema/IfcXmlType";
inline constexpr std::string_view XmlUosElementFile = "Source/Format/Ifc/Def/XmlSchema/IfcXmlUosElement";

} // namespace detail

/// The table of all reports, in the order of `Report`.
inline constexpr ReportPlace ReportPlaces[] = {
    // ---- Schema texts
    {Report::SupertypeNotFound, "Entity not found", "kiv::ifc::def::schema::Entity::vUpdate",
     detail::EntityFile, 316},
    {Report::SubtypeNotFound, "Entity not found", "kiv::ifc::def::schema::Entity::vUpdate",
     detail::EntityFile, 325},
    {Report::InverseNotFound, "Entity not found", "kiv::ifc::def::schema::AttributeInverse::vUpdate",
     detail::AttributeInverseFile, 0},
    {Report::DerivedNotFound, "Attribute not found", "kiv::ifc::def::schema::DeriveValue::update",
     detail::DeriveFile, 30},
    {Report::TypeNotFound, "Not type found", "kiv::ifc::def::schema::Type::vUpdate", detail::TypeFile, 85},
    {Report::SelectMemberNotFound, "Object not found", "kiv::ifc::def::schema::DataTypeSelect::vUpdate",
     detail::DataTypeFile, 453},
    {Report::ArrayElementNotFound, "Type not found", "kiv::ifc::def::schema::DataTypeListBase<9>::vUpdate",
     detail::DataTypeFile, 228},
    {Report::ListElementNotFound, "Type not found", "kiv::ifc::def::schema::DataTypeListBase<10>::vUpdate",
     detail::DataTypeFile, 228},
    {Report::SetElementNotFound, "Type not found", "kiv::ifc::def::schema::DataTypeListBase<11>::vUpdate",
     detail::DataTypeFile, 228},
    // The syntax error and the text of the clause follow.
    {Report::RuleRefused, "Got SyntaxError when parsing an express rule: ",
     "kiv::ifc::def::schema::Where::parseRules", detail::WhereFile, 0},

    // ---- Set documents
    {Report::PropertyEntityNotFound, "Entity not found", "kiv::ifc::def::pset::PropertyDef::checkForErrors",
     detail::PropertyFile, 83},
    {Report::PropertyTypeUnknown, "Unknown node", "kiv::ifc::def::pset::PropertyType::pCreate",
     detail::PropertyTypeFile, 46},
    {Report::DataTypeNotFound, "Excpeted name to exist in schema",
     "kiv::ifc::def::pset::TypePropertyReferenceValue::checkForErrors", detail::PropertyKindFile, 68},
    {Report::UnitTypeEndsWithBlank, "Name should not end with space",
     "kiv::ifc::def::pset::TypePropertySingleValue::boCheck", detail::PropertyKindFile, 145},
    {Report::UnitTypeNotGiven, "Could not find attribute",
     "kiv::ifc::def::pset::TypePropertySingleValue::boCheck", detail::PropertyKindFile, 149},
    {Report::LowerBoundNotFound, "Excpeted name to exist in schema",
     "kiv::ifc::def::pset::TypePropertyBoundedValue::checkForErrors", detail::PropertyKindFile, 393},
    {Report::UpperBoundNotFound, "Excpeted name to exist in schema",
     "kiv::ifc::def::pset::TypePropertyBoundedValue::checkForErrors", detail::PropertyKindFile, 399},
    {Report::ComplexPropertyChildUnknown, "Unknown node",
     "kiv::ifc::def::pset::TypeComplexProperty::TypeComplexProperty", detail::PropertyKindFile, 583},
    {Report::QuantityEntityNotFound, "Entity not found", "kiv::ifc::def::qto::QuantityDef::checkForErrors",
     detail::QuantityFile, 79},
    {Report::QuantityTypeUnknown, "Unknown node", "kiv::ifc::def::qto::QuantityType::pCreate",
     detail::QuantityTypeFile, 38},
    {Report::QuantityTypeNotGiven, "Child not found", "kiv::ifc::def::qto::QuantityType::pCreate",
     detail::QuantityTypeFile, 42},
    {Report::MeasureTypeNotFound, "Entity not found",
     "kiv::ifc::def::qto::QuantityTypeSimple::checkForErrors", detail::QuantityTypeFile, 54},

    // ---- Type names
    {Report::PropertyTypeNameNotKnown, "Not implemented", "kiv::ifc::findPropertyTypeName",
     detail::SearcherFile, 44},
    {Report::QuantityTypeNameNotKnown, "Not implemented", "kiv::ifc::findPropertyTypeName",
     detail::SearcherFile, 64},

    // ---- Configurations
    {Report::ConfigNotWellFormed, "Illegal xml document", "kiv::ifc::def::xmlschema::Config::Config",
     detail::XmlConfigFile, 0},
    {Report::ConfigOfOtherSchema, "Illegal ifc version", "kiv::ifc::def::xmlschema::Config::Config",
     detail::XmlConfigFile, 0},
    {Report::ConfigChildUnknown, "Unknown nodename",
     "kiv::ifc::def::xmlschema::Config::{ctor}::<lambda_1>::operator ()", detail::XmlConfigFile, 0},
    {Report::ExpAttributeIllegal, "Illegal string", "kiv::ifc::def::xmlschema::expAttributeFromString",
     detail::XmlCommonFile, 0},
    {Report::EntityAttributeUnknown, "Unknown attribute",
     "kiv::ifc::def::xmlschema::Entity::vRead::<lambda_1>::operator ()", detail::XmlEntityFile, 0},
    {Report::EntityChildUnknown, "Unknown element",
     "kiv::ifc::def::xmlschema::Entity::vRead::<lambda_2>::operator ()", detail::XmlEntityFile, 0},
    {Report::TypeAttributeUnknown, "Unknown attribute",
     "kiv::ifc::def::xmlschema::Type::vRead::<lambda_1>::operator ()", detail::XmlTypeFile, 0},
    {Report::TypeChildUnknown, "Unknown element",
     "kiv::ifc::def::xmlschema::Type::vRead::<lambda_2>::operator ()", detail::XmlTypeFile, 0},
    {Report::OptionAttributeUnknown, "Unknown attribute",
     "kiv::ifc::def::xmlschema::Option::vInit::<lambda_1>::operator ()", detail::XmlOptionFile, 0},
    {Report::OptionChildUnknown, "Unknown element",
     "kiv::ifc::def::xmlschema::Option::vInit::<lambda_2>::operator ()", detail::XmlOptionFile, 0},
    {Report::SchemaAttributeUnknown, "Unknown attribute",
     "kiv::ifc::def::xmlschema::Schema::vInit::<lambda_1>::operator ()", detail::XmlSchemaFile, 0},
    {Report::SchemaChildUnknown, "Unknown element",
     "kiv::ifc::def::xmlschema::Schema::vInit::<lambda_2>::operator ()", detail::XmlSchemaFile, 0},
    {Report::NamespaceAttributeUnknown, "Unknown attribute",
     "kiv::ifc::def::xmlschema::Namespace::vInit::<lambda_1>::operator ()", detail::XmlNamespaceFile, 0},
    {Report::NamespaceChildUnknown, "Unknown element",
     "kiv::ifc::def::xmlschema::Namespace::vInit::<lambda_2>::operator ()", detail::XmlNamespaceFile, 0},
    {Report::UosElementAttributeUnknown, "Unknown attribute",
     "kiv::ifc::def::xmlschema::UosElement::vInit::<lambda_1>::operator ()", detail::XmlUosElementFile, 0},
    {Report::UosElementChildUnknown, "Unknown element",
     "kiv::ifc::def::xmlschema::UosElement::vInit::<lambda_2>::operator ()", detail::XmlUosElementFile, 0},
    {Report::AttributeSelectNotGiven, "XML Attribute not found", "kiv::ifc::def::xmlschema::Attribute::vRead",
     detail::XmlAttributeFile, 0},
    {Report::AttributeNotFound, "Attribute not found", "kiv::ifc::def::xmlschema::Attribute::vRead",
     detail::XmlAttributeFile, 0},
    {Report::AttributeAttributeUnknown, "Unknown attribute",
     "kiv::ifc::def::xmlschema::Attribute::{ctor}::<lambda_1>::operator ()", detail::XmlAttributeFile, 0},
    {Report::AttributeChildUnknown, "Unknown element",
     "kiv::ifc::def::xmlschema::Attribute::{ctor}::<lambda_2>::operator ()", detail::XmlAttributeFile, 0},
    {Report::InverseSelectNotGiven, "XML Attribute not found",
     "kiv::ifc::def::xmlschema::AttributeInverse::vRead", detail::XmlAttributeFile, 0},
    {Report::InverseSelectNotFound, "Attribute not found",
     "kiv::ifc::def::xmlschema::AttributeInverse::vRead", detail::XmlAttributeFile, 0},
    {Report::InverseAttributeUnknown, "Unknown attribute",
     "kiv::ifc::def::xmlschema::AttributeInverse::{ctor}::<lambda_1>::operator ()", detail::XmlAttributeFile,
     0},
    {Report::InverseChildUnknown, "Unknown element",
     "kiv::ifc::def::xmlschema::AttributeInverse::{ctor}::<lambda_2>::operator ()", detail::XmlAttributeFile,
     0},
};

inline constexpr MessageText<RecordMessage> RecordMessages[] = {
    {RecordMessage::UnknownNode, "Unknown xml node"},
    {RecordMessage::UnknownNodeInRange, "Unknown xml node in ValueRangeDef"},
    {RecordMessage::IllegalGuid, "Illegal ifdguid in xml file"},
    {RecordMessage::IllegalTemplateType, "Illegal templatetype used"},
    {RecordMessage::ClassNotFound, "Applicable class in xml set is not defined in schema (contain spaces?)"},
    {RecordMessage::PredefinedTypeNotDeclared,
     "Predefined type set on xml set, but no \"PredefinedType\" attribute found on entity"},
    {RecordMessage::PredefinedTypeNotDefinedType, "Attribute predefinedType is doesnt exist on entity"},
    {RecordMessage::PredefinedTypeIllegal,
     "Predefined type set on xml set, but the value is illegal for this enumeration"},
};

inline constexpr MessageText<SyntaxMessage> SyntaxMessages[] = {
    {SyntaxMessage::UnexpectedToken, "Unexpected token"},
    {SyntaxMessage::OtherTokenExpected, "Expected token "},
    {SyntaxMessage::IntervalOperatorExpected, "Expected a interval operator"},
    {SyntaxMessage::RuleExpected, "Expected at least one rule in where clause"},
    {SyntaxMessage::UnexpectedCharacter, "ExpressTokenizer didn't expect the character "},
};

constexpr const ReportPlace& placeOf(Report report) {
    return ReportPlaces[static_cast<std::size_t>(report)];
}

constexpr std::string_view textOf(RecordMessage message) {
    return RecordMessages[static_cast<std::size_t>(message)].text;
}

constexpr std::string_view textOf(SyntaxMessage message) {
    return SyntaxMessages[static_cast<std::size_t>(message)].text;
}

/// Reports a broken promise, when the host listens at all; then the caller goes on with its fallback.
void vReport(Report report) noexcept;

/// The same with a message that goes on after that of the table.
void vReport(Report report, std::string_view message) noexcept;

} // namespace kiv::ifc::def
