#include "kiv/Format/Ifc/Def/Pset/IfcPropertyType.h"

#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"

#include <type_traits>

namespace kiv::ifc::def::pset {

namespace {

/// Makes the type when the element is of that kind; null otherwise.
template <typename Kind>
std::unique_ptr<PropertyType> pCreateOf(const PropertyDef* property, const kiv::xml::const_Element& element,
                                        xml::XmlSetErrors& errors) {
    if (!element.boNodeNameIs(Kind::ElementName))
        return nullptr;
    if constexpr (std::is_same_v<Kind, TypePropertyEnumeratedValue>)
        return std::make_unique<Kind>(property, element, errors);
    else
        return std::make_unique<Kind>(element, errors);
}

/// Makes the first of the kinds that the element is of; null when it is of none.
template <typename... Kinds>
std::unique_ptr<PropertyType>
pCreateAnyOf(const PropertyDef* property, const kiv::xml::const_Element& element, xml::XmlSetErrors& errors) {
    std::unique_ptr<PropertyType> type;
    static_cast<void>(((type = pCreateOf<Kinds>(property, element, errors)) || ...));
    return type;
}

} // namespace

std::unique_ptr<PropertyType> PropertyType::pCreate(const PropertyDef* property,
                                                    const kiv::xml::const_Element& element,
                                                    xml::XmlSetErrors& errors) {
    const auto child = element.FirstElementChildGet();
    if (!child)
        return nullptr;
    auto type = pCreateAnyOf<TypePropertySingleValue, TypePropertyEnumeratedValue, TypePropertyBoundedValue,
                             TypePropertyTableValue, TypePropertyReferenceValue, TypePropertyListValue,
                             TypeComplexProperty>(property, *child, errors);
    if (!type && !child->boNodeNameIs("TypeSimpleProperty"))
        vReport(Report::PropertyTypeUnknown);
    return type;
}

} // namespace kiv::ifc::def::pset
