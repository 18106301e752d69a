/// The files that ship with us, and two configurations for them, by path.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace kiv::test {

/// All of them, ordered by path.
std::vector<std::filesystem::path> samplePaths();

/// The schema that the sets and configurations among them are made for.
std::filesystem::path sampleSchemaPath();

std::string sFileText(const std::filesystem::path& path);

/// The file's name with letters, digits and "_" only, as GoogleTest wants it.
std::string sTestName(const std::filesystem::path& path);

} // namespace kiv::test
