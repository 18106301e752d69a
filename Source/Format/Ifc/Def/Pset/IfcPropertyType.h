/// @file
/// The type of a property: what its values are, and which IFC property entity it becomes.
///
///     if (const auto* single = dynamic_cast<const TypePropertySingleValue*>(property.pType()))
///         std::cout << single->getDataTypeName();
///
/// Ownership: belongs to its property.
/// Threads:   unchanged once read; what is const may be called from any number of threads.
/// Errors:    a problem in a document becomes a record; an unknown kind, or a name that is not in the schema,
///            an assertion report.
#pragma once

#include "kiv/Format/Ifc/Def/IfcDefBase.h"

#include <memory>

namespace kiv::ifc::def::pset {

class PropertyDef;

/// Base of the kinds of property types, which are in IfcPropertyTypeDerived.h.
class KIV_EXPORT PropertyType : public xml::TypeBase {
public:
    /// Reads the type from the first element child of a "PropertyType" element; null when there is none, when
    /// it is "TypeSimpleProperty", and when it is of no known kind. `property` is the one that will own the
    /// type; what has been read of it so far may name an enumeration, and null leaves such an enumeration
    /// without a name.
    static std::unique_ptr<PropertyType>
    pCreate(const PropertyDef* property, const kiv::xml::const_Element& element, xml::XmlSetErrors& errors);

    /// Writes the type into its "PropertyType" element.
    virtual void vExport(kiv::xml::Element& element, xml::ExtraExportInfo* info) const = 0;
};

} // namespace kiv::ifc::def::pset
