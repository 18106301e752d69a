#include "kivifc/Commands/CheckListing.h"

#include "kivifc/Documents/ReportFile.h"
#include "kivifc/Documents/SetDocument.h"
#include "kivifc/Documents/ShownFailure.h"
#include "kivifc/Pictures/CheckReport.h"
#include "kivifc/Program/Progress.h"

#include <chrono>
#include <cstdio>
#include <memory>
#include <utility>

namespace kiv::kivifc {

namespace {

/// Reads and checks the documents one after another; each is kept only until it is reported.
class Checker {
public:
    Checker(const SchemaFile& schema, const std::vector<std::string>& paths, Console& console) :
        schema_(schema),
        paths_(paths),
        console_(console),
        progress_(stderr, paths.size()),
        context_{console, schema, summary_, errors_, progress_} {}

    const CheckContext& getContext() const { return context_; }

    void vCheck(CheckReport& report) {
        for (std::size_t done = 0; done < paths_.size(); ++done) {
            progress_.vShow(done);
            auto document = setDocumentCheck(paths_[done], *schema_.schema);
            if (document.failure || !document.errors.getRecords().empty() || !document.assertions.empty())
                progress_.vHide();
            vDocumentTake(std::move(document), report);
        }
        progress_.vHide();
    }

private:
    void vDocumentTake(SetDocument&& document, CheckReport& report) {
        summary_.vAdd(document);
        if (document.failure)
            console_.diagnostics.vFail(shownFailure(document.path, *document.failure));
        if (document.isRefused || !document.errors.getRecords().empty())
            console_.diagnostics.vFinding();
        report.vDocumentAdd(document);
        if (!document.errors.getRecords().empty())
            errors_.sets.insert(std::move(document.errors));
    }

    const SchemaFile& schema_;
    const std::vector<std::string>& paths_;
    Console& console_;
    Progress progress_;
    CheckSummary summary_;
    ifc::def::xml::XmlSetsErrors errors_;
    CheckContext context_;
};

std::unique_ptr<CheckReport> pReport(const CheckContext& context, const CheckOptions& options) {
    if (options.isJson)
        return pJsonReport(context);
    return options.hasWarnings ? pTextReport(context, true) : pFormattedReport(context);
}

} // namespace

void vCheckListing(const SchemaFile& schema, const std::vector<std::string>& paths,
                   const CheckOptions& options, Console& console) {
    const auto begin = std::chrono::steady_clock::now();
    Checker checker(schema, paths, console);
    const auto report = pReport(checker.getContext(), options);
    checker.vCheck(*report);
    report->vEnd(std::chrono::steady_clock::now() - begin);
    if (options.reportPath.empty())
        return;
    console.output.vFlush();
    const auto failure = sReportWrite(checker.getContext().errors, options.reportPath);
    if (!failure.empty())
        console.diagnostics.vFail(options.reportPath, failure);
}

} // namespace kiv::kivifc
