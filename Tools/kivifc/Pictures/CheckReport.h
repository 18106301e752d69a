/// @file
/// The forms of a check's result: lines as compilers write them, the library's own report, JSON.
///
///     const auto report = pTextReport(context, showsWarnings);
///     report->vDocumentAdd(document);
///     report->vEnd(elapsed);
///
/// Ownership: a report refers to what its context names, which must outlive it.
/// Threads:   one thread at a time.
#pragma once

#include "kivifc/Documents/SchemaFile.h"
#include "kivifc/Documents/SetDocument.h"
#include "kivifc/Pictures/CheckSummary.h"
#include "kivifc/Program/Program.h"
#include "kivifc/Program/Progress.h"

#include <chrono>
#include <memory>

namespace kiv::kivifc {

/// What all forms may need.
struct CheckContext {
    Console& console;
    const SchemaFile& schema;
    /// Of all documents up to now.
    const CheckSummary& summary;
    /// The records of all documents up to now.
    const ifc::def::xml::XmlSetsErrors& errors;
    /// Is hidden before anything is written between two documents.
    Progress& progress;
};

class CheckReport {
public:
    CheckReport() = default;
    CheckReport(const CheckReport&) = delete;
    CheckReport& operator=(const CheckReport&) = delete;
    virtual ~CheckReport();

    /// Called for each document, in order.
    virtual void vDocumentAdd(const SetDocument& document) = 0;

    /// Called once, at the end.
    virtual void vEnd(std::chrono::nanoseconds time) = 0;
};

/// One line a record, and one an assertion report when `showsWarnings`; then the summary.
std::unique_ptr<CheckReport> pTextReport(const CheckContext& context, bool showsWarnings);

/// The library's own report text and nothing else.
std::unique_ptr<CheckReport> pFormattedReport(const CheckContext& context);

/// Everything that was read, with records and assertions.
std::unique_ptr<CheckReport> pJsonReport(const CheckContext& context);

} // namespace kiv::kivifc
