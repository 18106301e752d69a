#include "Kit/Positions/IgnoreText.h"

#include <gtest/gtest.h>
#include <string_view>

namespace kiv::kit {

namespace {

struct Row {
    std::string_view comment;
    std::string_view misspelt;
    std::string_view codes;
};

TEST(IgnoreTextTest, CommentsThatIgnoreAreRead) {
    const Row rows[] = {
        {" kivifc: ignore T001 ", "", "T001"},
        {"kivifc:ignore T001,\n N ", "", "T001,\n N"},
        {"kivifc: ignore", "", ""},
        {"kivifc: ignore because I say so", "", "because I say so"},
    };
    for (const auto& row : rows) {
        const auto text = ignoreTextOf(row.comment);
        ASSERT_TRUE(text) << row.comment;
        EXPECT_EQ(text->codes, row.codes) << row.comment;
        EXPECT_EQ(text->misspelt, row.misspelt) << row.comment;
    }
}

TEST(IgnoreTextTest, MisspeltOnesAreTakenForThem) {
    const Row rows[] = {
        {" kivifc: ignor T001 ", "kivifc: ignor", "T001"},
        {"kivific: ignore T001", "kivific: ignore", "T001"},
        {"kivifc ignore T001", "kivifc ignore", "T001"},
        {"kivifc:ignore-next", "kivifc:ignore-next", ""},
        {"kivifc:ignore-next T001", "kivifc:ignore-next", "T001"},
        {"KIVIFC: IGNORE T001", "KIVIFC: IGNORE", "T001"},
        {"kivifc : ignore T001", "kivifc : ignore", "T001"},
        {"kivifc: ignore: T001", "kivifc: ignore:", "T001"},
        {"kivifc-ignore T001, S", "kivifc-ignore", "T001, S"},
        {"kivifc: ignored T001 as it is old", "kivifc: ignored", "T001 as it is old"},
        {"kivifc: disable T001", "kivifc: disable", "T001"},
        {"kivifc: T001", "kivifc:", "T001"},
        {"kivifc ignore", "kivifc ignore", ""},
    };
    for (const auto& row : rows) {
        const auto text = ignoreTextOf(row.comment);
        ASSERT_TRUE(text) << row.comment;
        EXPECT_EQ(text->codes, row.codes) << row.comment;
        EXPECT_EQ(text->misspelt, row.misspelt) << row.comment;
    }
}

TEST(IgnoreTextTest, OrdinaryCommentsMayNameTheProgram) {
    for (const std::string_view comment : {"",
                                           " ",
                                           ":",
                                           "kivifc",
                                           "kivifc:",
                                           "Written for kivifc.",
                                           "kivifc: ignores this element",
                                           "kivifc: ignored, as the library passes it over",
                                           "kivifc ignores T001 here, as the schema is older",
                                           "kivifc: the checker reports T001 here",
                                           "kivifc: ignores A wall",
                                           "kivifc finds T001",
                                           "kivifc: see T001",
                                           "kivifc check",
                                           "ignore T001",
                                           "ifc: ignore T001",
                                           "prettier-ignore",
                                           "kivifc: A wall",
                                           "kivifc ignorance",
                                           "kivifc: ignore's next T001 is gone too"}) {
        const auto text = ignoreTextOf(comment);
        EXPECT_FALSE(text) << comment << " -> " << text->misspelt << '|' << text->codes;
    }
}

} // namespace

} // namespace kiv::kit
