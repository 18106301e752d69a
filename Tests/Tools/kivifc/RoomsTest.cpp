// The rooms of kivifc build on each other in one direction, and on public headers of the library only.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <vector>

namespace kiv::kivifc::test {

namespace {

namespace fs = std::filesystem;

/// From the lowest floor up, as the table of floors in Docs/Architecture.md has them. Each may include itself
/// and those before it.
std::vector<std::string> roomsOfTable() {
    std::ifstream stream(KIVIFC_FLOORS);
    const std::regex row(R"(\| *\d+ *\|.*`Tools/kivifc/(\w+)/\*`.*)");
    std::vector<std::string> rooms;
    for (std::string line; std::getline(stream, line);) {
        std::smatch match;
        if (std::regex_match(line, match, row))
            rooms.push_back(match[1]);
    }
    return rooms;
}

bool isAllowed(const std::vector<std::string>& rooms, const std::string& room, const std::string& header) {
    const fs::path path(header);
    const auto first = *path.begin();
    if (first == "kiv")
        return fs::exists(fs::path(KIVIFC_PUBLIC_HEADERS) / header);
    if (header == "kivifc/Program/Commit.h")
        return true;
    const auto other = std::ranges::find(rooms, std::next(path.begin())->string());
    return first == "kivifc" && other != rooms.end() && other <= std::ranges::find(rooms, room);
}

TEST(Rooms, IncludeTheRoomsBelowAndPublicHeadersOnly) {
    const auto rooms = roomsOfTable();
    ASSERT_GE(rooms.size(), 8U);
    const std::regex include("#include \"(.*)\"");
    int files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(KIVIFC_SOURCES)) {
        const auto room = entry.path().parent_path().filename().string();
        const auto extension = entry.path().extension();
        if ((extension != ".h" && extension != ".cpp") || entry.path().filename() == "main.cpp")
            continue;
        ++files;
        ASSERT_NE(std::ranges::find(rooms, room), rooms.end()) << entry.path();
        std::ifstream stream(entry.path());
        for (std::string line; std::getline(stream, line);) {
            std::smatch match;
            if (std::regex_match(line, match, include)) {
                EXPECT_TRUE(isAllowed(rooms, room, match[1])) << entry.path() << ' ' << line;
            }
        }
    }
    EXPECT_GT(files, 70);
}

/// The documentation generator reads the comment of a file only when it is marked as such.
TEST(Rooms, HeadersBeginWithTheCommentOfTheFile) {
    for (const auto& entry : fs::recursive_directory_iterator(KIVIFC_SOURCES)) {
        if (entry.path().extension() != ".h")
            continue;
        std::ifstream stream(entry.path());
        std::string line;
        std::getline(stream, line);
        EXPECT_EQ(line, "/// @file") << entry.path();
    }
}

} // namespace

} // namespace kiv::kivifc::test
