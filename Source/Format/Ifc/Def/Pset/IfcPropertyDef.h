/// @file
/// Property sets and their properties.
///
///     xml::XmlSetErrors errors;
///     const PropertySetDef set(root, errors);
///     set.checkForErrors(schema, errors);
///     for (const PropertyDef& property : set.getProperties())
///         std::cout << property.getConcept() << " becomes an " << property.getEntityName() << '\n';
///
/// Ownership: a set owns its properties, a property its type; a property refers back to its set.
/// Threads:   unchanged once read; what is const may be called from any number of threads.
/// Errors:    an element that nobody knows becomes a record, and reading goes on.
#pragma once

#include "kiv/Format/Ifc/Def/IfcDefBase.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyType.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::pset {

class PropertySetDef;

/// A property of a property set, or a part of a complex property.
class KIV_EXPORT PropertyDef final : public xml::Def {
public:
    static constexpr std::string_view ElementName = "PropertyDef";

    /// Reads a "PropertyDef" element. `owner` is null for a part of a complex property.
    PropertyDef(const PropertySetDef* owner, const kiv::xml::const_Element& element,
                xml::XmlSetErrors& errors);
    /// A property made in code; `owner` does not list it among its properties.
    PropertyDef(const PropertySetDef& owner, std::string_view name, std::unique_ptr<PropertyType>&& type);

    std::string getEntityName() const override;

    /// Checks the type. Always true: what is wrong with a property never makes its set fail.
    bool checkForErrors(const schema::Schema& schema, xml::XmlSetErrors& errors) const;

    /// Appends a "PropertyDef" element to `parent`. Without a type its "PropertyType" stays empty.
    void vExport(kiv::xml::Element& parent, xml::ExtraExportInfo* info) const;

    /// Null when the document gives none, or one that made no type.
    const PropertyType* pType() const { return type_.get(); }

private:
    bool boChildRead(std::string_view tag, const kiv::xml::const_Element& child, xml::XmlSetErrors& errors);

    std::unique_ptr<PropertyType> type_;
};

/// A property set.
class KIV_EXPORT PropertySetDef final : public xml::SetDef {
public:
    /// Reads a set element, whatever its tag.
    PropertySetDef(const kiv::xml::const_Element& element, xml::XmlSetErrors& errors);
    /// The same within a budget; what goes beyond it throws `BudgetExceeded`, and then the collector holds
    /// what it held before.
    PropertySetDef(const kiv::xml::const_Element& element, xml::XmlSetErrors& errors, BudgetMeter& meter);

    /// Checks the set and then, unless that failed, each property.
    bool checkForErrors(const schema::Schema& schema, xml::XmlSetErrors& errors) const override;

    /// Writes the set into `element` itself, which it returns.
    kiv::xml::Element exportDef(kiv::xml::Element& element, xml::ExtraExportInfo* info) const override;

    /// "PropertySetDef".
    const char* pXmlElementName() const override;

    /// In document order; several may have one name.
    const std::vector<PropertyDef>& getProperties() const { return properties_; }

private:
    /// Reads while the collector keeps account, which ends with the argument.
    PropertySetDef(const kiv::xml::const_Element& element, xml::XmlSetErrors& errors,
                   const xml::XmlSetErrors::Reading&);
    void vMemberRead(const kiv::xml::const_Element& child, xml::XmlSetErrors& errors);
    bool boChildRead(std::string_view tag, const kiv::xml::const_Element& child, xml::XmlSetErrors& errors);
    void vPropertiesRead(const kiv::xml::const_Element& list, xml::XmlSetErrors& errors);

    std::vector<PropertyDef> properties_;
};

} // namespace kiv::ifc::def::pset
