#include "kivifc/Commands/CheckFindings.h"

#include "kiv/Kit/Documents/SetPaths.h"
#include "kiv/Kit/Names/SchemaRelease.h"
#include "kivifc/Commands/CheckFixes.h"
#include "kivifc/Documents/ReportFile.h"
#include "kivifc/Documents/SetDocument.h"
#include "kivifc/Documents/SetPaths.h"
#include "kivifc/Findings/Baseline.h"
#include "kivifc/Findings/CheckRun.h"
#include "kivifc/Findings/FindingWriter.h"
#include "kivifc/Program/Environment.h"
#include "kivifc/Program/Progress.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string_view>
#include <thread>
#include <unistd.h>
#include <unordered_map>
#include <utility>

namespace kiv::kivifc {

namespace {

/// With fewer documents, threads are not worth the time to begin them.
constexpr std::size_t DocumentsForThreads = 200;
constexpr std::size_t FindingsMaxInText = 50;

bool isColoured(const std::string& choice) {
    if (choice != "auto")
        return choice == "always";
    return sEnvironment("NO_COLOR").empty() && sEnvironment("TERM") != "dumb" && isatty(STDOUT_FILENO) == 1;
}

std::unique_ptr<FindingWriter> pWriter(const CheckOptions& options, SourceLines& sources, Output& output) {
    if (options.format == "json")
        return pJsonFindings(output);
    if (options.format == "sarif")
        return pSarifFindings(output, sources, RepositoryPaths::current());
    if (options.format == "github")
        return pGithubFindings(output, RepositoryPaths::current());
    if (options.format == "junit")
        return pJunitFindings(output, options.failingSeverity());
    return pTextFindings(output, sources,
                         {isColoured(options.colour), !options.isWithoutContext, !options.isQuiet});
}

std::size_t threadsFor(const CheckOptions& options, std::size_t documents) {
    if (options.jobs != 0)
        return options.jobs;
    return documents < DocumentsForThreads ? 1 : std::max(std::thread::hardware_concurrency(), 1U);
}

/// What two paths to one document have in common. Standard input that is called like a file is what an editor
/// has of it, and is read in its place; without such a name it is by itself, whatever files there are.
std::string sDocumentKey(const std::string& path, const CheckOptions& options) {
    if (path != StandardInputPath)
        return kit::sPathKey(path);
    return options.isStandardInputNamed() ? kit::sPathKey(options.standardInputName) : path;
}

/// Each document once, by the first path that leads to it, with its contexts.
class DocumentList {
public:
    explicit DocumentList(const CheckOptions& options) : options_(options) {}

    void vAdd(const std::string& path, const std::string& context, const std::string& refusal = {}) {
        const auto [place, isNew] = known_.emplace(sDocumentKey(path, options_), list_.size());
        if (isNew)
            list_.push_back({path, {}, refusal});
        auto& document = list_[place->second];
        // A pipe in a folder is read when another path leads to it.
        if (path == StandardInputPath || (refusal.empty() && !document.refusal.empty()))
            document = {path, std::move(document.contexts)};
        document.contexts.push_back(context);
    }

    std::vector<CheckedPath> takeSorted() {
        std::ranges::sort(list_, {}, &CheckedPath::path);
        return std::move(list_);
    }

private:
    const CheckOptions& options_;
    std::vector<CheckedPath> list_;
    std::unordered_map<std::string, std::size_t> known_;
};

std::vector<CheckedPath> documentsOf(const std::vector<ContextPaths>& contexts, const CheckOptions& options,
                                     Diagnostics& diagnostics) {
    DocumentList list(options);
    for (const auto& context : contexts) {
        std::vector<kit::PathProblem> specialFiles;
        for (const auto& path : setPathsCollect(context.paths, diagnostics, specialFiles))
            list.vAdd(path, context.context.name);
        for (const auto& file : specialFiles)
            list.vAdd(file.path, context.context.name, file.reason);
    }
    return list.takeSorted();
}

/// Schemas that are read besides the one that is checked against.
std::vector<SchemaFile> otherSchemas(const CheckOptions& options, Diagnostics& diagnostics) {
    std::vector<SchemaFile> schemas;
    for (const auto& path : options.otherSchemas) {
        if (auto schema = schemaFileRead(path, diagnostics))
            schemas.push_back(std::move(*schema));
    }
    return schemas;
}

/// What the user says, or else the one release that the schema can be; empty when it can be several or none.
std::string sReleaseOf(const SchemaFile& schema, const CheckOptions& options) {
    if (!options.release.empty())
        return options.release;
    const auto releases = kit::getReleasesOf(*schema.schema);
    return releases.size() == 1 ? std::string(releases.front()->name) : std::string();
}

kit::SetCheckContext checkContext(const SchemaFile& schema, const std::vector<SchemaFile>& others,
                                  const CheckOptions& options) {
    kit::SetCheckContext context{*schema.schema, {}, sReleaseOf(schema, options), options.isVerbose};
    for (const auto& other : others)
        context.others.push_back({std::string(other.schema->getName()), *other.schema});
    return context;
}

/// Leaves up to that many findings of each code, and counts the others.
void vFindingsLimit(std::vector<kit::Finding>& findings, std::size_t max, CheckResult& result) {
    if (max == 0)
        return;
    std::map<std::string_view, std::size_t> counts;
    std::erase_if(findings, [&](const kit::Finding& finding) {
        if (++counts[finding.code] <= max)
            return false;
        ++result.omitted[finding.code];
        return true;
    });
}

/// What is done with the findings of one run, step by step.
class FindingsShow {
public:
    FindingsShow(const SchemaFile& schema, const CheckOptions& options, Console& console) :
        schema_(schema), options_(options), console_(console) {}

    void vRun(const std::vector<ContextPaths>& contexts) {
        if (!boBaselineRead())
            return vFindingsFailureShow(options_, console_);
        const auto others = otherSchemas(options_, console_.diagnostics);
        auto request = requestFor(contexts, others);
        vDocumentsCheck(request);
        vReportWrite();
        vBaselineKeep();
        vBaselineHide();
        if (options_.isFix || options_.isDiff)
            vMend(request);
        if (options_.isFix)
            vMendedWrite(request);
        vBaselineWrite();
        if (options_.isDiff)
            return vDiffShow();
        vCount();
        vWrite();
    }

private:
    /// First of all: without what is known, everything that is known would be shown as new.
    bool boBaselineRead() {
        if (options_.baselinePath.empty())
            return true;
        std::string failure;
        baseline_ = baselineRead(options_.baselinePath, failure);
        if (!baseline_)
            console_.diagnostics.vFail(options_.baselinePath, failure);
        return baseline_.has_value();
    }

    CheckRequest requestFor(const std::vector<ContextPaths>& contexts,
                            const std::vector<SchemaFile>& others) {
        CheckRequest request(schema_, checkContext(schema_, others, options_));
        request.documents = documentsOf(contexts, options_, console_.diagnostics);
        request.standardInputName = options_.standardInputName;
        request.threads = threadsFor(options_, request.documents.size());
        request.selection = options_.selection();
        request.keepsRecords = !options_.reportPath.empty();
        request.keepsTexts = options_.isFix || options_.isDiff;
        return request;
    }

    void vDocumentsCheck(CheckRequest& request) {
        Progress progress(stderr, request.documents.size());
        request.onProgress = [&progress](std::size_t done) { progress.vShow(done); };
        checked_ = checkRun(request, sources_);
        request.onProgress = nullptr;
    }

    /// Once more, with what is mended: all documents, as there are findings between them.
    void vAgainCheck(CheckRequest& request) {
        vDocumentsCheck(request);
        // A patch changes no file, and what was found in them stays known.
        if (options_.isFix)
            vBaselineKeep();
        vBaselineHide();
    }

    /// In memory. Mending an element uncovers what is inside, and that can often be mended as well.
    void vMend(CheckRequest& request) {
        constexpr int maxRounds = 3;
        vUnmendableNote(checked_.findings, checked_.unmendable, console_);
        request.texts = checked_.streams;
        for (int round = 0; round != maxRounds; ++round) {
            if (!boTextsMend(checked_.findings, checked_.texts, mended_))
                return;
            for (const auto& [path, mended] : mended_)
                request.texts[path] = mended.text;
            vAgainCheck(request);
        }
    }

    /// What could not be written is checked as it is.
    void vMendedWrite(CheckRequest& request) {
        const auto unwritten = unwrittenOf(mended_, console_);
        for (const auto& path : unwritten)
            request.texts[path] = mended_.at(path).before.text;
        if (!unwritten.empty())
            vAgainCheck(request);
    }

    void vReportWrite() {
        if (options_.reportPath.empty())
            return;
        const auto failure = sReportWrite(checked_.errors, options_.reportPath);
        if (!failure.empty())
            console_.diagnostics.vFail(options_.reportPath, failure);
    }

    /// What is hidden is known as well.
    void vBaselineKeep() {
        if (!options_.writtenBaselinePath.empty())
            written_ = baselineOf(options_.writtenBaselinePath, checked_.findings);
    }

    /// Once, when nothing more is mended.
    void vBaselineWrite() {
        if (options_.writtenBaselinePath.empty())
            return;
        const auto failure = sBaselineWrite(options_.writtenBaselinePath, written_);
        if (!failure.empty())
            console_.diagnostics.vFail(options_.writtenBaselinePath, failure);
    }

    void vBaselineHide() {
        if (!baseline_)
            return;
        result_.fixed.clear();
        // Each entry hides one finding and is used up by it.
        auto baseline = *baseline_;
        result_.counts.hidden = baselineHide(checked_.findings, baseline, scope(), result_.fixed);
    }

    BaselineScope scope() const {
        std::set<std::string_view> unreadable;
        for (const auto& finding : checked_.findings) {
            if (isUnreadable(finding))
                unreadable.insert(finding.place.path);
        }
        BaselineScope scope{{schema_.path}, options_.selection()};
        std::ranges::copy_if(checked_.paths, std::back_inserter(scope.paths),
                             [&](const auto& path) { return !unreadable.contains(path); });
        return scope;
    }

    void vDiffShow() {
        if (boDiffWrite(mended_, console_.output))
            console_.diagnostics.vFinding();
        vFailingCheck();
        if (checked_.unreadable != 0)
            vUnreadableShow();
    }

    /// A patch has no place for them.
    void vUnreadableShow() {
        for (const auto& finding : checked_.findings) {
            if (isUnreadable(finding))
                console_.diagnostics.vFail(sPlace(finding.place), finding.message);
        }
    }

    bool isInSchema(const kit::Finding& finding) const { return finding.place.path == schema_.path; }

    /// Who checks documents cannot mend the schema: of what is found in it, errors alone decide the status.
    void vFailingCheck() {
        const auto failing = options_.failingSeverity();
        for (const auto& finding : checked_.findings) {
            if (failing && finding.severity >= (isInSchema(finding) ? kit::Severity::Error : *failing))
                console_.diagnostics.vFinding();
        }
    }

    void vCount() {
        for (const auto& finding : checked_.findings)
            result_.counts.vAdd(finding, isInSchema(finding));
        vFailingCheck();
        result_.counts.documentsChecked = checked_.paths.size();
        result_.counts.documentsUnreadable = checked_.unreadable;
        if (checked_.unreadable != 0)
            console_.diagnostics.vFailureShown();
    }

    void vWrite() {
        const auto suited = options_.format == "text" ? FindingsMaxInText : 0;
        vFindingsLimit(checked_.findings, options_.findingsMax.value_or(suited), result_);
        result_.schemaPath = schema_.path;
        result_.schemaName = schema_.schema->getName();
        result_.documents = std::move(checked_.paths);
        result_.failures = console_.diagnostics.getFailures();
        const auto writer = pWriter(options_, sources_, console_.output);
        writer->vBegin(checked_.findings, result_);
        for (const auto& finding : checked_.findings)
            writer->vFindingWrite(finding);
        writer->vEnd(result_);
    }

    const SchemaFile& schema_;
    const CheckOptions& options_;
    Console& console_;
    SourceLines sources_;
    std::optional<Baseline> baseline_;
    Baseline written_;
    CheckedDocuments checked_;
    MendedTexts mended_;
    CheckResult result_;
};

} // namespace

void vCheckFindings(const SchemaFile& schema, const std::vector<ContextPaths>& contexts,
                    const CheckOptions& options, Console& console) {
    FindingsShow(schema, options, console).vRun(contexts);
}

void vFindingsFailureShow(const CheckOptions& options, Console& console,
                          const std::vector<kit::Finding>& reasons) {
    if (options.isListing() || (options.format == "text" && reasons.empty()))
        return;
    SourceLines sources;
    CheckResult result;
    result.failures = console.diagnostics.getFailures();
    const auto writer = pWriter(options, sources, console.output);
    for (const auto& reason : reasons)
        result.counts.vAdd(reason, true);
    writer->vBegin(reasons, result);
    for (const auto& reason : reasons)
        writer->vFindingWrite(reason);
    writer->vEnd(result);
}

} // namespace kiv::kivifc
