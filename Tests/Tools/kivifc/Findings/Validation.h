/// @file
/// Whether a JSON document is what a JSON Schema describes, as python3-jsonschema says.
///
///     const auto validation = validated("check.schema.json", text);
///     if (validation.isLeftOut)
///         GTEST_SKIP() << validation.text;
///     EXPECT_TRUE(validation.isValid) << validation.text;
///
/// Threads: any number of threads.
#pragma once

#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/KivifcRun.h"

#include <string>
#include <string_view>

namespace kiv::kivifc::test {

struct Validation {
    bool isValid = false;
    /// There is no python3-jsonschema here.
    bool isLeftOut = false;
    /// What is wrong and where, or why it was left out.
    std::string text;
};

inline Validation validated(const std::string& schemaPath, std::string_view document) {
    const kiv::test::TemporaryFolder folder;
    const auto path = folder.sWrite("document.json", document);
    const auto run =
        kivifcRun({KIVIFC_TESTS "/validate.py", schemaPath, path}, {.program = "/usr/bin/python3"});
    return {run.status == 0, run.status == 77, run.out + run.err};
}

} // namespace kiv::kivifc::test
