#include "Kit/Findings/Rules/Types/TypedValues.h"

#include "Kit/Positions/XmlChildren.h"
#include "Kit/Text/AsciiText.h"
#include "kiv/Kit/Express/ExpressionText.h"

#include <string>
#include <utility>

namespace kiv::kit {

namespace schema = ifc::def::schema;

namespace {

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
    const auto unit = sUpperCase(trimmed(attribute->value.value));
    if (!unit.empty() && boHasNoNumber(measure)) {
        run_.addAtValue("T017", type.unit, *attribute,
                        "values of " + std::string(measure.getName()) + " have no unit, and " +
                            sQuoted(unit) + " is given");
        return;
    }
    const auto fitting = units_->unitOf(measure);
    // A unit that the schema does not know is a mistake of another kind.
    if (fitting.empty() || fitting == unit || !units_->boContains(unit))
        return;
    run_.addAtValue("T016", type.unit, *attribute,
                    "the unit " + sQuoted(unit) + " does not fit " + std::string(measure.getName()))
        .vNote("the unit of " + std::string(measure.getName()) + " is " + sQuoted(fitting));
}

void TypedValues::vFitCheck(const schema::Type& measure, XmlIndex element, const XmlAttribute* attribute) {
    const auto value = trimmed(attribute ? attribute->value.value : xml_.getElement(element).text);
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

/// Rules of the schema, as far as they compare values with numbers. Values in lists and tables are examples
/// in many documents.
void TypedValues::vBoundRulesCheck(const schema::Type& measure, XmlIndex element,
                                   const XmlAttribute& attribute) {
    const auto value = trimmed(attribute.value.value);
    const auto [type, rule] = brokenRuleOf(value, measure);
    if (rule)
        run_.addAtValue("T015", element, attribute,
                        "the value " + sQuoted(value) + " breaks a rule of " + std::string(type->getName()))
            .vNote("the rule is " + sExpression(*rule->expression));
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
            run_.schema.pObjectFromName(trimmed(value->value.value)))
            continue;
        vFitCheck(measure, bound, value);
        vBoundRulesCheck(measure, bound, *value);
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
    if (bounds.lower == NoXmlElement || bounds.upper == NoXmlElement)
        return;
    const auto lower = bounds.lower;
    const auto* lowerValue = xml_.pAttribute(xml_.getElement(lower), "value");
    const auto* upperValue = xml_.pAttribute(xml_.getElement(bounds.upper), "value");
    const auto lowest = trimmed(lowerValue->value.value);
    const auto highest = trimmed(upperValue->value.value);
    if (!isAbove(lowest, highest, measure))
        return;
    run_.addAtValue("T014", lower, *lowerValue,
                    "the lower bound " + sQuoted(lowest) + " is above the upper bound " + sQuoted(highest))
        .vNoteAt("the upper bound is here", upperValue->value.position);
}

} // namespace kiv::kit
