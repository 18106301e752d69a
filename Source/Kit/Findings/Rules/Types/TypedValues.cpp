#include "Kit/Findings/Rules/Types/TypedValues.h"

#include "Kit/Positions/XmlChildren.h"
#include "Kit/Text/AsciiText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Kit/Express/ExpressionText.h"

#include <string>
#include <utility>

namespace kiv::kit {

namespace schema = ifc::def::schema;

namespace {

constexpr std::string_view MeasureEnd = "MEASURE";

/// Whether the values of a type are no numbers: only numbers are converted from one unit to another.
bool boHasNoNumber(const schema::Type& measure) {
    if (!measure.pDataType())
        return false;
    switch (measure.pDataType()->getDataTypeKind()) {
    case schema::DataTypeKind::String:
    case schema::DataTypeKind::Boolean:
    case schema::DataTypeKind::Logical:
    case schema::DataTypeKind::Enumeration:
        return true;
    default:
        return false;
    }
}

/// Whether the text begins as "2020-12-31" does.
bool isDate(std::string_view text) {
    constexpr std::string_view Form = "dddd-dd-dd";
    if (text.size() < Form.size())
        return false;
    for (std::size_t i = 0; i != Form.size(); ++i) {
        if (Form[i] == 'd' ? !isDigit(text[i]) : text[i] != Form[i])
            return false;
    }
    return true;
}

/// Whether the one is a date, or a time of one, after the other. Times of several zones are not compared, and
/// those of no date may go past midnight.
bool isLaterDate(std::string_view lower, std::string_view upper) {
    constexpr std::size_t DateSize = std::string_view("2020-12-31").size();
    constexpr std::size_t TimeSize = std::string_view("2020-12-31T23:59:59").size();
    const bool isSameForm = lower.size() == upper.size() &&
                            (lower.size() == DateSize ||
                             (lower.size() >= TimeSize && lower.substr(TimeSize) == upper.substr(TimeSize)));
    return isSameForm && isDate(lower) && isDate(upper) && lower > upper;
}

/// Whether the one is above the other, where both are numbers or both are dates.
bool isAbove(std::string_view lower, std::string_view upper, const schema::Type& measure) {
    const auto least = numberOf(lower);
    const auto greatest = numberOf(upper);
    if (least && greatest)
        return *least > *greatest;
    const bool isText =
        measure.pDataType() && measure.pDataType()->getDataTypeKind() == schema::DataTypeKind::String;
    return isText && isLaterDate(lower, upper);
}

} // namespace

void TypedValues::vCheck(const TypeOutline& type, const schema::Type& measure) {
    vUnitCheck(type, measure);
    vValuesCheck(type, measure);
    vBoundsCheck(type, measure);
    vOlderValuesCheck(type, measure);
}

void TypedValues::vUnitCheck(const TypeOutline& type, const schema::Type& measure) {
    // Where there are several of one or the other, that is the mistake.
    if (type.unit == NoXmlElement || run_.boRepeated(type.unit) || run_.boRepeated(type.element))
        return;
    const auto* attribute = xml_.pAttribute(xml_.getElement(type.unit), "type");
    if (!attribute)
        return;
    if (!units_)
        units_.emplace(run_.schema);
    const auto unit = sUpperCase(trimmed(attribute->value));
    if (!unit.empty() && boHasNoNumber(measure)) {
        run_.addAtValue("T017", type.unit, *attribute,
                        "values of " + std::string(measure.getName()) + " have no unit, and " +
                            sQuoted(unit) + " is given");
        return;
    }
    const auto fitting = units_->unitOf(measure);
    // A unit that the schema does not know is a mistake of another kind.
    if (fitting == unit || !units_->boContains(unit))
        return;
    if (fitting.empty())
        return vUnownedUnitCheck(type, measure, unit);
    run_.addAtValue("T016", type.unit, *attribute,
                    "the unit " + sQuoted(unit) + " does not fit " + std::string(measure.getName()))
        .vNote("the unit of " + std::string(measure.getName()) + " is " + sQuoted(fitting));
}

/// Whether the schema has a kind of unit for the measure that may be of any type, as IfcContextDependentUnit.
bool TypedValues::boHasUnitOfAnyType(const schema::Type& measure) const {
    auto name = std::string(measure.getNameUpper());
    name.replace(name.size() - MeasureEnd.size(), MeasureEnd.size(), "UNIT");
    const auto* unit = schema::Entity::pFrom(run_.schema.pObjectFromName(name));
    return unit && unit->pAttributeFromName(schema::AttributeName("UnitType"), true);
}

/// For numbers of which the schema names no unit, where it says to which measure this one belongs. A number
/// that is no measure may have a unit, which says little to those who read the type alone.
void TypedValues::vUnownedUnitCheck(const TypeOutline& type, const schema::Type& measure,
                                    std::string_view unit) {
    const auto* owner = units_->pMeasureOf(unit);
    // Readers do not look into older simple properties.
    if (!owner || !isOfNumbers(measure) || memberOf(type).kind == PropertyKind::Simple)
        return;
    const std::string name(measure.getName());
    const auto& attribute = *xml_.pAttribute(xml_.getElement(type.unit), "type");
    const auto owning = sQuoted(unit) + " is the unit of " + std::string(owner->getName());
    const bool isMeasure = measure.getNameUpper().ends_with(MeasureEnd);
    if (isMeasure && measure.pDataType()->getDataTypeKind() == schema::DataTypeKind::Real) {
        if (!boHasUnitOfAnyType(measure))
            run_.addAtValue("T016", type.unit, attribute,
                            "the unit " + sQuoted(unit) + " does not fit " + name)
                .vNote(owning);
        return;
    }
    run_.addAtValue("T028", type.unit, attribute,
                    "the schema has no unit for " + name + ", and " + sQuoted(unit) + " is given")
        .vNote(owning);
}

void TypedValues::vFitCheck(const schema::Type& measure, XmlIndex element, const XmlAttribute* attribute) {
    const auto value = trimmed(attribute ? attribute->value : xml_.getElement(element).text);
    if (!measure.pDataType() || fitOf(value, *measure.pDataType()) != ValueFit::No)
        return;
    auto message = "the value " + sQuoted(value) + " is not of the type " + std::string(measure.getName()) +
                   ", which needs " + sValuesOf(*measure.pDataType());
    auto& draft = attribute ? run_.addAtValue("T015", element, *attribute, std::move(message))
                            : run_.addAtText("T015", element, std::move(message));
    if (const auto* items = dynamic_cast<const schema::DataTypeEnum*>(measure.pDataType()))
        draft.vNote("the items of " + std::string(measure.getName()) + " are " +
                    sQuotedList({items->getItems().begin(), items->getItems().end()}));
}

void TypedValues::vBrokenAdd(const BrokenRule& broken, XmlIndex element, const XmlAttribute& attribute) {
    if (broken.rule)
        run_.addAtValue("T015", element, attribute,
                        "the value " + sQuoted(trimmed(attribute.value)) + " breaks a rule of " +
                            std::string(broken.type->getName()))
            .vNote("the rule is " + sExpression(*broken.rule->expression));
}

/// Rules of the schema count as far as they compare values with numbers. Values in lists and tables are
/// examples in many documents, and are not held against them.
void TypedValues::vBoundCheck(const schema::Type& measure, XmlIndex element, const XmlAttribute& attribute) {
    vFitCheck(measure, element, &attribute);
    vBrokenAdd(brokenRuleOf(attribute.value, measure), element, attribute);
}

void TypedValues::vValuesCheck(const TypeOutline& type, const schema::Type& measure) {
    for (const auto item : XmlChildren(xml_, type.values)) {
        if (xml_.getElement(item).name == "ValueItem")
            vFitCheck(measure, item, nullptr);
    }
}

void TypedValues::vRangeCheck(XmlIndex range, const schema::Type& measure, Bounds& bounds) {
    for (const auto bound : XmlChildren(xml_, range)) {
        const auto& element = xml_.getElement(bound);
        const auto* value = xml_.pAttribute(element, "value");
        const bool isLower = element.name == "LowerBoundValue";
        // Documents that the library writes have the name of the type where no bound is known.
        if (!value || (!isLower && element.name != "UpperBoundValue") ||
            run_.schema.pObjectFromName(trimmed(value->value)))
            continue;
        vBoundCheck(measure, bound, *value);
        (isLower ? bounds.lower : bounds.upper) = bound;
    }
}

void TypedValues::vBoundsCheck(const TypeOutline& type, const schema::Type& measure) {
    if (memberOf(type).kind != PropertyKind::BoundedValue)
        return;
    Bounds bounds;
    // Several ranges are joined.
    for (const auto range : XmlChildren(xml_, memberOf(type).kindElement)) {
        if (xml_.getElement(range).name == "ValueRangeDef")
            vRangeCheck(range, measure, bounds);
    }
    vOrderCheck(bounds, measure);
}

/// What documents of older releases have beside the type; a text of "?" stands for nothing.
void TypedValues::vOlderValuesCheck(const TypeOutline& type, const schema::Type& measure) {
    const auto& member = memberOf(type);
    if (member.kind != PropertyKind::SingleValue && member.kind != PropertyKind::BoundedValue)
        return;
    Bounds bounds;
    for (const auto place : XmlChildren(xml_, childOf(xml_, member.element, "ValueDef"))) {
        const auto& element = xml_.getElement(place);
        const auto* value = xml_.pAttribute(element, "value");
        if (!value)
            continue;
        if (element.name == "DefaultValue") {
            vFitCheck(measure, place, value);
            vBrokenAdd(brokenRuleOfValue(value->value, measure), place, *value);
        } else if (element.name == "MinValue" || element.name == "MaxValue") {
            vBoundCheck(measure, place, *value);
            (element.name == "MinValue" ? bounds.lower : bounds.upper) = place;
        }
    }
    vOrderCheck(bounds, measure);
}

void TypedValues::vOrderCheck(const Bounds& bounds, const schema::Type& measure) {
    if (bounds.lower == NoXmlElement || bounds.upper == NoXmlElement)
        return;
    const auto lower = bounds.lower;
    const auto* lowerValue = xml_.pAttribute(xml_.getElement(lower), "value");
    const auto* upperValue = xml_.pAttribute(xml_.getElement(bounds.upper), "value");
    const auto lowest = trimmed(lowerValue->value);
    const auto highest = trimmed(upperValue->value);
    if (!isAbove(lowest, highest, measure))
        return;
    run_.addAtValue("T014", lower, *lowerValue,
                    "the lower bound " + sQuoted(lowest) + " is above the upper bound " + sQuoted(highest))
        .vNoteAt("the upper bound is here", run_.xml.valuePositionOf(*upperValue));
}

} // namespace kiv::kit
