/// @file
/// Why a file could not be read.
///
///     if (document.failure)
///         std::cerr << document.path << ':' << document.failure->position.line << ": " <<
///         document.failure->reason;
///
/// Ownership: a value.
/// Threads:   any number of threads may read one.
/// Errors:    none.
#pragma once

#include "kiv/Format/Ifc/Def/IfcBudget.h"
#include "kiv/Kit/Text/TextPosition.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kiv::kit {

/// What kept a file from being read.
enum class FailureKind : std::uint8_t {
    /// The system refuses it: there is no such file, it is a folder, it may not be read.
    Unreadable,
    /// It has no bytes.
    Empty,
    /// It needs more than its budget allows, or a stop was requested.
    OverBudget,
    /// It needs more memory than there is.
    OutOfMemory,
    /// It is not well-formed XML.
    NotXml,
    /// It is XML; the root element is that of no set.
    NotASet,
    /// The root element would be that of a set but for its prefix; prefixes are not supported.
    PrefixedRoot,
    /// It has no line with SCHEMA and a name.
    NotASchema,
    /// A number in a rule of the schema fits no integer or no double.
    LiteralOutOfRange,
    /// The schema ends in the middle of a list of names.
    ListLeftOpen,
};

/// Why a file has not become a set or a schema.
struct ReadFailure {
    FailureKind kind = FailureKind::Unreadable;
    /// A sentence without a full stop.
    std::string reason;
    /// Line 0 when it has no place in the text.
    TextPosition position;
    /// The limit that was exceeded; absent for other kinds of failure.
    std::optional<ifc::def::BudgetLimit> limit;
};

} // namespace kiv::kit
