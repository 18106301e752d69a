// What holds for all headers, whatever is in them.
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace {

namespace fs = std::filesystem;

std::string sText(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The documentation generator reads the comment of a file only when it is marked as such.
TEST(Headers, BeginWithTheCommentOfTheFile) {
    std::size_t headers = 0;
    for (const auto* const folder : {KIV_PROJECT "/Source", KIV_PROJECT "/Tools"}) {
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            if (entry.path().extension() != ".h")
                continue;
            ++headers;
            EXPECT_TRUE(sText(entry.path()).starts_with("/// @file\n")) << entry.path();
        }
    }
    EXPECT_GT(headers, 200U);
}

} // namespace
