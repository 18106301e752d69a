#include "kiv/Format/Ifc/Def/Pset/IfcPropertyType.h"

#include "Format/Ifc/Def/IfcDefXmlNodes.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"

#include <string_view>
#include <type_traits>

namespace kiv::ifc::def::pset {

namespace {

struct Factory {
    std::string_view elementName;
    std::unique_ptr<PropertyType> (*pMake)(const PropertyDef*, const kiv::xml::const_Element&,
                                           xml::XmlSetErrors&);
};

/// Enumerations may be named after their property; the other kinds do not look at it.
template <class Kind>
std::unique_ptr<PropertyType> pMakeOf(const PropertyDef* property, const kiv::xml::const_Element& element,
                                      xml::XmlSetErrors& errors) {
    vMemoryTake(errors.pMeter(), sizeof(Kind));
    if constexpr (std::is_same_v<Kind, TypePropertyEnumeratedValue>)
        return std::make_unique<Kind>(property, element, errors);
    else
        return std::make_unique<Kind>(element, errors);
}

template <class Kind>
constexpr Factory factoryOf() {
    return {Kind::ElementName, pMakeOf<Kind>};
}

constexpr Factory Factories[] = {
    factoryOf<TypePropertySingleValue>(),    factoryOf<TypePropertyEnumeratedValue>(),
    factoryOf<TypePropertyBoundedValue>(),   factoryOf<TypePropertyTableValue>(),
    factoryOf<TypePropertyReferenceValue>(), factoryOf<TypePropertyListValue>(),
    factoryOf<TypeComplexProperty>()};

} // namespace

std::unique_ptr<PropertyType> PropertyType::pCreate(const PropertyDef* property,
                                                    const kiv::xml::const_Element& element,
                                                    xml::XmlSetErrors& errors) {
    const auto child = element.FirstElementChildGet();
    if (!child)
        return nullptr;
    const auto tag = xml::tagOf(*child);
    for (const Factory& factory : Factories) {
        if (factory.elementName == tag)
            return factory.pMake(property, *child, errors);
    }
    if (tag != "TypeSimpleProperty")
        xml::vReportTake(errors.pMeter(), Report::PropertyTypeUnknown);
    return nullptr;
}

} // namespace kiv::ifc::def::pset
