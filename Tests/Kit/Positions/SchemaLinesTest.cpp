#include "Kit/Positions/SchemaLines.h"

#include "Support/SchemaFromText.h"
#include "kiv/Base/Exception.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kit {

namespace {

using Names = std::vector<std::string>;

Names namesOf(const SchemaLines& lines) {
    Names names;
    for (const auto& statement : lines.statements)
        names.push_back(std::to_string(static_cast<int>(statement.kind) + 1) + ' ' +
                        std::string(statement.name));
    return names;
}

Names namesOf(const ifc::def::schema::Schema& schema) {
    Names names;
    for (const auto* object : schema.getObjects())
        names.push_back(std::to_string(static_cast<int>(object->getKind())) + ' ' +
                        std::string(object->getName()));
    return names;
}

/// The law: what is followed is what the library makes of the same text, in the same order.
TEST(SchemaLines, AreThoseOfWhichTheLibraryMakesObjects) {
    const std::string_view texts[] = {
        "",
        "TYPE A = REAL;\nEND_TYPE;\nENTITY B;\nEND_ENTITY;\nFUNCTION C\nEND_FUNCTION;\nRULE D "
        "FOR\nEND_RULE;\n",
        "TYPE A = REAL; END_TYPE;\nTYPE B = REAL;\nEND_TYPE;\nTYPE C;\nEND_TYPE;\n",
        "TYPE A = ENUMERATION OF\n(X, END_TYPE\n,Y);\nEND_TYPE;\nTYPE "
        "B=SELECT\nEND_TYPE;\n(TYPE)\nEND_TYPE;\n",
        "TYPE A = SELECT\r\n(B,\r\nEND_TYPE)\r\nEND_TYPE;\r\nTYPE  B\r\nEND_TYPE;\r\n",
        "ENTITY A;\n X : REAL; END_ENTITY;\n Y : REAL;\nENTITY B;\nEND_ENTITY;\nENTITY C;\nEND_ENTITY;\n",
        "ENTITY A\n SUPERTYPE OF (ONEOF (B,\n END_ENTITY,\n C));\nEND_ENTITY;\nENTITY B;\nEND_ENTITY;\n",
        "ENTITY A\n SUBTYPE OF B END_ENTITY;\nEND_ENTITY;\n (C)\nEND_ENTITY;\nENTITY D;\nEND_ENTITY;\n",
        "ENTITY A;\n DERIVE\n X : REAL :=\n 1.; END_ENTITY;\nENTITY B;\n INVERSE X : B FOR Y;\nEND_ENTITY;\n",
        "ENTITY A;\n WHERE\n W : TRUE;\n END_IF\nENTITY B;\nEND_ENTITY;\nTYPE C = REAL;\n WHERE\n END_X\n "
        "TYPE\nEND_TYPE;\n",
        "-- TYPE of\nENTITY A;\nEND_ENTITY;\nEND_TYPE;\nFUNCTION F : ENTITY\n TYPE\n-- END_FUNCTION\nENTITY "
        "B;\n",
        "ENTITY A SUBTYPE OF (B);\nEND_ENTITY;\nENTITY\nEND_ENTITY;\nENTITY   \nEND_ENTITY;",
        "TYPE A = SELECT (", // the list is open: the library gives up
    };
    for (const auto text : texts) {
        const auto whole = "SCHEMA T;\n" + std::string(text);
        try {
            EXPECT_EQ(namesOf(schemaLines(whole)), namesOf(*test::schemaFromWholeText(whole))) << whole;
        } catch (const kiv::exception&) {
            EXPECT_TRUE(whole.ends_with("(")) << whole;
        }
    }
}

TEST(SchemaLines, KnowWhereStatementsAre) {
    const std::string_view text = "SCHEMA T;\n\nTYPE A = REAL;\nEND_TYPE;\nEND_SCHEMA;\nTYPE B = REAL;\n";
    const auto lines = schemaLines(text);
    EXPECT_EQ(text.substr(lines.begin, lines.end - lines.begin),
              "\nTYPE A = REAL;\nEND_TYPE;\nEND_SCHEMA;\n");
    ASSERT_EQ(lines.statements.size(), 1U);
    const auto& type = lines.statements.front();
    EXPECT_EQ(text.substr(type.begin, type.end - type.begin), "TYPE A = REAL;\nEND_TYPE;\n");
    EXPECT_EQ(text.substr(type.begin, type.firstLineEnd - type.begin), "TYPE A = REAL;\n");
    EXPECT_EQ(text.substr(type.lastLine, type.end - type.lastLine), "END_TYPE;\n");
    EXPECT_TRUE(type.isEnded);
}

TEST(SchemaLines, OfSeveralSchemasTheLastCounts) {
    const auto lines = schemaLines("(* SCHEMA X;\n*)\nSCHEMA T;\nTYPE A = REAL;\nEND_TYPE;\nEND_SCHEMA;\n"
                                   "SCHEMA U;\nTYPE B = REAL;\nEND_SCHEMA;\n");
    EXPECT_EQ(namesOf(lines), Names{"1 B"});
    EXPECT_FALSE(lines.statements.front().isEnded);
    EXPECT_EQ(schemaLines("no header").begin, std::string_view::npos);
}

} // namespace

} // namespace kiv::kit
