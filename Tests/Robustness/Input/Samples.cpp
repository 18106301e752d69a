#include "Robustness/Input/Samples.h"

#include <algorithm>

namespace kiv::test {

namespace fs = std::filesystem;

std::vector<fs::path> samplePaths() {
    std::vector<fs::path> paths;
    for (const auto* folder : {KIV_SAMPLES, KIV_CONFIGURATIONS})
        for (const auto& entry : fs::recursive_directory_iterator(folder))
            if (entry.path().extension() == ".xml" || entry.path().extension() == ".exp")
                paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::string sTestName(const fs::path& path) {
    auto name = path.filename().string();
    std::replace(name.begin(), name.end(), '.', '_');
    return name;
}

} // namespace kiv::test
