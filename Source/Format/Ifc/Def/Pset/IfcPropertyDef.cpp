#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"

#include "Format/Ifc/Def/IfcDefXmlNodes.h"
#include "Format/Ifc/Def/Pset/IfcPropertyTypeMemory.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"

#include <algorithm>
#include <type_traits>
#include <utility>

namespace kiv::ifc::def::pset {

namespace {

constexpr std::string_view PropertiesTag = "PropertyDefs";
constexpr std::string_view TypeTag = "PropertyType";
constexpr std::string_view AliasesTag = "PsetDefinitionAliases";
constexpr std::string_view AliasTag = "PsetDefinitionAlias";

} // namespace

// A growing set moves its properties. If the move could throw, std::vector would copy them instead, and they
// cannot be copied.
static_assert(std::is_nothrow_move_constructible_v<PropertyDef>);

PropertyDef::PropertyDef(const PropertySetDef* owner, const kiv::xml::const_Element& element,
                         xml::XmlSetErrors& errors) :
    Def(owner, element, errors) {
    xml::vChildrenRead(element, errors, [&](std::string_view tag, const kiv::xml::const_Element& child) {
        return boChildRead(tag, child, errors);
    });
}

PropertyDef::PropertyDef(const PropertySetDef& owner, std::string_view name,
                         std::unique_ptr<PropertyType>&& type) :
    Def(&owner, name), type_(std::move(type)) {}

bool PropertyDef::boChildRead(std::string_view tag, const kiv::xml::const_Element& child,
                              xml::XmlSetErrors& errors) {
    if (boCheck(tag, child, errors.pMeter()))
        return true;
    if (tag == TypeTag) {
        auto type = PropertyType::pCreate(this, child, errors);
        // The last one counts.
        if (errors.pMeter() && type_)
            errors.pMeter()->vMemoryGiveBack(heldBy(*type_));
        type_ = std::move(type);
        return true;
    }
    // Known, and nothing of it is kept: what values a property may have is in its type.
    return tag == "ValueDef";
}

std::string PropertyDef::getEntityName() const {
    return type_ ? type_->sEntityName() : std::string();
}

bool PropertyDef::checkForErrors(const schema::Schema& schema, xml::XmlSetErrors& errors) const {
    if (!type_)
        return true;
    vEntityExpect(schema, *type_, Report::PropertyEntityNotFound);
    type_->checkForErrors(schema, errors);
    return true;
}

void PropertyDef::vExport(kiv::xml::Element& parent, xml::ExtraExportInfo* info) const {
    auto element = exportBegin(parent, ElementName, info);
    auto typeElement = element.ElementNodeAppend(TypeTag);
    if (type_)
        type_->vExport(typeElement, info);
}

PropertySetDef::PropertySetDef(const kiv::xml::const_Element& element, xml::XmlSetErrors& errors) :
    SetDef(element, errors) {
    xml::vChildrenRead(element, errors, [&](std::string_view tag, const kiv::xml::const_Element& child) {
        return boChildRead(tag, child, errors);
    });
}

PropertySetDef::PropertySetDef(const kiv::xml::const_Element& element, xml::XmlSetErrors& errors,
                               BudgetMeter& meter) :
    PropertySetDef(element, errors, xml::XmlSetErrors::Reading(errors, meter)) {}

PropertySetDef::PropertySetDef(const kiv::xml::const_Element& element, xml::XmlSetErrors& errors,
                               const xml::XmlSetErrors::Reading&) :
    PropertySetDef(element, errors) {}

bool PropertySetDef::boChildRead(std::string_view tag, const kiv::xml::const_Element& child,
                                 xml::XmlSetErrors& errors) {
    if (boCheck(tag, child, errors.pMeter()))
        return true;
    if (tag == PropertiesTag) {
        vPropertiesRead(child, errors);
        return true;
    }
    if (tag == AliasesTag) {
        vDefinitionAliasesAdd(child, AliasTag, errors.pMeter());
        return true;
    }
    // Known, and nothing of it is kept: `ApplicableClasses` has the classes.
    return tag == "Applicability";
}

void PropertySetDef::vPropertiesRead(const kiv::xml::const_Element& list, xml::XmlSetErrors& errors) {
    for (const auto& child : xml::ElementChildren(list)) {
        vLook(errors.pMeter());
        if (child.boNodeNameIs(PropertyDef::ElementName))
            vMemberRead(child, errors);
    }
}

void PropertySetDef::vMemberRead(const kiv::xml::const_Element& child, xml::XmlSetErrors& errors) {
    vObjectTake(errors.pMeter());
    vRoomForOne(properties_, errors.pMeter());
    properties_.emplace_back(this, child, errors);
}

bool PropertySetDef::checkForErrors(const schema::Schema& schema, xml::XmlSetErrors& errors) const {
    const auto passes = [&](const PropertyDef& property) { return property.checkForErrors(schema, errors); };
    return SetDef::checkForErrors(schema, errors) && std::ranges::all_of(properties_, passes);
}

kiv::xml::Element PropertySetDef::exportDef(kiv::xml::Element& element, xml::ExtraExportInfo* info) const {
    vExportCommon(element);
    auto properties = element.ElementNodeAppend(PropertiesTag);
    for (const PropertyDef& property : properties_)
        property.vExport(properties, info);
    getDefinitionAliases().vExport(element, AliasesTag, AliasTag);
    return element;
}

const char* PropertySetDef::pXmlElementName() const {
    return "PropertySetDef";
}

} // namespace kiv::ifc::def::pset
