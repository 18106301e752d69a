#include "kivifc/Documents/ProjectFile.h"

#include "kivifc/Documents/SetDocument.h"
#include "kivifc/Documents/TextFile.h"
#include "kivifc/Program/AsciiText.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <fmt/format.h>
#include <set>
#include <sstream>
#include <system_error>
#include <utility>

namespace kiv::kivifc {

namespace {

namespace fs = std::filesystem;

constexpr const char* FileName = "kivifc.toml";
constexpr std::string_view Blanks = " \t\r";

/// The section or key that a line begins with; both empty for any other line.
struct LineHead {
    std::string_view section;
    std::string_view key;
};

LineHead lineHead(std::string_view line) {
    line = ascii::trimmed(line, Blanks);
    if (line.empty() || line.front() == '#')
        return {};
    if (line.front() == '[')
        return {ascii::trimmed(line.substr(0, line.find(']')), "[] \t"), {}};
    const auto end = line.find('=');
    return {{}, end == std::string_view::npos ? line : ascii::trimmed(line.substr(0, end), " \t\"'")};
}

/// Where keys are: the reader of such files keeps no lines.
class KeyLines {
public:
    explicit KeyLines(const std::string& text) {
        std::istringstream stream(text);
        std::string line;
        std::string section;
        for (std::size_t number = 1; std::getline(stream, line); ++number) {
            const auto head = lineHead(line);
            if (!head.section.empty())
                section = head.section;
            if (!head.key.empty())
                keys_.push_back({section, std::string(head.key), number});
        }
    }

    /// 0 when there is no such key.
    std::size_t line(std::string_view section, std::string_view key) const {
        const auto found = std::ranges::find_if(
            keys_, [&](const Key& each) { return each.section == section && each.key == key; });
        return found == keys_.end() ? 0 : found->line;
    }

private:
    struct Key {
        std::string section;
        std::string key;
        std::size_t line;
    };

    std::vector<Key> keys_;
};

ProjectEntry entryOf(const CLI::ConfigItem& item, const KeyLines& lines) {
    std::string section;
    for (const auto& parent : item.parents)
        section.append(section.empty() ? "" : ".").append(parent);
    const auto line = lines.line(section, item.name);
    return {section, item.name, item.inputs, line};
}

/// The reader marks where sections begin and end by items of these names.
bool isMark(const CLI::ConfigItem& item) {
    return item.name == "++" || item.name == "--";
}

ProjectFile projectOf(const std::string& path, const std::string& text) {
    const KeyLines lines(text);
    std::istringstream stream(text);
    ProjectFile project{path, {}};
    for (const auto& item : CLI::ConfigTOML().from_config(stream)) {
        if (!isMark(item))
            project.entries.push_back(entryOf(item, lines));
    }
    return project;
}

/// What a key has twice, "PATH:LINE: ..."; empty when every key is there once.
std::string sRepeated(const ProjectFile& project) {
    std::set<std::pair<std::string_view, std::string_view>> keys;
    for (const auto& entry : project.entries) {
        if (!keys.emplace(entry.section, entry.key).second)
            return fmt::format("\"{}\" is there twice", entry.key);
    }
    return {};
}

} // namespace

std::string ProjectFile::sPath(const std::string& value) const {
    if (value == StandardInputPath || fs::path(value).is_absolute())
        return value;
    return (fs::path(path).parent_path() / value).native();
}

std::string sProjectFileFind() {
    std::error_code error;
    auto folder = fs::current_path(error);
    // Paths are shown, so they stay as short as they are from here.
    fs::path way;
    while (!error) {
        if (fs::exists(way / FileName, error))
            return (way / FileName).native();
        if (fs::exists(way / ".git", error) || folder == folder.root_path())
            return {};
        folder = folder.parent_path();
        way /= "..";
    }
    return {};
}

std::optional<ProjectFile> projectFileRead(const std::string& path, std::string& failure) {
    const auto file = textFileRead(path);
    failure = file.failure;
    if (!failure.empty())
        return std::nullopt;
    try {
        auto project = projectOf(path, file.text);
        failure = sRepeated(project);
        if (failure.empty())
            return project;
    } catch (const CLI::Error& error) {
        failure = error.what();
    }
    return std::nullopt;
}

} // namespace kiv::kivifc
