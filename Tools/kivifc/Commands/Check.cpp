#include "kivifc/Commands/CommandTable.h"
#include "kivifc/Documents/ReportFile.h"
#include "kivifc/Documents/SetPaths.h"
#include "kivifc/Documents/ShownFailure.h"
#include "kivifc/Pictures/CheckReport.h"
#include "kivifc/Program/Progress.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// `kivifc check`: set documents against a schema, with what is wrong with them.
namespace kiv::kivifc {

namespace {

constexpr const char* Footer =
    "Each record is a line PATH:LINE: error: SET: ITEM: MESSAGE, in the order of the paths; the numbers\n"
    "follow.\n"
    "\n"
    "Exit status: 0 no record, 1 records or refused sets, 2 a file could not be read or is no set document.";

/// Reads and checks the documents one after another; each is kept only until it is reported.
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
            console_.diagnostics.vFail(shownFailure(document.path, *document.failure));
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

class CheckCommand final : public Command {
public:
    void vOptionsAdd(CLI::App& app) override;
    void vRun(Console& console) override;

private:
    std::unique_ptr<CheckReport> pReport(const CheckContext& context) const;

    std::string schemaPath_;
    std::vector<std::string> setPaths_;
    std::string format_ = "text";
    std::string reportPath_;
    bool jsonAsked_ = false;
    bool warningsAsked_ = false;
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

std::unique_ptr<Command> pCheckCommand() {
    return std::make_unique<CheckCommand>();
}

} // namespace kiv::kivifc
