#include "Kit/Findings/Rules/Structure/FixedValues.h"

#include "Kit/Findings/LegalNames.h"
#include "Kit/Positions/XmlChildren.h"
#include "Kit/Text/AsciiText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEnumeration.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"

#include <algorithm>
#include <string>
#include <utility>

namespace kiv::kit {

namespace {

using ifc::def::schema::DataTypeEnum;
using ifc::def::schema::Type;

constexpr std::string_view PropertyTemplateTypes[] = {"PSET_TYPEDRIVENONLY",
                                                      "PSET_TYPEDRIVENOVERRIDE",
                                                      "PSET_OCCURRENCEDRIVEN",
                                                      "PSET_PERFORMANCEDRIVEN",
                                                      "PSET_MATERIALDRIVEN",
                                                      "PSET_PROFILEDRIVEN",
                                                      "NOTDEFINED"};

constexpr std::string_view QuantityTemplateTypes[] = {"QTO_TYPEDRIVENONLY", "QTO_TYPEDRIVENOVERRIDE",
                                                      "QTO_OCCURRENCEDRIVEN", "NOTDEFINED"};

/// What the official XML schema has in their places.
constexpr std::pair<std::string_view, std::string_view> QuantityEntities[] = {
    {"IfcQuantityCount", "Q_COUNT"}, {"IfcQuantityWeight", "Q_WEIGHT"}, {"IfcQuantityLength", "Q_LENGTH"},
    {"IfcQuantityArea", "Q_AREA"},   {"IfcQuantityVolume", "Q_VOLUME"}, {"IfcQuantityTime", "Q_TIME"}};

/// What has another name there, and may be like one that means something else.
constexpr std::pair<std::string_view, std::string_view> QuantityWords[] = {
    {"Q_HEIGHT", "Q_LENGTH"}, {"Q_WIDTH", "Q_LENGTH"},  {"Q_DEPTH", "Q_LENGTH"}, {"Q_MASS", "Q_WEIGHT"},
    {"Q_NUMBER", "Q_COUNT"},  {"Q_DURATION", "Q_TIME"}, {"Q_SURFACE", "Q_AREA"}, {"Q_PERIMETER", "Q_LENGTH"}};

} // namespace

FindingDraft* FixedValues::pValueAdd(std::string_view code, XmlIndex element, const XmlAttribute* attribute,
                                     const XmlText& text, std::string_view what,
                                     std::span<const std::string_view> legal) {
    const auto add = [&](std::string_view rule, std::string message) -> FindingDraft& {
        return attribute ? run_.addAtValue(rule, element, *attribute, std::move(message))
                         : run_.addAtText(rule, element, std::move(message));
    };
    const auto value = trimmedBlanks(text.value);
    const auto match = legalMatch(value, legal);
    if (match.isLetterCase && match.name == value) {
        add("S019", std::string(what) + " " + sQuoted(value) + " has white space around it")
            .vNote("write it as " + sQuoted(value))
            .vEdit(text.bytes, value);
        return nullptr;
    }
    if (match.isLetterCase) {
        add("S011", std::string(what) + " " + sQuoted(value) + " is written in another letter case")
            .vNote("write it as " + sQuoted(match.name))
            .vEdit(text.bytes, match.name);
        return nullptr;
    }
    auto& draft = add(code, sQuoted(text.value) + " is no " + std::string(what));
    if (!match.name.empty())
        draft.vNote("did you mean " + sQuoted(match.name) + "?");
    if (match.isSure)
        draft.vEdit(text.bytes, match.name);
    return &draft;
}

void FixedValues::vTemplateTypeCheck() {
    const auto* type = xml_.pAttribute(xml_.getElement(0), "templatetype");
    const std::span<const std::string_view> legal =
        run_.outline.kind == SetKind::QuantitySet ? std::span<const std::string_view>(QuantityTemplateTypes)
                                                  : PropertyTemplateTypes;
    if (!type || std::ranges::find(legal, type->value) != legal.end())
        return;
    // Readers take an empty one for none.
    auto* draft =
        type->value.empty()
            ? &run_.addAtValue("S007", 0, *type, "the template type is empty").vSeverity(Severity::Warning)
            : pValueAdd("S007", 0, type, xml_.valueOf(*type), "template type", legal);
    if (draft)
        draft->vNote("legal values: " + sQuotedList({legal.begin(), legal.end()}));
}

const std::vector<std::string_view>& FixedValues::getUnitTypes() {
    if (unitTypes_)
        return *unitTypes_;
    auto& types = unitTypes_.emplace();
    for (const auto name : {"IfcUnitEnum", "IfcDerivedUnitEnum"}) {
        const auto* type = Type::pFrom(run_.schema.pObjectFromName(name));
        const auto* items = type ? dynamic_cast<const DataTypeEnum*>(type->pDataType()) : nullptr;
        if (items)
            types.insert(types.end(), items->getItems().begin(), items->getItems().end());
    }
    return types;
}

/// The unit of the type that is beside it; empty where the schema cannot tell.
std::string_view FixedValues::unitOfMeasure(XmlIndex element) {
    const auto dataType = childOf(xml_, xml_.getElement(element).parent, "DataType");
    const auto* name =
        dataType == NoXmlElement ? nullptr : xml_.pAttribute(xml_.getElement(dataType), "type");
    const auto* measure =
        name ? Type::pFrom(run_.schema.pObjectFromName(trimmedBlanks(name->value))) : nullptr;
    if (!measure)
        return {};
    if (!units_)
        units_.emplace(run_.schema);
    return units_->unitOf(*measure);
}

void FixedValues::vUnitTypeCheck(XmlIndex element) {
    const auto* type = xml_.pAttribute(xml_.getElement(element), "type");
    if (type && trimmedBlanks(type->value).empty()) {
        if (run_.boRepeated(element))
            return;
        run_.addAtValue("S022", element, *type, "the type of the unit is empty")
            .vNote("leave \"UnitType\" out where there is no unit");
        return;
    }
    if (!type)
        return;
    const auto& legal = getUnitTypes();
    // A schema without units has no list of them.
    if (legal.empty() || std::ranges::find(legal, type->value) != legal.end())
        return;
    const auto fitting = unitOfMeasure(element);
    const std::span<const std::string_view> ofMeasure(&fitting, 1);
    // What is not clearly misspelt is that of the measure rather than one that is a little like it.
    const bool isMisspelt = fitting.empty() || legalMatch(trimmedBlanks(type->value), legal).isSure;
    auto* draft =
        pValueAdd("S008", element, type, xml_.valueOf(*type), "type of unit", isMisspelt ? legal : ofMeasure);
    if (!draft)
        return;
    if (!isMisspelt)
        draft->vNote("the unit of the measure is " + sQuoted(fitting));
    // Readers pass over what is inside of older simple properties.
    if (xml_.getElement(xml_.getElement(element).parent).name == "TypeSimpleProperty")
        draft->vSeverity(Severity::Warning);
    if (run_.schema.pObjectFromName(trimmedBlanks(type->value)))
        draft->vNote("it is a name of the schema, but not an item of IfcUnitEnum or IfcDerivedUnitEnum");
    draft->vNote("legal values: the items of IfcUnitEnum and IfcDerivedUnitEnum, such as " +
                 sQuotedList({legal.front(), legal.back()}));
}

void FixedValues::vQuantityTypeCheck(XmlIndex element) {
    const auto& parts = xml_.getElement(element);
    if (std::ranges::find(QuantityTypes, parts.text) != std::end(QuantityTypes) ||
        parts.firstChild != NoXmlElement || parts.isTextHidden)
        return;
    const auto legal = "legal values: " + sQuotedList({std::begin(QuantityTypes), std::end(QuantityTypes)});
    if (parts.trimmedText.empty()) {
        // As an attribute it is found already, and what the library reports is about the element.
        auto* explanation = run_.boMisplaced(element) ? run_.pLastOf(element) : nullptr;
        if (explanation)
            explanation->subject.attribute = nullptr;
        else if (!run_.boRepeated(element))
            run_.add("S009", element, "the type of the quantity is empty").vNote(legal);
        return;
    }
    auto text = xml_.textOf(parts);
    // The blanks around it are part of what is read.
    text.bytes = xml_.textBytesOf(parts);
    const auto* const word = std::ranges::find(QuantityWords, sUpperCase(text.value),
                                               &std::pair<std::string_view, std::string_view>::first);
    const bool isWord = word != std::end(QuantityWords);
    auto* draft = pValueAdd("S009", element, nullptr, text, "type of quantity",
                            isWord ? std::span<const std::string_view>() : QuantityTypes);
    if (!draft)
        return;
    if (isWord)
        draft->vNote("did you mean " + sQuoted(word->second) + "?");
    const auto* const entity = std::ranges::find(QuantityEntities, text.value,
                                                 &std::pair<std::string_view, std::string_view>::first);
    if (entity != std::end(QuantityEntities))
        draft->vNote("write " + sQuoted(entity->second)).vEdit(text.bytes, entity->second);
    draft->vNote(legal);
}

} // namespace kiv::kit
