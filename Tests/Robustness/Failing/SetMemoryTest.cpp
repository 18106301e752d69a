#include "MemoryFailures.h"
#include "Support/AssertCollector.h"
#include "Support/SampleStore.h"
#include "Support/StoreAnswers.h"
#include "kiv/Format/Ifc/Def/IfcDefErrors.h"
#include "kiv/Format/Ifc/Def/IfcDefExtraExportInfo.h"
#include "kiv/Format/Ifc/Def/SchemaContextAndPropertySetDefinitions.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"

#include <array>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <ostream>
#include <sstream>
#include <streambuf>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

namespace kiv::test {

namespace {

using namespace ifc::def;
namespace defs = ifc::def::xml;

std::vector<std::string> allSetPaths() {
    auto paths = sampleSetPaths();
    for (auto& path : sampleBrokenSetPaths())
        paths.push_back(std::move(path));
    return paths;
}

/// A stream with room of its own. One that allocates would make its own state of the lack of memory.
class RoomyStream : public std::ostream {
public:
    RoomyStream() : std::ostream(nullptr) { rdbuf(&buffer_); }
    std::string_view getText() const { return buffer_.getText(); }

private:
    class Buffer : public std::streambuf {
    public:
        Buffer() { setp(room_.data(), room_.data() + room_.size()); }
        std::string_view getText() const { return {pbase(), static_cast<std::size_t>(pptr() - pbase())}; }

    private:
        std::array<char, 1 << 16> room_{};
    };

    Buffer buffer_;
};

/// The set as a document.
std::string sExport(const defs::SetDef& set, defs::ExtraExportInfo* info) {
    kiv::xml::Document document;
    auto root = document.getNode().ElementNodeAppend(set.pXmlElementName());
    RoomyStream stream;
    set.exportDef(root, info).vWrite(stream, kiv::xml::WriteStyle::Indented);
    return std::string(stream.getText());
}

std::string sRecords(const defs::XmlSetErrors& errors) {
    defs::XmlSetsErrors all;
    all.sets.insert(errors);
    return all.getFormattedErrors();
}

struct SetReading {
    std::unique_ptr<std::istringstream> stream;
    std::unique_ptr<defs::SetDef> set;
    defs::XmlSetErrors errors;
};

void vSetRead(SetReading& reading) {
    reading.stream->clear();
    reading.stream->seekg(0);
    kiv::xml::File file(nullptr, kiv::xml::VerboseLevel::Quiet, kiv::xml::ValidateLevel::None);
    const auto root = file.parse(*reading.stream, "a document with a long name", nullptr);
    if (!root)
        return;
    defs::XmlSetErrors errors;
    reading.set = pSetFromElement(*root, errors);
    reading.errors = std::move(errors);
}

TEST(SetMemory, EveryKindOfSetIsRead) {
    for (const auto& path : allSetPaths()) {
        SCOPED_TRACE(path);
        const auto text = sSampleText(path);
        const Operation<SetReading> operation{
            .prepare =
                [&] {
                    return SetReading{std::make_unique<std::istringstream>(text), nullptr, {}};
                },
            .run = vSetRead,
            .answers =
                [](const SetReading& reading) {
                    return reading.set ? sExport(*reading.set, nullptr) + sRecords(reading.errors) : "none";
                }};
        EXPECT_GT(failuresOf(operation), 3U);
    }
}

/// The sum of what is counted for the text of each document that is one.
std::size_t sumOverSets(const std::function<std::size_t(const std::string& text)>& count) {
    std::size_t sum = 0;
    for (const auto& path : allSetPaths()) {
        if (path == "BrokenSets/Broken_NotXml.xml")
            continue;
        SCOPED_TRACE(path);
        sum += count(sSampleText(path));
    }
    return sum;
}

struct SetChecking {
    std::unique_ptr<defs::SetDef> set;
    std::string records;
};

TEST(SetMemory, EveryKindOfSetIsChecked) {
    const SampleStore store;
    const auto failures = sumOverSets([&](const std::string& text) {
        const Operation<SetChecking> operation{
            .prepare =
                [&] {
                    return SetChecking{pSetFromText(text), {}};
                },
            .run =
                [&](SetChecking& checking) {
                    defs::XmlSetErrors errors;
                    const bool isFine = checking.set->checkForErrors(store.schema(), errors);
                    checking.records = (isFine ? "fine\n" : "refused\n") + sRecords(errors);
                },
            .answers =
                [](const SetChecking& checking) {
                    return checking.records + sExport(*checking.set, nullptr);
                }};
        return failuresOf(operation);
    });
    EXPECT_GT(failures, 100U);
}

struct Adding {
    SchemaPropertySetDefinitions sets;
    std::unique_ptr<defs::SetDef> set;
};

/// New ones and those of a name that is there, restricted and unrestricted ones, refused ones.
TEST(SetMemory, EveryKindOfSetIsAdded) {
    const SampleStore store;
    const auto& schema = store.schema();
    const auto failures = sumOverSets([&](const std::string& text) {
        const Operation<Adding> operation{
            .prepare =
                [&] {
                    return Adding{setsFromPaths(schema, {"Sets/Pset_BldDoor.xml", "Sets/Qto_BldStair.xml"}),
                                  pSetFromText(text)};
                },
            .run =
                [&](Adding& adding) {
                    defs::XmlSetErrors errors;
                    adding.sets.xmlSetAdd(schema, std::move(adding.set), errors);
                },
            .answers =
                [&](const Adding& adding) {
                    return sCollectionAnswers(schema, adding.sets) +
                           (adding.set ? "with the caller: " + adding.set->getName() : "taken");
                }};
        // One of a short name that is there already takes no memory at all.
        return failuresOf(operation);
    });
    EXPECT_GT(failures, 100U);
}

struct Registering {
    SchemaPropertySetDefinitionsContext context;
    SchemaPropertySetDefinitions sets;
    std::unique_ptr<SampleStore> store;
};

TEST(SetMemory, CollectionsAreRegistered) {
    for (const std::string name : {"a context that is not there yet", "a host with a long name"}) {
        SCOPED_TRACE(name);
        const Operation<Registering> operation{
            .prepare =
                [&] {
                    auto store = std::make_unique<SampleStore>();
                    auto sets = setsFromPaths(store->schema(), {"Sets/Pset_BldDoor.xml"});
                    return Registering{{name, false}, std::move(sets), std::move(store)};
                },
            .run =
                [](Registering& registering) {
                    SampleStore::registry().addPropertySets(std::move(registering.context),
                                                            std::move(registering.sets));
                },
            .answers =
                [](const Registering& registering) {
                    return sAnswers(registering.store->schema()) +
                           " left: " + sCollectionAnswers(registering.store->schema(), registering.sets);
                }};
        EXPECT_GT(failuresOf(operation), 0U);
    }
}

struct Exporting {
    std::string text;
};

TEST(SetMemory, EveryKindOfSetIsExported) {
    const SampleStore store;
    defs::ExtraExportInfo info;
    info.schemaForBaseTypes = &store.schema();
    for (const auto& path : sampleSetPaths()) {
        SCOPED_TRACE(path);
        const auto set = pSetFromText(sSampleText(path));
        const Operation<Exporting> operation{
            .prepare = [] { return Exporting(); },
            .run = [&](Exporting& exporting) { exporting.text = sExport(*set, &info); },
            .answers = [](const Exporting& exporting) { return exporting.text; }};
        EXPECT_GT(failuresOf(operation), 5U);
    }
}

TEST(SetMemory, NewGuidsAreMade) {
    const auto set = pSetFromText(sSampleText("BrokenSets/Broken_Quantities.xml"));
    defs::ExtraExportInfo info;
    info.generateGuids = true;
    std::size_t writtenGuids = 0;
    info.hook = [&](const defs::Def&, kiv::xml::Element&) { ++writtenGuids; };
    const Operation<Exporting> operation{.prepare = [] { return Exporting(); },
                                         .run = [&](Exporting&) { sExport(*set, &info); },
                                         .answers = [&](const Exporting&) { return sExport(*set, nullptr); }};
    EXPECT_GT(failuresOf(operation), 5U);
    EXPECT_GT(writtenGuids, 0U);
}

struct Reporting {
    std::string path;
};

TEST(SetMemory, ReportThatCannotBeMadeLeavesTheOldOne) {
    defs::XmlSetErrors errors;
    errors.vErrorAdd(defs::ErrorKind::FatalError, "an item of some length that takes memory",
                     "a message of some length that takes memory", 1);
    defs::XmlSetsErrors all;
    all.sets.insert(errors);
    auto path = testing::TempDir() + "kiv-report-XXXXXX";
    const int file = mkstemp(path.data());
    ASSERT_NE(file, -1);
    close(file);
    const Operation<Reporting> operation{
        .prepare =
            [&] {
                std::ofstream(path) << "the old report";
                return Reporting{path};
            },
        .run = [&](Reporting& reporting) { all.vDump(reporting.path.c_str()); },
        .answers =
            [](const Reporting& reporting) {
                std::ifstream stream(reporting.path);
                return std::string(std::istreambuf_iterator<char>(stream), {});
            }};
    EXPECT_GT(failuresOf(operation), 0U);
    std::filesystem::remove(path);
}

struct Configuring {
    std::unique_ptr<SchemaPset> schema;
    std::unique_ptr<std::istringstream> stream;
};

std::string sConfiguration(const Configuring& configuring) {
    const auto* const config = configuring.schema->pXmlSchemaConfig();
    return sAnswers(*configuring.schema) + config->getUosElement().getName() + ' ' +
           config->getNamespace().getAlias() + ' ' + config->getSchema().getTargetNamespace() + ' ' +
           std::to_string(config->getAttributes().size() + config->getAttributesInverse().size());
}

TEST(SetMemory, ConfigurationIsReadOrTheFormerOneStays) {
    const AssertCollector reports;
    const auto text = sSampleText("Building.exp");
    const Operation<Configuring> operation{
        .prepare =
            [&] {
                auto schema = schemaPsetFromWholeText(text);
                std::istringstream former(
                    "<c id='BUILDING1'><cnf:uosElement name='former'/><cnf:entity select='BldRoot'>"
                    "<cnf:attribute select='Name' exp-attribute='attribute-tag'/></cnf:entity></c>");
                schema->vXmlSchemaConfigInit(former);
                return Configuring{std::move(schema), std::make_unique<std::istringstream>(SampleConfig)};
            },
        .run =
            [](Configuring& configuring) {
                configuring.stream->clear();
                configuring.stream->seekg(0);
                configuring.schema->vXmlSchemaConfigInit(*configuring.stream);
            },
        .answers = sConfiguration};
    EXPECT_GT(failuresOf(operation), 10U);
    EXPECT_EQ(reports.getMessages(), std::vector<std::string>());
}

} // namespace

} // namespace kiv::test
