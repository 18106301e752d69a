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

/// Where the comment of a line begins, or the line ends.
struct LineEnd {
    std::size_t place = 0;
    /// A text begins and nothing closes it.
    bool isInText = false;
};

LineEnd lineEnd(std::string_view line) {
    char quote = '\0';
    for (std::size_t at = 0; at < line.size(); ++at) {
        const char byte = line[at];
        if (quote == '\0' && byte == '#')
            return {at, false};
        if (quote == '\0' && (byte == '"' || byte == '\''))
            quote = byte;
        else if (byte == quote)
            quote = '\0';
        else if (quote == '"' && byte == '\\')
            ++at;
    }
    return {line.size(), quote != '\0'};
}

/// A line without its comment, and without the blanks around it.
std::string_view withoutComment(std::string_view line) {
    return ascii::trimmed(line.substr(0, lineEnd(line).place), Blanks);
}

/// The first line with a text that nothing closes; 0 when there is none.
std::size_t openTextLine(const std::string& text) {
    std::istringstream stream(text);
    std::string line;
    for (std::size_t number = 1; std::getline(stream, line); ++number) {
        if (lineEnd(line).isInText)
            return number;
    }
    return 0;
}

/// Each list on the line on which it begins, with empty lines in place of its others: the reader of such
/// files takes some lists of several lines for something else.
class JoinedLists {
public:
    explicit JoinedLists(const std::string& text) {
        std::istringstream stream(text);
        std::string line;
        for (std::size_t number = 1; openLine_ == 0 || !isUnclosed_; ++number) {
            if (!std::getline(stream, line))
                break;
            if (openLine_ == 0)
                vLineTake(line, number);
            else
                vContinue(line);
        }
    }

    const std::string& getText() const { return text_; }
    /// The line of a list that nothing closes; 0 when all are closed.
    std::size_t getOpenLine() const { return openLine_; }

private:
    void vLineTake(const std::string& line, std::size_t number) {
        const auto sign = line.find('=');
        const bool isKey = sign != std::string::npos && !lineHead(line).key.empty();
        const auto value =
            isKey ? withoutComment(std::string_view(line).substr(sign + 1)) : std::string_view();
        if (!value.starts_with('[') || value.ends_with(']')) {
            text_ += line + '\n';
            return;
        }
        openLine_ = number;
        list_ = line.substr(0, sign + 1).append(value);
        lineEnds_ = "\n";
    }

    void vContinue(std::string_view line) {
        const auto rest = withoutComment(line);
        // There are no lists of lists, so it is a section.
        isUnclosed_ = rest.starts_with('[');
        list_.append(rest);
        lineEnds_ += '\n';
        if (isUnclosed_ || !rest.ends_with(']'))
            return;
        list_.pop_back();
        while (list_.ends_with(',') || list_.ends_with(' '))
            list_.pop_back();
        text_ += list_ + ']' + lineEnds_;
        openLine_ = 0;
    }

    std::string text_;
    std::string list_;
    std::string lineEnds_;
    std::size_t openLine_ = 0;
    bool isUnclosed_ = false;
};

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

    /// The first key that its section has already; its line is 0 when every key is there once.
    ProjectFailure repeated() const {
        std::set<std::pair<std::string_view, std::string_view>> known;
        for (const auto& each : keys_) {
            if (!known.emplace(each.section, each.key).second)
                return {fmt::format("\"{}\" is there twice", each.key), each.line};
        }
        return {};
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

ProjectFile projectOf(const std::string& path, const std::string& text, const KeyLines& lines) {
    std::istringstream stream(text);
    ProjectFile project{path, {}};
    for (const auto& item : CLI::ConfigTOML().from_config(stream)) {
        if (!isMark(item))
            project.entries.push_back(entryOf(item, lines));
    }
    return project;
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

std::optional<ProjectFile> projectFileRead(const std::string& path, ProjectFailure& failure) {
    const auto file = textFileRead(path);
    failure = {file.failure, 0};
    if (!failure.reason.empty())
        return std::nullopt;
    if (const auto line = openTextLine(file.text); line != 0) {
        failure = {"nothing closes this text", line};
        return std::nullopt;
    }
    const JoinedLists joined(file.text);
    if (joined.getOpenLine() != 0) {
        failure = {"nothing closes this list", joined.getOpenLine()};
        return std::nullopt;
    }
    const KeyLines lines(joined.getText());
    failure = lines.repeated();
    if (failure.line != 0)
        return std::nullopt;
    try {
        return projectOf(path, joined.getText(), lines);
    } catch (const CLI::Error& error) {
        failure.reason = error.what();
    }
    return std::nullopt;
}

} // namespace kiv::kivifc
