/// @file
/// The kinds of property types, and the constants of enumerations.
///
///     if (const auto* enumerated = dynamic_cast<const TypePropertyEnumeratedValue*>(property.pType()))
///         for (const std::string& item : enumerated->getItems())
///             std::cout << item << '\n';
///
/// More is read than written: unit types, constants, expressions, values texts and the parts of complex
/// properties are not written.
///
/// Ownership: a type owns all it hands out.
/// Threads:   unchanged once read; what is const may be called from any number of threads.
/// Errors:    a child that a kind does not know becomes a record; names that are not in the schema are
///            assertion reports and never make a check fail.
#pragma once

#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyType.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::pset {

/// A reference to an object; also the base of all types that name one data type.
class KIV_EXPORT TypePropertyReferenceValue : public PropertyType {
public:
    static constexpr std::string_view ElementName = "TypePropertyReferenceValue";

    TypePropertyReferenceValue(const kiv::xml::const_Element& element, xml::XmlSetErrors& errors);

    std::string sEntityName() const override;
    bool checkForErrors(const schema::Schema& schema, xml::XmlSetErrors& errors) const override;
    void vExport(kiv::xml::Element& element, xml::ExtraExportInfo* info) const override;

    /// Appends the "DataType" element, with "basetype" when `info` has a schema in which the data type is a
    /// defined type.
    void vExportCommon(kiv::xml::Element& element, const xml::ExtraExportInfo* info) const;

    /// The defined type or entity that values are of, such as IfcLabel; may be empty.
    const std::string& getDataTypeName() const { return dataTypeName_; }

protected:
    /// For the kinds that read their element themselves.
    TypePropertyReferenceValue() = default;

    /// Takes "DataType"; false for every other tag.
    bool boCheck(std::string_view tag, const kiv::xml::const_Element& child, WorkMeter* meter = nullptr);

private:
    std::string dataTypeName_;
};

/// One value.
class KIV_EXPORT TypePropertySingleValue : public TypePropertyReferenceValue {
public:
    static constexpr std::string_view ElementName = "TypePropertySingleValue";

    TypePropertySingleValue(const kiv::xml::const_Element& element, xml::XmlSetErrors& errors);

    std::string sEntityName() const override;
    void vExport(kiv::xml::Element& element, xml::ExtraExportInfo* info) const override;

    const std::string& getUnitType() const { return unitType_; }

protected:
    /// For the kinds that read their element themselves.
    TypePropertySingleValue() = default;

    /// Takes "DataType", and "UnitType" with "type"; false for everything else.
    bool boCheck(std::string_view tag, const kiv::xml::const_Element& child, WorkMeter* meter = nullptr);

private:
    bool boUnitTypeRead(const kiv::xml::const_Element& child, WorkMeter* meter);

    std::string unitType_;
};

/// A value between two bounds.
class KIV_EXPORT TypePropertyBoundedValue final : public TypePropertySingleValue {
public:
    static constexpr std::string_view ElementName = "TypePropertyBoundedValue";

    TypePropertyBoundedValue(const kiv::xml::const_Element& element, xml::XmlSetErrors& errors);

    std::string sEntityName() const override;
    bool checkForErrors(const schema::Schema& schema, xml::XmlSetErrors& errors) const override;
    /// A bound that was not given is written as the data type's name.
    void vExport(kiv::xml::Element& element, xml::ExtraExportInfo* info) const override;

    /// The bounds as written; empty when not given.
    const std::string& getLowerBoundValue() const { return lowerBoundValue_; }
    const std::string& getUpperBoundValue() const { return upperBoundValue_; }

private:
    void vRangeRead(const kiv::xml::const_Element& range, xml::XmlSetErrors& errors);

    std::string lowerBoundValue_;
    std::string upperBoundValue_;
};

/// What the values of a table column or of a list are; never the type of a property.
class KIV_EXPORT TypePropertyValue final : public TypePropertySingleValue {
public:
    /// Reads a "DefiningValue", "DefinedValue" or "ListValue" element.
    TypePropertyValue(const kiv::xml::const_Element& element, xml::XmlSetErrors& errors);

    /// Writes nothing.
    void vExport(kiv::xml::Element& element, xml::ExtraExportInfo* info) const override;

    /// The text of "Values".
    const std::string& getValues() const { return values_; }

private:
    std::string values_;
};

/// One constant of an enumeration.
class KIV_EXPORT ConstantDef {
public:
    ConstantDef(const kiv::xml::const_Element& element, xml::XmlSetErrors& errors);

    const std::string& getName() const { return name_; }
    const std::string& getDefinition() const { return definition_; }
    const xml::Aliases& getNameAliases() const { return nameAliases_; }
    const xml::Aliases& getDefinitionAliases() const { return definitionAliases_; }

private:
    bool boChildRead(std::string_view tag, const kiv::xml::const_Element& child, WorkMeter* meter);

    std::string name_;
    std::string definition_;
    xml::Aliases nameAliases_;
    xml::Aliases definitionAliases_;
};

/// A choice of items.
class KIV_EXPORT TypePropertyEnumeratedValue final : public PropertyType {
public:
    static constexpr std::string_view ElementName = "TypePropertyEnumeratedValue";

    /// `property` gives the enumeration its name when the element does not; it may be null.
    TypePropertyEnumeratedValue(const PropertyDef* property, const kiv::xml::const_Element& element,
                                xml::XmlSetErrors& errors);

    std::string sEntityName() const override;
    void vExport(kiv::xml::Element& element, xml::ExtraExportInfo* info) const override;

    /// The name without the "PEnum_" that documents put in front of it.
    const std::string& getEnumerationName() const { return enumerationName_; }
    /// In document order, without white space around them.
    const std::vector<std::string>& getItems() const { return items_; }
    /// In document order; several may have one name.
    const std::vector<ConstantDef>& getConstants() const { return constants_; }
    /// Ordered by name byte by byte, the first constant of each name; they point into `getConstants`.
    const std::vector<const ConstantDef*>& getConstantsByName() const { return constantsByName_; }

private:
    void vEnumListRead(const PropertyDef* property, const kiv::xml::const_Element& list, WorkMeter* meter);
    void vConstantListRead(const kiv::xml::const_Element& list, xml::XmlSetErrors& errors);
    void vConstantsOrder(WorkMeter* meter);

    std::string enumerationName_;
    std::vector<std::string> items_;
    std::vector<ConstantDef> constants_;
    std::vector<const ConstantDef*> constantsByName_;
};

/// A table of two columns: defining values and what they define.
class KIV_EXPORT TypePropertyTableValue final : public PropertyType {
public:
    static constexpr std::string_view ElementName = "TypePropertyTableValue";

    TypePropertyTableValue(const kiv::xml::const_Element& element, xml::XmlSetErrors& errors);

    std::string sEntityName() const override;
    bool checkForErrors(const schema::Schema& schema, xml::XmlSetErrors& errors) const override;
    void vExport(kiv::xml::Element& element, xml::ExtraExportInfo* info) const override;

    const std::string& getExpression() const { return expression_; }
    const std::string& getDefiningTypeName() const { return definingTypeName_; }
    const std::string& getDefinedTypeName() const { return definedTypeName_; }
    const std::vector<TypePropertyValue>& getDefiningValues() const { return definingValues_; }
    const std::vector<TypePropertyValue>& getDefinedValues() const { return definedValues_; }

private:
    std::string expression_;
    std::string definingTypeName_;
    std::string definedTypeName_;
    std::vector<TypePropertyValue> definingValues_;
    std::vector<TypePropertyValue> definedValues_;
};

/// A list of values.
class KIV_EXPORT TypePropertyListValue final : public PropertyType {
public:
    static constexpr std::string_view ElementName = "TypePropertyListValue";

    TypePropertyListValue(const kiv::xml::const_Element& element, xml::XmlSetErrors& errors);

    std::string sEntityName() const override;
    bool checkForErrors(const schema::Schema& schema, xml::XmlSetErrors& errors) const override;
    /// Writes a "ListValue" for each list value and one more for the item type, so that a list which was read
    /// from one "ListValue" is written as two.
    void vExport(kiv::xml::Element& element, xml::ExtraExportInfo* info) const override;

    /// From the last "ListValue" that names one.
    const std::string& getListItemTypeName() const { return listItemTypeName_; }
    const std::vector<TypePropertyValue>& getListValues() const { return listValues_; }

private:
    std::string listItemTypeName_;
    std::vector<TypePropertyValue> listValues_;
};

/// A property made of properties.
///
/// They nest as deep as the elements of a document can (`kiv::xml::maxElementDepth`), each level taking three
/// of those, so that recursing over them is safe on any thread.
class KIV_EXPORT TypeComplexProperty final : public PropertyType {
public:
    static constexpr std::string_view ElementName = "TypeComplexProperty";

    TypeComplexProperty(const kiv::xml::const_Element& element, xml::XmlSetErrors& errors);

    std::string sEntityName() const override;
    bool checkForErrors(const schema::Schema& schema, xml::XmlSetErrors& errors) const override;
    /// Writes nothing.
    void vExport(kiv::xml::Element& element, xml::ExtraExportInfo* info) const override;

    const std::string& getName() const { return name_; }
    /// In document order; none has an owner.
    const std::vector<PropertyDef>& getProperties() const { return properties_; }

private:
    std::string name_;
    std::vector<PropertyDef> properties_;
};

} // namespace kiv::ifc::def::pset
