#include "kiv/Kit/Findings/IgnoreComments.h"
#include "kiv/Kit/Positions/XmlPositions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace kiv::kit::test {

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

Finding at(std::string_view code, std::size_t line, std::size_t column) {
    Finding finding;
    finding.code = code;
    finding.place = {"a.xml", {line, column, 1}};
    return finding;
}

IgnoreComments ignores(std::string text) {
    return {"a.xml", XmlPositions(std::move(text))};
}

constexpr const char* Document = "<A>\n"
                                 "  <!-- kivifc: ignore S001, g -->\n"
                                 "  <B x='1'>\n"
                                 "    <C/>\n"
                                 "  </B>\n"
                                 "  <D/>\n"
                                 "</A>\n";

TEST(IgnoreComments, HideTheNextElementAndEverythingInsideIt) {
    struct Row {
        std::string_view code;
        std::size_t line;
        std::size_t column;
        bool isHidden;
    };
    const Row rows[] = {
        {"S001", 3, 3, true},
        {"S001", 3, 6, true},
        {"S001", 4, 6, true},
        // A family by its letter, in any letter case.
        {"G001", 4, 6, true},
        {"S002", 4, 6, false},
        // Before the element, after it, and what is about no line at all.
        {"S001", 3, 2, false},
        {"S001", 5, 7, false},
        {"S001", 6, 3, false},
        {"S001", 0, 0, false},
    };
    auto comments = ignores(Document);
    for (const auto& row : rows)
        EXPECT_EQ(comments.boHide(at(row.code, row.line, row.column)), row.isHidden)
            << row.code << ' ' << row.line << ':' << row.column;
}

TEST(IgnoreComments, BeforeTheRootTheyAreAboutTheWholeDocument) {
    auto comments = ignores("<!-- kivifc: ignore S001 --><A/>");
    EXPECT_TRUE(comments.boHide(at("S001", 0, 0)));
    EXPECT_TRUE(comments.boHide(at("S001", 1, 30)));
}

TEST(IgnoreComments, CodeThatHidesNothingIsANote) {
    auto comments = ignores(Document);
    comments.boHide(at("S001", 4, 6));
    const auto unused = comments.unusedFindings();
    ASSERT_THAT(unused, SizeIs(1));
    EXPECT_EQ(unused[0].code, "K001");
    EXPECT_EQ(unused[0].severity, Severity::Note);
    EXPECT_EQ(unused[0].message, "the comment that ignores G hides nothing");
    EXPECT_EQ(unused[0].subject, "ignore G");
    EXPECT_EQ(unused[0].place.position.line, 2U);
}

TEST(IgnoreComments, RuleThatIsNotLookedForIsNoUnusedOne) {
    const auto comments = ignores(Document);
    EXPECT_THAT(comments.unusedFindings([](std::string_view code) { return code == "G"; }), SizeIs(1));
    EXPECT_THAT(comments.unusedFindings([](std::string_view) { return false; }), IsEmpty());
}

TEST(IgnoreComments, CommentWithoutCodesIsANote) {
    for (const std::string codes : {"", " ", " , "}) {
        const auto comments = ignores("<A>\n  <!-- kivifc: ignore" + codes + "--><B/></A>");
        EXPECT_FALSE(comments.isEmpty()) << codes;
        const auto empty = comments.unusedFindings([](std::string_view) { return false; });
        ASSERT_THAT(empty, SizeIs(1)) << codes;
        EXPECT_EQ(empty[0].code, "K002");
        EXPECT_EQ(empty[0].severity, Severity::Note);
        EXPECT_EQ(empty[0].message, "the comment ignores nothing: it names no code");
        EXPECT_EQ(empty[0].place.position.line, 2U);
        EXPECT_EQ(empty[0].place.position.column, 3U);
    }
    EXPECT_TRUE(ignores("<A><!-- kivifc: ignored --></A>").isEmpty());
}

TEST(IgnoreComments, UnknownCodeAndMissingElementAreSaid) {
    const auto unknown = ignores("<!-- kivifc: ignore QQQ --><A/>").unusedFindings();
    ASSERT_THAT(unknown, SizeIs(1));
    ASSERT_THAT(unknown[0].notes, SizeIs(1));
    EXPECT_EQ(unknown[0].notes[0].message, "no rule has this code");
    const auto last = ignores("<A><B/><!-- kivifc: ignore S001 --></A>").unusedFindings();
    ASSERT_THAT(last, SizeIs(1));
    ASSERT_THAT(last[0].notes, SizeIs(1));
    EXPECT_EQ(last[0].notes[0].message, "no element follows the comment");
}

TEST(IgnoreComments, FindingsOfOneCodeAreLimited) {
    constexpr std::size_t Most = 10'000;
    for (const std::string comment : {"kivifc: ignore T001", "kivifc: ignore", "kivifc: ignor T001"}) {
        std::string text = "<A>";
        for (std::size_t count = 0; count != Most + 2; ++count)
            text += "<!-- " + comment + " --><B/>";
        EXPECT_THAT(ignores(text + "</A>").unusedFindings(), SizeIs(Most)) << comment;
    }
}

TEST(IgnoreComments, OneFindingHasAllCodesOfAComment) {
    auto comments = ignores("<A><!-- kivifc: ignore T006 because of S001 --><B/>\n"
                            "<!-- kivifc: ignore T007, G --><C/></A>");
    EXPECT_TRUE(comments.boHide(at("T006", 1, 49)));
    const auto unused = comments.unusedFindings();
    ASSERT_THAT(unused, SizeIs(2));
    EXPECT_EQ(unused[0].message, "the comment that ignores BECAUSE, OF or S001 hides nothing");
    ASSERT_THAT(unused[0].notes, SizeIs(1));
    EXPECT_EQ(unused[0].notes[0].message, "no rule has the code BECAUSE or OF");
    EXPECT_EQ(unused[1].message, "the comment that ignores T007 or G hides nothing");
    EXPECT_THAT(unused[1].notes, IsEmpty());
}

TEST(IgnoreComments, MisspeltOnesAreNotes) {
    struct Row {
        std::string comment;
        std::string text;
        std::string meant;
    };
    const Row rows[] = {
        {"kivifc: ignor T001", "kivifc: ignor", "T001"},
        {"kivific: ignore S001, T002", "kivific: ignore", "S001, T002"},
        {"kivifc ignore TOO1", "kivifc ignore", "T001"},
        {"kivifc:ignore-next unknown-class", "", ""},
        {"Kivifc: ignore t1", "Kivifc: ignore", "T001"},
        {"kivifc:ignore-next", "kivifc:ignore-next", "T001"},
    };
    for (const auto& row : rows) {
        auto comments = ignores("<A>\n <!-- " + row.comment + " -->\n <B/></A>");
        EXPECT_EQ(comments.isEmpty(), row.text.empty()) << row.comment;
        EXPECT_FALSE(comments.boHide(at("T001", 3, 2))) << row.comment;
        const auto found = comments.unusedFindings();
        ASSERT_EQ(found.size(), row.text.empty() ? 0 : 1) << row.comment;
        if (row.text.empty())
            continue;
        EXPECT_EQ(found[0].code, "K003") << row.comment;
        EXPECT_EQ(found[0].severity, Severity::Note) << row.comment;
        EXPECT_EQ(found[0].message,
                  "the comment hides nothing: \"" + row.text + "\" is not \"kivifc: ignore\"");
        EXPECT_EQ(found[0].place.position.line, 2) << row.comment;
        EXPECT_EQ(found[0].place.position.column, 2) << row.comment;
        ASSERT_THAT(found[0].notes, testing::Not(IsEmpty())) << row.comment;
        EXPECT_EQ(found[0].notes[0].message, "did you mean \"kivifc: ignore " + row.meant + "\"?");
    }
}

TEST(IgnoreComments, TheCodeThatIsMeantIsNamed) {
    struct Row {
        std::string word;
        std::string meant;
    };
    const Row rows[] = {{"TOO1", "T001"}, {"T1", "T001"}, {"T-001", "T001"}, {"unknown-data-type", "T001"}};
    for (const auto& row : rows) {
        const auto found = ignores("<!-- kivifc: ignore " + row.word + " --><A/>").unusedFindings();
        ASSERT_THAT(found, SizeIs(1)) << row.word;
        ASSERT_THAT(found[0].notes, SizeIs(2)) << row.word;
        EXPECT_THAT(found[0].notes[1].message, testing::StartsWith("did you mean " + row.meant + " by "))
            << row.word;
    }
    EXPECT_THAT(ignores("<!-- kivifc: ignore because T999 -->").unusedFindings()[0].notes, SizeIs(1));
}

} // namespace

} // namespace kiv::kit::test
