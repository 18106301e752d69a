#include "Input.h"

#include "Require.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace kiv::bench {

namespace {

namespace fs = std::filesystem;

std::string fileRead(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    vRequire(file.is_open(), path.string() + " cannot be read");
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> documentsRead(const std::vector<fs::path>& folders) {
    std::vector<fs::path> paths;
    for (const auto& folder : folders) {
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (entry.path().extension() == ".xml")
                paths.push_back(entry.path());
        }
    }
    std::sort(paths.begin(), paths.end());
    std::vector<std::string> texts;
    std::transform(paths.begin(), paths.end(), std::back_inserter(texts), fileRead);
    return texts;
}

} // namespace

std::size_t Input::setBytes() const {
    std::size_t bytes = 0;
    for (const auto& text : setTexts)
        bytes += text.size();
    return bytes;
}

Input inputRead() {
    const char* const real = std::getenv("KIV_TEST_DATA");
    if (!real)
        return sampleRead(24, 50);
    const fs::path root = real;
    return {"IFC4_ADD2 and its sets", fileRead(root / "schema/IFC4_ADD2.exp"),
            documentsRead({root / "sets/IFC4", root / "sets/IFC4_QTO"})};
}

Input sampleRead(std::size_t schemaCopies, std::size_t setCopies) {
    const fs::path root = KIV_SAMPLE_DATA;
    const Input sample{"", fileRead(root / "Building.exp"), documentsRead({root / "Sets"})};
    const InputCopies copies(sample, 'S');
    return {std::to_string(schemaCopies) + " copies of the sample schema, " + std::to_string(setCopies) +
                " of its sets",
            copies.schema.text(schemaCopies), copies.sets.texts(setCopies, schemaCopies)};
}

} // namespace kiv::bench
