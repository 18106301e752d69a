#include "Support/TemporaryFolder.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <system_error>

namespace kiv::test {

TemporaryFolder::TemporaryFolder() {
    auto pattern = (std::filesystem::temp_directory_path() / "kiv-test-XXXXXX").native();
    if (!mkdtemp(pattern.data()))
        throw std::runtime_error("no temporary folder could be made");
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string TemporaryFolder::sPath(std::string_view name) const {
    return (path_ / name).native();
}

std::string TemporaryFolder::sWrite(std::string_view name, std::string_view text) const {
    const auto path = path_ / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file << text;
    if (!file.flush())
        throw std::runtime_error("could not be written: " + path.native());
    return path.native();
}

std::string sFileText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("could not be read: " + path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::vector<std::string> namesIn(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().native());
    std::ranges::sort(names);
    return names;
}

} // namespace kiv::test
