/// @file
/// What the library says about a document, with the place in it: records and assertions have a line at most,
/// so what they are about is found by walking the document as the readers of sets do.
///
///     for (const auto& report : libraryReportsOf(run))
///         ...
///
/// Private to the kit.
///
/// Ownership: results refer to the outline's positions.
/// Threads:   free functions without state.
/// Errors:    a report that does not fit the document has the line of its record, or no place.
/// std::bad_alloc.
#pragma once

#include "Kit/Findings/RuleRun.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kit {

struct LibraryReport {
    /// The rule that it is a finding of when no other rule explains it.
    std::string_view code;
    /// In the library's words.
    std::string message;
    /// The value it is about; empty when it has none.
    std::string value;
    FindingSubject subject;
    TextPosition position;
    /// Of an assertion.
    std::optional<FindingOrigin> origin;
    /// Correct documents have it too.
    bool isHarmless = false;
};

/// Whether a data type of the document may be unknown: the library did not find one in the schema, or it
/// recorded something else, after which it need not have looked at all.
bool boMayHaveUnknownType(const SetDocument& document);

/// In the order in which they were made, records first. That the schema lacks the entity of a kind of
/// property is there once, however many properties are of the kind.
std::vector<LibraryReport> libraryReportsOf(const RuleRun& run);

} // namespace kiv::kit
