#include "Kit/Findings/Rules/ReleaseRules.h"

#include "Kit/Findings/MissingChild.h"
#include "Kit/Findings/RuleRun.h"
#include "Kit/Text/AsciiText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Kit/Names/SchemaRelease.h"

#include <string>

namespace kiv::kit {

namespace {

/// What the document is checked against, for a message.
std::string sLoadedRelease(const RuleRun& run) {
    return run.context.release.empty() ? sReleaseOf(run.schema) : run.context.release;
}

ReleaseMatch matchOf(std::string_view declared, const RuleRun& run) {
    return run.context.release.empty() ? compareWithSchema(declared, run.schema)
                                       : compareReleases(declared, run.context.release);
}

void vNoneAdd(const RuleRun& run, FindingDraft& draft) {
    draft.vNote("a document for this schema has <IfcVersion version=\"" + std::string(run.schema.getName()) +
                "\"/>");
}

} // namespace

void vReleaseCheck(RuleRun& run) {
    if (run.outline.kind == SetKind::None || run.outline.isPrefixed)
        return;
    const auto element = run.outline.ifcVersion;
    if (element == NoXmlElement) {
        if (!boMissingExplained(run, 0, "IfcVersion"))
            vNoneAdd(run, run.add("V002", 0, "the document declares no release: there is no \"IfcVersion\""));
        return;
    }
    const auto* version = run.xml.pAttribute(run.xml.getElement(element), "version");
    // That it has no attribute is a mistake of structure.
    if (!version)
        return;
    const auto declared = trimmed(version->value);
    if (declared.empty())
        return vNoneAdd(run, run.addAtValue("V002", element, *version, "the document declares no release"));
    const auto match = matchOf(declared, run);
    if (match == ReleaseMatch::Different)
        run.addAtValue("V001", element, *version,
                       "the document is written for " + sQuoted(declared) + ", and is checked with " +
                           sLoadedRelease(run))
            .vNote("what the releases name differently is reported as unknown");
    // A schema that is no known release may be called anything by its documents.
    const auto isSchemaKnown = [&run] {
        return !run.context.release.empty() || !getReleasesOf(run.schema).empty();
    };
    if (match == ReleaseMatch::Unknown && !isEqualIgnoringCase(declared, run.schema.getName()) &&
        isSchemaKnown())
        run.addAtValue("V003", element, *version, sQuoted(declared) + " is no known release of IFC")
            .vNote("the loaded schema is " + sLoadedRelease(run));
}

} // namespace kiv::kit
