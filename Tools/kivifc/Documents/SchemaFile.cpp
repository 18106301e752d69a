#include "kivifc/Documents/SchemaFile.h"

#include "kiv/Base/Exception.h"
#include "kivifc/Documents/ReadingLimits.h"
#include "kivifc/Documents/TextFile.h"
#include "kivifc/Program/AsciiText.h"

#include <fmt/format.h>
#include <new>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace kiv::kivifc {

namespace {

using ifc::def::SchemaPset;
using Schemas = std::vector<std::unique_ptr<SchemaPset>>;

/// What a file held: its schemas, and the reports that the last of them raised.
struct Reading {
    bool isEmpty = false;
    Schemas schemas;
    std::vector<assert::AssertRecord> assertions;
};

Reading textRead(std::string&& text) {
    Reading reading;
    reading.isEmpty = text.empty();
    std::istringstream stream(std::move(text));
    assert::CollectingSink sink;
    const assert::ScopedSink installed(sink);
    ifc::def::BudgetMeter meter(readingBudget());
    ifc::def::schema::pStepStreamRead(
        stream,
        [&](std::istream& in, const std::string& header, std::size_t pos) {
            sink.vClear();
            return reading.schemas.emplace_back(std::make_unique<SchemaPset>(in, header, pos, meter)).get();
        },
        meter);
    reading.assertions = sink.takeRecords();
    return reading;
}

/// Reads the file; absent, with the reason in `failure`, when that cannot be done.
std::optional<Reading> pathRead(const std::string& path, std::string& failure) {
    try {
        auto file = textFileRead(path);
        if (file.failure.empty())
            return textRead(std::move(file.text));
        failure = std::move(file.failure);
    } catch (const std::bad_alloc&) {
        failure = "not enough memory";
    } catch (const std::out_of_range& error) {
        failure = fmt::format("a literal of a WHERE rule is out of range: {}", error.what());
    } catch (const ifc::def::BudgetExceeded& exceeded) {
        failure = sLimitFailure(exceeded);
    } catch (const kiv::exception&) {
        // The text is in memory, so no stream can fail: what is left is a list that its end leaves open.
        failure = "the schema ends in the middle of a list of names";
    } catch (const std::exception& error) {
        failure = error.what();
    }
    return std::nullopt;
}

/// Why the file is no schema file; empty when the last of its schemas is one.
std::string sReadingFailure(const Reading& reading) {
    if (reading.isEmpty)
        return "not a schema: the file is empty";
    if (reading.schemas.empty())
        return "not a schema: no line with SCHEMA";
    // Exchange files have a line FILE_SCHEMA(('IFC4')); and are no schemas.
    const std::string_view name = reading.schemas.back()->getName();
    if (name.empty() || !ascii::isLetter(name.front()))
        return "not a schema: the line with SCHEMA gives no name";
    return {};
}

std::string sSeveralSchemas(const Schemas& schemas) {
    std::string names;
    for (const auto& schema : schemas)
        names.append(names.empty() ? "" : ", ").append(schema->getName());
    return fmt::format("holds {} schemas ({}); the last one is used", schemas.size(), names);
}

} // namespace

std::optional<SchemaFile> schemaFileRead(const std::string& path, Diagnostics& diagnostics) {
    const auto begin = std::chrono::steady_clock::now();
    std::string failure;
    auto reading = pathRead(path, failure);
    if (reading)
        failure = sReadingFailure(*reading);
    if (!failure.empty()) {
        diagnostics.vFail(path, failure);
        return std::nullopt;
    }
    if (reading->schemas.size() > 1)
        diagnostics.vNote(path, sSeveralSchemas(reading->schemas));
    return SchemaFile{path, std::move(reading->schemas.back()), std::move(reading->assertions),
                      std::chrono::steady_clock::now() - begin};
}

} // namespace kiv::kivifc
