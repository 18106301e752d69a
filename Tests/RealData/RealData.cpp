#include "RealData/RealData.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace kiv::test {

namespace {

namespace fs = std::filesystem;

fs::path root() {
    const char* const folder = std::getenv("KIV_TEST_DATA");
    return folder ? fs::path(folder) : fs::path();
}

std::vector<fs::path> filesIn(const fs::path& folder, std::string_view extension) {
    std::vector<fs::path> paths;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() == extension)
            paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

} // namespace

void RealDataTest::SetUp() {
    if (root().empty())
        GTEST_SKIP() << "left out: KIV_TEST_DATA names no folder with real schemas and sets";
    ASSERT_TRUE(fs::is_directory(root() / "schema")) << "KIV_TEST_DATA is " << root();
}

fs::path RealDataTest::path(std::string_view name) {
    return root() / name;
}

std::string RealDataTest::sText(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream) << file;
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<fs::path> RealDataTest::schemaPaths() {
    return filesIn(root() / "schema", ".exp");
}

std::vector<fs::path> RealDataTest::setPaths(std::string_view folder) {
    return filesIn(root() / "sets" / folder, ".xml");
}

} // namespace kiv::test
