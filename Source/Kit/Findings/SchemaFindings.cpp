#include "kiv/Kit/Findings/SchemaFindings.h"

#include "Kit/Findings/Rules/SchemaRules.h"

#include <algorithm>
#include <utility>

namespace kiv::kit {

namespace {

/// All rules that have errors, and those that such errors may take up.
void vErrorsFind(SchemaRun& run) {
    vOpenCommentCheck(run);
    vLostDeclarationsCheck(run);
    vLostPartsCheck(run);
    vMisspeltKeywordsCheck(run);
    vGapsCheck(run);
    vIllegalNamesCheck(run);
    vSchemaEndCheck(run);
    vSemicolonsCheck(run);
    vNamesDeclaredTwiceCheck(run);
    vCirclesCheck(run);
    vUsedNamesCheck(run);
}

} // namespace

std::vector<Finding> schemaFindingsOf(const ifc::def::schema::Schema* schema,
                                      std::span<const Assertion> assertions, std::string_view text,
                                      std::string path) {
    SchemaRun run(schema, assertions, text, std::move(path));
    if (boSomethingFound(run)) {
        vErrorsFind(run);
        vExpressionNamesCheck(run);
        run.vMissingCount();
        vLostNameTake(run);
        vCutOffTake(run);
        vStrayTextsCheck(run);
        vBodiesCheck(run);
    }
    vOtherReportsAdd(run);
    return run.takeFindings();
}

std::vector<Finding> schemaFindingsOf(const ifc::def::schema::Schema* schema,
                                      std::span<const assert::AssertRecord> assertions, std::string_view text,
                                      std::string path) {
    std::vector<Assertion> views;
    views.reserve(assertions.size());
    for (const auto& record : assertions)
        views.push_back({record.code, record.message, record.function, record.file, record.line});
    return schemaFindingsOf(schema, views, text, std::move(path));
}

bool hasSchemaErrors(const ifc::def::schema::Schema* schema, std::span<const Assertion> assertions,
                     std::string_view text) {
    SchemaRun run(schema, assertions, text, {});
    // Names in expressions are warnings. They explain no report, and where the name of a lost declaration is
    // among them, that declaration is an error.
    if (boSomethingFound(run))
        vErrorsFind(run);
    vOtherReportsAdd(run);
    const auto findings = run.takeFindings();
    return std::ranges::find(findings, Severity::Error, &Finding::severity) != findings.end();
}

} // namespace kiv::kit
