/// @file
/// A folder of its own for one test, gone with everything in it when the test ends.
///
///     const TemporaryFolder folder;
///     const auto path = folder.sWrite("empty.exp", "");
///
/// Errors: what cannot be made is std::runtime_error, which fails the test.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    /// The path of a file in it.
    std::string sPath(std::string_view name) const;

    /// Writes a file, with the folders that its name asks for, and gives its path.
    std::string sWrite(std::string_view name, std::string_view text) const;

private:
    std::filesystem::path path_;
};

/// What a file holds, byte by byte.
std::string sFileText(const std::string& path);

/// What a folder holds, sorted by the bytes of the names.
std::vector<std::string> namesIn(const std::string& folder);

} // namespace kiv::test
