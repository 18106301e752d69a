#include "Kit/Findings/Rules/Structure/ElementAttributes.h"

#include "Kit/Findings/LegalNames.h"
#include "Kit/Findings/RuleRun.h"
#include "Kit/Positions/XmlChildren.h"
#include "Kit/Text/AsciiText.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::kit {

namespace {

struct UnknownAttribute {
    const XmlAttribute* attribute = nullptr;
    LegalMatch match;
};

/// The attribute of a legal name, null when there is none, and how many others were probably meant to be it.
struct AttributeClaim {
    const XmlAttribute* present = nullptr;
    std::size_t meant = 0;
};
using AttributeClaims = std::map<std::string_view, AttributeClaim>;

/// Whether the attribute belongs to XML itself or says where the schema of the document is.
bool isOfXml(std::string_view name) {
    return name == "xmlns" || name.starts_with("xmlns:") || name.starts_with("xml:") ||
           name.starts_with("xsi:");
}

std::vector<UnknownAttribute> unknownAttributes(const RuleRun& run, XmlIndex element, const ElementRule& rule,
                                                AttributeClaims& claims) {
    std::vector<UnknownAttribute> unknown;
    for (const auto& attribute : run.xml.getAttributes(run.xml.getElement(element))) {
        if (std::ranges::find(rule.attributes, attribute.name) != rule.attributes.end()) {
            claims[attribute.name].present = &attribute;
            continue;
        }
        if (isOfXml(attribute.name))
            continue;
        const auto local = attribute.name.substr(attribute.name.find(':') + 1);
        const auto match = legalMatch(local, rule.attributes);
        // One with a prefix may be of another vocabulary unless it has a name of ours.
        const bool isPrefixed = local.size() != attribute.name.size();
        if (isPrefixed && !match.isLetterCase)
            continue;
        ++claims[match.name].meant;
        unknown.push_back({&attribute, match});
    }
    return unknown;
}

/// Says which name is right, and writes it where that needs no judgement. No element has two attributes of
/// one name.
void vAttributeMend(const RuleRun& run, FindingDraft& draft, const XmlAttribute& attribute,
                    const LegalMatch& match, const XmlAttribute* present, bool isAlone) {
    if (present) {
        draft.vNoteAt(sQuoted(match.name) + " is there already", run.xml.positionOf(*present));
        return;
    }
    draft.vNote(sMeant(match));
    if (match.isSure && isAlone)
        draft.vEdit(run.xml.nameBytesOf(attribute), match.name);
}

/// The child that is not there and was probably written as the attribute; empty when there is none.
std::string_view elementFor(const RuleRun& run, XmlIndex element, const ElementRule& rule,
                            std::string_view attribute) {
    // Hostile documents have one name in thousands of letter cases, and as many children to search.
    constexpr std::size_t maxAttributes = 16;
    if (run.xml.getElement(element).attributeCount > maxAttributes)
        return {};
    for (const auto& child : rule.children) {
        const auto name = child.rule->name;
        const bool isMeant =
            isEqualIgnoringCase(name, attribute) || (name == "DataType" && attribute == "type");
        if (isMeant && childOf(run.xml, element, name) == NoXmlElement)
            return name;
    }
    return {};
}

/// What is not there and is needed. Nobody needs a GUID.
void vMeantNote(const RuleRun& run, FindingDraft& draft, XmlIndex element, const ElementRule& rule) {
    const auto& parts = run.xml.getElement(element);
    if (rule.content == ContentKind::Text && !boHasText(parts) && parts.firstChild == NoXmlElement)
        draft.vNote("the value of " + sQuoted(rule.name) + " is the text between its tags");
    if (rule.attributes.empty() || rule.attributes.front() == "ifdguid")
        return;
    const auto needed = rule.attributes.front();
    const auto isLike = [needed](const XmlAttribute& attribute) {
        return !legalMatch(attribute.name, {&needed, 1}).name.empty();
    };
    if (std::ranges::none_of(run.xml.getAttributes(parts), isLike))
        draft.vNote("there is no " + sQuoted(needed) + "; was it meant?");
}

void vAttributeAdd(RuleRun& run, XmlIndex element, const ElementRule& rule, const UnknownAttribute& unknown,
                   const AttributeClaims& claims) {
    const auto& [attribute, match] = unknown;
    const auto& claim = claims.find(match.name)->second;
    const bool isPrefixed = attribute->name.find(':') != std::string_view::npos;
    const auto* const code = isPrefixed ? "S015" : match.isLetterCase ? "S003" : "S002";
    const auto* const what = isPrefixed           ? " has a prefix; prefixes are not supported"
                             : match.isLetterCase ? " is written in another letter case"
                                                  : " is not known";
    auto& draft = run.addAtAttribute(code, element, *attribute,
                                     "attribute " + sQuoted(attribute->name) + " of " +
                                         sNameQuoted(run.xml.getElement(element)) + what);
    if (!match.name.empty())
        vAttributeMend(run, draft, *attribute, match, claim.present, claim.meant == 1);
    if (match.isLetterCase)
        return;
    if (const auto owner = elementFor(run, element, rule, attribute->name); !owner.empty())
        draft.vNote("it belongs in an element " + sQuoted(owner));
    if (match.name.empty())
        vMeantNote(run, draft, element, rule);
    if (rule.attributes.empty())
        draft.vNote(sQuoted(rule.name) + " has no attributes");
    else
        draft.vNote("legal here: " + sQuotedList({rule.attributes.begin(), rule.attributes.end()}));
}

/// Whether a name is one level too high, where it is not known and found.
bool boIsAtParent(const RuleRun& run, XmlIndex parent, std::string_view attribute) {
    const auto* rule = parent == NoXmlElement ? nullptr : run.vocabulary.pRuleOf(parent);
    return rule && attribute == "name" &&
           std::ranges::find(rule->attributes, attribute) == rule->attributes.end() &&
           run.xml.pAttribute(run.xml.getElement(parent), attribute);
}

/// Whether the attribute is written as an element, which is found as such.
bool boIsChild(const RuleRun& run, XmlIndex element, std::string_view attribute) {
    for (const auto child : XmlChildren(run.xml, element)) {
        const auto& parts = run.xml.getElement(child);
        if (isEqualIgnoringCase(parts.name, attribute))
            return true;
    }
    return false;
}

void vMissingAttributeCheck(RuleRun& run, XmlIndex element, std::string_view attribute, Severity severity,
                            std::string message) {
    const auto& parts = run.xml.getElement(element);
    if (run.xml.pAttribute(parts, attribute) || run.boRepeated(element) ||
        boIsAtParent(run, parts.parent, attribute))
        return;
    // What is misspelt, or written as text, is the mistake, and what the library reports is about the
    // element.
    auto* explanation = run.boMisplaced(element) ? run.pLastOf(element) : nullptr;
    if (explanation)
        explanation->subject.attribute = nullptr;
    else if (!boIsChild(run, element, attribute))
        run.add("S005", element, std::move(message)).vSeverity(severity);
}

void vBoundCheck(RuleRun& run, XmlIndex element) {
    const auto* value = run.xml.pAttribute(run.xml.getElement(element), "value");
    if (!value)
        vMissingAttributeCheck(run, element, "value", Severity::Warning, "the bound has no \"value\"");
    else if (trimmed(value->value).empty() && !run.boRepeated(element))
        run.addAtValue("S005", element, *value, "the \"value\" of the bound is empty")
            .vSeverity(Severity::Warning);
}

/// Adds attributes to the finding about the first one, which is over the limits when it is not there.
void vOthersNote(RuleRun& run, std::size_t place, const XmlAttribute& first,
                 const std::vector<const XmlAttribute*>& others) {
    auto& drafts = run.getDrafts();
    if (place >= drafts.size() || drafts[place].subject.attribute != &first)
        return;
    auto& draft = drafts[place];
    // Hostile documents have thousands.
    constexpr std::size_t maxShown = 10;
    const auto shown = std::min(others.size(), maxShown);
    for (const auto* other : std::span(others).first(shown))
        draft.vNoteAt("nor is " + sQuoted(other->name), run.xml.positionOf(*other));
    if (shown != others.size())
        draft.vNote("and " + std::to_string(others.size() - shown) + " more");
}

void vUnknownAdd(RuleRun& run, XmlIndex element, const ElementRule& rule,
                 const std::vector<UnknownAttribute>& unknown, const AttributeClaims& claims) {
    // Several that are like none of the legal ones are one mistake.
    const UnknownAttribute* strange = nullptr;
    std::size_t draft = 0;
    std::vector<const XmlAttribute*> others;
    for (const auto& item : unknown) {
        const bool isStrange =
            item.match.name.empty() && elementFor(run, element, rule, item.attribute->name).empty();
        if (isStrange && strange) {
            others.push_back(item.attribute);
            continue;
        }
        if (isStrange) {
            strange = &item;
            draft = run.getDrafts().size();
        }
        vAttributeAdd(run, element, rule, item, claims);
    }
    if (strange)
        vOthersNote(run, draft, *strange->attribute, others);
}

} // namespace

void vAttributesCheck(RuleRun& run, XmlIndex element, const ElementRule& rule) {
    const auto& parts = run.xml.getElement(element);
    const auto isLegal = [&rule](const XmlAttribute& attribute) {
        return std::ranges::find(rule.attributes, attribute.name) != rule.attributes.end();
    };
    if (std::ranges::all_of(run.xml.getAttributes(parts), isLegal))
        return;
    AttributeClaims claims;
    const auto unknown = unknownAttributes(run, element, rule, claims);
    if (unknown.empty())
        return;
    // Without the attribute that matters most, that one was meant; without content, that was.
    const bool isMeant = !rule.attributes.empty() && !run.xml.pAttribute(parts, rule.attributes.front());
    const bool isEmpty =
        rule.content != ContentKind::Nothing && parts.firstChild == NoXmlElement && parts.trimmedText.empty();
    const auto isMatched = [](const UnknownAttribute& item) { return !item.match.name.empty(); };
    if (isMeant || isEmpty || std::ranges::any_of(unknown, isMatched))
        run.vMisplacedNote(element);
    vUnknownAdd(run, element, rule, unknown, claims);
}

void vMissingAttributesCheck(RuleRun& run, XmlIndex element, const ElementRule& rule) {
    if (rule.attributes.empty())
        return;
    if (rule.name == "UnitType")
        vMissingAttributeCheck(run, element, "type", Severity::Error, "the unit has no \"type\"");
    else if (rule.name == "IfcVersion")
        vMissingAttributeCheck(run, element, "version", Severity::Error, "\"IfcVersion\" has no \"version\"");
    else if (rule.name == "EnumList")
        vMissingAttributeCheck(run, element, "name", Severity::Warning,
                               "the enumeration has no \"name\" and gets that of its property");
    else if (rule.name == "TypeComplexProperty")
        vMissingAttributeCheck(run, element, "name", Severity::Warning,
                               "the complex property has no \"name\", so nothing says what it is used for");
    else if (rule.name == "LowerBoundValue" || rule.name == "UpperBoundValue")
        vBoundCheck(run, element);
}

} // namespace kiv::kit
