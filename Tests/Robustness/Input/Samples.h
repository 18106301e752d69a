/// The files that ship with us, and two configurations for them, by path.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace kiv::test {

/// All of them, ordered by path.
std::vector<std::filesystem::path> samplePaths();

/// The file's name with letters, digits and "_" only, as GoogleTest wants it.
std::string sTestName(const std::filesystem::path& path);

} // namespace kiv::test
