/// The real schemas and set documents that KIV_TEST_DATA names.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

/// Base of the tests that need the data; without it they are skipped, and say why.
class RealDataTest : public ::testing::Test {
protected:
    void SetUp() override;

    /// The path of a file or folder below the folder.
    static std::filesystem::path path(std::string_view name);

    /// The text of a file.
    static std::string sText(const std::filesystem::path& file);

    /// The schemas, ordered by path.
    static std::vector<std::filesystem::path> schemaPaths();

    /// The set documents in a folder below "sets", ordered by path.
    static std::vector<std::filesystem::path> setPaths(std::string_view folder);
};

} // namespace kiv::test
