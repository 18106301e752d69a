#include "Kit/Findings/Rules/Structure/ElementTexts.h"

#include "Kit/Findings/RuleRun.h"

#include <string>
#include <utility>

namespace kiv::kit {

namespace {

/// Where to write the text instead; empty when that is not known.
std::string sPlaceOf(const ElementRule& rule) {
    if (rule.content == ContentKind::Nothing)
        return rule.attributes.empty()
                   ? std::string()
                   : "its value belongs in the attribute " + sQuoted(rule.attributes.front());
    if (rule.name == "TypePropertyReferenceValue")
        return "its value belongs in the attribute \"reftype\"";
    if (rule.name == "PropertyType")
        return "the type belongs in an element of its kind, such as \"TypePropertySingleValue\"";
    if (SetVocabulary::pChild(rule, "DataType"))
        return "the type belongs in an element \"DataType\"";
    const bool isList = rule.children.size() == 1 && rule.children.front().rule->content == ContentKind::Text;
    return isList ? "write each as an element " + sQuoted(rule.children.front().rule->name) : std::string();
}

void vUnreadTextCheck(RuleRun& run, XmlIndex element) {
    const auto& parts = run.xml.getElement(element);
    const bool isHidden = parts.isTextHidden;
    // An element inside the text is the mistake then.
    if ((!parts.hasLaterText() && !isHidden) || parts.firstChild != NoXmlElement)
        return;
    auto& draft = run.add("S017", element,
                          "the text of " + sNameQuoted(parts) +
                              (isHidden ? " begins with a comment, which is read in its place"
                                        : " is read up to the comment only; this part is lost"));
    draft.finding.place.position =
        isHidden ? run.xml.textPositionOf(parts) : run.xml.laterTextPositionOf(parts);
}

} // namespace

void vTextCheck(RuleRun& run, XmlIndex element, const ElementRule& rule) {
    const auto& parts = run.xml.getElement(element);
    if (rule.content == ContentKind::Text) {
        vUnreadTextCheck(run, element);
        return;
    }
    if (rule.isTextLegal)
        return;
    const bool hasText = !parts.isTextHidden && !parts.trimmedText.empty();
    if (!hasText && !parts.hasLaterText())
        return;
    auto& draft = run.add("S016", element,
                          "there is text inside " + sNameQuoted(parts) + ", where " +
                              (rule.content == ContentKind::Nothing ? "none" : "elements") +
                              (rule.content == ContentKind::Nothing ? " belongs" : " belong"));
    draft.finding.place.position =
        hasText ? run.xml.textPositionOf(parts) : run.xml.laterTextPositionOf(parts);
    run.vMisplacedNote(element);
    run.vStrayTextNote(element);
    if (auto place = sPlaceOf(rule); !place.empty())
        draft.vNote(std::move(place));
}

} // namespace kiv::kit
