/// @file
/// Room Findings: what a check found, chosen and written for people and for programs.
///
/// A writer writes findings in one form: text, JSON, SARIF, workflow commands, JUnit.
///
///     const auto writer = pTextFindings(console.output, sources, options);
///     for (const auto& finding : findings)
///         writer->vFindingWrite(finding);
///     writer->vEnd(result);
///
/// Ownership: a writer refers to the output and to the sources, which outlive it.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc; what cannot be written is known to the output.
#pragma once

#include "kiv/Kit/Findings/Finding.h"
#include "kivifc/Documents/RepositoryPaths.h"
#include "kivifc/Findings/FindingCounts.h"
#include "kivifc/Findings/SourceLines.h"
#include "kivifc/Program/Diagnostics.h"
#include "kivifc/Program/Output.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kivifc {

/// What a check came to, besides its findings.
struct CheckResult {
    /// Both empty when there is no schema.
    std::string schemaPath;
    std::string schemaName;
    FindingCounts counts;
    /// The paths of all documents, in order.
    std::vector<std::string> documents;
    /// What kept the job from being done, besides documents that cannot be read: those are findings.
    std::vector<Failure> failures;
    /// How many findings of a code were left out because of their number.
    std::map<std::string_view, std::size_t> omitted;
    /// What a baseline lists and was not found again, as "PATH: MESSAGE [CODE]".
    std::vector<std::string> fixed;
};

class FindingWriter {
public:
    FindingWriter() = default;
    FindingWriter(const FindingWriter&) = delete;
    FindingWriter& operator=(const FindingWriter&) = delete;
    virtual ~FindingWriter();

    /// Called once, before all findings, which are given for those forms that list rules or files first.
    virtual void vBegin(const std::vector<kit::Finding>& findings, const CheckResult& result);

    /// Called for each finding, in the order of files, lines and columns.
    virtual void vFindingWrite(const kit::Finding& finding) = 0;

    /// Called once, at the end.
    virtual void vEnd(const CheckResult& result) = 0;
};

struct TextFindingOptions {
    bool isColoured = false;
    /// The source line with a caret below it.
    bool hasContext = true;
    bool hasSummary = true;
};

/// Lines as compilers write them.
std::unique_ptr<FindingWriter> pTextFindings(Output& output, SourceLines& sources,
                                             const TextFindingOptions& options);

/// One JSON document, as check.schema.json describes it; written at its end, whole.
std::unique_ptr<FindingWriter> pJsonFindings(Output& output);

/// From now on, and until such a document is written, a lack of memory that ends the program leaves one that
/// says so.
void vJsonFindingsExpect() noexcept;

/// SARIF 2.1.0. The lines of the sources give the places of edits.
std::unique_ptr<FindingWriter> pSarifFindings(Output& output, SourceLines& sources,
                                              const RepositoryPaths& paths = {});

/// Workflow commands, which GitHub shows beside the lines of a pull request.
std::unique_ptr<FindingWriter> pGithubFindings(Output& output, const RepositoryPaths& paths = {});

/// A test suite with a test case for each file, which fails when the file has a finding of that severity or a
/// higher one; of no severity when it is absent.
std::unique_ptr<FindingWriter> pJunitFindings(Output& output, std::optional<kit::Severity> failing);

/// "error", "warning" or "note".
std::string_view severityText(kit::Severity severity);

/// "walls.xml:3:7": the path alone when nothing more is known.
std::string sPlace(const kit::Place& place);

} // namespace kiv::kivifc
