// What README.md and the tutorial show must be code that is built and run: each C++ block on a page is, line
// by line and with its indentation, a part of the program that the page is about. TutorialTest runs these
// programs.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

Lines linesOf(const std::string& path) {
    std::ifstream file(KIV_PROJECT "/" + path);
    Lines lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

std::vector<Lines> codeBlocksOf(const Lines& page, const std::string& language = "cpp") {
    const auto begin = "```" + language;
    std::vector<Lines> blocks;
    bool isInside = false;
    for (const auto& line : page) {
        if (line == begin)
            blocks.emplace_back();
        else if (isInside && line != "```")
            blocks.back().push_back(line);
        isInside = line == begin || (isInside && line != "```");
    }
    return blocks;
}

/// Whether the source has the block at this place, all of its lines moved to the right by the same number of
/// blanks.
bool isAt(Lines::const_iterator place, const Lines& block) {
    const auto shift = place->find_first_not_of(' ');
    const std::string blanks(shift == std::string::npos ? 0 : shift, ' ');
    return std::equal(block.begin(), block.end(), place, [&](const auto& shown, const auto& line) {
        return line == (shown.empty() ? shown : blanks + shown);
    });
}

bool isWithin(const Lines& block, const Lines& source) {
    for (auto place = source.begin(); std::distance(place, source.end()) >= std::ssize(block); ++place)
        if (isAt(place, block))
            return true;
    return false;
}

struct Page {
    const char* page;
    const char* program;
    std::size_t blocks;
};

class Pages : public testing::TestWithParam<Page> {};

TEST_P(Pages, ShowTheCodeOfTheirProgram) {
    const auto blocks = codeBlocksOf(linesOf(GetParam().page));
    const auto source = linesOf(GetParam().program);
    EXPECT_EQ(blocks.size(), GetParam().blocks) << "a block that is not found is not compared";
    for (const auto& block : blocks) {
        ASSERT_FALSE(block.empty());
        EXPECT_TRUE(isWithin(block, source)) << "not in " << GetParam().program << ":\n"
                                             << testing::PrintToString(block);
    }
}

INSTANTIATE_TEST_SUITE_P(All, Pages,
                         testing::Values(Page{"README.md", "Examples/Tutorial/First.cpp", 1},
                                         Page{"Docs/Tutorial/1-Schema.md", "Examples/Tutorial/Schema.cpp", 7},
                                         Page{"Docs/Tutorial/2-Sets.md", "Examples/Tutorial/Sets.cpp", 5},
                                         Page{"Docs/Tutorial/3-Back.md", "Examples/Tutorial/Back.cpp", 6}),
                         [](const auto& page) { return "Page" + std::to_string(page.index); });

TEST(Readme, ShowsAProgramAsAWhole) {
    const auto blocks = codeBlocksOf(linesOf("README.md"));
    ASSERT_EQ(blocks.size(), 1U);
    EXPECT_EQ(blocks.front(), linesOf("Examples/Tutorial/First.cpp"));
}

/// The host of Tests/Consumer is built as that says, and in other ways, so that it has more lines.
TEST(TutorialPages, BeginWithTheCMakeOfAHostThatIsBuilt) {
    const auto blocks = codeBlocksOf(linesOf("Docs/Tutorial/1-Schema.md"), "cmake");
    ASSERT_EQ(blocks.size(), 1U);
    const auto built = linesOf("Tests/Consumer/CMakeLists.txt");
    auto place = built.begin();
    for (const auto& line : blocks.front()) {
        place = std::find_if(place, built.end(), [&](const auto& each) {
            return each.substr(std::min(each.find_first_not_of(' '), each.size())) == line;
        });
        ASSERT_NE(place, built.end()) << line;
        ++place;
    }
}

} // namespace
