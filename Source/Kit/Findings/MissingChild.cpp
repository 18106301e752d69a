#include "Kit/Findings/MissingChild.h"

#include "Kit/Findings/LegalNames.h"
#include "Kit/Findings/RuleRun.h"
#include "Kit/Findings/SetVocabulary.h"
#include "Kit/Positions/XmlChildren.h"
#include "Kit/Text/AsciiText.h"

#include <algorithm>

namespace kiv::kit {

namespace {

/// Whether readers do not know the element in its place.
bool isUnknown(const RuleRun& run, XmlIndex element) {
    const auto* rule = run.vocabulary.pRuleOf(element);
    return !rule || rule->name != run.xml.getElement(element).name;
}

/// Whether what is inside the unknown element, or the element itself, belongs in one of that rule.
bool isContentOf(const RuleRun& run, XmlIndex unknown, const ElementRule& rule) {
    if (SetVocabulary::boContains(rule, run.xml.getElement(unknown).name))
        return true;
    for (const auto child : XmlChildren(run.xml, unknown)) {
        if (SetVocabulary::pChild(rule, run.xml.getElement(child).name))
            return true;
    }
    return false;
}

bool isOtherElement(const RuleRun& run, std::string_view name) {
    const auto names = SetVocabulary::elementNames(run.outline.kind);
    return std::ranges::find(names, name) != names.end();
}

/// Whether an unknown element was probably meant to be one of that rule.
bool isMeantAs(const RuleRun& run, XmlIndex unknown, const ElementRule& rule) {
    if (isContentOf(run, unknown, rule))
        return true;
    const auto name = run.xml.getElement(unknown).localName();
    if (SetVocabulary::counterpart(name) == rule.name)
        return true;
    const bool isAlike = legalMatch(name, {&rule.name, 1}).name == rule.name;
    return isAlike && (name == rule.name || !isOtherElement(run, name));
}

/// As in <PropertyDef name="Width">, or with an attribute of the missing child.
bool isAttributeOf(const RuleRun& run, XmlIndex parent, const ElementRule& child) {
    const auto& own = run.vocabulary.pRuleOf(parent)->attributes;
    return std::ranges::any_of(
        run.xml.getAttributes(run.xml.getElement(parent)), [&](const XmlAttribute& attribute) {
            return isEqualIgnoringCase(attribute.name, child.name) ||
                   (std::ranges::find(child.attributes, attribute.name) != child.attributes.end() &&
                    std::ranges::find(own, attribute.name) == own.end());
        });
}

/// Whether the unknown element may have been meant to be any: it is none that belongs elsewhere, and like
/// none of the other legal ones.
bool isFree(const RuleRun& run, XmlIndex unknown, const ElementRule& parent, std::string_view missing) {
    const auto name = run.xml.getElement(unknown).localName();
    if (isOtherElement(run, name) || !SetVocabulary::counterpart(name).empty())
        return false;
    const auto match = legalMatch(name, SetVocabulary::childNames(parent));
    return match.name.empty() || match.name == missing;
}

} // namespace

bool boMissingExplained(const RuleRun& run, XmlIndex parent, std::string_view name) {
    const auto* rule = run.vocabulary.pRuleOf(parent);
    const auto* missing = rule ? SetVocabulary::pChild(*rule, name) : nullptr;
    if (!missing)
        return false;
    for (const auto child : XmlChildren(run.xml, parent)) {
        if (isUnknown(run, child) && isMeantAs(run, child, *missing->rule))
            return true;
    }
    return isAttributeOf(run, parent, *missing->rule) || soleMissing(run, parent) == name;
}

std::string_view soleMissing(const RuleRun& run, XmlIndex parent) {
    const auto* rule = run.vocabulary.pRuleOf(parent);
    if (!rule)
        return {};
    auto stray = NoXmlElement;
    for (const auto child : XmlChildren(run.xml, parent)) {
        if (!isUnknown(run, child))
            continue;
        if (stray != NoXmlElement)
            return {};
        stray = child;
    }
    if ((stray == NoXmlElement) != run.boStrayText(parent))
        return {};
    std::string_view missing;
    for (const auto& child : rule->children) {
        if (!child.isNeeded || childOf(run.xml, parent, child.rule->name) != NoXmlElement)
            continue;
        if (!missing.empty())
            return {};
        missing = child.rule->name;
    }
    if (missing.empty() || (stray != NoXmlElement && !isFree(run, stray, *rule, missing)))
        return {};
    return missing;
}

} // namespace kiv::kit
