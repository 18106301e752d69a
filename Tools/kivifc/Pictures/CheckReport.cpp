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

/// Writes as it goes: each record names its set, so that all of them may be much longer than the documents.
class JsonReport final : public CheckReport {
public:
    explicit JsonReport(const CheckContext& context) :
        context_(context), writer_([this](std::string_view text) { vTextWrite(text); }) {
        writer_.vObjectBegin();
        vSchemaWrite();
        writer_.vKey("documents");
        writer_.vArrayBegin();
    }

    void vDocumentAdd(const SetDocument& document) override {
        if (document.pSet())
            vSetDocumentWrite(document, writer_);
    }

    // The time is left out, so that equal inputs make equal texts.
    void vEnd(std::chrono::nanoseconds) override {
        writer_.vArrayEnd();
        writer_.vObjects("failures", context_.console.diagnostics.getFailures(), [this](const auto& failure) {
            writer_.vMember("subject", failure.subject);
            writer_.vMember("reason", failure.reason);
            vBytesWrite("subject", failure.subject, writer_);
        });
        writer_.vKey("summary");
        vJsonWrite(context_.summary.getJson(), writer_);
        writer_.vObjectEnd();
        writer_.vEnd();
    }

private:
    void vTextWrite(std::string_view text) {
        context_.progress.vHide();
        context_.console.output.vWrite(text);
    }

    void vSchemaWrite() {
        const auto& schema = context_.schema;
        writer_.vKey("schema");
        writer_.vObjectBegin();
        writer_.vMember("path", schema.path);
        writer_.vMember("name", schema.schema->getName());
        writer_.vObjects("assertions", schema.assertions,
                         [this](const auto& record) { vAssertionMembersWrite(record, writer_); });
        vBytesWrite("path", schema.path, writer_);
        writer_.vObjectEnd();
    }

    CheckContext context_;
    JsonWriter writer_;
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
