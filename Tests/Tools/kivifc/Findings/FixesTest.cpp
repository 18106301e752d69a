#include "kivifc/Findings/Fixes.h"
#include "kivifc/Findings/UnifiedDiff.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <vector>

namespace kiv::kivifc::test {

namespace {

kit::Finding edited(std::vector<kit::FindingEdit> edits) {
    kit::Finding finding;
    finding.edits = std::move(edits);
    return finding;
}

struct EditsRow {
    std::vector<kit::Finding> findings;
    std::string_view text;
    std::ptrdiff_t mended;
};

TEST(Fixes, EditsOfOneFindingAreAppliedTogetherOrNotAtAll) {
    const EditsRow rows[] = {
        {{}, "0123456789", 0},
        {{edited({{2, 2, "ab"}})}, "01ab456789", 1},
        {{edited({{0, 1, ""}, {9, 1, "x\n"}})}, "12345678x\n", 1},
        // The order of the findings is not that of the edits.
        {{edited({{8, 1, "B"}}), edited({{1, 1, "A"}})}, "0A234567B9", 2},
        // Neighbours do not touch each other.
        {{edited({{2, 2, "a"}}), edited({{4, 2, "b"}})}, "01ab6789", 2},
        // The second one overlaps the first, so none of its edits is made.
        {{edited({{2, 3, "a"}}), edited({{4, 1, "b"}, {8, 1, "c"}})}, "01a56789", 1},
        {{edited({{2, 3, "a"}}), edited({{0, 1, "c"}, {4, 1, "b"}})}, "01a56789", 1},
        // Two that want the same change get it once.
        {{edited({{2, 1, "a"}}), edited({{2, 1, "a"}})}, "01a3456789", 2},
        {{edited({{2, 1, "a"}}), edited({{2, 1, "b"}})}, "01a3456789", 1},
        // Two insertions at one place: which comes first would be chance.
        {{edited({{5, 0, "x"}}), edited({{5, 0, "y"}})}, "01234x56789", 1},
        {{edited({{10, 0, "end"}})}, "0123456789end", 1},
        // The file is not what it was.
        {{edited({{9, 2, "x"}})}, "0123456789", 0},
        {{edited({{11, 0, "x"}})}, "0123456789", 0},
    };
    for (const auto& row : rows) {
        const auto fixed = fixedText("0123456789", row.findings);
        EXPECT_EQ(fixed.text, row.text);
        EXPECT_EQ(std::ranges::count(fixed.isMended, true), row.mended) << row.text;
    }
}

TEST(UnifiedDiff, ShowsChangedLinesWithThreeOfContext) {
    EXPECT_EQ(sUnifiedDiff("a.xml", "1\n2\n3\n4\n5\n6\n7\n8\n9\n", "1\n2\n3\n4\nX\n6\n7\n8\n9\n"),
              "--- a.xml\n+++ a.xml\n"
              "@@ -2,7 +2,7 @@\n 2\n 3\n 4\n-5\n+X\n 6\n 7\n 8\n");
}

TEST(UnifiedDiff, ChangesFarApartAreTwoHunks) {
    std::string before;
    for (char line = 'a'; line <= 'p'; ++line)
        before.append(1, line).append("\n");
    auto after = before;
    after[0] = 'A';
    after[2 * 14] = 'O';
    EXPECT_EQ(sUnifiedDiff("f", before, after), "--- f\n+++ f\n"
                                                "@@ -1,4 +1,4 @@\n-a\n+A\n b\n c\n d\n"
                                                "@@ -12,5 +12,5 @@\n l\n m\n n\n-o\n+O\n p\n");
}

TEST(UnifiedDiff, ChangesThatShareContextAreOneHunk) {
    EXPECT_EQ(sUnifiedDiff("f", "a\nb\nc\n", "A\nb\nC\n"),
              "--- f\n+++ f\n@@ -1,3 +1,3 @@\n-a\n+A\n b\n-c\n+C\n");
}

TEST(UnifiedDiff, LinesMayComeAndGo) {
    EXPECT_EQ(sUnifiedDiff("f", "a\nb\nc\n", "a\nc\n"), "--- f\n+++ f\n@@ -1,3 +1,2 @@\n a\n-b\n c\n");
    EXPECT_EQ(sUnifiedDiff("f", "", "a\n"), "--- f\n+++ f\n@@ -0,0 +1 @@\n+a\n");
    EXPECT_EQ(sUnifiedDiff("f", "a\n", "a\n"), "");
}

TEST(UnifiedDiff, MissingLineEndIsSaid) {
    EXPECT_EQ(sUnifiedDiff("f", "a", "b"), "--- f\n+++ f\n@@ -1 +1 @@\n-a\n\\ No newline at end of file\n"
                                           "+b\n\\ No newline at end of file\n");
}

} // namespace

} // namespace kiv::kivifc::test
