#include "kivifc/Pictures/CheckReport.h"

#include "kivifc/Json/BytesJson.h"
#include "kivifc/Json/SetJson.h"
#include "kivifc/Pictures/TextTable.h"
#include "kivifc/Program/OneLine.h"
#include "kivifc/Program/OutputStream.h"

#include <fmt/format.h>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

namespace kiv::kivifc {

namespace {

using ifc::def::xml::ErrorKind;
using ifc::def::xml::ErrorRecord;

std::string_view kindText(ErrorKind kind) {
    return kind == ErrorKind::FatalError ? "fatal error" : "error";
}

class TextReport final : public CheckReport {
public:
    TextReport(const CheckContext& context, bool showsWarnings) :
        context_(context), showsWarnings_(showsWarnings) {}

    void vDocumentAdd(const SetDocument& document) override {
        const auto& records = document.errors.getRecords();
        auto assertion = document.assertions.begin();
        for (std::size_t before = 0; before <= records.size(); ++before) {
            for (; assertion != document.assertions.end() && assertion->recordsBefore == before; ++assertion)
                vWarningWrite(document, assertion->record);
            if (before < records.size())
                vRecordWrite(document, records[before]);
        }
    }

    void vEnd(std::chrono::nanoseconds time) override {
        auto& output = context_.console.output;
        output.vWrite(sTableLine("schema", sSchema()));
        output.vWrite(context_.summary.sText());
        output.vWrite(sTableLine("time", sMilliseconds(time)));
    }

private:
    void vRecordWrite(const SetDocument& document, const ErrorRecord& record) {
        const auto place = record.line == 0 ? std::string() : fmt::format("{}:", record.line);
        context_.console.output.vWrite(fmt::format(
            "{}:{} {}: {}: {}: {}\n", sOneLine(document.path), place, kindText(record.kind),
            sOneLine(document.errors.getSetName()), sOneLine(record.item), sOneLine(record.message)));
    }

    void vWarningWrite(const SetDocument& document, const kit::Assertion& record) {
        if (showsWarnings_)
            context_.console.output.vWrite(fmt::format("{}: warning: {} ({})\n", sOneLine(document.path),
                                                       sOneLine(record.message), sOneLine(record.function)));
    }

    std::string sSchema() const {
        auto name = sOneLine(context_.schema.schema->getName());
        const auto reports = context_.schema.assertions.size();
        if (reports == 0)
            return name;
        return fmt::format("{} (reports made while it was read: {})", name, reports);
    }

    CheckContext context_;
    bool showsWarnings_;
};

class FormattedReport final : public CheckReport {
public:
    explicit FormattedReport(const CheckContext& context) : context_(context) {}

    void vDocumentAdd(const SetDocument&) override {}

    void vEnd(std::chrono::nanoseconds) override {
        OutputBuffer buffer(context_.console.output);
        std::ostream stream(&buffer);
        context_.errors.vFormattedErrorsWrite(stream);
    }

private:
    CheckContext context_;
};

class JsonReport final : public CheckReport {
public:
    explicit JsonReport(const CheckContext& context) : context_(context) {}

    void vDocumentAdd(const SetDocument& document) override {
        if (document.pSet())
            documents_.push_back(setDocumentJson(document));
    }

    // The time is left out, so that equal inputs make equal texts.
    void vEnd(std::chrono::nanoseconds) override {
        const auto& schema = context_.schema;
        Json failures = Json::array();
        for (const auto& failure : context_.console.diagnostics.getFailures())
            failures.push_back(
                withBytes({{"subject", failure.subject}, {"reason", failure.reason}}, "subject"));
        const Json json{{"schema", withBytes({{"path", schema.path},
                                              {"name", schema.schema->getName()},
                                              {"assertions", assertionsJson(schema.assertions)}},
                                             "path")},
                        {"documents", std::move(documents_)},
                        {"failures", std::move(failures)},
                        {"summary", context_.summary.getJson()}};
        vJsonWrite(json, context_.console.output);
    }

private:
    CheckContext context_;
    Json documents_ = Json::array();
};

} // namespace

CheckReport::~CheckReport() = default;

std::unique_ptr<CheckReport> pTextReport(const CheckContext& context, bool showsWarnings) {
    return std::make_unique<TextReport>(context, showsWarnings);
}

std::unique_ptr<CheckReport> pFormattedReport(const CheckContext& context) {
    return std::make_unique<FormattedReport>(context);
}

std::unique_ptr<CheckReport> pJsonReport(const CheckContext& context) {
    return std::make_unique<JsonReport>(context);
}

} // namespace kiv::kivifc
