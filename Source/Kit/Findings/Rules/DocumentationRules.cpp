#include "Kit/Findings/Rules/DocumentationRules.h"

#include "Kit/Findings/MissingChild.h"
#include "Kit/Findings/RuleRun.h"
#include "Kit/Text/AsciiText.h"

#include <string>

namespace kiv::kit {

namespace {

/// The text of a definition counts wherever it is: that readers do not see it is another mistake.
bool boIsWritten(const RuleRun& run, XmlIndex definition) {
    if (definition == NoXmlElement)
        return false;
    const auto& element = run.xml.getElement(definition);
    return !trimmed(element.text).empty() || element.hasLaterText() || element.firstChild != NoXmlElement ||
           run.boMisplaced(definition) || run.boRepeated(definition);
}

/// Where the definition would be looked for: at the empty one, else at the name.
XmlIndex placeOf(XmlIndex definition, XmlIndex name, XmlIndex whole) {
    if (definition != NoXmlElement)
        return definition;
    return name != NoXmlElement ? name : whole;
}

/// Without a name, which is another mistake, what it is says enough.
std::string sNamed(std::string_view what, std::string_view name) {
    return std::string(what) + (trimmed(name).empty() ? "" : " " + sQuoted(name));
}

} // namespace

void vDocumentationCheck(RuleRun& run) {
    const auto& outline = run.outline;
    if (outline.kind == SetKind::None || outline.isPrefixed)
        return;
    if (!boIsWritten(run, outline.definition) && !boMissingExplained(run, 0, "Definition"))
        run.add("D001", placeOf(outline.definition, outline.name, 0),
                sNamed("the set", outline.setName()) + " has no definition");
    const std::string kind = outline.kind == SetKind::PropertySet ? "the property" : "the quantity";
    for (const auto& member : outline.members) {
        if (!boIsWritten(run, member.definition) && !boMissingExplained(run, member.element, "Definition"))
            run.add("D002", placeOf(member.definition, member.name, member.element),
                    sNamed(kind, outline.memberName(member)) + " has no definition");
    }
}

} // namespace kiv::kit
