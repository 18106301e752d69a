#include "kivifc/Pictures/TreeDrawing.h"

#include "Support/SchemaFromText.h"
#include "Tools/kivifc/Program/OutputText.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc {

namespace {

std::string sDrawn(const std::string& statements, const char* top) {
    const auto schema = kiv::test::schemaFromText(statements);
    test::OutputText text;
    vTreeDraw(InheritanceTree(*schema), kiv::test::entityOf(*schema, top), text.output);
    return text.sText();
}

std::string sEntity(const std::string& name, const std::string& supertype) {
    return "ENTITY " + name + "\n SUBTYPE OF (" + supertype + ");\nEND_ENTITY;\n";
}

TEST(TreeDrawing, OneEntityIsOneLine) {
    EXPECT_EQ(sDrawn("ENTITY A;\nEND_ENTITY;\n", "A"), "A\n");
    EXPECT_EQ(sDrawn("ENTITY A\n ABSTRACT SUPERTYPE;\nEND_ENTITY;\n", "A"), "A (abstract)\n");
}

TEST(TreeDrawing, BranchesGoOnWhereOthersFollow) {
    const auto statements = "ENTITY A;\nEND_ENTITY;\n" + sEntity("B", "A") + sEntity("C", "B") +
                            sEntity("D", "B") + sEntity("E", "D") + sEntity("F", "A") + sEntity("G", "F");
    EXPECT_EQ(sDrawn(statements, "A"), "A\n"
                                       "|-- B\n"
                                       "|   |-- C\n"
                                       "|   `-- D\n"
                                       "|       `-- E\n"
                                       "`-- F\n"
                                       "    `-- G\n");
    EXPECT_EQ(sDrawn(statements, "B"), "B\n|-- C\n`-- D\n    `-- E\n");
}

// Each level is four columns deeper up to the limit, and has its number after it.
TEST(TreeDrawing, DeepLevelsStayInOneColumn) {
    std::string statements = "ENTITY E0;\nEND_ENTITY;\n";
    for (std::size_t level = 1; level <= TreeIndentMax + 2; ++level)
        statements += sEntity("E" + std::to_string(level), "E" + std::to_string(level - 1));
    const auto drawn = sDrawn(statements, "E0");
    const std::string deepest(4 * (TreeIndentMax - 1), ' ');
    EXPECT_TRUE(drawn.ends_with("\n" + deepest + "`-- E40\n" + deepest + "`-- (42) E41\n" + deepest +
                                "`-- (43) E42\n"))
        << drawn;
}

} // namespace

} // namespace kiv::kivifc
