#include "Host/Xml/KivXmlLines.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace kiv::xml {
namespace {

/// The line of each byte, when the text comes in blocks of `blockSize`.
std::vector<std::uint32_t> getLines(std::string_view text, std::size_t blockSize) {
    LineCounter counter;
    std::vector<std::uint32_t> lines;
    for (std::size_t at = 0; at < text.size(); at += blockSize) {
        const std::string_view block = text.substr(at, blockSize);
        counter.vBlockAdd(block);
        for (std::size_t i = at; i != at + block.size(); ++i)
            lines.push_back(counter.getLine(i));
    }
    return lines;
}

TEST(KivXmlLinesTest, CountsEachKindOfLineEndOnceHoweverTheTextIsCut) {
    using Lines = std::vector<std::uint32_t>;
    struct Row {
        std::string text;
        Lines lines;
    };
    const Row rows[] = {
        {"abc", {1, 1, 1}},       {"a\nb", {1, 1, 2}},
        {"\n\na", {1, 2, 3}},     {"a\rb", {1, 1, 2}},
        {"a\r\nb", {1, 1, 1, 2}}, {"\r\r\na", {1, 2, 2, 3}},
        {"\n\ra", {1, 2, 3}},     {"\r\n\r\n\n\r\ra", {1, 1, 2, 2, 3, 4, 5, 6}},
    };
    for (const Row& row : rows)
        for (std::size_t blockSize = 1; blockSize <= row.text.size(); ++blockSize)
            EXPECT_EQ(getLines(row.text, blockSize), row.lines) << row.text << " in blocks of " << blockSize;
}

TEST(KivXmlLinesTest, EmptyBlockLeavesTheLineEndThatItCutsWhole) {
    LineCounter counter;
    counter.vBlockAdd("a\r");
    counter.vBlockAdd("");
    counter.vBlockAdd("\nb");
    EXPECT_EQ(counter.getLine(2), 1U);
    EXPECT_EQ(counter.getLine(3), 2U);
}

TEST(KivXmlLinesTest, NotEveryLineNeedsToBeAskedFor) {
    LineCounter counter;
    counter.vBlockAdd("\n\n\n");
    counter.vBlockAdd("\n\na");
    counter.vBlockAdd("");
    EXPECT_EQ(counter.getLine(2), 3U);
    EXPECT_EQ(counter.getLine(5), 6U);
    EXPECT_EQ(counter.getLine(5), 6U);
}

} // namespace
} // namespace kiv::xml
