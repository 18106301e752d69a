#include "Kit/Findings/Rules/ReleaseRules.h"

#include "Kit/Findings/Rules/ExampleDocuments.h"

namespace kiv::kit {

std::span<const Rule> getReleaseRules() {
    static const Rule rules[] = {
        {"V001", "other-release", Severity::Warning,
         "A document is written for another release than the loaded schema.",
         "Classes and types come and go with the releases of IFC, so that much of what is reported may only "
         "be the difference. Editions of one release count as the same, and so do the names it goes by: "
         "\"2x4\" is IFC4.\n\nCheck the document with the schema of its release, or correct the release.",
         changed(WallClassSet, {{R"(<IfcVersion version="IFC4"/>)", R"(<IfcVersion version="2x3"/>)"}}),
         changed(WallClassSet, {{R"(<IfcVersion version="IFC4"/>)", R"(<IfcVersion version="2x4"/>)"}})},
        {"V002", "no-release", Severity::Warning, "A document does not say which release it is written for.",
         "Readers choose the schema by the release, and cannot when there is none.\n\nGive the document an "
         "\"IfcVersion\" with the attribute \"version\".",
         changed(WallClassSet, {{R"xml(  <IfcVersion version="IFC4"/>
)xml",
                                 ""}}),
         WallClassSet},
        {"V003", "unknown-release", Severity::Warning, "A document names a release that is not known.",
         "Readers choose the schema by the release. A name that is none of IFC leads nowhere.\n\nWrite the "
         "release as it is usually named: \"IFC4\", \"IFC2X3\", \"IFC4X3_ADD2\".",
         changed(WallClassSet,
                 {{R"(<IfcVersion version="IFC4"/>)", R"(<IfcVersion version="Revision 4"/>)"}}),
         WallClassSet},
    };
    return rules;
}

} // namespace kiv::kit
