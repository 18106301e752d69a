#include "kivifc/CheckCommand.h"

#include "kivifc/Progress.h"
#include "kivifc/ReportFile.h"
#include "kivifc/SetPaths.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdio>
#include <utility>

namespace kiv::kivifc {

namespace {

constexpr const char* Footer =
    "Each record is told as PATH:LINE: error: SET: ITEM: MESSAGE, in the order of the paths; then come the "
    "numbers.\n"
    "\n"
    "Exit status: 0 no record, 1 records or refused sets, 2 a file could not be read or is no set document.";

/// Reads and checks the documents one after another; each is kept only until it was told.
class Checker {
public:
    Checker(const SchemaFile& schema, Console& console) :
        schema_(schema), console_(console), context_{console, schema, summary_, errors_} {}

    const CheckContext& getContext() const { return context_; }

    void vCheck(const std::vector<std::string>& paths, CheckReport& report) {
        Progress progress(stderr, paths.size());
        for (std::size_t done = 0; done < paths.size(); ++done) {
            progress.vShow(done);
            auto document = setDocumentCheck(paths[done], *schema_.schema);
            if (document.failure || !document.errors.getRecords().empty() || !document.assertions.empty())
                progress.vHide();
            vDocumentTake(std::move(document), report);
        }
    }

private:
    void vDocumentTake(SetDocument&& document, CheckReport& report) {
        summary_.vAdd(document);
        if (document.failure)
            console_.diagnostics.vFail(document.failure->subject, document.failure->reason);
        if (document.isRefused || !document.errors.getRecords().empty())
            console_.diagnostics.vFinding();
        report.vDocumentAdd(document);
        if (!document.errors.getRecords().empty())
            errors_.sets.insert(std::move(document.errors));
    }

    const SchemaFile& schema_;
    Console& console_;
    CheckSummary summary_;
    ifc::def::xml::XmlSetsErrors errors_;
    CheckContext context_;
};

} // namespace

void CheckCommand::vOptionsAdd(CLI::App& app) {
    app.add_option("FILE", schemaPath_, "The schema file")->required();
    app.add_option("PATH", setPaths_, "Set documents, and folders of *.xml to search; - is standard input")
        ->required();
    auto* format =
        app.add_option("--format", format_, "text: lines and numbers; report: the report text alone")
            ->check(CLI::IsMember({"text", "report"}))
            ->capture_default_str();
    app.add_flag("--json", jsonAsked_, "Write everything that was read, with records and assertions, as JSON")
        ->excludes(format);
    app.add_option("--report", reportPath_, "Write the report text to this file as well")->type_name("FILE");
    app.add_flag("--warnings", warningsAsked_,
                 "Add the assertion reports to the lines of the text, as PATH: warning: MESSAGE (FUNCTION)");
    app.footer(Footer);
}

std::unique_ptr<CheckReport> CheckCommand::pReport(const CheckContext& context) const {
    if (jsonAsked_)
        return pJsonReport(context);
    return format_ == "report" ? pFormattedReport(context) : pTextReport(context, warningsAsked_);
}

void CheckCommand::vRun(Console& console) {
    const auto begin = std::chrono::steady_clock::now();
    const auto schema = schemaFileRead(schemaPath_, console.diagnostics);
    if (!schema)
        return;
    Checker checker(*schema, console);
    const auto report = pReport(checker.getContext());
    checker.vCheck(setPathsCollect(setPaths_, console.diagnostics), *report);
    report->vEnd(std::chrono::steady_clock::now() - begin);
    if (reportPath_.empty())
        return;
    console.output.vFlush();
    const auto failure = sReportWrite(checker.getContext().errors, reportPath_);
    if (!failure.empty())
        console.diagnostics.vFail(reportPath_, failure);
}

} // namespace kiv::kivifc
