/// @file
/// What is wrong with a set document or a schema, where, and how to mend it.
///
///     for (const auto& finding : findings)
///         std::cout << finding.place.path << ':' << finding.place.position.line << ": " << finding.message;
///
/// Ownership: a value; `code` is a text of the rule table, which lives as long as the process.
/// Threads:   any number of threads may read one.
/// Errors:    std::bad_alloc when one is copied.
#pragma once

#include "kiv/Kit/Text/TextPosition.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kit {

enum class Severity : std::uint8_t {
    /// A matter of style or of documentation.
    Note,
    /// Probably wrong.
    Warning,
    /// Data is lost or misread.
    Error,
};

/// A place in a file.
struct Place {
    /// As it is to be shown.
    std::string path;
    TextPosition position;
};

/// What completes a finding: the legal values, the nearest name, the other place.
struct FindingNote {
    std::string message;
    /// Absent when the note is about the same place as its finding.
    std::optional<Place> place;
};

/// Bytes of the file to replace; together the edits of a finding mend it.
struct FindingEdit {
    /// In bytes, from the beginning of the file.
    std::size_t offset = 0;
    std::size_t length = 0;
    std::string text;
};

/// The place in the library that reported what the finding shows.
struct FindingOrigin {
    std::string function;
    std::string file;
    int line = 0;
};

struct Finding {
    /// A letter for the family and three digits: "T001".
    std::string_view code;
    Severity severity = Severity::Error;
    /// A sentence without a full stop, in the words of EXPRESS, IFC and XML.
    std::string message;
    Place place;
    std::vector<FindingNote> notes;
    /// In the order of their offsets; empty when mending needs judgement.
    std::vector<FindingEdit> edits;
    /// What it is about, whatever line it is on: "Pset_WallCommon.IsExternal". For comparing two runs.
    std::string subject;
    /// Names that the schema lacks, as they are written: of a finding in a schema those of declarations that
    /// are lost because of it, of one in a document the name that it uses.
    std::vector<std::string> missingNames;
    /// Of a record or an assertion of the library; absent for the kit's own.
    std::optional<FindingOrigin> origin;
};

} // namespace kiv::kit
