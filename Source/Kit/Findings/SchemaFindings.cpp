#include "kiv/Kit/Findings/SchemaFindings.h"

#include "Kit/Findings/Rules/SchemaRules.h"

#include <utility>

namespace kiv::kit {

std::vector<Finding> schemaFindingsOf(const ifc::def::schema::Schema* schema,
                                      std::span<const assert::AssertRecord> assertions, std::string_view text,
                                      std::string path) {
    SchemaRun run(schema, assertions, text, std::move(path));
    if (boSomethingFound(run)) {
        vOpenCommentCheck(run);
        vLostDeclarationsCheck(run);
        vLostPartsCheck(run);
        vSchemaEndCheck(run);
        vSemicolonsCheck(run);
        vNamesDeclaredTwiceCheck(run);
        vUsedNamesCheck(run);
        vExpressionNamesCheck(run);
        run.vMissingCount();
        vLostNameTake(run);
    }
    vOtherReportsAdd(run);
    return run.takeFindings();
}

} // namespace kiv::kit
