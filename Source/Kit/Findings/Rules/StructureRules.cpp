#include "Kit/Findings/LegalNames.h"
#include "Kit/Findings/MissingChild.h"
#include "Kit/Findings/RuleRun.h"
#include "Kit/Findings/Rules/RuleNames.h"
#include "Kit/Findings/Rules/Rules.h"
#include "Kit/Positions/XmlChildren.h"
#include "Kit/Text/AsciiText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEnumeration.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"
#include "kiv/Kit/Names/SchemaRelease.h"

#include <algorithm>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
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
    /// Whether the root is that of the one kind of set, and all else of the other, which is said.
    bool boWrongRoot();
    void vNamespaceCheck();
    void vElementCheck(XmlIndex element, const ElementRule& rule);
    void vUnreadCheck(XmlIndex element);
    /// The unknown children of one element.
    struct Strays {
        /// For each legal child, a child of that name; and how many unknown ones were probably meant to be
        /// one.
        std::vector<XmlIndex> present;
        std::vector<std::size_t> meant;
        /// The element that was left out around unknown ones, and how many they are; null when none was.
        const ElementRule* leftOut = nullptr;
        std::size_t leftOutCount = 0;
        /// The first of those, the number of its finding, and how many others were added to that.
        XmlIndex first = NoXmlElement;
        std::size_t draft = 0;
        std::size_t joined = 0;
    };
    /// What an unknown element was probably meant to be.
    struct Meaning {
        /// A legal one.
        LegalMatch match;
        /// One that belongs elsewhere, and where that is; empty otherwise.
        std::string_view name;
        std::string_view owner;
    };
    struct UnknownAttribute {
        const XmlAttribute* attribute = nullptr;
        LegalMatch match;
    };
    /// The attribute of a legal name, null when there is none, and how many others were probably meant to be
    /// it.
    struct AttributeClaim {
        const XmlAttribute* present = nullptr;
        std::size_t meant = 0;
    };
    using AttributeClaims = std::map<std::string_view, AttributeClaim>;

    bool isUnknown(XmlIndex element) const {
        const auto* rule = pRuleOf(element);
        return !rule || rule->name != xml_.getElement(element).name;
    }
    Strays& straysOf(XmlIndex parent);
    void vLeftOutFind(XmlIndex parent, Strays& strays) const;
    Meaning meaningOf(XmlIndex element);
    bool boContentFits(XmlIndex element, const ElementRule& rule) const;
    bool boIsLeftOver(XmlIndex element);
    void vFirstNote(XmlIndex element);
    void vJoin(XmlIndex element, const std::string& why);
    void vLaterKindAdd(XmlIndex element, XmlIndex first, const ElementRule& parent);
    void vUnknownAdd(XmlIndex element);
    void vUnknownNoteAdd(FindingDraft& draft, XmlIndex element, const Meaning& meaning);
    void vBecomeNote(FindingDraft& draft, XmlIndex element, const LegalMatch& match);
    void vPrefixedAdd(XmlIndex element, const ElementRule& parent);
    void vKindAdd(XmlIndex element);
    void vAttributesCheck(XmlIndex element, const ElementRule& rule);
    std::vector<UnknownAttribute> unknownAttributes(XmlIndex element, const ElementRule& rule,
                                                    AttributeClaims& claims) const;
    void vAttributeAdd(XmlIndex element, const ElementRule& rule, const UnknownAttribute& unknown,
                       const AttributeClaims& claims);
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
    /// By the element that contains them.
    std::unordered_map<XmlIndex, Strays> strays_;
    std::size_t searches_ = 0;
    bool isWrongRoot_ = false;
};

void StructureCheck::vCheck() {
    isWrongRoot_ = boWrongRoot();
    if (!isWrongRoot_) {
        vNamespaceCheck();
        vTemplateTypeCheck();
    }
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

bool StructureCheck::boWrongRoot() {
    const bool isPropertySet = run_.outline.kind == SetKind::PropertySet;
    const auto otherKind = isPropertySet ? SetKind::QuantitySet : SetKind::PropertySet;
    const auto& root = xml_.getElement(0);
    const auto* space = xml_.pAttribute(root, "xmlns");
    const auto* type = xml_.pAttribute(root, "templatetype");
    const bool isOther = space ? isSetNamespace(space->value.value, otherKind)
                               : type && type->value.value.starts_with(isPropertySet ? "QTO_" : "PSET_");
    const std::string_view own = isPropertySet ? "PropertyDefs" : "QtoDefs";
    const auto other = SetVocabulary::counterpart(own);
    if (!isOther || childOf(xml_, 0, own) != NoXmlElement || childOf(xml_, 0, other) == NoXmlElement)
        return false;
    run_.add("S018", 0,
             sNameQuoted(root) + (isPropertySet ? " is the root of a property set; this is a quantity set"
                                                : " is the root of a quantity set; this is a property set"))
        .vNote("here it would be " + sQuoted(isPropertySet ? "QtoSetDef" : "PropertySetDef"));
    // What the library reports follows from it.
    run_.vJoin(0, 0);
    return true;
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
        vUnknownAdd(element);
    if (rule.content == ContentKind::Ignored)
        return;
    const auto before = run_.getDrafts().size();
    vRepeatedCheck(element, rule);
    vAttributesCheck(element, rule);
    vTextCheck(element, rule);
    vMissingCheck(element, rule);
    if (rule.name == "UnitType")
        vUnitTypeCheck(element);
    else if (rule.name == "QtoType")
        vQuantityTypeCheck(element);
    for (auto i = before; rule.isUnread && i != run_.getDrafts().size(); ++i)
        run_.getDrafts()[i].vSeverity(Severity::Warning);
}

/// An element that is not read: one that its parent does not know, or something inside of such a one.
void StructureCheck::vUnreadCheck(XmlIndex element) {
    const auto& parts = xml_.getElement(element);
    const auto* parent = parts.parent == NoXmlElement ? nullptr : pRuleOf(parts.parent);
    if (!parent || parent->content == ContentKind::Ignored)
        return;
    if (isWrongRoot_ && parts.parent == 0 && SetVocabulary::boOfOther(run_.outline.kind, parts.name))
        return run_.vJoin(element, 0);
    const auto first = xml_.getElement(parts.parent).firstChild;
    if (parent->isFirstChildOnly && first != element) {
        vLaterKindAdd(element, first, *parent);
        return;
    }
    if (parent->isFirstChildOnly)
        vFirstNote(element);
    if (parts.isPrefixed())
        vPrefixedAdd(element, *parent);
    else
        vUnknownAdd(element);
}

/// After the first element inside "PropertyType".
void StructureCheck::vLaterKindAdd(XmlIndex element, XmlIndex first, const ElementRule& parent) {
    const auto& parts = xml_.getElement(element);
    if (SetVocabulary::pChild(parent, xml_.getElement(first).name))
        run_.add("S006", element,
                 sNameQuoted(parts) + " is a second kind of the property; only the first one counts")
            .vNoteAt("this one counts", xml_.getElement(first).position);
    else
        vJoin(element, boIsLeftOver(element) ? " belongs there too" : " comes after it and is not read");
}

void StructureCheck::vPrefixedAdd(XmlIndex element, const ElementRule& parent) {
    const auto& parts = xml_.getElement(element);
    auto& draft = run_.add("S015", element, sNameQuoted(parts) + " has a prefix; prefixes are not supported");
    if (SetVocabulary::pChild(parent, parts.localName()))
        vBecomeNote(draft, element, {parts.localName(), true, true});
}

/// The place of a child among those that an element may have; their number when it may not have it.
std::size_t indexOf(const ElementRule& rule, std::string_view name) {
    std::size_t index = 0;
    while (index != rule.children.size() && rule.children[index].rule->name != name)
        ++index;
    return index;
}

StructureCheck::Strays& StructureCheck::straysOf(XmlIndex parent) {
    const auto [place, isNew] = strays_.try_emplace(parent);
    auto& strays = place->second;
    if (!isNew)
        return strays;
    const auto& rule = *pRuleOf(parent);
    strays.present.assign(rule.children.size() + 1, NoXmlElement);
    strays.meant.assign(rule.children.size() + 1, 0);
    for (const auto child : XmlChildren(xml_, parent)) {
        const auto index = indexOf(rule, xml_.getElement(child).name);
        if (index != rule.children.size())
            strays.present[index] = child;
        else
            ++strays.meant[indexOf(rule, meaningOf(child).match.name)];
    }
    vLeftOutFind(parent, strays);
    return strays;
}

/// The element without which all unknown children that belong elsewhere are found, or the first of them.
void StructureCheck::vLeftOutFind(XmlIndex parent, Strays& strays) const {
    const auto& rule = *pRuleOf(parent);
    const auto elements = SetVocabulary::elementNames(run_.outline.kind);
    std::size_t most = 0;
    std::map<std::string_view, std::size_t> names;
    for (const auto child : XmlChildren(xml_, parent)) {
        const auto name = xml_.getElement(child).name;
        if (isUnknown(child) && std::ranges::find(elements, name) != elements.end())
            ++names[name];
    }
    for (const auto& child : rule.children) {
        if (names.empty() || strays.present[indexOf(rule, child.rule->name)] != NoXmlElement)
            continue;
        std::size_t inside = 0;
        std::size_t count = 0;
        for (const auto& [name, number] : names) {
            const auto* direct = SetVocabulary::pChild(*child.rule, name);
            inside += direct ? 2 : (SetVocabulary::boContains(*child.rule, name) ? 1 : 0);
            count += SetVocabulary::boContains(*child.rule, name) ? number : 0;
        }
        if (inside <= most)
            continue;
        most = inside;
        strays.leftOut = child.rule;
        strays.leftOutCount = count;
    }
}

/// Whether what is inside an element may be inside one with that rule.
bool StructureCheck::boContentFits(XmlIndex element, const ElementRule& rule) const {
    const auto& parts = xml_.getElement(element);
    if (rule.content != ContentKind::Text && !parts.isTextHidden && !parts.trimmedText.value.empty())
        return false;
    const auto first = parts.firstChild;
    return first == NoXmlElement || SetVocabulary::pChild(rule, xml_.getElement(first).name);
}

StructureCheck::Meaning StructureCheck::meaningOf(XmlIndex element) {
    // What hostile documents have more of is over the limits of findings, and need not be explained.
    constexpr std::size_t maxSearches = 2 * RuleRun::maxFindingsPerCode;
    if (++searches_ > maxSearches)
        return {};
    const auto& parts = xml_.getElement(element);
    const auto& parent = *pRuleOf(parts.parent);
    Meaning meaning;
    meaning.match = legalMatch(parts.localName(), SetVocabulary::childNames(parent));
    if (meaning.match.isLetterCase || parts.isPrefixed())
        return meaning.match.isLetterCase ? meaning : Meaning();
    const auto elsewhere = legalMatch(parts.name, SetVocabulary::elementNames(run_.outline.kind));
    const bool isNearer = elsewhere.isLetterCase || (elsewhere.isSure && !meaning.match.name.empty());
    if (isNearer && !SetVocabulary::pChild(parent, elsewhere.name))
        return {{}, elsewhere.name, run_.vocabulary.ownerOf(parts.parent, elsewhere.name)};
    const auto* child = SetVocabulary::pChild(parent, meaning.match.name);
    meaning.match.isSure = meaning.match.isSure && child && boContentFits(element, *child->rule);
    return meaning;
}

/// Whether the unknown element belongs in one that was left out around it.
bool StructureCheck::boIsLeftOver(XmlIndex element) {
    const auto& parts = xml_.getElement(element);
    const auto* leftOut = straysOf(parts.parent).leftOut;
    return leftOut && SetVocabulary::boContains(*leftOut, parts.name);
}

/// The next finding is about this element and those that `vJoin` adds.
void StructureCheck::vFirstNote(XmlIndex element) {
    auto& strays = straysOf(xml_.getElement(element).parent);
    strays.first = element;
    strays.draft = run_.getDrafts().size();
}

/// Adds an element to the finding of the first one.
void StructureCheck::vJoin(XmlIndex element, const std::string& why) {
    constexpr std::size_t maxShown = 10;
    const auto& parts = xml_.getElement(element);
    auto& strays = straysOf(parts.parent);
    run_.vJoin(element, strays.first);
    ++strays.joined;
    auto& drafts = run_.getDrafts();
    if (strays.draft >= drafts.size() || drafts[strays.draft].subject.element != strays.first)
        return;
    if (strays.joined <= maxShown)
        drafts[strays.draft].vNoteAt(sNameQuoted(parts) + why, parts.position);
    else if (strays.joined == maxShown + 1 && strays.leftOutCount > maxShown + 1)
        drafts[strays.draft].vNote("and " + std::to_string(strays.leftOutCount - maxShown - 1) + " more");
}

void StructureCheck::vUnknownAdd(XmlIndex element) {
    const auto& parts = xml_.getElement(element);
    const auto& parent = *pRuleOf(parts.parent);
    if (boIsLeftOver(element) && straysOf(parts.parent).first != element) {
        if (straysOf(parts.parent).first != NoXmlElement)
            return vJoin(element, " belongs there too");
        vFirstNote(element);
    }
    const auto meaning = meaningOf(element);
    const auto place = " inside " + sQuoted(parent.name);
    // What is read all the same, or by nobody, loses nothing.
    const bool isHarmless = parent.unknown == UnknownChild::ReadAnyway || parent.isUnread;
    if (meaning.match.isLetterCase) {
        auto& draft =
            run_.add("S003", element, sNameQuoted(parts) + place + " is written in another letter case");
        if (parent.isUnread)
            draft.vSeverity(Severity::Warning);
        vBecomeNote(draft, element, meaning.match);
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
    if (isHarmless)
        draft.vSeverity(Severity::Warning);
    vUnknownNoteAdd(draft, element, meaning);
}

void StructureCheck::vUnknownNoteAdd(FindingDraft& draft, XmlIndex element, const Meaning& meaning) {
    const auto& parts = xml_.getElement(element);
    const auto& parent = *pRuleOf(parts.parent);
    if (!meaning.owner.empty()) {
        const bool isLeftOut =
            straysOf(parts.parent).leftOut && straysOf(parts.parent).leftOut->name == meaning.owner;
        if (meaning.name != parts.name)
            draft.vNote("did you mean " + sQuoted(meaning.name) + "?");
        draft.vNote(sQuoted(meaning.name) + " belongs inside " + sQuoted(meaning.owner) +
                    (isLeftOut ? ", which is missing" : ""));
        run_.vMisplacedNote(parts.parent);
        return;
    }
    const auto legal = SetVocabulary::childNames(parent);
    if (!meaning.match.name.empty())
        vBecomeNote(draft, element, meaning.match);
    else if (const auto missing = soleMissing(run_, parts.parent); !missing.empty())
        draft.vNote("there is no " + sQuoted(missing) + "; was it meant?");
    if (parent.content == ContentKind::Text)
        run_.vMisplacedNote(parts.parent);
    if (legal.empty())
        draft.vNote(sQuoted(parent.name) + " contains no elements");
    else
        draft.vNote("legal here: " + sQuotedList(legal));
}

/// Says which name is right, and writes it where that needs no judgement.
void StructureCheck::vBecomeNote(FindingDraft& draft, XmlIndex element, const LegalMatch& match) {
    const auto& parts = xml_.getElement(element);
    const auto& parent = *pRuleOf(parts.parent);
    const auto& strays = straysOf(parts.parent);
    const auto index = indexOf(parent, match.name);
    const bool isList = parent.children.size() == 1 && parent.children.front().count == ChildCount::All;
    if (!isList && strays.present[index] != NoXmlElement) {
        draft.vNoteAt(sQuoted(match.name) + " is there already",
                      xml_.getElement(strays.present[index]).position);
        return;
    }
    draft.vNote(sMeant(match));
    // Of several that would have one name only one would count.
    if (!match.isSure || (!isList && strays.meant[index] != 1))
        return;
    draft.vEdit(parts.nameBytes, match.name);
    if (parts.endNameBytes.isKnown())
        draft.vEdit(parts.endNameBytes, match.name);
}

void StructureCheck::vKindAdd(XmlIndex element) {
    const auto& parts = xml_.getElement(element);
    const bool isPropertySet = run_.outline.kind == SetKind::PropertySet;
    run_.add("S018", element,
             sNameQuoted(parts) + (isPropertySet ? " belongs to quantity sets; this is a property set"
                                                 : " belongs to property sets; this is a quantity set"))
        .vNote("here it would be " + sQuoted(SetVocabulary::counterpart(parts.name)));
}

/// Whether the attribute belongs to XML itself or says where the schema of the document is.
bool isOfXml(std::string_view name) {
    return name == "xmlns" || name.starts_with("xmlns:") || name.starts_with("xml:") ||
           name.starts_with("xsi:");
}

std::vector<StructureCheck::UnknownAttribute>
StructureCheck::unknownAttributes(XmlIndex element, const ElementRule& rule, AttributeClaims& claims) const {
    std::vector<UnknownAttribute> unknown;
    for (const auto& attribute : xml_.getAttributes(xml_.getElement(element))) {
        if (std::ranges::find(rule.attributes, attribute.name) != rule.attributes.end()) {
            claims[attribute.name].present = &attribute;
            continue;
        }
        const auto local = attribute.name.substr(attribute.name.find(':') + 1);
        const auto match = legalMatch(local, rule.attributes);
        // One with a prefix may be of another vocabulary unless it has a name of ours.
        const bool isPrefixed = local.size() != attribute.name.size();
        if (isOfXml(attribute.name) || (isPrefixed && !match.isLetterCase))
            continue;
        ++claims[match.name].meant;
        unknown.push_back({&attribute, match});
    }
    return unknown;
}

void StructureCheck::vAttributesCheck(XmlIndex element, const ElementRule& rule) {
    AttributeClaims claims;
    const auto unknown = unknownAttributes(element, rule, claims);
    if (unknown.empty())
        return;
    const auto& parts = xml_.getElement(element);
    // Without the attribute that matters most, that one was meant; without content, that was.
    const bool isMeant = !rule.attributes.empty() && !xml_.pAttribute(parts, rule.attributes.front());
    const bool isEmpty = rule.content != ContentKind::Nothing && parts.firstChild == NoXmlElement &&
                         parts.trimmedText.value.empty();
    const auto isMatched = [](const UnknownAttribute& item) { return !item.match.name.empty(); };
    if (isMeant || isEmpty || std::ranges::any_of(unknown, isMatched))
        run_.vMisplacedNote(element);
    for (const auto& item : unknown)
        vAttributeAdd(element, rule, item, claims);
}

/// As `vBecomeNote` does; no element has two attributes of one name.
void vAttributeMend(FindingDraft& draft, const XmlAttribute& attribute, const LegalMatch& match,
                    const XmlAttribute* present, bool isAlone) {
    if (present) {
        draft.vNoteAt(sQuoted(match.name) + " is there already", present->position);
        return;
    }
    draft.vNote(sMeant(match));
    if (match.isSure && isAlone)
        draft.vEdit(attribute.nameBytes, match.name);
}

void StructureCheck::vAttributeAdd(XmlIndex element, const ElementRule& rule, const UnknownAttribute& unknown,
                                   const AttributeClaims& claims) {
    const auto& [attribute, match] = unknown;
    const auto& claim = claims.find(match.name)->second;
    const bool isPrefixed = attribute->name.find(':') != std::string_view::npos;
    const auto* const code = isPrefixed ? "S015" : match.isLetterCase ? "S003" : "S002";
    const auto* const what = isPrefixed           ? " has a prefix; prefixes are not supported"
                             : match.isLetterCase ? " is written in another letter case"
                                                  : " is not known";
    auto& draft = run_.addAtAttribute(code, element, *attribute,
                                      "attribute " + sQuoted(attribute->name) + " of " +
                                          sNameQuoted(xml_.getElement(element)) + what);
    if (!match.name.empty())
        vAttributeMend(draft, *attribute, match, claim.present, claim.meant == 1);
    if (match.isLetterCase)
        return;
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
    else if (rule.isFirstChildOnly && xml_.getElement(element).firstChild == NoXmlElement &&
             !run_.boMisplaced(element))
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
        bool isEmpty = name != "ApplicableClasses";
        for (const auto list : XmlChildren(xml_, set)) {
            if (xml_.getElement(list).name != name || !pRuleOf(list))
                continue;
            isEmpty = isEmpty && xml_.getElement(list).firstChild == NoXmlElement && !run_.boMisplaced(list);
            if (first == NoXmlElement)
                first = list;
            else
                run_.add("S021", list, sQuoted(name) + " is repeated")
                    .vNoteAt("the first one is here", xml_.getElement(first).position);
        }
        if (isEmpty && first != NoXmlElement)
            run_.add("S020", first, sQuoted(name) + " is empty, so the set says nothing");
    }
}

void StructureCheck::vMissingAdd(XmlIndex element, std::string_view child, const std::string& why) {
    if (childOf(xml_, element, child) == NoXmlElement && !boMissingExplained(run_, element, child))
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
    // Values may be one text too.
    if (rule.isUnread)
        return;
    const bool hasText = !parts.isTextHidden && !parts.trimmedText.value.empty();
    if (!hasText && parts.laterText.line == 0)
        return;
    auto& draft = run_.add("S016", element,
                           "there is text inside " + sNameQuoted(parts) + ", where " +
                               (rule.content == ContentKind::Nothing ? "none" : "elements") +
                               (rule.content == ContentKind::Nothing ? " belongs" : " belong"));
    draft.finding.place.position = hasText ? parts.trimmedText.position : parts.laterText;
    run_.vMisplacedNote(element);
    run_.vStrayTextNote(element);
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
        draft.vNote("did you mean " + sQuoted(match.name) + "?");
    if (match.isSure)
        draft.vEdit(text.bytes, match.name);
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
        // As an attribute it is found already, and what the library reports is about the element.
        auto* explanation = run_.boMisplaced(element) ? run_.pLastOf(element) : nullptr;
        if (explanation)
            explanation->subject.attribute = nullptr;
        else
            run_.add("S009", element, "the type of the quantity is empty").vNote(legal);
        return;
    }
    XmlText text = parts.trimmedText;
    // The blanks around it are part of what is read.
    text.bytes = parts.textBytes;
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
