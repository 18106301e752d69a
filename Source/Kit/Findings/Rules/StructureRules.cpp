#include "Kit/Findings/LegalNames.h"
#include "Kit/Findings/RuleRun.h"
#include "Kit/Findings/Rules/Rules.h"
#include "Kit/Positions/XmlChildren.h"
#include "Kit/Text/AsciiText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEnumeration.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"
#include "kiv/Kit/Names/SchemaRelease.h"

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

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

constexpr std::string_view NamespaceHosts[] = {"http://buildingsmart-tech.org/",
                                               "http://www.buildingsmart-tech.org/"};

std::string sNameQuoted(const XmlElement& element) {
    return sQuoted(element.name);
}

/// The structure of one document.
class StructureCheck {
public:
    explicit StructureCheck(RuleRun& run) : run_(run), xml_(run.xml) { vUnitTypesFind(); }

    void vCheck();

private:
    const ElementRule* pRuleOf(XmlIndex element) const { return run_.vocabulary.pRuleOf(element); }

    void vUnitTypesFind();
    void vNamespaceCheck();
    void vElementCheck(XmlIndex element, const ElementRule& rule);
    void vUnreadCheck(XmlIndex element);
    void vUnknownAdd(XmlIndex element, const ElementRule& parent);
    void vUnknownNoteAdd(FindingDraft& draft, const XmlElement& element, const ElementRule& parent);
    void vRename(FindingDraft& draft, const XmlElement& element, std::string_view name);
    void vPrefixedAdd(XmlIndex element, const ElementRule& parent);
    void vKindAdd(XmlIndex element);
    void vAttributesCheck(XmlIndex element, const ElementRule& rule);
    void vAttributeAdd(XmlIndex element, const ElementRule& rule, const XmlAttribute& attribute);
    void vMissingCheck(XmlIndex element, const ElementRule& rule);
    void vListsCheck(XmlIndex set);
    void vMissingAdd(XmlIndex element, std::string_view child, const std::string& why);
    void vMissingAttributeCheck(XmlIndex element, std::string_view attribute, Severity severity,
                                std::string message);
    void vRepeatedCheck(XmlIndex element, const ElementRule& rule);
    void vTextCheck(XmlIndex element, const ElementRule& rule);
    void vUnreadTextCheck(XmlIndex element);
    void vTemplateTypeCheck();
    void vUnitTypeCheck(XmlIndex element);
    void vQuantityTypeCheck(XmlIndex element);
    /// Adds what is wrong with a value that is not legal. Null when letter case or blanks are.
    FindingDraft* pValueAdd(std::string_view code, XmlIndex element, const XmlAttribute* attribute,
                            const XmlText& text, std::string_view what,
                            std::span<const std::string_view> legal);

    RuleRun& run_;
    const XmlPositions& xml_;
    std::vector<std::string_view> unitTypes_;
};

void StructureCheck::vCheck() {
    vNamespaceCheck();
    vTemplateTypeCheck();
    const auto count = static_cast<XmlIndex>(xml_.getElements().size());
    for (XmlIndex element = 0; element != count; ++element) {
        if (const auto* rule = pRuleOf(element))
            vElementCheck(element, *rule);
        else
            vUnreadCheck(element);
    }
    vListsCheck(0);
}

void StructureCheck::vUnitTypesFind() {
    for (const auto name : {"IfcUnitEnum", "IfcDerivedUnitEnum"}) {
        const auto* type = Type::pFrom(run_.schema.pObjectFromName(name));
        const auto* items = type ? dynamic_cast<const DataTypeEnum*>(type->pDataType()) : nullptr;
        if (items)
            unitTypes_.insert(unitTypes_.end(), items->getItems().begin(), items->getItems().end());
    }
}

/// The namespaces of all releases are formed alike: the release is between these.
bool isSetNamespace(std::string_view uri, SetKind kind) {
    const std::string_view folder = kind == SetKind::PropertySet ? "xml/psd/PSD_" : "xml/qto/QTO_";
    constexpr std::string_view End = ".xsd";
    for (const auto host : NamespaceHosts) {
        const auto start = uri.substr(0, host.size());
        auto rest = uri.substr(std::min(host.size(), uri.size()));
        if (!isEqualIgnoringCase(start, host) || !rest.starts_with(folder) || !rest.ends_with(End))
            continue;
        rest.remove_prefix(folder.size());
        rest.remove_suffix(std::min(End.size(), rest.size()));
        // As in "PSD_R2x3".
        return pSchemaReleaseFind(rest) || (rest.starts_with('R') && pSchemaReleaseFind(rest.substr(1)));
    }
    return false;
}

void StructureCheck::vNamespaceCheck() {
    const auto* declared = xml_.pAttribute(xml_.getElement(0), "xmlns");
    if (!declared || declared->value.value.empty() ||
        isSetNamespace(declared->value.value, run_.outline.kind))
        return;
    const bool isPropertySet = run_.outline.kind == SetKind::PropertySet;
    run_.addAtValue("S012", 0, *declared,
                    sQuoted(declared->value.value) + " is no namespace of " +
                        (isPropertySet ? "property sets" : "quantity sets"))
        .vNote(isPropertySet
                   ? "property sets of IFC 4 have \"http://buildingSMART-tech.org/xml/psd/PSD_IFC4.xsd\""
                   : "quantity sets of IFC 4 have "
                     "\"http://www.buildingsmart-tech.org/xml/qto/QTO_IFC4.xsd\"");
}

void StructureCheck::vElementCheck(XmlIndex element, const ElementRule& rule) {
    const auto& parts = xml_.getElement(element);
    // Readers take an item of an enumeration, and a constant, whatever its name is.
    if (parts.parent != NoXmlElement && parts.name != rule.name)
        vUnknownAdd(element, *pRuleOf(parts.parent));
    if (rule.content == ContentKind::Ignored)
        return;
    vRepeatedCheck(element, rule);
    vAttributesCheck(element, rule);
    vTextCheck(element, rule);
    vMissingCheck(element, rule);
    if (rule.name == "UnitType")
        vUnitTypeCheck(element);
    else if (rule.name == "QtoType")
        vQuantityTypeCheck(element);
}

/// An element that is not read: one that its parent does not know, or something inside of such a one.
void StructureCheck::vUnreadCheck(XmlIndex element) {
    const auto& parts = xml_.getElement(element);
    const auto* parent = parts.parent == NoXmlElement ? nullptr : pRuleOf(parts.parent);
    if (!parent || parent->content == ContentKind::Ignored)
        return;
    const auto first = xml_.getElement(parts.parent).firstChild;
    if (parent->isFirstChildOnly && first != element)
        run_.add("S006", element,
                 sNameQuoted(parts) + " is a second kind of the property; only the first one counts")
            .vNoteAt("this one counts", xml_.getElement(first).position);
    else if (parts.isPrefixed())
        vPrefixedAdd(element, *parent);
    else
        vUnknownAdd(element, *parent);
}

void StructureCheck::vPrefixedAdd(XmlIndex element, const ElementRule& parent) {
    const auto& parts = xml_.getElement(element);
    auto& draft = run_.add("S015", element, sNameQuoted(parts) + " has a prefix; prefixes are not supported");
    if (SetVocabulary::pChild(parent, parts.localName()))
        vRename(draft, parts, parts.localName());
}

void StructureCheck::vRename(FindingDraft& draft, const XmlElement& element, std::string_view name) {
    draft.vNote("write it as " + sQuoted(name));
    draft.vEdit(element.nameBytes, name);
    if (element.endNameBytes.isKnown())
        draft.vEdit(element.endNameBytes, name);
}

void StructureCheck::vUnknownAdd(XmlIndex element, const ElementRule& parent) {
    const auto& parts = xml_.getElement(element);
    const auto legal = SetVocabulary::childNames(parent);
    const auto match = legalMatch(parts.name, legal);
    const auto place = " inside " + sQuoted(parent.name);
    if (match.isLetterCase) {
        auto& draft =
            run_.add("S003", element, sNameQuoted(parts) + place + " is written in another letter case");
        vRename(draft, parts, match.name);
        return;
    }
    if (SetVocabulary::boOfOther(run_.outline.kind, parts.name)) {
        vKindAdd(element);
        return;
    }
    const bool isKind = parent.isFirstChildOnly;
    auto& draft =
        run_.add(isKind ? "S010" : "S001", element,
                 sNameQuoted(parts) + (isKind ? " is no kind of property" : " is not known" + place));
    // An item of an enumeration is read whatever its name is.
    if (parent.unknown == UnknownChild::ReadAnyway)
        draft.vSeverity(Severity::Warning);
    vUnknownNoteAdd(draft, parts, parent);
}

void StructureCheck::vUnknownNoteAdd(FindingDraft& draft, const XmlElement& element,
                                     const ElementRule& parent) {
    const auto legal = SetVocabulary::childNames(parent);
    const auto match = legalMatch(element.name, legal);
    if (!match.name.empty()) {
        draft.vNote("did you mean " + sQuoted(match.name) + "?");
        draft.vEdit(element.nameBytes, match.name);
        if (element.endNameBytes.isKnown())
            draft.vEdit(element.endNameBytes, match.name);
    }
    if (const auto owner = SetVocabulary::ownerOf(run_.outline.kind, parent, element.name); !owner.empty()) {
        draft.vNote(sQuoted(element.name) + " belongs inside " + sQuoted(owner));
        run_.vMisplacedNote(element.parent);
        return;
    }
    if (legal.empty())
        draft.vNote(sQuoted(parent.name) + " contains no elements");
    else
        draft.vNote("legal here: " + sQuotedList(legal));
}

void StructureCheck::vKindAdd(XmlIndex element) {
    const auto& parts = xml_.getElement(element);
    const bool isPropertySet = run_.outline.kind == SetKind::PropertySet;
    run_.add("S018", element,
             sNameQuoted(parts) + (isPropertySet ? " belongs to quantity sets; this is a property set"
                                                 : " belongs to property sets; this is a quantity set"))
        .vNote("here it would be " + sQuoted(SetVocabulary::counterpart(parts.name)));
}

void StructureCheck::vAttributesCheck(XmlIndex element, const ElementRule& rule) {
    for (const auto& attribute : xml_.getAttributes(xml_.getElement(element))) {
        const bool isForeign =
            attribute.name == "xmlns" || attribute.name.find(':') != std::string_view::npos;
        if (!isForeign && std::ranges::find(rule.attributes, attribute.name) == rule.attributes.end())
            vAttributeAdd(element, rule, attribute);
    }
}

void StructureCheck::vAttributeAdd(XmlIndex element, const ElementRule& rule, const XmlAttribute& attribute) {
    const auto match = legalMatch(attribute.name, rule.attributes);
    // Without the attribute that matters most, that one was meant.
    const bool isMeant =
        !rule.attributes.empty() && !xml_.pAttribute(xml_.getElement(element), rule.attributes.front());
    if (!match.name.empty() || isMeant)
        run_.vMisplacedNote(element);
    const auto place = " of " + sNameQuoted(xml_.getElement(element));
    if (match.isLetterCase) {
        run_.addAtAttribute("S003", element, attribute,
                            "attribute " + sQuoted(attribute.name) + place +
                                " is written in another letter case")
            .vNote("write it as " + sQuoted(match.name))
            .vEdit(attribute.nameBytes, match.name);
        return;
    }
    auto& draft = run_.addAtAttribute("S002", element, attribute,
                                      "attribute " + sQuoted(attribute.name) + place + " is not known");
    if (!match.name.empty())
        draft.vNote("did you mean " + sQuoted(match.name) + "?").vEdit(attribute.nameBytes, match.name);
    if (rule.attributes.empty())
        draft.vNote(sQuoted(rule.name) + " has no attributes");
    else
        draft.vNote("legal here: " + sQuotedList({rule.attributes.begin(), rule.attributes.end()}));
}

void StructureCheck::vMissingCheck(XmlIndex element, const ElementRule& rule) {
    if (rule.name == "PropertyDef")
        vMissingAdd(element, "PropertyType", "the property has no type");
    else if (rule.name == "QtoDef")
        vMissingAdd(element, "QtoType", "the quantity has no type");
    else if (rule.name == "PropertySetDef")
        vMissingAdd(element, "PropertyDefs", "the set has no properties");
    else if (rule.name == "QtoSetDef")
        vMissingAdd(element, "QtoDefs", "the set has no quantities");
    else if (rule.isFirstChildOnly && xml_.getElement(element).firstChild == NoXmlElement)
        run_.add("S004", element, "the property has no type: \"PropertyType\" is empty")
            .vNote("legal here: " + sQuotedList(SetVocabulary::childNames(rule)));
    else if (rule.name == "UnitType")
        vMissingAttributeCheck(element, "type", Severity::Error, "the unit has no \"type\"");
    else if (rule.name == "IfcVersion")
        vMissingAttributeCheck(element, "version", Severity::Error, "\"IfcVersion\" has no \"version\"");
    else if (rule.name == "EnumList")
        vMissingAttributeCheck(element, "name", Severity::Warning,
                               "the enumeration has no \"name\" and gets that of its property");
    else if (rule.name == "LowerBoundValue" || rule.name == "UpperBoundValue")
        vMissingAttributeCheck(element, "value", Severity::Warning, "the bound has no \"value\"");
}

/// A list of members that has none, and lists that are joined.
void StructureCheck::vListsCheck(XmlIndex set) {
    constexpr std::string_view Lists[] = {"PropertyDefs", "QtoDefs", "ApplicableClasses"};
    for (const auto name : Lists) {
        auto first = NoXmlElement;
        for (const auto list : XmlChildren(xml_, set)) {
            const bool isRead = xml_.getElement(list).name == name && pRuleOf(list);
            if (isRead && first != NoXmlElement)
                run_.add("S021", list, sQuoted(name) + " is repeated")
                    .vNoteAt("the first one is here", xml_.getElement(first).position);
            else if (isRead)
                first = list;
        }
        const bool isEmpty = first != NoXmlElement && name != "ApplicableClasses" &&
                             xml_.getElement(first).firstChild == NoXmlElement && !run_.boMisplaced(first);
        if (isEmpty)
            run_.add("S020", first, sQuoted(name) + " is empty, so the set says nothing");
    }
}

void StructureCheck::vMissingAdd(XmlIndex element, std::string_view child, const std::string& why) {
    for (const auto place : XmlChildren(xml_, element)) {
        if (xml_.getElement(place).name == child)
            return;
    }
    if (!run_.boMisspelt(element, child))
        run_.add("S004", element, why + ": there is no " + sQuoted(child));
}

void StructureCheck::vMissingAttributeCheck(XmlIndex element, std::string_view attribute, Severity severity,
                                            std::string message) {
    if (xml_.pAttribute(xml_.getElement(element), attribute))
        return;
    // What is misspelt, or written as text, is the mistake, and what the library reports is about the
    // element.
    auto* explanation = run_.boMisplaced(element) ? run_.pLastOf(element) : nullptr;
    if (explanation)
        explanation->subject.attribute = nullptr;
    else
        run_.add("S005", element, std::move(message)).vSeverity(severity);
}

void StructureCheck::vRepeatedCheck(XmlIndex element, const ElementRule& rule) {
    for (const auto& child : rule.children) {
        if (child.count != ChildCount::LastOnly)
            continue;
        auto last = NoXmlElement;
        for (const auto place : XmlChildren(xml_, element)) {
            if (xml_.getElement(place).name != child.rule->name)
                continue;
            if (last != NoXmlElement)
                run_.add("S006", place, sQuoted(child.rule->name) + " is repeated; only the last one counts")
                    .vNoteAt("this one does not count", xml_.getElement(last).position);
            last = place;
        }
    }
}

void StructureCheck::vTextCheck(XmlIndex element, const ElementRule& rule) {
    const auto& parts = xml_.getElement(element);
    if (rule.content == ContentKind::Text) {
        vUnreadTextCheck(element);
        return;
    }
    const bool hasText = !parts.isTextHidden && !parts.trimmedText.value.empty();
    if (!hasText && parts.laterText.line == 0)
        return;
    auto& draft = run_.add("S016", element,
                           "there is text inside " + sNameQuoted(parts) + ", where " +
                               (rule.content == ContentKind::Nothing ? "none" : "elements") +
                               (rule.content == ContentKind::Nothing ? " belongs" : " belong"));
    draft.finding.place.position = hasText ? parts.trimmedText.position : parts.laterText;
    run_.vMisplacedNote(element);
    if (rule.content == ContentKind::Nothing && !rule.attributes.empty())
        draft.vNote("its value belongs in the attribute " + sQuoted(rule.attributes.front()));
}

void StructureCheck::vUnreadTextCheck(XmlIndex element) {
    const auto& parts = xml_.getElement(element);
    const bool isHidden = parts.isTextHidden;
    // An element inside the text is the mistake then.
    if ((parts.laterText.line == 0 && !isHidden) || parts.firstChild != NoXmlElement)
        return;
    auto& draft = run_.add("S017", element,
                           "the text of " + sNameQuoted(parts) +
                               (isHidden ? " begins with a comment, which is read in its place"
                                         : " is read up to the comment only; this part is lost"));
    draft.finding.place.position = isHidden ? parts.trimmedText.position : parts.laterText;
}

FindingDraft* StructureCheck::pValueAdd(std::string_view code, XmlIndex element,
                                        const XmlAttribute* attribute, const XmlText& text,
                                        std::string_view what, std::span<const std::string_view> legal) {
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
        draft.vNote("did you mean " + sQuoted(match.name) + "?").vEdit(text.bytes, match.name);
    return &draft;
}

void StructureCheck::vTemplateTypeCheck() {
    const auto* type = xml_.pAttribute(xml_.getElement(0), "templatetype");
    const std::span<const std::string_view> legal =
        run_.outline.kind == SetKind::QuantitySet ? std::span<const std::string_view>(QuantityTemplateTypes)
                                                  : PropertyTemplateTypes;
    if (!type || type->value.value.empty() || std::ranges::find(legal, type->value.value) != legal.end())
        return;
    if (auto* draft = pValueAdd("S007", 0, type, type->value, "template type", legal))
        draft->vNote("legal values: " + sQuotedList({legal.begin(), legal.end()}));
}

void StructureCheck::vUnitTypeCheck(XmlIndex element) {
    const auto* type = xml_.pAttribute(xml_.getElement(element), "type");
    if (type && trimmedBlanks(type->value.value).empty()) {
        run_.addAtValue("S022", element, *type, "the type of the unit is empty")
            .vNote("leave \"UnitType\" out where there is no unit");
        return;
    }
    // A schema without units has no list of them.
    if (!type || unitTypes_.empty() || std::ranges::find(unitTypes_, type->value.value) != unitTypes_.end())
        return;
    auto* draft = pValueAdd("S008", element, type, type->value, "type of unit", unitTypes_);
    if (!draft)
        return;
    // Readers pass over what is inside of older simple properties.
    if (xml_.getElement(xml_.getElement(element).parent).name == "TypeSimpleProperty")
        draft->vSeverity(Severity::Warning);
    if (run_.schema.pObjectFromName(trimmedBlanks(type->value.value)))
        draft->vNote("it is a name of the schema, but not an item of IfcUnitEnum or IfcDerivedUnitEnum");
    draft->vNote("legal values: the items of IfcUnitEnum and IfcDerivedUnitEnum, such as " +
                 sQuotedList({unitTypes_.front(), unitTypes_.back()}));
}

void StructureCheck::vQuantityTypeCheck(XmlIndex element) {
    const auto& parts = xml_.getElement(element);
    if (std::ranges::find(QuantityTypes, parts.text) != std::end(QuantityTypes) ||
        parts.firstChild != NoXmlElement || parts.isTextHidden)
        return;
    const auto legal = "legal values: " + sQuotedList({std::begin(QuantityTypes), std::end(QuantityTypes)});
    if (parts.trimmedText.value.empty()) {
        run_.add("S009", element, "the type of the quantity is empty").vNote(legal);
        return;
    }
    XmlText text = parts.trimmedText;
    if (text.bytes.isKnown()) {
        // The blanks around it are part of what is read.
        text.bytes.offset -= parts.text.find(text.value);
        text.bytes.length = parts.text.size();
    }
    auto* draft = pValueAdd("S009", element, nullptr, text, "type of quantity", QuantityTypes);
    if (!draft)
        return;
    const auto* const entity = std::ranges::find(QuantityEntities, text.value,
                                                 &std::pair<std::string_view, std::string_view>::first);
    if (entity != std::end(QuantityEntities))
        draft->vNote("write " + sQuoted(entity->second)).vEdit(text.bytes, entity->second);
    draft->vNote(legal);
}

} // namespace

void vStructureCheck(RuleRun& run) {
    if (run.outline.kind != SetKind::None)
        StructureCheck(run).vCheck();
}

} // namespace kiv::kit
