#include "kivifc/Findings/UnifiedDiff.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc {

namespace {

const std::string Head = "--- f\n+++ f\n";

TEST(UnifiedDiff, OfEqualTextsIsEmpty) {
    EXPECT_EQ(sUnifiedDiff("f", "", ""), "");
    EXPECT_EQ(sUnifiedDiff("f", "a\n", "a\n"), "");
}

TEST(UnifiedDiff, ThreeLinesAreShownAroundAChange) {
    EXPECT_EQ(sUnifiedDiff("f", "1\n2\n3\n4\n5\n6\n7\n8\n9\n", "1\n2\n3\n4\nx\n6\n7\n8\n9\n"),
              Head + "@@ -2,7 +2,7 @@\n 2\n 3\n 4\n-5\n+x\n 6\n 7\n 8\n");
    EXPECT_EQ(sUnifiedDiff("f", "1\n2\n", "x\n2\n"), Head + "@@ -1,2 +1,2 @@\n-1\n+x\n 2\n");
}

TEST(UnifiedDiff, ChangesThatAreNearShareAHunk) {
    // Six lines lie between the two: each has three around it.
    EXPECT_EQ(sUnifiedDiff("f", "a\n1\n2\n3\n4\n5\n6\nb\n", "A\n1\n2\n3\n4\n5\n6\nB\n"),
              Head + "@@ -1,8 +1,8 @@\n-a\n+A\n 1\n 2\n 3\n 4\n 5\n 6\n-b\n+B\n");
    EXPECT_EQ(sUnifiedDiff("f", "a\n1\n2\n3\n4\n5\n6\n7\nb\n", "A\n1\n2\n3\n4\n5\n6\n7\nB\n"),
              Head + "@@ -1,4 +1,4 @@\n-a\n+A\n 1\n 2\n 3\n@@ -6,4 +6,4 @@\n 5\n 6\n 7\n-b\n+B\n");
}

TEST(UnifiedDiff, LinesThatAreAddedOrRemovedAreOneChange) {
    EXPECT_EQ(sUnifiedDiff("f", "1\n3\n", "1\n2\n3\n"), Head + "@@ -1,2 +1,3 @@\n 1\n+2\n 3\n");
    EXPECT_EQ(sUnifiedDiff("f", "1\n2\n3\n", "1\n3\n"), Head + "@@ -1,3 +1,2 @@\n 1\n-2\n 3\n");
    EXPECT_EQ(sUnifiedDiff("f", "", "1\n"), Head + "@@ -0,0 +1 @@\n+1\n");
    EXPECT_EQ(sUnifiedDiff("f", "1\n", ""), Head + "@@ -1 +0,0 @@\n-1\n");
    // The equal line may count for one end only.
    EXPECT_EQ(sUnifiedDiff("f", "1\n", "1\n1\n"), Head + "@@ -1 +1,2 @@\n 1\n+1\n");
}

TEST(UnifiedDiff, ALastLineWithoutAnEndSaysSo) {
    EXPECT_EQ(sUnifiedDiff("f", "1\n2", "1\n3"), Head + "@@ -1,2 +1,2 @@\n 1\n"
                                                        "-2\n\\ No newline at end of file\n"
                                                        "+3\n\\ No newline at end of file\n");
    EXPECT_EQ(sUnifiedDiff("f", "1", "1\n"), Head + "@@ -1 +1 @@\n-1\n\\ No newline at end of file\n+1\n");
}

} // namespace

} // namespace kiv::kivifc
