#include "kiv/Kit/Positions/ExpressPositions.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

std::string sPlace(const TextPosition& position) {
    return std::to_string(position.line) + ':' + std::to_string(position.column) + '+' +
           std::to_string(position.length);
}

std::string sWord(const ExpressWord& word) {
    return std::string(word.text) + '@' + sPlace(word.position);
}

/// Everything that was found, a line for each declaration and member.
std::string sDump(const ExpressPositions& positions) {
    static constexpr std::string_view Uses[] = {"<", ">", ":", "#", "|", "for ", "self ", "u ", "r "};
    static constexpr std::string_view Members[] = {"attribute", "inverse", "derived", "unique", "where"};
    const auto namesText = [](const std::vector<ExpressName>& names) {
        std::string text;
        for (const auto& name : names)
            text.append(" ").append(Uses[static_cast<std::size_t>(name.use)]).append(sWord(name.word));
        return text;
    };
    std::string dump;
    for (const auto& schema : positions.schemas)
        dump += sWord(schema.keyword) + ' ' + sWord(schema.name) + '\n';
    for (const auto& declaration : positions.declarations) {
        dump += sWord(declaration.keyword) + ' ' + sWord(declaration.name);
        dump += (declaration.isAbstract ? " abstract" : "") + namesText(declaration.names) + '\n';
        for (const auto& member : declaration.members) {
            dump.append("  ").append(Members[static_cast<std::size_t>(member.kind)]);
            dump += ' ' + sWord(member.name) + namesText(member.names);
            if (!member.expression.empty())
                dump += " = " + std::string(member.expression);
            dump += '\n';
        }
        if (!declaration.body.empty())
            dump.append("  body ").append(declaration.body).append("\n");
        dump += sWord(declaration.end) + '\n';
    }
    return dump;
}

struct Sample {
    std::string text;
    std::string dump;
};

class ExpressPositionsOf : public testing::TestWithParam<Sample> {};

TEST_P(ExpressPositionsOf, IsExact) {
    EXPECT_EQ(sDump(expressPositions(GetParam().text)), GetParam().dump) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Headers, ExpressPositionsOf,
    testing::Values(Sample{"", ""}, Sample{"SCHEMA IFC4;\nEND_SCHEMA;\n", "SCHEMA@1:1+6 IFC4@1:8+4\n"},
                    Sample{"\xEF\xBB\xBFSCHEMA A;", "SCHEMA@1:1+6 A@1:8+1\n"},
                    Sample{"(* SCHEMA B;\n(* nested *) *)\r\n schema A ;", "schema@3:2+6 A@3:9+1\n"},
                    Sample{"-- SCHEMA B;\rSCHEMA A", "SCHEMA@2:1+6 A@2:8+1\n"}));

INSTANTIATE_TEST_SUITE_P(
    Types, ExpressPositionsOf,
    testing::Values(Sample{"TYPE A = STRING(255) FIXED;\nEND_TYPE;", "TYPE@1:1+4 A@1:6+1\nEND_TYPE@2:1+8\n"},
                    Sample{"TYPE A = LIST [1:?] OF UNIQUE B;\nEND_TYPE;",
                           "TYPE@1:1+4 A@1:6+1 :B@1:31+1\nEND_TYPE@2:1+8\n"},
                    Sample{"TYPE A = ENUMERATION OF\n\t(X\r\n\t,YY);\r\nEND_TYPE;",
                           "TYPE@1:1+4 A@1:6+1 #X@2:3+1 #YY@3:3+2\nEND_TYPE@4:1+8\n"},
                    Sample{"TYPE A=SELECT(B,(* C *)D);END_TYPE;",
                           "TYPE@1:1+4 A@1:6+1 |B@1:15+1 |D@1:24+1\nEND_TYPE@1:27+8\n"},
                    Sample{"TYPE A = B;\n WHERE\n  W : SELF > 0;\n  V : {0 < SELF < 2};\nEND_TYPE;",
                           "TYPE@1:1+4 A@1:6+1 :B@1:10+1\n  where W@3:3+1 = SELF > 0\n"
                           "  where V@4:3+1 = {0 < SELF < 2}\nEND_TYPE@5:1+8\n"}));

INSTANTIATE_TEST_SUITE_P(
    Entities, ExpressPositionsOf,
    testing::Values(
        Sample{"ENTITY A\n ABSTRACT SUPERTYPE OF (ONEOF\n  (B\n  ,C))\n SUBTYPE OF (D);\nEND_ENTITY;",
               "ENTITY@1:1+6 A@1:8+1 abstract >B@3:4+1 >C@4:4+1 <D@5:14+1\nEND_ENTITY@6:1+10\n"},
        // Columns count code points; a tab is one.
        Sample{"ENTITY A;\n\tB : (* \xC3\xA4\xC3\xB6 *) OPTIONAL C;\nEND_ENTITY;",
               "ENTITY@1:1+6 A@1:8+1\n  attribute B@2:2+1 :C@2:24+1\nEND_ENTITY@3:1+10\n"},
        Sample{"ENTITY \xC3\x84;\nEND_ENTITY;", "ENTITY@1:1+6 \xC3\x84@1:8+1\nEND_ENTITY@2:1+10\n"},
        Sample{"ENTITY A;\n B, C : LIST [1:?] OF D;\nEND_ENTITY;",
               "ENTITY@1:1+6 A@1:8+1\n  attribute B@2:2+1 :D@2:23+1\n  attribute C@2:5+1\n"
               "END_ENTITY@3:1+10\n"},
        Sample{"ENTITY A;\n INVERSE\n  B : SET [0:1] OF C FOR D;\nEND_ENTITY;",
               "ENTITY@1:1+6 A@1:8+1\n  inverse B@3:3+1 :C@3:20+1 for D@3:26+1\nEND_ENTITY@4:1+10\n"},
        Sample{"ENTITY A;\n DERIVE\n  SELF\\B.C : D := F(1, 'x;');\n  E : REAL := 2.;\nEND_ENTITY;",
               "ENTITY@1:1+6 A@1:8+1\n  derived C@3:10+1 self B@3:8+1 :D@3:14+1 = F(1, 'x;')\n"
               "  derived E@4:3+1 = 2.\nEND_ENTITY@5:1+10\n"},
        Sample{"ENTITY A;\n UNIQUE\n  U : B, SELF\\C.D;\n  E;\nEND_ENTITY;",
               "ENTITY@1:1+6 A@1:8+1\n  unique U@3:3+1 u B@3:7+1 u C@3:15+1 u D@3:17+1\n"
               "  unique @4:3+1 u E@4:3+1\nEND_ENTITY@5:1+10\n"},
        Sample{"ENTITY A;\n WHERE\n  W : B -- tail ;\n   > 0;\nEND_ENTITY;",
               "ENTITY@1:1+6 A@1:8+1\n  where W@3:3+1 = B -- tail ;\n   > 0\nEND_ENTITY@5:1+10\n"}));

INSTANTIATE_TEST_SUITE_P(
    Bodies, ExpressPositionsOf,
    testing::Values(
        Sample{"FUNCTION F\n (A : REAL) : REAL;\n RETURN (A);\nEND_FUNCTION;",
               "FUNCTION@1:1+8 F@1:10+1\n  body (A : REAL) : REAL;\n RETURN (A);\nEND_FUNCTION@4:1+12\n"},
        Sample{"FUNCTION F;\n FUNCTION G;\n END_FUNCTION;\nEND_FUNCTION;",
               "FUNCTION@1:1+8 F@1:10+1\n  body ;\n FUNCTION G;\n END_FUNCTION;\nEND_FUNCTION@4:1+12\n"},
        Sample{"RULE R FOR\n (A, B);\n WHERE\n  W : TRUE;\nEND_RULE;",
               "RULE@1:1+4 R@1:6+1 r A@2:3+1 r B@2:6+1\n  body ;\n WHERE\n  W : TRUE;\nEND_RULE@5:1+8\n"},
        Sample{
            "CONSTANT\n C : REAL := 1.;\nEND_CONSTANT;\nPROCEDURE P;\nEND_PROCEDURE;",
            "CONSTANT@1:1+8 C@2:2+1\n@0:0+0\nPROCEDURE@4:1+9 P@4:11+1\n  body ;\nEND_PROCEDURE@5:1+13\n"}));

// Mistakes cost what they are part of, and no more.
INSTANTIATE_TEST_SUITE_P(
    Mistakes, ExpressPositionsOf,
    testing::Values(
        Sample{"ENTITY A;\n B : C;\nENTITY D;\nEND_ENTITY;",
               "ENTITY@1:1+6 A@1:8+1\n  attribute B@2:2+1 :C@2:6+1\n@3:1+6\n"
               "ENTITY@3:1+6 D@3:8+1\nEND_ENTITY@4:1+10\n"},
        Sample{"ENTITY A;\n B : C\n D : E;\nEND_ENTITY;",
               "ENTITY@1:1+6 A@1:8+1\n  attribute B@2:2+1 :C@2:6+1\n  attribute D@3:2+1 :E@3:6+1\n"
               "END_ENTITY@4:1+10\n"},
        Sample{"ENTITY END_ENTITY;", "ENTITY@1:1+6 @1:8+10\nEND_ENTITY@1:8+10\n"},
        Sample{"entity a; end_entity;", "entity@1:1+6 a@1:8+1\nend_entity@1:11+10\n"},
        Sample{"TYPE A = SELECT (B\nTYPE C = REAL;\nEND_TYPE;",
               "TYPE@1:1+4 A@1:6+1 |B@1:18+1\n@2:1+4\nTYPE@2:1+4 C@2:6+1\nEND_TYPE@3:1+8\n"},
        Sample{"FUNCTION F;\n RETURN;\nFUNCTION G;\nEND_FUNCTION;",
               "FUNCTION@1:1+8 F@1:10+1\n  body ;\n RETURN;\n@3:1+8\nFUNCTION@3:1+8 G@3:10+1\n  body ;\n"
               "END_FUNCTION@4:1+12\n"},
        Sample{"ENTITY A;\n WHERE\n  W : 'open;\n  V : B;\nEND_ENTITY;",
               "ENTITY@1:1+6 A@1:8+1\n  where W@3:3+1 = 'open;\n  where V@4:3+1 = B\nEND_ENTITY@5:1+10\n"},
        Sample{"TYPE A = REAL;", "TYPE@1:1+4 A@1:6+1\n@1:15+0\n"}));

TEST(ExpressPositions, ACommentThatNothingClosesEndsWithItsLine) {
    const auto positions = expressPositions("TYPE A = REAL; (* open\nEND_TYPE;\n(* (* *)\nTYPE B = REAL;");
    EXPECT_EQ(positions.declarations.size(), 2U);
    EXPECT_EQ(positions.openComment, (TextPosition{1, 16, 2}));
}

TEST(ExpressPositions, ClosedCommentsAreNotReported) {
    EXPECT_EQ(expressPositions("(* (* ( * *) *) TYPE A = REAL;").openComment.line, 0U);
    EXPECT_EQ(expressPositions("TYPE A = REAL;").openComment.line, 0U);
}

std::string sStrayEnds(std::string_view text) {
    std::string dump;
    for (const auto& end : expressPositions(text).strayEnds)
        dump += sWord(end) + ' ';
    return dump;
}

TEST(ExpressPositions, EndsOfDeclarationsWithoutABeginningAreSeen) {
    EXPECT_EQ(sStrayEnds("END_TYPE;\nTYPE A = REAL;\nEND_TYPE;\n B : REAL;\nend_entity;"),
              "END_TYPE@1:1+8 end_entity@5:1+10 ");
    EXPECT_EQ(sStrayEnds("CONSTANT\n A : REAL := 1.;\nEND_CONSTANT;\nEND_RULE;"), "END_RULE@4:1+8 ");
    // Where a declaration is open, that is a wrong end of it.
    EXPECT_EQ(sStrayEnds("ENTITY A;\nEND_TYPE;\nENTITY B;\nEND_ENTITY;"), "");
    EXPECT_EQ(sStrayEnds("SCHEMA A;\n(* END_TYPE *)\nEND_SCHEMA;"), "");
}

TEST(ExpressPositions, EncodingAndLineEndsAreSeen) {
    const std::string_view wide("S\0C\0H\0E\0M\0A\0 \0A\0;\0", 18);
    EXPECT_EQ(expressPositions(wide).encoding, ExpressEncoding::Utf16);
    EXPECT_EQ(expressPositions("\xFF\xFES").encoding, ExpressEncoding::Utf16);
    EXPECT_EQ(expressPositions("SCHEMA A;").encoding, ExpressEncoding::Bytes);
    EXPECT_TRUE(expressPositions("SCHEMA A;\rEND_SCHEMA;\r").hasReturnsOnly);
    EXPECT_FALSE(expressPositions("SCHEMA A;\r\nEND_SCHEMA;\r\n").hasReturnsOnly);
    EXPECT_FALSE(expressPositions("SCHEMA A;").hasReturnsOnly);
}

} // namespace

} // namespace kiv::kit
