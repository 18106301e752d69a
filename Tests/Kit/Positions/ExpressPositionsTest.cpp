#include "kiv/Kit/Positions/ExpressPositions.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <span>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

std::string sPlace(const TextPosition& position) {
    return std::to_string(position.line) + ':' + std::to_string(position.column) + '+' +
           std::to_string(position.length);
}

std::string sWord(const ExpressPositions& positions, const ExpressWord& word) {
    return std::string(word.text) + '@' + sPlace(positions.positionOf(word));
}

/// Everything that was found, a line for each declaration and member.
std::string sDump(const ExpressPositions& positions) {
    static constexpr std::string_view Uses[] = {"<", ">", ":", "#", "|", "for ", "self ", "u ", "r "};
    static constexpr std::string_view Members[] = {"attribute", "inverse", "derived", "unique", "where"};
    const auto namesText = [&](std::span<const ExpressName> names) {
        std::string text;
        for (const auto& name : names)
            text.append(" ")
                .append(Uses[static_cast<std::size_t>(name.use)])
                .append(sWord(positions, name.word));
        return text;
    };
    std::string dump;
    for (const auto& schema : positions.schemas)
        dump += sWord(positions, schema.keyword) + ' ' + sWord(positions, schema.name) + '\n';
    for (const auto& declaration : positions.declarations) {
        dump += sWord(positions, declaration.keyword) + ' ' + sWord(positions, declaration.name);
        dump += (declaration.isAbstract ? " abstract" : "") + namesText(declaration.names) + '\n';
        for (const auto& member : declaration.members) {
            dump.append("  ").append(Members[static_cast<std::size_t>(member.kind)]);
            dump += ' ' + sWord(positions, member.name) + namesText(member.names);
            if (!member.expression.empty())
                dump += " = " + std::string(member.expression);
            dump += '\n';
        }
        if (!declaration.body.empty())
            dump.append("  body ").append(declaration.body).append("\n");
        dump += sWord(positions, declaration.end) + '\n';
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
    EXPECT_EQ(positions.positionOf(positions.openComment), (TextPosition{1, 16, 2}));
}

TEST(ExpressPositions, ClosedCommentsAreNotReported) {
    for (const auto* text : {"(* (* ( * *) *) TYPE A = REAL;", "TYPE A = REAL;"}) {
        const auto positions = expressPositions(text);
        EXPECT_EQ(positions.positionOf(positions.openComment).line, 0U);
    }
}

std::string sStrayEnds(std::string_view text) {
    std::string dump;
    const auto positions = expressPositions(text);
    for (const auto& end : positions.strayEnds)
        dump += sWord(positions, end) + ' ';
    return dump;
}

std::string sStrayTexts(std::string_view text) {
    std::string dump;
    const auto positions = expressPositions(text);
    for (const auto& word : positions.strayTexts)
        dump += sWord(positions, word) + ' ';
    return dump;
}

TEST(ExpressPositions, TextsBetweenDeclarationsAreSeen) {
    EXPECT_EQ(sStrayTexts("q;\nSCHEMA A;\nx;\nTYPE B = REAL;\nEND_TYPE;;\ny z;\n w\nEND_SCHEMA;\nv;"),
              "x@3:1+1 y@6:1+1 ");
    EXPECT_EQ(sStrayTexts("SCHEMA A;\nTYPE B = REAL;\nEND_TYPE;\n(5)"), "(@4:1+1 ");
    // Statements of EXPRESS that declare nothing which is read.
    EXPECT_EQ(sStrayTexts("SCHEMA A;\nUSE FROM B (C AS D);\nreference from E;\nSUBTYPE_CONSTRAINT F FOR G;\n"
                          " ABSTRACT SUPERTYPE;\nEND_SUBTYPE_CONSTRAINT;\nx;\n"),
              "x@7:1+1 ");
    EXPECT_EQ(sStrayTexts("SCHEMA A;\nSUBTYPE_CONSTRAINT B FOR C;\nTYPE D = REAL;\nEND_TYPE;"), "");
}

TEST(ExpressPositions, EndsOfDeclarationsWithoutABeginningAreSeen) {
    EXPECT_EQ(sStrayEnds("END_TYPE;\nTYPE A = REAL;\nEND_TYPE;\n B : REAL;\nend_entity;"),
              "END_TYPE@1:1+8 end_entity@5:1+10 ");
    EXPECT_EQ(sStrayEnds("CONSTANT\n A : REAL := 1.;\nEND_CONSTANT;\nEND_RULE;"), "END_RULE@4:1+8 ");
    // Where a declaration is open, that is a wrong end of it.
    EXPECT_EQ(sStrayEnds("ENTITY A;\nEND_TYPE;\nENTITY B;\nEND_ENTITY;"), "");
    EXPECT_EQ(sStrayEnds("SCHEMA A;\n(* END_TYPE *)\nEND_SCHEMA;"), "");
}

/// A line for each declaration: its keyword, name and end, then what is wrong with them.
std::string sMistakes(std::string_view text) {
    std::string dump;
    const auto positions = expressPositions(text);
    for (const auto& declaration : positions.declarations) {
        dump += sWord(positions, declaration.keyword) + ' ' + sWord(positions, declaration.name) + ' ' +
                sWord(positions, declaration.end);
        for (const auto& [word, keyword] : declaration.mistakes->misspelt)
            dump += " | " + sWord(positions, word) + ' ' + std::string(keyword);
        for (const auto& [name, place] : declaration.mistakes->illegalNames)
            dump += " ! " + sWord(positions, name) + ' ' + sPlace(positions.positionOf(place));
        dump += '\n';
    }
    return dump;
}

TEST(ExpressPositions, MisspeltDeclarationsAreRead) {
    EXPECT_EQ(sMistakes("SCHEMA A;\nENTITIY B;\nEND_ENTITY;\nTYP C = REAL;\nEND_TPYE;\nFUNCTON D : REAL;\n"
                        "END FUNCTION;\n"),
              "ENTITIY@2:1+7 B@2:9+1 END_ENTITY@3:1+10\nTYP@4:1+3 C@4:5+1 END_TPYE@5:1+8\n"
              "FUNCTON@6:1+7 D@6:9+1 END FUNCTION@7:1+12\n");
    // Only what is in capitals and begins a line of a schema.
    EXPECT_EQ(sMistakes("SCHEMA A;\nEntitiy B;\nEND_ENTITY;\nof ENTITIY C;\n"), "");
    EXPECT_EQ(sMistakes("ENTITIY B;\nEND_ENTITY;\n"), "");
    EXPECT_EQ(sMistakes("SCHEMA A;\n(* open\nTYPES of walls\n"), "");
}

TEST(ExpressPositions, MisspeltClausesBegin) {
    const std::string entity =
        "ENTITY A\n ABSTRCT SUPERTYPE OF (ONEOF\n (B))\n SUBTYP OF (C);\n D : E;\n INVERS\n"
        " F : SET [0:?] OF G FOR H;\n DERIV\n I : J := 1;\n UNIQE\n K : D;\n WERE\n"
        " L : D > 0;\nEND_ENTITY;\n";
    EXPECT_EQ(sMistakes(entity),
              "ENTITY@1:1+6 A@1:8+1 END_ENTITY@14:1+10 | ABSTRCT@2:2+7 ABSTRACT"
              " | SUBTYP@4:2+6 SUBTYPE | INVERS@6:2+6 INVERSE | DERIV@8:2+5 DERIVE | UNIQE@10:2+5 UNIQUE"
              " | WERE@12:2+4 WHERE\n");
    std::string right = entity;
    const auto positions = expressPositions(entity);
    for (const auto& [word, keyword] : positions.declarations.at(0).mistakes->misspelt)
        right.replace(right.find(word.text), word.text.size(), keyword);
    const auto namesOf = [](std::string_view text) {
        std::string names;
        const auto read = expressPositions(text);
        for (const auto& member : read.declarations.at(0).members)
            names += std::to_string(static_cast<int>(member.kind)) + std::string(member.name.text) + ' ';
        return names;
    };
    EXPECT_EQ(namesOf(entity), "0D 1F 2I 3K 4L ");
    EXPECT_EQ(namesOf(right), namesOf(entity));
    EXPECT_EQ(sMistakes("ENTITY A\n SUPERTPE OF (B);\nEND_ENTITY;\n"),
              "ENTITY@1:1+6 A@1:8+1 END_ENTITY@3:1+10 | SUPERTPE@2:2+8 SUPERTYPE\n");
    EXPECT_EQ(sMistakes("TYPE A = REAL;\n WHER\n W : SELF > 0;\nEND_TYPE;\n"),
              "TYPE@1:1+4 A@1:6+1 END_TYPE@4:1+8 | WHER@2:2+4 WHERE\n");
    EXPECT_EQ(sMistakes("ENTITY A;\n where\n W : B;\nEND_ENTITY;\n"),
              "ENTITY@1:1+6 A@1:8+1 END_ENTITY@4:1+10 | where@2:2+5 WHERE\n");
}

TEST(ExpressPositions, NamesAndExpressionsAreNoMisspeltKeywords) {
    EXPECT_EQ(sMistakes("ENTITY A;\n INVERS : B;\n WERE, UNIQE : C;\n WHERE\n WHER NOT B;\nEND_ENTITY;\n"),
              "ENTITY@1:1+6 A@1:8+1 END_ENTITY@6:1+10\n");
    EXPECT_EQ(
        sMistakes("FUNCTION F : REAL;\n IF A THEN B;\n END_IF;\n END_LOCAL;\n BEGIN\n END;\nEND_FUNCTION;\n"),
        "FUNCTION@1:1+8 F@1:10+1 END_FUNCTION@7:1+12\n");
}

TEST(ExpressPositions, IllegalCharactersBelongToTheName) {
    EXPECT_EQ(sMistakes("ENTITY A-B;\n C-D : E;\n 2F : G;\n H.2 : I;\nEND_ENTITY;\n"),
              "ENTITY@1:1+6 A-B@1:8+3 END_ENTITY@5:1+10 ! A-B@1:8+3 1:9+1 ! C-D@2:2+3 2:3+1 ! 2F@3:2+2 3:2+1"
              " ! H.2@4:2+3 4:3+1\n");
    EXPECT_EQ(sMistakes("TYPE A = ENUMERATION OF\n (B\n ,C-D);\nEND_TYPE;\n"),
              "TYPE@1:1+4 A@1:6+1 END_TYPE@4:1+8 ! C-D@3:3+3 3:4+1\n");
    // A comment, and what is not right after the name.
    EXPECT_EQ(
        sMistakes("ENTITY A--B\n;\n C : B - D;\n UNIQUE\n U : B;\n WHERE\n W : B-C > 0;\nEND_ENTITY;\n"),
        "ENTITY@1:1+6 A@1:8+1 END_ENTITY@8:1+10\n");
}

TEST(ExpressPositions, NamesOfDeclarationsMayHaveABlankByMistake) {
    EXPECT_EQ(
        sMistakes("ENTITY A B;\nEND_ENTITY;\nTYPE C D = REAL;\nEND_TYPE;\nRULE E F FOR (A);\nEND_RULE;\n"
                  "FUNCTION G H (I : REAL) : REAL;\nEND_FUNCTION;\n"),
        "ENTITY@1:1+6 A B@1:8+3 END_ENTITY@2:1+10\nTYPE@3:1+4 C D@3:6+3 END_TYPE@4:1+8\n"
        "RULE@5:1+4 E F@5:6+3 END_RULE@6:1+8\nFUNCTION@7:1+8 G H@7:10+3 END_FUNCTION@8:1+12\n");
    EXPECT_EQ(
        sMistakes("ENTITY A SUBTYPE OF (B);\nEND_ENTITY;\nTYPE C STRING;\nEND_TYPE;\nENTITY D\n E : REAL;\n"
                  "END_ENTITY;\n"),
        "ENTITY@1:1+6 A@1:8+1 END_ENTITY@2:1+10\nTYPE@3:1+4 C@3:6+1 END_TYPE@4:1+8\n"
        "ENTITY@5:1+6 D@5:8+1 END_ENTITY@7:1+10\n");
}

TEST(ExpressPositions, WhatIsNoPartOfTheTextHasNoPlace) {
    const std::string text = "ENTITY A;\nEND_ENTITY;\n";
    const auto positions = expressPositions(text);
    const std::string other = "A\nB";
    for (const auto& word :
         {std::string_view(), std::string_view(other), std::string_view(other).substr(0, 0)})
        EXPECT_EQ(positions.positionOf({word}), TextPosition());
    EXPECT_EQ(positions.positionOf({std::string_view(text).substr(8)}), (TextPosition{1, 9, 1}));
}

TEST(ExpressPositions, KeywordsOfTypesAreSeenInOtherLetterCases) {
    const auto positions = expressPositions(
        "TYPE A = list [1:?] Of BAG;\nEND_TYPE;\nENTITY B;\n C, D : Optional REAL;\n INVERSE\n"
        " E : SET OF B for C;\nEND_ENTITY;\n");
    ASSERT_EQ(positions.declarations.size(), 2U);
    const auto& type = positions.declarations[0].mistakes->typeMisspelt;
    ASSERT_EQ(type.size(), 2U);
    EXPECT_EQ(sWord(positions, type[0].word), "list@1:10+4");
    EXPECT_EQ(type[0].keyword, "LIST");
    EXPECT_EQ(sWord(positions, type[1].word), "Of@1:21+2");
    const auto& members = positions.declarations[1].members;
    ASSERT_EQ(members.size(), 3U);
    // What attributes share is there once.
    const auto misspeltOf = [&](std::size_t member) { return misspeltIn(positions.declarations[1], member); };
    ASSERT_EQ(misspeltOf(0).size(), 1U);
    EXPECT_EQ(sWord(positions, misspeltOf(0)[0].word), "Optional@4:9+8");
    EXPECT_TRUE(misspeltOf(1).empty());
    ASSERT_EQ(misspeltOf(2).size(), 1U);
    EXPECT_EQ(misspeltOf(2)[0].keyword, "FOR");
}

TEST(ExpressPositions, BoundsAreSeenWithoutColonAndSwapped) {
    const auto positions =
        expressPositions("TYPE A = LIST [1;2];\nEND_TYPE;\nENTITY B;\n C : SET [ 3 : 2 ] OF ARRAY "
                         "[1..F[2:1]] OF REAL;\n D : LIST [N:1] OF LIST [0:?] OF REAL;\n"
                         "END_ENTITY;\n");
    ASSERT_EQ(positions.declarations.size(), 2U);
    const auto& entity = positions.declarations[1];
    ASSERT_EQ(entity.mistakes->swappedBounds.size(), 1U);
    EXPECT_EQ(sWord(positions, entity.mistakes->swappedBounds[0]), "[ 3 : 2 ]@4:10+9");
    ASSERT_EQ(entity.mistakes->gaps.size(), 1U);
    EXPECT_EQ(sWord(positions, entity.mistakes->gaps[0].last), "[1..F[2:1]]@4:29+11");
    EXPECT_EQ(entity.mistakes->gaps[0].missing, "\":\"");
    EXPECT_TRUE(entity.mistakes->gaps[0].isInside);
    EXPECT_TRUE(entity.mistakes->gaps[0].isInMember);
}

TEST(ExpressPositions, ItemsWithoutBracketsAreItems) {
    const auto positions = expressPositions("TYPE A = SELECT B, C;\nEND_TYPE;\n");
    ASSERT_EQ(positions.declarations.size(), 1U);
    const auto& type = positions.declarations[0];
    ASSERT_EQ(type.names.size(), 2U);
    EXPECT_EQ(sWord(positions, type.names[0].word), "B@1:17+1");
    EXPECT_EQ(sWord(positions, type.names[1].word), "C@1:20+1");
    ASSERT_EQ(type.mistakes->gaps.size(), 1U);
    EXPECT_EQ(type.mistakes->gaps[0].missing, "\"(\"");
}

/// The words of the second attribute lack the semicolon too, so that they are rather none.
TEST(ExpressPositions, AColonThatIsMissingBeforeIsKept) {
    const auto positions = expressPositions("ENTITY A;\n B REAL;\n C REAL\nEND_ENTITY;\n");
    ASSERT_EQ(positions.declarations.size(), 1U);
    const auto& gaps = positions.declarations[0].mistakes->gaps;
    ASSERT_EQ(gaps.size(), 1U);
    EXPECT_EQ(gaps[0].missing, "\":\"");
    EXPECT_EQ(sWord(positions, gaps[0].last), "B@2:2+1");
}

TEST(ExpressPositions, AMisspeltSchemaIsOneUnlessThereIsAnother) {
    const auto misspelt = expressPositions("SCEMA A;\nEND_SCEMA;\n");
    ASSERT_EQ(misspelt.schemas.size(), 1U);
    EXPECT_EQ(sWord(misspelt, misspelt.schemas[0].keyword), "SCEMA@1:1+5");
    EXPECT_EQ(sWord(misspelt, misspelt.schemas[0].end), "END_SCEMA@2:1+9");
    EXPECT_EQ(expressPositions("SCHEMA A;\nSCEMA B;\n").schemas.size(), 1U);
}

TEST(ExpressPositions, OfWhatGoesOnOnAnotherLineTheFirstTokenIsMarked) {
    const auto positions =
        expressPositions("\xEF\xBB\xBFSCHEMA \xC3\x84;\nTYPE A = LIST [5\n :2] OF B;\n"
                         "END (* b *)\n TYPE;\nTYPE C = LIST [5 : 2] OF D;\nEND (* c *) TYPE;\n");
    ASSERT_EQ(positions.declarations.size(), 2U);
    const auto placesOf = [&](const ExpressDeclaration& type) {
        return sPlace(positions.positionOf(type.mistakes->swappedBounds.front())) + ' ' +
               sPlace(positions.positionOf(type.end));
    };
    EXPECT_EQ(placesOf(positions.declarations[0]), "2:15+1 4:1+3");
    EXPECT_EQ(placesOf(positions.declarations[1]), "6:15+7 7:1+16");
    EXPECT_EQ(positions.positionOf(positions.schemas.at(0).name), (TextPosition{1, 8, 1}));
}

TEST(ExpressPositions, WhatIsNotInTheTextHasNoPlace) {
    EXPECT_EQ(expressPositions("TYPE A = REAL;").positionOf({}), TextPosition());
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
