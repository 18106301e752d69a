#include "Kit/Findings/Rules/Structure/ElementCounts.h"

#include "Kit/Findings/MissingChild.h"
#include "Kit/Findings/RuleRun.h"
#include "Kit/Positions/XmlChildren.h"

#include <algorithm>
#include <bitset>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace kiv::kit {

namespace {

void vMissingAdd(RuleRun& run, XmlIndex element, std::string_view child, std::string_view why) {
    if (childOf(run.xml, element, child) == NoXmlElement && !boMissingExplained(run, element, child))
        run.add("S004", element, std::string(why) + ": there is no " + sQuoted(child));
}

bool boIsEmpty(const XmlElement& element) {
    return !boHasText(element) && element.attributeCount == 0 && !element.hasLaterText();
}

/// Of the type the last one counts in any case; of others, one without content leaves what was before.
bool boIsType(const ElementRule& rule) {
    return rule.name == "PropertyType" || rule.name == "QtoType";
}

bool boCounts(const RuleRun& run, XmlIndex element, const ElementRule& rule) {
    const auto& parts = run.xml.getElement(element);
    if (rule.content == ContentKind::Text && !boIsType(rule))
        return boHasText(parts);
    return rule.content != ContentKind::Nothing || run.xml.pAttribute(parts, rule.attributes.front());
}

/// Of several children of that name the one that counts; `NoXmlElement` when there are not several.
XmlIndex countingOf(const RuleRun& run, XmlIndex element, const ElementRule& rule) {
    auto last = NoXmlElement;
    auto counting = NoXmlElement;
    bool isRepeated = false;
    for (const auto place : XmlChildren(run.xml, element)) {
        if (run.xml.getElement(place).name != rule.name)
            continue;
        isRepeated = isRepeated || last != NoXmlElement;
        last = place;
        if (boCounts(run, place, rule))
            counting = place;
    }
    if (!isRepeated)
        return NoXmlElement;
    return counting == NoXmlElement ? last : counting;
}

/// One that leaves what the others say.
void vIneffectiveAdd(RuleRun& run, XmlIndex place, XmlIndex counting) {
    const auto& parts = run.xml.getElement(place);
    const bool isEmpty = boIsEmpty(parts);
    auto& draft = run.add("S006", place,
                          sNameQuoted(parts) + " is repeated, and this one " +
                              (isEmpty ? "is empty" : "does not count"))
                      .vNoteAt("this one counts", run.xml.positionOf(run.xml.getElement(counting)));
    // Nothing is lost.
    if (isEmpty)
        draft.vSeverity(Severity::Warning);
}

void vRepeatedAdd(RuleRun& run, XmlIndex place, XmlIndex before, bool isEmpty) {
    const auto& first = run.xml.getElement(before);
    run.add("S006", place,
            sNameQuoted(run.xml.getElement(place)) + " is repeated; only the last one counts" +
                (isEmpty ? ", and it is empty" : ""))
        .vNoteAt("this one does not count", run.xml.positionOf(first));
    // That the first one is empty is no finding of its own, and the library reports it.
    if (first.name == "QtoType" && first.trimmedText.empty())
        run.vJoin(before, place);
}

void vLastOnlyCheck(RuleRun& run, XmlIndex element, const ElementRule& rule) {
    const auto counting = countingOf(run, element, rule);
    if (counting == NoXmlElement)
        return;
    const bool isAnyCounting = boCounts(run, counting, rule);
    bool isAnyFull = false;
    auto before = NoXmlElement;
    for (const auto place : XmlChildren(run.xml, element)) {
        const auto& parts = run.xml.getElement(place);
        if (parts.name != rule.name)
            continue;
        const bool isEmpty = boIsEmpty(parts);
        isAnyFull = isAnyFull || !isEmpty;
        if (isAnyCounting && !boCounts(run, place, rule)) {
            vIneffectiveAdd(run, place, counting);
            continue;
        }
        if (before != NoXmlElement)
            vRepeatedAdd(run, place, before, isEmpty && isAnyFull);
        before = place;
    }
    for (const auto place : XmlChildren(run.xml, isAnyFull ? element : NoXmlElement)) {
        if (run.xml.getElement(place).name == rule.name)
            run.vRepeatedNote(place);
    }
}

std::string_view attributeOf(const RuleRun& run, XmlIndex element, std::string_view name) {
    const auto* attribute =
        element == NoXmlElement ? nullptr : run.xml.pAttribute(run.xml.getElement(element), name);
    return attribute ? attribute->value : std::string_view();
}

/// The bound that two ranges give; empty when there is none.
std::string_view boundOfBoth(const RuleRun& run, XmlIndex before, XmlIndex place) {
    for (const std::string_view bound : {"LowerBoundValue", "UpperBoundValue"}) {
        if (!attributeOf(run, childOf(run.xml, before, bound), "value").empty() &&
            !attributeOf(run, childOf(run.xml, place, bound), "value").empty())
            return bound;
    }
    return {};
}

/// What the one before has and the later one replaces, as a message has it; empty when nothing is lost.
std::string sReplaced(const RuleRun& run, XmlIndex before, XmlIndex place) {
    const auto& name = run.xml.getElement(place).name;
    if (name == "ConstantList")
        return {};
    if (name == "EnumList") {
        const auto first = attributeOf(run, before, "name");
        return first.empty() || first == attributeOf(run, place, "name") ? "" : "the name";
    }
    if (name == "ValueRangeDef") {
        const auto bound = boundOfBoth(run, before, place);
        return bound.empty() ? "" : "the " + sQuoted(bound);
    }
    // Readers take the type from the first element inside, whatever it is.
    const auto first = attributeOf(run, run.xml.getElement(before).firstChild, "type");
    const auto later = attributeOf(run, run.xml.getElement(place).firstChild, "type");
    return first.empty() || later.empty() || first == later ? "" : "the type";
}

void vJoinedAdd(RuleRun& run, XmlIndex place, XmlIndex first) {
    const auto name = sNameQuoted(run.xml.getElement(place));
    const auto position = run.xml.positionOf(run.xml.getElement(first));
    const bool isOfList = run.xml.getElement(place).name == "ListValue";
    const auto replaced = sReplaced(run, first, place);
    if (replaced.empty()) {
        // That of a list is written once more with its type by programs that write documents.
        if (!isOfList)
            run.add("S021", place, name + " is repeated").vNoteAt("the one before is here", position);
        return;
    }
    run.vRepeatedNote(place);
    auto& draft =
        run.add("S006", place, name + " is repeated; only " + replaced + " of the last one counts")
            .vNoteAt(isOfList ? "this one is of another type" : replaced + " of this one is lost", position);
    // The values keep their types, and only that of the list is another.
    if (isOfList)
        draft.vSeverity(Severity::Warning);
}

void vJoinedCheck(RuleRun& run, XmlIndex element, const ElementRule& rule) {
    auto before = NoXmlElement;
    for (const auto place : XmlChildren(run.xml, element)) {
        if (run.xml.getElement(place).name != rule.name)
            continue;
        const auto first = std::exchange(before, place);
        if (first == NoXmlElement)
            continue;
        // The first one gets the name of the other.
        if (!attributeOf(run, place, "name").empty())
            run.vRepeatedNote(first);
        vJoinedAdd(run, place, first);
    }
}

/// Whether two children have one rule, where readers do not take all of them. Hardly any element has such.
bool hasRepeatedChild(const RuleRun& run, XmlIndex element, const ElementRule& rule) {
    // More than any rule has; a larger number would throw.
    std::bitset<32> seen;
    for (const auto child : XmlChildren(run.xml, element)) {
        const auto found = std::ranges::find(rule.children, run.vocabulary.pRuleOf(child), &ChildRule::rule);
        if (found == rule.children.end() || found->count == ChildCount::All)
            continue;
        const auto place = static_cast<std::size_t>(found - rule.children.begin());
        if (seen.test(place))
            return true;
        seen.set(place);
    }
    return false;
}

} // namespace

void vMissingChildrenCheck(RuleRun& run, XmlIndex element, const ElementRule& rule) {
    if (rule.content != ContentKind::Elements)
        return;
    if (rule.name == "PropertyDef")
        vMissingAdd(run, element, "PropertyType", "the property has no type");
    else if (rule.name == "QtoDef")
        vMissingAdd(run, element, "QtoType", "the quantity has no type");
    else if (rule.name == "PropertySetDef")
        vMissingAdd(run, element, "PropertyDefs", "the set has no properties");
    else if (rule.name == "QtoSetDef")
        vMissingAdd(run, element, "QtoDefs", "the set has no quantities");
    else if (rule.isFirstChildOnly && run.xml.getElement(element).firstChild == NoXmlElement &&
             !run.boMisplaced(element) && !run.boRepeated(element))
        run.add("S004", element, "the property has no type: \"PropertyType\" is empty")
            .vNote("legal here: " + sQuotedList(SetVocabulary::offeredNames(rule)));
}

void vMemberListsCheck(RuleRun& run) {
    constexpr std::string_view Lists[] = {"PropertyDefs", "QtoDefs", "ApplicableClasses"};
    for (const auto name : Lists) {
        auto first = NoXmlElement;
        bool isEmpty = name != "ApplicableClasses";
        for (const auto list : XmlChildren(run.xml, 0)) {
            if (run.xml.getElement(list).name != name || !run.vocabulary.pRuleOf(list))
                continue;
            isEmpty =
                isEmpty && run.xml.getElement(list).firstChild == NoXmlElement && !run.boMisplaced(list);
            if (first == NoXmlElement)
                first = list;
            else
                run.add("S021", list, sQuoted(name) + " is repeated")
                    .vNoteAt("the first one is here", run.xml.positionOf(run.xml.getElement(first)));
        }
        if (isEmpty && first != NoXmlElement)
            run.add("S020", first, sQuoted(name) + " is empty, so the set says nothing");
    }
    for (const auto& member : run.outline.members) {
        const auto element = member.kindElement;
        if (member.kind == PropertyKind::Complex && run.xml.getElement(element).firstChild == NoXmlElement &&
            !run.boMisplaced(element) && !run.boStrayText(element))
            run.add("S020", element, "the complex property has no properties, so it says nothing");
    }
}

void vRepeatedChildrenCheck(RuleRun& run, XmlIndex element, const ElementRule& rule) {
    if (!hasRepeatedChild(run, element, rule))
        return;
    for (const auto& child : rule.children) {
        if (child.count == ChildCount::LastOnly)
            vLastOnlyCheck(run, element, *child.rule);
        else if (child.count == ChildCount::Joined)
            vJoinedCheck(run, element, *child.rule);
    }
}

} // namespace kiv::kit
