#include "BenchData.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

namespace kiv::bench {

namespace {

namespace fs = std::filesystem;

struct Places {
    fs::path schema;
    std::vector<fs::path> sets;
};

Places places() {
    if (const char* const real = std::getenv("KIV_TEST_DATA")) {
        const fs::path root = real;
        return {root / "schema/IFC4_ADD2.exp", {root / "sets/IFC4", root / "sets/IFC4_QTO"}};
    }
    const fs::path root = KIV_SAMPLE_DATA;
    return {root / "Building.exp", {root / "Sets"}};
}

std::string readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<fs::path> documentsIn(const std::vector<fs::path>& folders) {
    std::vector<fs::path> documents;
    for (const auto& folder : folders) {
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (entry.path().extension() == ".xml")
                documents.push_back(entry.path());
        }
    }
    std::sort(documents.begin(), documents.end());
    return documents;
}

std::vector<std::string> readSets() {
    std::vector<std::string> texts;
    for (const auto& document : documentsIn(places().sets))
        texts.push_back(readFile(document));
    return texts;
}

} // namespace

const std::string& schemaText() {
    static const std::string text = readFile(places().schema);
    return text;
}

const std::vector<std::string>& setTexts() {
    static const std::vector<std::string> texts = readSets();
    return texts;
}

std::size_t setBytes() {
    std::size_t bytes = 0;
    for (const auto& text : setTexts())
        bytes += text.size();
    return bytes;
}

std::unique_ptr<ifc::def::schema::Schema> loadSchema() {
    std::istringstream stream(schemaText());
    auto* const schema = ifc::def::schema::pStepStreamRead(
        stream, [](std::istream& in, const std::string& header, std::size_t pos) {
            return std::make_unique<ifc::def::schema::Schema>(in, header, pos).release();
        });
    if (!schema) {
        std::cerr << "no schema to measure with at " << places().schema << '\n';
        std::exit(2);
    }
    return std::unique_ptr<ifc::def::schema::Schema>(schema);
}

} // namespace kiv::bench
