/// @file
/// What is wrong with an EXPRESS schema, and what of it the library passes over.
///
///     for (const auto& finding : schemaFindingsOf(&schema, assertions, text, "IFC4.exp"))
///         std::cout << finding.place.position.line << ": " << finding.message << '\n';
///
/// Ownership: findings are values.
/// Threads:   several schemas may be looked at on several threads; schema and text are only read.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Host/Assert/KivAssert.h"
#include "kiv/Kit/Documents/Assertion.h"
#include "kiv/Kit/Findings/Finding.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::schema {
class Schema;
}

namespace kiv::kit {

/// Sorted by line, column and code. `schema` is the last one that was read from `text`, null when none was;
/// `assertions` are what was reported while it was read, in order. Each assertion is a note of the finding
/// that explains it, or else a finding of its own. At most 1,000 findings of one code are kept.
KIV_EXPORT std::vector<Finding> schemaFindingsOf(const ifc::def::schema::Schema* schema,
                                                 std::span<const Assertion> assertions, std::string_view text,
                                                 std::string path);

/// The same with the reports of a sink of the host's own.
KIV_EXPORT std::vector<Finding> schemaFindingsOf(const ifc::def::schema::Schema* schema,
                                                 std::span<const assert::AssertRecord> assertions,
                                                 std::string_view text, std::string path);

/// Whether there are errors among these findings, without looking up the names in expressions.
KIV_EXPORT bool hasSchemaErrors(const ifc::def::schema::Schema* schema, std::span<const Assertion> assertions,
                                std::string_view text);

} // namespace kiv::kit
