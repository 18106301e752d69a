#include "Kit/Findings/Rules/Structure/UnknownElements.h"

#include "Kit/Findings/MissingChild.h"
#include "Kit/Positions/XmlChildren.h"
#include "Kit/Text/AsciiText.h"

#include <algorithm>
#include <map>

namespace kiv::kit {

namespace {

/// The place of a child among those that an element may have; their number when it may not have it.
std::size_t indexOf(const ElementRule& rule, std::string_view name) {
    std::size_t index = 0;
    while (index != rule.children.size() && rule.children[index].rule->name != name)
        ++index;
    return index;
}

} // namespace

UnknownElements::Strays& UnknownElements::straysOf(XmlIndex parent) {
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
void UnknownElements::vLeftOutFind(XmlIndex parent, Strays& strays) const {
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
bool UnknownElements::boContentFits(XmlIndex element, const ElementRule& rule) const {
    const auto& parts = xml_.getElement(element);
    if (rule.content != ContentKind::Text && !parts.isTextHidden && !parts.trimmedText.empty())
        return false;
    const auto first = parts.firstChild;
    return first == NoXmlElement || SetVocabulary::pChild(rule, xml_.getElement(first).name);
}

UnknownElements::Meaning UnknownElements::meaningOf(XmlIndex element) {
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
bool UnknownElements::boIsLeftOver(XmlIndex element) {
    const auto& parts = xml_.getElement(element);
    const auto* leftOut = straysOf(parts.parent).leftOut;
    return leftOut && SetVocabulary::boContains(*leftOut, parts.name);
}

/// The next finding is about this element and those that `vJoin` adds.
void UnknownElements::vFirstNote(XmlIndex element) {
    auto& strays = straysOf(xml_.getElement(element).parent);
    strays.first = element;
    strays.draft = run_.getDrafts().size();
}

/// Adds an element to the finding of the first one.
void UnknownElements::vJoin(XmlIndex element, const std::string& why) {
    constexpr std::size_t maxShown = 10;
    const auto& parts = xml_.getElement(element);
    auto& strays = straysOf(parts.parent);
    run_.vJoin(element, strays.first);
    ++strays.joined;
    auto& drafts = run_.getDrafts();
    if (strays.draft >= drafts.size() || drafts[strays.draft].subject.element != strays.first)
        return;
    if (strays.joined <= maxShown)
        drafts[strays.draft].vNoteAt(sNameQuoted(parts) + why, xml_.positionOf(parts));
    else if (strays.joined == maxShown + 1 && strays.leftOutCount > maxShown + 1)
        drafts[strays.draft].vNote("and " + std::to_string(strays.leftOutCount - maxShown - 1) + " more");
}

void UnknownElements::vUnreadCheck(XmlIndex element) {
    const auto& parts = xml_.getElement(element);
    const auto& parent = *pRuleOf(parts.parent);
    const auto first = xml_.getElement(parts.parent).firstChild;
    if (parent.isFirstChildOnly && first != element) {
        vLaterKindAdd(element, first, parent);
        return;
    }
    if (parent.isFirstChildOnly)
        vFirstNote(element);
    if (parts.isPrefixed())
        vPrefixedAdd(element, parent);
    else
        vUnknownAdd(element);
}

/// After the first element inside "PropertyType".
void UnknownElements::vLaterKindAdd(XmlIndex element, XmlIndex first, const ElementRule& parent) {
    const auto& parts = xml_.getElement(element);
    const auto& counting = xml_.getElement(first);
    const auto* kind = SetVocabulary::pChild(parent, counting.name);
    if (!kind)
        return vJoin(element,
                     boIsLeftOver(element) ? " belongs there too" : " comes after it and is not read");
    if (SetVocabulary::pChild(parent, parts.name)) {
        run_.add("S006", element,
                 sNameQuoted(parts) + " is a second kind of the property; only the first one counts")
            .vNoteAt("this one counts", xml_.positionOf(counting));
        return;
    }
    const bool isInside = SetVocabulary::pChild(*kind->rule, parts.name) != nullptr;
    if (isInside && straysOf(parts.parent).first != NoXmlElement)
        return vJoin(element, " belongs there too");
    if (isInside)
        vFirstNote(element);
    auto& draft =
        run_.add("S001", element, sNameQuoted(parts) + " is not known inside " + sQuoted(parent.name));
    if (isInside)
        draft.vNoteAt(sNameQuoted(parts) + " belongs inside " + sQuoted(counting.name),
                      xml_.positionOf(counting));
    else
        draft.vNoteAt("only the first element inside counts", xml_.positionOf(counting));
    // What is missing there is this.
    if (isInside)
        run_.vMisplacedNote(first);
}

/// Whether the element is a part of one other kind of property than that which it is in.
bool UnknownElements::boIsOfOtherKind(XmlIndex element) const {
    const auto& parts = xml_.getElement(element);
    const auto around = xml_.getElement(parts.parent).parent;
    return around != NoXmlElement && pRuleOf(around) && pRuleOf(around)->isFirstChildOnly &&
           !SetVocabulary::soleKindWith(parts.name).empty();
}

void UnknownElements::vPrefixedAdd(XmlIndex element, const ElementRule& parent) {
    const auto& parts = xml_.getElement(element);
    auto& draft = run_.add("S015", element, sNameQuoted(parts) + " has a prefix; prefixes are not supported");
    if (SetVocabulary::pChild(parent, parts.localName()))
        vBecomeNote(draft, element, {parts.localName(), true, true});
}

void UnknownElements::vUnknownAdd(XmlIndex element) {
    const auto& parts = xml_.getElement(element);
    const auto& parent = *pRuleOf(parts.parent);
    if (boIsLeftOver(element) && straysOf(parts.parent).first != element) {
        if (straysOf(parts.parent).first != NoXmlElement)
            return vJoin(element, " belongs there too");
        vFirstNote(element);
    } else if (boIsOfOtherKind(element)) {
        const auto before = straysOf(parts.parent).first;
        if (before != NoXmlElement && SetVocabulary::soleKindWith(xml_.getElement(before).name) ==
                                          SetVocabulary::soleKindWith(parts.name))
            return vJoin(element, " belongs there too");
        if (before == NoXmlElement)
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

/// Whether what is an attribute is written as an element, as in <EnumList><Name>PEnum_Status</Name>.
bool UnknownElements::boIsAttributeOfParent(XmlIndex element) const {
    const auto& parts = xml_.getElement(element);
    const auto attribute = sLowerCase(parts.name);
    const auto& legal = pRuleOf(parts.parent)->attributes;
    return std::ranges::find(legal, attribute) != legal.end() &&
           !xml_.pAttribute(xml_.getElement(parts.parent), attribute);
}

/// Where an element belongs that is known elsewhere.
std::string UnknownElements::sPlaceOf(const Meaning& meaning, const ElementRule& parent) {
    if (meaning.name == "PropertyDefs" && SetVocabulary::pChild(parent, "PropertyDef"))
        return "each \"PropertyDef\" belongs directly inside " + sQuoted(parent.name);
    if (meaning.name == "DataType" && SetVocabulary::pChild(parent, "EnumList"))
        return "an enumeration has no type: its items belong inside \"EnumList\"";
    return sQuoted(meaning.name) + " belongs inside " + sQuoted(meaning.owner);
}

void UnknownElements::vUnknownNoteAdd(FindingDraft& draft, XmlIndex element, const Meaning& meaning) {
    const auto& parts = xml_.getElement(element);
    const auto& parent = *pRuleOf(parts.parent);
    if (boIsAttributeOfParent(element)) {
        draft.vNote("it is an attribute of " + sQuoted(parent.name) + ": " + sLowerCase(parts.name) +
                    "=\"...\"");
        return;
    }
    if (!meaning.owner.empty()) {
        const bool isLeftOut =
            straysOf(parts.parent).leftOut && straysOf(parts.parent).leftOut->name == meaning.owner;
        if (meaning.name != parts.name)
            draft.vNote("did you mean " + sQuoted(meaning.name) + "?");
        draft.vNote(sPlaceOf(meaning, parent) + (isLeftOut ? ", which is missing" : ""));
        if (boIsOfOtherKind(element))
            draft.vNote("the kind of the property would be " +
                        sQuoted(SetVocabulary::soleKindWith(parts.name)));
        run_.vMisplacedNote(parts.parent);
        return;
    }
    const auto legal = SetVocabulary::offeredNames(parent);
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
void UnknownElements::vBecomeNote(FindingDraft& draft, XmlIndex element, const LegalMatch& match) {
    const auto& parts = xml_.getElement(element);
    const auto& parent = *pRuleOf(parts.parent);
    const auto& strays = straysOf(parts.parent);
    const auto index = indexOf(parent, match.name);
    const bool isList = parent.children.size() == 1 && parent.children.front().count != ChildCount::LastOnly;
    if (!isList && strays.present[index] != NoXmlElement) {
        draft.vNoteAt(sQuoted(match.name) + " is there already",
                      xml_.positionOf(xml_.getElement(strays.present[index])));
        return;
    }
    draft.vNote(sMeant(match));
    // Of several that would have one name only one would count.
    if (!match.isSure || (!isList && strays.meant[index] != 1))
        return;
    draft.vEdit(xml_.nameBytesOf(parts), match.name);
    if (xml_.endNameBytesOf(parts).isKnown())
        draft.vEdit(xml_.endNameBytesOf(parts), match.name);
}

void UnknownElements::vKindAdd(XmlIndex element) {
    const auto& parts = xml_.getElement(element);
    const bool isPropertySet = run_.outline.kind == SetKind::PropertySet;
    run_.add("S018", element,
             sNameQuoted(parts) + (isPropertySet ? " belongs to quantity sets; this is a property set"
                                                 : " belongs to property sets; this is a quantity set"))
        .vNote("here it would be " + sQuoted(SetVocabulary::counterpart(parts.name)));
}

} // namespace kiv::kit
