#include "BenchData.h"

#include "Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "Host/Xml/KivXml.h"

#include <benchmark/benchmark.h>
#include <expat.h>

#include <memory>
#include <sstream>
#include <string>

namespace kiv::bench {

namespace {

using ifc::def::xml::XmlSetErrors;

/// Yardstick of the set benchmarks: what the XML parser alone costs, telling nobody what it finds.
void ExpatYardstick(benchmark::State& state) {
    for (auto _ : state) {
        for (const auto& text : setTexts()) {
            const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(
                XML_ParserCreate(nullptr), &XML_ParserFree);
            if (XML_Parse(parser.get(), text.data(), static_cast<int>(text.size()), XML_TRUE) !=
                XML_STATUS_OK)
                state.SkipWithError("a document is not well-formed");
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(setBytes()));
}
BENCHMARK(ExpatYardstick)->Unit(benchmark::kMillisecond);

std::optional<xml::Element> parse(xml::File& file, const std::string& text) {
    std::istringstream stream(text);
    return file.parse(stream, "", nullptr);
}

xml::File newFile() {
    return {nullptr, xml::VerboseLevel::Quiet, xml::ValidateLevel::None};
}

void ReadDocuments(benchmark::State& state) {
    for (auto _ : state) {
        for (const auto& text : setTexts()) {
            auto file = newFile();
            if (!parse(file, text))
                state.SkipWithError("a document is not well-formed");
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(setBytes()));
}
BENCHMARK(ReadDocuments)->Unit(benchmark::kMillisecond);

std::unique_ptr<ifc::def::xml::SetDef> readSet(const xml::Element& root, XmlSetErrors& errors) {
    if (root.boNodeNameIs("QtoSetDef"))
        return std::make_unique<ifc::def::qto::QuantitySetDef>(root, errors);
    return std::make_unique<ifc::def::pset::PropertySetDef>(root, errors);
}

void ReadAndCheckSets(benchmark::State& state) {
    const auto schema = loadSchema();
    for (auto _ : state) {
        for (const auto& text : setTexts()) {
            auto file = newFile();
            const auto root = parse(file, text);
            XmlSetErrors errors;
            const auto set = readSet(*root, errors);
            benchmark::DoNotOptimize(set->checkForErrors(*schema, errors));
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(setBytes()));
}
BENCHMARK(ReadAndCheckSets)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace kiv::bench
