// What README.md shows of the library must be code that is built and run: each of its C++ blocks stands, line by line, in
// the example host.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

namespace {

/// The lines without the blanks at both ends; empty ones are left out.
std::vector<std::string> linesOf(const std::string& path) {
    std::ifstream file(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        const auto begin = line.find_first_not_of(' ');
        if (begin != std::string::npos)
            lines.push_back(line.substr(begin, line.find_last_not_of(' ') - begin + 1));
    }
    return lines;
}

std::vector<std::vector<std::string>> codeBlocksOf(const std::vector<std::string>& lines) {
    std::vector<std::vector<std::string>> blocks;
    bool isInside = false;
    for (const auto& line : lines) {
        if (line == "```cpp")
            blocks.emplace_back();
        else if (isInside && line != "```")
            blocks.back().push_back(line);
        isInside = line == "```cpp" || (isInside && line != "```");
    }
    return blocks;
}

bool isWithin(const std::vector<std::string>& block, const std::vector<std::string>& source) {
    return std::search(source.begin(), source.end(), block.begin(), block.end()) != source.end();
}

TEST(Readme, ShowsTheCodeOfTheExampleHost) {
    const auto blocks = codeBlocksOf(linesOf(KIV_PROJECT "/README.md"));
    const auto source = linesOf(KIV_PROJECT "/Examples/Host/main.cpp");
    ASSERT_FALSE(blocks.empty());
    for (const auto& block : blocks) {
        ASSERT_FALSE(block.empty());
        EXPECT_TRUE(isWithin(block, source)) << "not in the example host:\n" << testing::PrintToString(block);
    }
}

} // namespace
