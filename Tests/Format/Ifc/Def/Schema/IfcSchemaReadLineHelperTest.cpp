#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"

#include "Base/Arena.h"
#include "Format/Ifc/Def/Schema/SchemaTestTools.h"
#include "Support/FailingStream.h"
#include "kiv/Base/Exception.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <ios>
#include <istream>
#include <sstream>
#include <streambuf>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace kiv::ifc::def::schema;
using namespace kiv::test;

/// All lines of the text, as the helper hands them out.
Strings linesOf(std::string_view text) {
    std::istringstream stream{std::string(text)};
    ReadLineHelper line;
    Strings lines;
    while (line.boNextLine(stream))
        lines.emplace_back(line.getLine());
    EXPECT_EQ(line.getLine(), "");
    EXPECT_TRUE(stream.eof());
    return lines;
}

struct LinesRow {
    std::string_view text;
    Strings lines;
};

TEST(ReadLineHelperTest, ReadsLineByLine) {
    const LinesRow rows[] = {
        {"", {}},
        {"a", {"a"}},
        {"a\n", {"a"}},
        {"a\nb", {"a", "b"}},
        {"\n", {""}},
        {"\n\na", {"", "", "a"}},
        {" a \n\tb", {" a ", "\tb"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(linesOf(row.text), row.lines) << row.text;
}

TEST(ReadLineHelperTest, RemovesOneCarriageReturnAtTheEndOfALine) {
    const LinesRow rows[] = {
        {"a\r\nb\r\n", {"a", "b"}}, {"a\r\r\n", {"a\r"}}, {"\r\n", {""}},
        {"a\rb\r\n", {"a\rb"}},     {"\ra\n", {"\ra"}},   {"a\r", {"a"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(linesOf(row.text), row.lines) << row.text;
}

TEST(ReadLineHelperTest, KeepsZeroBytesAndBytesAbove0x7F) {
    const std::string text("a\0b\xFF\n", 5);
    EXPECT_EQ(linesOf(text), Strings{std::string("a\0b\xFF", 4)});
}

TEST(ReadLineHelperTest, TheLastLineNeedsNoLineFeed) {
    std::istringstream stream("a");
    ReadLineHelper line;
    EXPECT_TRUE(line.boNextLine(stream));
    EXPECT_TRUE(stream.eof());
    EXPECT_FALSE(line.boNextLine(stream));
}

TEST(ReadLineHelperTest, AStreamThatFailsIsAnExceptionWithAnEmptyMessage) {
    FailingStream stream("ab\nc", 4);
    ReadLineHelper line;
    ASSERT_TRUE(line.boNextLine(stream));
    try {
        line.boNextLine(stream);
        FAIL() << "no exception";
    } catch (const kiv::exception& error) {
        EXPECT_STREQ(error.what(), "");
    }
}

TEST(ReadLineHelperTest, AStreamThatIsBadFromTheStartIsAnException) {
    std::istringstream stream("a\n");
    stream.setstate(std::ios::badbit);
    ReadLineHelper line;
    EXPECT_THROW(line.boNextLine(stream), kiv::exception);
}

TEST(ReadLineHelperTest, AStreamThatPassesOnWhatItsBufferThrowsThrowsThatAndIsBad) {
    FailingStream stream("ab\nc", 4);
    stream.exceptions(std::ios::badbit);
    ReadLineHelper line;
    ASSERT_TRUE(line.boNextLine(stream));
    EXPECT_THROW(line.boNextLine(stream), DeviceIsGone);
    EXPECT_TRUE(stream.bad());
}

TEST(ReadLineHelperTest, AStreamThatIsToThrowAtItsEndDoesSo) {
    std::istringstream stream("a\n");
    stream.exceptions(std::ios::failbit);
    ReadLineHelper line;
    ASSERT_TRUE(line.boNextLine(stream));
    EXPECT_THROW(line.boNextLine(stream), std::ios::failure);
    EXPECT_TRUE(stream.eof());
}

/// Says how many bytes it has, hands out at most `atOnce` of them at once, and takes none back.
class OneWayBuffer : public std::streambuf {
public:
    OneWayBuffer(std::string_view text, std::size_t atOnce) : text_(text), atOnce_(atOnce) {}

protected:
    std::streamsize showmanyc() override { return static_cast<std::streamsize>(text_.size()); }
    int_type underflow() override {
        return text_.empty() ? traits_type::eof() : traits_type::to_int_type(text_.front());
    }
    std::streamsize xsgetn(char* place, std::streamsize size) override {
        asked_.push_back(size);
        const auto taken = text_.copy(place, std::min(static_cast<std::size_t>(size), atOnce_));
        text_.remove_prefix(taken);
        return static_cast<std::streamsize>(taken);
    }
    int_type pbackfail(int_type) override { throw DeviceIsGone(); }

public:
    /// How many bytes each call wanted.
    const std::vector<std::streamsize>& getAsked() const { return asked_; }

private:
    std::string_view text_;
    std::size_t atOnce_;
    std::vector<std::streamsize> asked_;
};

TEST(ReadLineHelperTest, ReadingAheadTakesLinesInWhateverPiecesTheyCome) {
    for (const std::size_t atOnce : {1U, 2U, 3U, 100U}) {
        OneWayBuffer buffer("ab\n\ncd", atOnce);
        std::istream stream(&buffer);
        kiv::Arena arena;
        ReadLineHelper line(arena);
        Strings lines;
        while (line.boNextLine(stream))
            lines.emplace_back(line.getLine());
        EXPECT_EQ(lines, (Strings{"ab", "", "cd"})) << atOnce;
    }
}

TEST(ReadLineHelperTest, ReadsAheadLittleAtFirstAndNeverMoreThan64KiB) {
    constexpr std::streamsize KiB = 1024;
    std::string text(256 * KiB, 'a');
    for (std::size_t end = 99; end < text.size(); end += 100)
        text[end] = '\n';
    OneWayBuffer buffer(text, text.size());
    std::istream stream(&buffer);
    kiv::Arena arena;
    ReadLineHelper line(arena);
    while (line.boNextLine(stream)) {
    }
    // 63 KiB twice as much each time, then 64 KiB three times, and the KiB that is left.
    EXPECT_EQ(buffer.getAsked(), (std::vector<std::streamsize>{KiB, 2 * KiB, 4 * KiB, 8 * KiB, 16 * KiB,
                                                               32 * KiB, 64 * KiB, 64 * KiB, 64 * KiB, KiB}));
}

TEST(ReadLineHelperTest, ABufferThatDoesNotHandOutTheBytesItHasIsAnException) {
    OneWayBuffer buffer("a\n", 0);
    std::istream stream(&buffer);
    kiv::Arena arena;
    ReadLineHelper line(arena);
    EXPECT_THROW(line.boNextLine(stream), kiv::exception);
}

TEST(ReadLineHelperTest, WhatAStreamDoesNotTakeBackIsLost) {
    OneWayBuffer buffer("a\nb\n", 100);
    std::istream stream(&buffer);
    kiv::Arena arena;
    ReadLineHelper line(arena);
    ASSERT_TRUE(line.boNextLine(stream));
    line.vAheadGiveBack(stream);
    EXPECT_EQ(line.getLine(), "a");
    EXPECT_FALSE(line.boNextLine(stream));
}

TEST(ReadLineHelperTest, WhatAStreamTakesBackIsReadAgain) {
    std::istringstream stream("a\nb\n");
    kiv::Arena arena;
    ReadLineHelper line(arena);
    ASSERT_TRUE(line.boNextLine(stream));
    line.vAheadGiveBack(stream);
    std::string next;
    EXPECT_TRUE(std::getline(stream, next));
    EXPECT_EQ(next, "b");
}

TEST(ReadLineHelperTest, AppendsTheNextLineWithNothingBetween) {
    LineAndStream text("a \r\n b\r\nc");
    EXPECT_TRUE(text.line.boNextLineAppend(text.stream));
    EXPECT_EQ(text.line.getLine(), "a  b");
    EXPECT_TRUE(text.line.boNextLineAppend(text.stream));
    EXPECT_EQ(text.line.getLine(), "a  bc");
    EXPECT_FALSE(text.line.boNextLineAppend(text.stream));
    EXPECT_EQ(text.line.getLine(), "a  bc");
}

TEST(ReadLineHelperTest, AppendingFromAStreamThatFailsIsAnException) {
    FailingStream stream("a\nb\n", 3);
    ReadLineHelper line;
    ASSERT_TRUE(line.boNextLine(stream));
    EXPECT_THROW(line.boNextLineAppend(stream), kiv::exception);
}

TEST(ReadLineHelperTest, RemovesAByteOrderMarkAtTheStartOfTheLineOnly) {
    const std::pair<std::string_view, std::string_view> rows[] = {
        {"\xEF\xBB\xBFSCHEMA A;", "SCHEMA A;"},       {"\xEF\xBB\xBF", ""},
        {" \xEF\xBB\xBF", " \xEF\xBB\xBF"},           {"\xEF\xBB", "\xEF\xBB"},
        {"\xEF\xBB\xBF\xEF\xBB\xBF", "\xEF\xBB\xBF"}, {"SCHEMA A;", "SCHEMA A;"},
    };
    for (const auto& [before, after] : rows) {
        LineAndStream text(before);
        text.line.vByteOrderMarkRemove();
        EXPECT_EQ(text.line.getLine(), after);
    }
}

// ---- getNamesInList

struct ListRow {
    std::string_view text;
    std::size_t pos;
    Strings names;
    /// The line that is current afterwards, and where its ')' is.
    std::string_view lastLine;
    std::size_t end;
};

void vListsCheck(std::initializer_list<ListRow> rows) {
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        LineAndStream text(row.text);
        std::size_t pos = row.pos;
        EXPECT_EQ(text.line.getNamesInList(pos, text.stream), row.names);
        EXPECT_EQ(text.line.getLine(), row.lastLine);
        EXPECT_EQ(pos, row.end);
    }
}

TEST(NamesInListTest, ReadsTheNamesBetweenTheParentheses) {
    vListsCheck({
        {"(IfcA)", 0, {"IfcA"}, "(IfcA)", 5},
        {"(IfcA, IfcB)", 0, {"IfcA", "IfcB"}, "(IfcA, IfcB)", 11},
        {"(A,B,C);", 0, {"A", "B", "C"}, "(A,B,C);", 6},
        {"( \tA\t,\t B )", 0, {"A", "B"}, "( \tA\t,\t B )", 10},
        {"(A B)", 0, {"A", "B"}, "(A B)", 4},
        {"(,,A,,B,,)", 0, {"A", "B"}, "(,,A,,B,,)", 9},
        {"()", 0, {}, "()", 1},
        {"( , )", 0, {}, "( , )", 4},
        // Names are taken as written: only tabs, blanks, commas and ')' end them.
        {"(ifcA;x(y:z)", 0, {"ifcA;x(y:z"}, "(ifcA;x(y:z)", 11},
        {"ENUMERATION OF (A,B);", 11, {"A", "B"}, "ENUMERATION OF (A,B);", 19},
        {"(no) (yes)", 1, {"yes"}, "(no) (yes)", 9},
        {"(A)) SUBTYPE OF (B);", 0, {"A"}, "(A)) SUBTYPE OF (B);", 2},
    });
}

TEST(NamesInListTest, ListThatEndsOnTheNextLineYieldsAllItsNames) {
    LineAndStream text("(IfcA, IfcB\n,IfcC);\nnext");
    std::size_t pos = 0;
    EXPECT_EQ(text.line.getNamesInList(pos, text.stream), (Strings{"IfcA", "IfcB", "IfcC"}));
    EXPECT_EQ(text.line.getLine(), ",IfcC);");
    EXPECT_EQ(pos, 5U);
}

TEST(NamesInListTest, FollowsTheListAcrossAnyNumberOfLines) {
    vListsCheck({
        {"SELECT\n\t(A\n\t,B\n\n   \n,C\n)\n", 6, {"A", "B", "C"}, ")", 0},
        // The search for '(' starts anew at the start of each line.
        {"SELECT\nx (A)", 6, {"A"}, "x (A)", 4},
        {"SELECT\n\n\n(A)", 0, {"A"}, "(A)", 2},
        {"(\nA)", 0, {"A"}, "A)", 1},
        // A name never spans lines.
        {"(Ifc\nA)", 0, {"Ifc", "A"}, "A)", 1},
        {"(A\r\n,B\r\n)\r\n", 0, {"A", "B"}, ")", 0},
    });
}

TEST(NamesInListTest, StartsAfterTheEndOfTheLineToo) {
    LineAndStream text("(no)\n(A)");
    std::size_t pos = 100;
    EXPECT_EQ(text.line.getNamesInList(pos, text.stream), Strings{"A"});
}

TEST(NamesInListTest, ListThatTheEndOfTheStreamLeavesOpenIsAnException) {
    for (const auto* open : {"SELECT", "SELECT\nmore\n", "(", "(A", "(A,\nB\n", "(A,\nB", ""}) {
        SCOPED_TRACE(open);
        LineAndStream text(open);
        std::size_t pos = 0;
        try {
            text.line.getNamesInList(pos, text.stream);
            FAIL() << "no exception";
        } catch (const kiv::exception& error) {
            EXPECT_STREQ(error.what(), "");
        }
    }
}

TEST(NamesInListTest, StreamThatFailsInsideTheListIsAnException) {
    for (const std::size_t bytes : {3U, 4U, 5U, 6U}) {
        FailingStream stream("(A\n,B)", bytes);
        ReadLineHelper line;
        ASSERT_TRUE(line.boNextLine(stream));
        std::size_t pos = 0;
        EXPECT_THROW(line.getNamesInList(pos, stream), kiv::exception) << bytes;
    }
}

// ---- sListFromStringCommaSep

struct CommaRow {
    std::string_view text;
    std::size_t pos;
    Strings items;
};

TEST(ListFromStringCommaSepTest, BlankBeforeACommaIsKeptAndBlankAfterItIsSkipped) {
    EXPECT_EQ(sListFromStringCommaSep("A ,B;", 0), (Strings{"A ", "B"}));
    EXPECT_EQ(sListFromStringCommaSep("A , B;", 0), (Strings{"A ", "B"}));
}

TEST(ListFromStringCommaSepTest, SplitsTheRestOfTheLine) {
    const CommaRow rows[] = {
        {"", 0, {}},
        {"  , ,, ", 0, {}},
        {"A", 0, {"A"}},
        {"A;", 0, {"A"}},
        {"A,B,C", 0, {"A", "B", "C"}},
        {"  ,A,,  B", 0, {"A", "B"}},
        {"A,", 0, {"A"}},
        {"A, ", 0, {"A"}},
        {"UR1 : A, B;", 5, {"A", "B"}},
        {"A,B", 1, {"B"}},
        {"A", 1, {}},
        {"A", 7, {}},
        // The last item ends at ';' if there is one, only otherwise at a blank.
        {"A B;", 0, {"A B"}},
        {"A B", 0, {"A"}},
        {"A, B C", 0, {"A", "B"}},
        {"A, B C; D", 0, {"A", "B C"}},
        {"A;B", 0, {"A"}},
        // In all other items ';' is a character like any other.
        {"A;,B", 0, {"A;", "B"}},
        {"A, ;", 0, {"A", ""}},
        {";", 0, {""}},
        // A tab is no blank.
        {"\tA", 0, {"\tA"}},
        {"A\tB", 0, {"A\tB"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sListFromStringCommaSep(std::string(row.text), row.pos), row.items)
            << row.text << " from " << row.pos;
}

// ---- TextLines

TEST(TextLinesTest, KeepsEachLineFollowedByALineFeed) {
    TextLines lines;
    EXPECT_EQ(lines.getText(), "");
    EXPECT_EQ(lines.getLines().size(), 0U);
    lines.vLineAdd(" a");
    lines.vLineAdd("");
    lines.vLineAdd("b ");
    EXPECT_EQ(lines.getText(), " a\n\nb \n");
    EXPECT_EQ(stringsOf(lines.getLines()), (Strings{" a", "", "b "}));
}

} // namespace
