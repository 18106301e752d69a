#include "kivifc/Findings/SourceLines.h"
#include "Tools/kivifc/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace kiv::kivifc::test {

namespace {

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
