#include "kiv/KivIfcKit.h"

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace kiv::kit {

namespace {

namespace fs = std::filesystem;

TEST(KivIfcKit, IncludesEveryPublicHeaderOfTheKit) {
    const fs::path includes(KIV_INCLUDES);
    std::ifstream file(includes / "kiv/KivIfcKit.h");
    const std::string text(std::istreambuf_iterator<char>(file), {});
    std::size_t headers = 0;
    for (const auto& entry : fs::recursive_directory_iterator(includes / "kiv/Kit")) {
        if (entry.path().extension() != ".h")
            continue;
        ++headers;
        const auto name = entry.path().lexically_relative(includes).generic_string();
        EXPECT_NE(text.find("#include \"" + name + "\"\n"), std::string::npos) << name;
    }
    EXPECT_GT(headers, 10U);
}

} // namespace

} // namespace kiv::kit
