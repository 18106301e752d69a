#include "kivifc/Findings/SourceLines.h"
#include "Support/TemporaryFolder.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>

namespace kiv::kivifc::test {

namespace {

using kiv::test::TemporaryFolder;
using namespace std::string_literals;

TEST(SourceLines, LinesEndWithFeedReturnOrBoth) {
    const LinedText text("a\nb\r\nc\rd\n");
    EXPECT_EQ(text.line(1), "a");
    EXPECT_EQ(text.line(2), "b");
    EXPECT_EQ(text.line(3), "c");
    EXPECT_EQ(text.line(4), "d");
    EXPECT_EQ(text.line(5), "");
    EXPECT_EQ(text.line(6), "");
    EXPECT_EQ(text.line(0), "");
}

TEST(SourceLines, ByteHasALineAndAColumnInCodePoints) {
    const LinedText text("\xEF\xBB\xBF"
                         "ab\n\xC3\xA4z");
    using Place = std::pair<std::size_t, std::size_t>;
    EXPECT_EQ(text.lineAndColumn(3), (Place{1, 1}));
    EXPECT_EQ(text.lineAndColumn(5), (Place{1, 3}));
    EXPECT_EQ(text.lineAndColumn(6), (Place{2, 1}));
    EXPECT_EQ(text.lineAndColumn(8), (Place{2, 2}));
    EXPECT_EQ(text.lineAndColumn(9), (Place{2, 3}));
    EXPECT_EQ(text.lineAndColumn(99), (Place{2, 3}));
}

TEST(SourceLines, ColumnsOfALongLineAreThoseOfItsCodePoints) {
    // Lines of code points that have 1, 2, 3 and 4 bytes, and of a byte that is no UTF-8.
    const std::string letters = "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\xFF";
    constexpr std::size_t Letters = 5;
    constexpr std::size_t Times = 400;
    std::string line;
    for (std::size_t count = 0; count < Times; ++count)
        line += letters;
    const LinedText text("\xEF\xBB\xBF" + line + "\r\n" + line + "\nshort");
    using Place = std::pair<std::size_t, std::size_t>;
    for (const std::size_t time : {0U, 49U, 50U, 51U, 99U, 100U, 399U, 400U}) {
        const Place first{1, Letters * time + 1};
        EXPECT_EQ(text.lineAndColumn(3 + letters.size() * time), first) << time;
        const auto second = 3 + line.size() + 2 + letters.size() * time;
        EXPECT_EQ(text.lineAndColumn(second), (Place{2, first.second})) << time;
    }
    // The last byte of a line before its end, and the first of the next one.
    EXPECT_EQ(text.lineAndColumn(3 + line.size() - 1), (Place{1, Letters * Times}));
    EXPECT_EQ(text.lineAndColumn(3 + 2 * line.size() + 3), (Place{3, 1}));
    EXPECT_EQ(text.line(1), "\xEF\xBB\xBF" + line);
    EXPECT_EQ(text.line(2), line);
    EXPECT_EQ(text.line(3), "short");
}

TEST(SourceLines, PartOfALongLineBeginsBeforeThePlace) {
    const std::string line(3000, 'a');
    const LinedText text("x\n" + line + "\n" + line.substr(0, 200));
    for (const std::size_t column : {1U, 500U, 751U, 1000U, 2999U, 3001U, 9999U}) {
        const auto part = text.part(2, column);
        EXPECT_EQ(part.text, std::string_view(line).substr(part.column - 1)) << column;
        EXPECT_EQ(part.column > 1, column > 750) << column;
        EXPECT_TRUE(part.column == 1 || part.column + 500 <= column) << column;
        EXPECT_GE(part.column + 1000, std::min<std::size_t>(column, line.size())) << column;
    }
    EXPECT_EQ(text.part(3, 9999).text, line.substr(0, 200));
    EXPECT_EQ(text.part(4, 1).text, "");
    EXPECT_EQ(text.part(0, 1).text, "");
}

TEST(SourceLines, FilesAreReadWhenAskedForAndKeptTextsAreNot) {
    const TemporaryFolder folder;
    const auto path = folder.sWrite("a.xml", "from the file\n");
    SourceLines sources;
    sources.vKeep("<stdin>", "kept\n");
    EXPECT_EQ(sources.line(path, 1), "from the file");
    EXPECT_EQ(sources.line("<stdin>", 1), "kept");
    EXPECT_EQ(sources.line(folder.sPath("none.xml"), 1), "");
    EXPECT_EQ(sources.line(folder.sPath(""), 1), "");
}

// No two files fit, so that the one asked for before is read again, and shows what it is by then.
TEST(SourceLines, FilesBeyondTheLimitAreReadAgain) {
    const TemporaryFolder folder;
    const auto first = folder.sWrite("1.xml", "first\n");
    const auto second = folder.sWrite("2.xml", "second\n");
    for (const std::size_t limit : {std::size_t{1}, std::size_t{100'000}}) {
        folder.sWrite("1.xml", "first\n");
        SourceLines sources(limit);
        EXPECT_EQ(sources.line(first, 1), "first");
        folder.sWrite("1.xml", "changed\n");
        EXPECT_EQ(sources.line(first, 1), "first"); // asked for last, and so at hand
        EXPECT_EQ(sources.line(second, 1), "second");
        EXPECT_EQ(sources.line(first, 1), limit == 1 ? "changed" : "first");
        EXPECT_EQ(sources.line(second, 1), "second");
    }
}

TEST(SourceLines, Utf16IsShownAsUtf8) {
    SourceLines sources;
    sources.vKeep("le", "\xFF\xFE"
                        "a\0\xE4\0\n\0\x3D\xD8\x00\xDE"s);
    EXPECT_EQ(sources.line("le", 1), "a\xC3\xA4");
    EXPECT_EQ(sources.line("le", 2), "\xF0\x9F\x98\x80");
    sources.vKeep("be", "\xFE\xFF\0a\x20\xAC"s);
    EXPECT_EQ(sources.line("be", 1), "a\xE2\x82\xAC");
}

TEST(SourceLines, Latin1IsShownAsUtf8) {
    SourceLines sources;
    sources.vKeep("latin", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<Name>T\xFCr</Name>");
    EXPECT_EQ(sources.line("latin", 2), "<Name>T\xC3\xBCr</Name>");
}

} // namespace

} // namespace kiv::kivifc::test
