#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"

#include "Format/Ifc/Def/IfcDefXmlNodes.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"

#include <type_traits>
#include <utility>

namespace kiv::ifc::def::qto {

namespace {

constexpr std::string_view QuantityTag = "QtoDef";
constexpr std::string_view QuantitiesTag = "QtoDefs";
constexpr std::string_view TypeTag = "QtoType";
constexpr std::string_view AliasesTag = "QtoDefinitionAliases";
constexpr std::string_view AliasTag = "QtoDefinitionAlias";

} // namespace

// A growing set moves its quantities. If the move could throw, std::vector would copy them instead, and they
// cannot be copied.
static_assert(std::is_nothrow_move_constructible_v<QuantityDef>);

QuantityDef::QuantityDef(const QuantitySetDef& owner, const kiv::xml::const_Element& element,
                         xml::XmlSetErrors& errors) :
    Def(&owner, element, errors) {
    xml::vChildrenRead(element, errors, [&](std::string_view tag, const kiv::xml::const_Element& child) {
        return boChildRead(tag, child, errors.pMeter());
    });
}

QuantityDef::QuantityDef(const QuantitySetDef& owner, std::string_view name,
                         std::unique_ptr<QuantityType>&& type) :
    Def(&owner, name), type_(std::move(type)) {}

bool QuantityDef::boChildRead(std::string_view tag, const kiv::xml::const_Element& child, WorkMeter* meter) {
    if (boCheck(tag, child, meter))
        return true;
    // "ValueDef", which is known in a property, is not known here.
    if (tag != TypeTag)
        return false;
    auto type = QuantityType::pCreate(child, meter);
    // The last one counts; all kinds are without data.
    if (meter && type_)
        meter->vMemoryGiveBack(sizeof(QuantityTypeSimple));
    type_ = std::move(type);
    return true;
}

std::string QuantityDef::getEntityName() const {
    return type_ ? type_->sEntityName() : std::string();
}

bool QuantityDef::checkForErrors(const schema::Schema& schema, xml::XmlSetErrors& errors) const {
    if (!type_)
        return true;
    vEntityExpect(schema, *type_, Report::QuantityEntityNotFound);
    type_->checkForErrors(schema, errors);
    return true;
}

void QuantityDef::vExport(kiv::xml::Element& parent, xml::ExtraExportInfo* info) const {
    auto element = exportBegin(parent, QuantityTag, info);
    xml::vTextElementAppend(element, TypeTag, type_ ? type_->pTypeCode() : "");
}

QuantitySetDef::QuantitySetDef(const kiv::xml::Element& element, xml::XmlSetErrors& errors) :
    SetDef(element, errors) {
    xml::vChildrenRead(element, errors, [&](std::string_view tag, const kiv::xml::const_Element& child) {
        return boChildRead(tag, child, errors);
    });
}

QuantitySetDef::QuantitySetDef(const kiv::xml::Element& element, xml::XmlSetErrors& errors,
                               BudgetMeter& meter) :
    QuantitySetDef(element, errors, xml::XmlSetErrors::Reading(errors, meter)) {}

QuantitySetDef::QuantitySetDef(const kiv::xml::Element& element, xml::XmlSetErrors& errors,
                               const xml::XmlSetErrors::Reading&) :
    QuantitySetDef(element, errors) {}

bool QuantitySetDef::boChildRead(std::string_view tag, const kiv::xml::const_Element& child,
                                 xml::XmlSetErrors& errors) {
    if (boCheck(tag, child, errors.pMeter()))
        return true;
    if (tag == QuantitiesTag) {
        vQuantitiesRead(child, errors);
        return true;
    }
    if (tag == AliasesTag) {
        vDefinitionAliasesAdd(child, AliasTag, errors.pMeter());
        return true;
    }
    // Known, and nothing of it is kept: `ApplicableClasses` has the classes.
    return tag == "Applicability";
}

void QuantitySetDef::vQuantitiesRead(const kiv::xml::const_Element& list, xml::XmlSetErrors& errors) {
    for (const auto& child : xml::ElementChildren(list)) {
        vLook(errors.pMeter());
        if (child.boNodeNameIs(QuantityTag))
            vMemberRead(child, errors);
    }
}

void QuantitySetDef::vMemberRead(const kiv::xml::const_Element& child, xml::XmlSetErrors& errors) {
    vObjectTake(errors.pMeter());
    vRoomForOne(quantities_, errors.pMeter());
    quantities_.emplace_back(*this, child, errors);
}

kiv::xml::Element QuantitySetDef::exportDef(kiv::xml::Element& element, xml::ExtraExportInfo* info) const {
    auto setElement = element.ElementNodeAppend(pXmlElementName());
    vExportCommon(setElement);
    auto quantities = setElement.ElementNodeAppend(QuantitiesTag);
    for (const QuantityDef& quantity : quantities_)
        quantity.vExport(quantities, info);
    getDefinitionAliases().vExport(setElement, AliasesTag, AliasTag);
    return setElement;
}

const char* QuantitySetDef::pXmlElementName() const {
    return "QtoSetDef";
}

} // namespace kiv::ifc::def::qto
