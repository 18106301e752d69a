#include "kiv/Kit/Documents/SchemaFile.h"

#include "Kit/Documents/Reading.h"
#include "Kit/Documents/ThreadSink.h"
#include "Kit/Documents/ViewStream.h"
#include "Kit/Text/AsciiText.h"
#include "Kit/Text/MeteredRoom.h"

#include <exception>
#include <istream>
#include <string_view>
#include <utility>

namespace kiv::kit {

namespace {

using ifc::def::SchemaPset;

/// Whether the name is that of a schema. Exchange files have a line FILE_SCHEMA(('IFC4')); and are no
/// schemas.
bool isSchemaName(std::string_view name) {
    return !name.empty() && isLetter(name.front());
}

void vSchemasRead(SchemaFile& file, ifc::def::BudgetMeter& meter) {
    ViewStream stream(file.text);
    ThreadSink sink([&](const assert::AssertInfo& info) {
        vRoomForOne(file.assertions, &meter);
        file.assertions.push_back(file.assertionTexts.kept(info, meter));
    });
    const assert::ScopedSink installed(sink);
    // All are read with one account, and are there until it closes.
    std::vector<std::unique_ptr<SchemaPset>> schemas;
    ifc::def::schema::pStepStreamRead(
        stream,
        [&](std::istream& in, const std::string& header, std::size_t pos) {
            file.assertions.clear();
            file.assertionTexts.vClear(meter);
            return schemas.emplace_back(std::make_unique<SchemaPset>(in, header, pos, meter)).get();
        },
        meter);
    sink.vCheck();
    for (const auto& schema : schemas)
        file.names.emplace_back(schema->getName());
    if (!schemas.empty())
        file.schema = std::move(schemas.back());
}

std::optional<ReadFailure> schemaFailure(const SchemaFile& file) {
    if (!file.schema)
        return ReadFailure{FailureKind::NotASchema, "not a schema: no line with SCHEMA", {}, {}};
    if (!isSchemaName(file.schema->getName()))
        return ReadFailure{
            FailureKind::NotASchema, "not a schema: the line with SCHEMA gives no name", {}, {}};
    return std::nullopt;
}

void vRead(SchemaFile& file, TextFile text, ifc::def::BudgetMeter& meter) {
    file.text = std::move(text.text);
    if (!text.failure.empty()) {
        file.failure = {FailureKind::Unreadable, std::move(text.failure), {}, {}};
        return;
    }
    if (file.text.empty()) {
        file.failure = {FailureKind::Empty, "not a schema: the file is empty", {}, {}};
        return;
    }
    vSchemasRead(file, meter);
    file.failure = schemaFailure(file);
}

/// `text` gives the text of the file.
template <class Text>
SchemaFile fileRead(std::string path, const ReadOptions& options, Text text) {
    SchemaFile file;
    file.path = std::move(path);
    try {
        ifc::def::BudgetMeter meter(options.budget);
        vRead(file, text(meter), meter);
    } catch (const std::exception&) {
        file.failure = caughtFailure();
    }
    if (file.failure) {
        file.schema = nullptr;
        file.assertions.clear();
        file.assertionTexts = {};
    }
    return file;
}

} // namespace

SchemaFile schemaFileRead(const std::string& path, const ReadOptions& options) {
    return fileRead(path, options, [&](ifc::def::BudgetMeter& meter) {
        return textFileRead(path, meter.getBudget().maxInput, &meter);
    });
}

SchemaFile schemaTextRead(std::string text, std::string path, const ReadOptions& options) {
    return fileRead(std::move(path), options,
                    [&](ifc::def::BudgetMeter& meter) { return textTake(std::move(text), meter); });
}

} // namespace kiv::kit
