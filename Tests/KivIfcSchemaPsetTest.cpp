#include "kiv/KivIfcSchemaPset.h"

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace kiv {

namespace {

namespace fs = std::filesystem;

std::string sText(const fs::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// What every header has to have included before, and the headers of the kit, which has one of its own.
bool isElsewhere(const std::string& name) {
    return name == "kiv/Base/Export.h" || name == "kiv/KivIfcSchemaPset.h" || name == "kiv/KivIfcKit.h" ||
           name.starts_with("kiv/Kit/");
}

TEST(KivIfcSchemaPset, IncludesEveryPublicHeaderOfTheLibrary) {
    const fs::path includes(KIV_INCLUDES);
    const auto text = sText(includes / "kiv/KivIfcSchemaPset.h");
    std::size_t headers = 0;
    for (const auto& entry : fs::recursive_directory_iterator(includes / "kiv")) {
        const auto name = entry.path().lexically_relative(includes).generic_string();
        if (entry.path().extension() != ".h" || isElsewhere(name))
            continue;
        ++headers;
        EXPECT_NE(text.find("#include \"" + name + "\"\n"), std::string::npos) << name;
    }
    EXPECT_GT(headers, 40U);
}

} // namespace

} // namespace kiv
