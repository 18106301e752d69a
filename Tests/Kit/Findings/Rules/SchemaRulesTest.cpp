#include "Kit/Findings/Rules/SchemaRules.h"

#include "kiv/Kit/Documents/SchemaFile.h"
#include "kiv/Kit/Findings/SchemaFindings.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::kit {

namespace {

std::vector<Finding> findingsOfText(std::string_view text) {
    const auto file = schemaTextRead(std::string(text), "a.exp");
    auto findings = schemaFindingsOf(file.schema.get(), file.assertions, text, "a.exp");
    // Who asks only whether there are errors gets the same answer, whatever the schema.
    const bool hasErrors = std::ranges::find(findings, Severity::Error, &Finding::severity) != findings.end();
    EXPECT_EQ(hasSchemaErrors(file.schema.get(), file.assertions, text), hasErrors) << text;
    return findings;
}

std::string sPlace(const TextPosition& position) {
    return std::to_string(position.line) + ':' + std::to_string(position.column) + '+' +
           std::to_string(position.length);
}

/// A line for each finding and each note.
std::string sDump(const std::vector<Finding>& findings) {
    static constexpr std::string_view Severities[] = {"note", "warning", "error"};
    std::string dump;
    for (const auto& finding : findings) {
        dump += sPlace(finding.place.position) + ' ';
        dump.append(finding.code).append(" ");
        dump.append(Severities[static_cast<std::size_t>(finding.severity)]).append(": ");
        dump += finding.message + '\n';
        for (const auto& note : finding.notes)
            dump += "  " + (note.place ? sPlace(note.place->position) + ' ' : "") + note.message + '\n';
    }
    return dump;
}

std::string sSchema(std::string_view statements) {
    return "SCHEMA A;\n" + std::string(statements) + "END_SCHEMA;\n";
}

struct Sample {
    /// What follows the SCHEMA line, which is line 1.
    std::string statements;
    std::string findings;
};

class SchemaFindingsOf : public testing::TestWithParam<Sample> {};

TEST_P(SchemaFindingsOf, IsExact) {
    EXPECT_EQ(sDump(findingsOfText(sSchema(GetParam().statements))), GetParam().findings)
        << GetParam().statements;
}

INSTANTIATE_TEST_SUITE_P(
    Semicolons, SchemaFindingsOf,
    testing::Values(
        Sample{"TYPE B = REAL\nEND_TYPE;\n", "2:10+4 E009 warning: \";\" is missing after \"REAL\"\n"},
        Sample{"TYPE B = REAL;\nEND_TYPE\nTYPE C = REAL;\nEND_TYPE;\n",
               "3:1+8 E009 warning: \";\" is missing after \"END_TYPE\"\n"},
        Sample{"TYPE B = ENUMERATION OF\n (D\n ,E)\nEND_TYPE;\n",
               "4:4+1 E009 warning: \";\" is missing after \")\"\n"},
        Sample{"ENTITY B\n C : REAL;\nEND_ENTITY;\n", "2:8+1 E009 warning: \";\" is missing after \"B\"\n"},
        Sample{"ENTITY B;\n C : LIST [0:?] OF UNIQUE REAL\n D : REAL;\nEND_ENTITY;\n",
               "3:27+4 E009 warning: \";\" is missing after \"REAL\"\n"},
        Sample{"ENTITY B;\n C : REAL;\n UNIQUE\n U : C\nEND_ENTITY;\n",
               "5:6+1 E009 warning: \";\" is missing after \"C\"\n"},
        // What comes next is lost because of it, and is no finding of its own.
        Sample{"ENTITY B;\nEND_ENTITY;\nENTITY C\n SUBTYPE OF (B)\n D : REAL;\nEND_ENTITY;\n",
               "5:15+1 E009 error: \";\" is missing after \")\"\n"
               "  5:14+1 the supertype \"B\" of \"C\" is not read\n"},
        // What is inside of functions is not looked at.
        Sample{"FUNCTION F : REAL;\n RETURN (1)\nEND_FUNCTION;\n", ""}));

INSTANTIATE_TEST_SUITE_P(
    MembersAndUniqueRules, SchemaFindingsOf,
    testing::Values(
        Sample{"TYPE Barrier = SELECT\n\t(Wall\n\t,Fence);\nEND_TYPE;\nENTITY Wall;\nEND_ENTITY;\n",
               "4:3+5 E014 error: the member \"Fence\" of \"Barrier\" is not declared\n"
               "  reported while reading: Object not found\n"},
        Sample{"TYPE Barrier = SELECT\n\t(Wall, Height);\nEND_TYPE;\nENTITY Wall;\nEND_ENTITY;\n"
               "FUNCTION Height (Of : Wall) : REAL;\n RETURN (1.);\nEND_FUNCTION;\n",
               "3:9+6 E014 error: the member \"Height\" of \"Barrier\" is a function, not a type\n"
               "  7:10+6 it is declared here\n"},
        Sample{"ENTITY Wall;\n\tMark : STRING;\n UNIQUE\n\tUR1 : Marks;\nEND_ENTITY;\n",
               "5:8+5 E017 warning: the entity \"Wall\" has no attribute \"Marks\"\n"
               "  did you mean \"Mark\"?\n"},
        Sample{
            "ENTITY Wall;\n\tMark : STRING;\n UNIQUE\n\tUR1 : Mark, Storey;\n\tUR2 : Storey;\nEND_ENTITY;\n",
            "5:14+6 E017 warning: the entity \"Wall\" has no attribute \"Storey\"\n"
            "  6:8+6 it is also used in the rule \"Wall.UR2\"\n"}));

INSTANTIATE_TEST_SUITE_P(
    BetweenDeclarations, SchemaFindingsOf,
    testing::Values(
        Sample{"ENTITY B;\nEND_ENTITY;\n X : REAL;\n Y : REAL;\nTYPE C = REAL;\nEND_TYPE;\nhello there;\n",
               "4:2+1 E023 warning: what begins with \"X\" is in no declaration, and is passed over\n"
               "8:1+5 E023 warning: what begins with \"hello\" is in no declaration, and is passed over\n"},
        Sample{"= 5;\nTYPE C = REAL;\nEND_TYPE;\n",
               "2:1+1 E023 warning: what begins with \"=\" is in no declaration, and is passed over\n"},
        Sample{"USE FROM B (C, D);\nREFERENCE FROM E;\nTYPE C = REAL;\nEND_TYPE;;\nCONSTANT\n G : REAL := "
               "1.;\nEND_CONSTANT;\n(* text *)\n-- text\n",
               ""},
        // It is what is left of a declaration, which has a finding.
        Sample{
            "TYPE C = REAL;\nEND_TYPE;\nenity B;\n X : REAL;\nEND_ENTITY;\n",
            "6:5+6 E005 error: the line that begins an ENTITY is missing, and this one is read as one\n"}));

/// A function "F" with the parameter "X"; the statements begin in line 3.
std::string sBody(std::string_view statements) {
    return "FUNCTION F (X : REAL) : REAL;\n" + std::string(statements) + " RETURN (X);\nEND_FUNCTION;\n";
}

INSTANTIATE_TEST_SUITE_P(
    Bodies, SchemaFindingsOf,
    testing::Values(
        Sample{sBody(" IF X > 1. RETURN (1.);\n END_IF;\n"),
               "3:2+2 E024 warning: THEN of this IF is missing in \"F\"\n"},
        Sample{sBody(" IF X > 1.\n X := 1.;\n END_IF;\n"),
               "3:2+2 E024 warning: THEN of this IF is missing in \"F\"\n"},
        Sample{sBody(" IF X > 1. THEN\n RETURN (1.);\n"),
               "3:2+2 E024 warning: END_IF of this IF is missing in \"F\"\n"},
        Sample{sBody(" IF X > 1. THEN\n  REPEAT I := 1 TO 3;\n  SKIP;\n END_IF;\n"),
               "4:3+6 E024 warning: END_REPEAT of this REPEAT is missing in \"F\"\n"},
        Sample{sBody(" END_CASE;\n"), "3:2+8 E024 warning: this END_CASE ends nothing in \"F\"\n"},
        Sample{sBody(" LOCAL\n  Y : REAL := X;\n X := Y;\n"),
               "3:2+5 E024 warning: END_LOCAL of this LOCAL is missing in \"F\"\n"},
        Sample{sBody(" LOCAL\n  Y : REAL := X;\n END_LOCAL;\n IF X > 1. THEN\n  BEGIN\n   X := Y;\n  END;\n "
                     "ELSE IF X > 2. THEN\n  SKIP;\n END_IF;\n END_IF;\n CASE X OF\n  1. : RETURN (1.);\n  "
                     "OTHERWISE : SKIP;\n END_CASE;\n REPEAT I := 1 TO 3 WHILE X > 1.;\n  ESCAPE;\n "
                     "END_REPEAT;\n ALIAS Z FOR X;\n  Z := 1.;\n END_ALIAS;\n"),
               ""},
        // A misspelt keyword is one mistake.
        Sample{sBody(" IF X > 1. THNE RETURN (1.);\n END_IF;\n"),
               "3:12+4 E018 warning: the name \"THNE\" is not declared in \"F\"\n"
               "  did you mean \"THEN\"?\n"}));

TEST(SchemaFindings, EndOfASchemaIsMissed) {
    const std::string schema = "SCHEMA A;\nTYPE B = REAL;\nEND_TYPE;\n";
    EXPECT_EQ(sDump(findingsOfText(schema)),
              "1:8+1 E019 warning: the end of the schema \"A\" is missing: no line has END_SCHEMA\n");
    EXPECT_EQ(sDump(findingsOfText(schema + "end_schema;\n")),
              "4:1+10 E019 warning: the end of the schema \"A\" is written \"end_schema\", and is found in "
              "capitals only\n");
    EXPECT_EQ(sDump(findingsOfText(schema + "END_SCHEMA\n")),
              "4:1+10 E009 warning: \";\" is missing after \"END_SCHEMA\"\n");
    EXPECT_EQ(sDump(findingsOfText(schema + "END_SCEMA;\n")),
              "4:1+9 E019 warning: the end of the schema \"A\" is written \"END_SCEMA\"\n"
              "  did you mean \"END_SCHEMA\"?\n");
    // A file that was cut off.
    EXPECT_EQ(sDump(findingsOfText(schema + "ENTITY C;\n D : REA")),
              "1:8+1 E019 error: the end of the schema \"A\" is missing: no line has END_SCHEMA\n"
              "  4:8+1 END_ENTITY of ENTITY \"C\" is missing\n");
    EXPECT_EQ(sDump(findingsOfText("SCHEMA A\nTYPE B = REAL;\nEND_TYPE;\nEND_SCHEMA;\n")),
              "1:8+1 E009 warning: \";\" is missing after \"A\"\n");
    EXPECT_EQ(sDump(findingsOfText(schema + "END_SCHEMA;\n")), "");
}

TEST(SchemaFindings, OtherKindsOfFilesAreNamed) {
    const std::pair<std::string, std::string> rows[] = {
        {"%PDF-1.7\n", "a PDF document"},
        {"PK\x03\x04zip", "a ZIP archive"},
        {std::string("PK\x03\x04\x14\0\0\0\x08\0", 10), "a ZIP archive"},
        {"\n<!DOCTYPE html><p>", "an HTML page"},
        {"<html>SCHEMA", "an HTML page"},
        {"<?xml version='1.0'?><a/>", "an XML document"},
        {"ISO-10303-21;\nHEADER;\n", "an IFC model"},
        {"{\"a\": 1}", "a JSON document"},
    };
    for (const auto& [text, kind] : rows) {
        const auto findings = findingsOfText(text);
        ASSERT_EQ(findings.size(), 1) << text;
        EXPECT_EQ(findings[0].code, "E001");
        EXPECT_EQ(findings[0].message, "no schema was found: the file is " + kind);
        EXPECT_GT(findings[0].place.position.line, 0U);
    }
    const auto named = findingsOfText("<html>\nSCHEMA A;\n</html>\n");
    ASSERT_EQ(named.size(), 1);
    EXPECT_EQ(named[0].message, "the schema has no declarations: the file is an HTML page");
}

INSTANTIATE_TEST_SUITE_P(
    LostDeclarations, SchemaFindingsOf,
    testing::Values(
        Sample{"entity Door;\nend_entity;\nTYPE B = REAL;\nEND_TYPE;\n",
               "2:8+4 E002 error: ENTITY \"Door\" is not read: the keyword is written \"entity\", and is "
               "found in "
               "capitals only\n"},
        Sample{"TYPE B = REAL;\nEND_TYPE; TYPE C = REAL;\nEND_TYPE;\n",
               "3:16+1 E002 error: TYPE \"C\" is not read: its line is the one on which TYPE \"B\" ends\n"},
        Sample{"ENTITY B;\nEND_ENTITY;\nENTITY C SUBTYPE OF (B);\nEND_ENTITY;\n",
               "4:8+1 E002 error: ENTITY \"C\" is not read: its line is read as TYPE \"OF\"\n"
               "  write SUBTYPE and SUPERTYPE on lines of their own\n"
               "  reported while reading: Not type found\n"},
        Sample{"TYPE B=REAL;\nEND_TYPE;\n",
               "2:6+1 E002 error: TYPE \"B\" is read under the name \"B=REAL\"\n"
               "  write the name on the line of the keyword, and a blank or \";\" right after it\n"
               "  reported while reading: Not type found\n"},
        Sample{"ENTITY B; C : REAL; END_ENTITY;\nENTITY D;\nEND_ENTITY;\nTYPE E = REAL;\nEND_TYPE;\n",
               "2:8+1 E003 error: ENTITY \"B\" is on one line and is not read\n"
               "  3:8+1 ENTITY \"D\" is taken for a part of it and is lost\n"},
        Sample{"ENTITY B;\n\tC : REAL;\nTYPE D = REAL;\nEND_TYPE;\nENTITY E;\nEND_ENTITY;\n",
               "2:8+1 E004 error: END_ENTITY of ENTITY \"B\" is missing\n"
               "  4:6+1 TYPE \"D\" is taken for a part of it and is lost\n"
               "  6:8+1 ENTITY \"E\" is taken for a part of it and is lost\n"},
        Sample{
            "TYPE B = REAL;\nend_type;\nTYPE C = REAL;\nEND_TYPE;\n",
            "3:1+8 E004 error: the end of TYPE \"B\" is written \"end_type\", and is found in capitals only\n"
            "  4:6+1 TYPE \"C\" is taken for a part of it and is lost\n"},
        Sample{"ENTITY B;\n\tC : REAL; END_ENTITY;\nENTITY D;\nEND_ENTITY;\n",
               "3:12+10 E004 error: the end of ENTITY \"B\" is not seen: it must be on a line of its own\n"
               "  4:8+1 ENTITY \"D\" is taken for a part of it and is lost\n"},
        Sample{"-- Every TYPE is here.\nTYPE B = REAL;\nEND_TYPE;\nTYPE C = REAL;\nEND_TYPE;\n",
               "2:10+4 E005 error: a line that only mentions TYPE is read as the declaration of \"is\"\n"
               "  3:6+1 TYPE \"B\" is taken for a part of it and is lost\n"
               "  reported while reading: Not type found\n"},
        Sample{"FUNCTION F\n : REAL;\n -- END_FUNCTION is below\n RETURN (1.);\nEND_FUNCTION;\n",
               "2:10+1 E005 error: FUNCTION \"F\" is read up to a line that only mentions its end\n"}));

INSTANTIATE_TEST_SUITE_P(
    NamesLeftOut, SchemaFindingsOf,
    testing::Values(
        // What uses the name is not declared because of it.
        Sample{
            "ENTITY\n SUPERTYPE OF (ONEOF\n\t(C));\nEND_ENTITY;\nENTITY C\n SUBTYPE OF (B);\nEND_ENTITY;\n",
            "2:1+6 E002 error: a name is missing after \"ENTITY\"\n"
            "  7:14+1 the supertype \"B\" of \"C\" is not declared: that may be what this would declare\n"
            "  reported while reading: Entity not found\n"},
        Sample{"ENTITY ;\nEND_ENTITY;\n", "2:1+6 E002 error: a name is missing after \"ENTITY\"\n"},
        Sample{"TYPE = REAL;\nEND_TYPE;\nENTITY C;\n\tD : B;\nEND_ENTITY;\n",
               "2:1+4 E002 error: a name is missing after \"TYPE\"\n"
               "  5:6+1 the type \"B\" of \"C.D\" is not declared: that may be what this would declare\n"
               "  reported while reading: Not type found\n"},
        Sample{"ENTITY B;\nEND_ENTITY;\nRULE FOR (B);\n WHERE\n\tW : SIZEOF(B) = 1;\nEND_RULE;\n",
               "4:1+4 E002 error: a name is missing after \"RULE\"\n"},
        // Two names are missing: which is which is not known.
        Sample{"TYPE = REAL;\nEND_TYPE;\nTYPE = REAL;\nEND_TYPE;\nENTITY C;\n\tD : B;\nEND_ENTITY;\n",
               "2:1+4 E002 error: a name is missing after \"TYPE\"\n"
               "  reported while reading: Not type found\n"
               "4:1+4 E002 error: a name is missing after \"TYPE\"\n"
               "  reported while reading: Not type found\n"
               "7:6+1 E013 error: the type \"B\" of \"C.D\" is not declared\n"},
        Sample{"ENTITY B;\n\t : OPTIONAL REAL;\n\t: REAL;\n\tC, : REAL;\n\t, D : REAL;\nEND_ENTITY;\n",
               "3:3+1 E022 error: a name is missing before \":\"\n"
               "4:2+1 E022 error: a name is missing before \":\"\n"
               "5:5+1 E022 error: a name is missing before \":\"\n"
               "  5:2+1 the attribute \"C\" of \"B\" is not read\n"
               "6:2+1 E022 error: a name is missing before \",\"\n"
               "  6:4+1 the attribute \"D\" of \"B\" is not read\n"},
        Sample{"ENTITY B;\n\tC : ;\n\tD : OPTIONAL ;\n\tE : SET [1:?] OF ;\n\tF;\n\tG REAL;\n\tH = REAL;\n"
               "END_ENTITY;\nTYPE I = ;\nEND_TYPE;\n",
               "3:4+1 E022 error: a type is missing after \":\"\n"
               "4:6+8 E022 error: a type is missing after \"OPTIONAL\"\n"
               "5:16+2 E022 error: a type is missing after \"OF\"\n"
               "  reported while reading: Type not found\n"
               "6:2+1 E022 error: \":\" is missing after \"F\"\n"
               "  6:2+1 the attribute \"F\" of \"B\" is not read\n"
               "7:2+1 E022 error: \":\" is missing after \"G\"\n"
               "  7:2+1 the attribute \"G\" of \"B\" is not read\n"
               "8:2+1 E022 error: \":\" is missing after \"H\"\n"
               "  8:2+1 the attribute \"H\" of \"B\" is not read\n"
               "10:8+1 E022 error: a type is missing after \"=\"\n"
               "  reported while reading: Not type found\n"},
        Sample{
            "ENTITY B;\n\tC : REAL:\n\tD : REAL;\n DERIVE\n\tE : REAL;\n\tF : REAL := ;\n\tG : REAL : 1.;\n"
            "\tH : := 1.;\n UNIQUE\n\t : C;\n\tU : ;\n\tV D;\nEND_ENTITY;\n",
            "3:6+4 E009 warning: \";\" is missing after \"REAL\"\n"
            "6:6+4 E022 warning: \":=\" is missing after \"REAL\"\n"
            "7:11+2 E022 warning: an expression is missing after \":=\"\n"
            "8:6+4 E022 warning: \":=\" is missing after \"REAL\"\n"
            "9:4+1 E022 error: a type is missing after \":\"\n"
            "11:3+1 E022 warning: a name is missing before \":\"\n"
            "12:4+1 E022 warning: a name is missing after \":\"\n"
            "13:2+1 E022 error: \":\" is missing after \"V\"\n"
            "  13:2+1 the UNIQUE rule \"V\" of \"B\" is not read\n"}));

INSTANTIATE_TEST_SUITE_P(
    MissingPartsOfHeadersAndInverses, SchemaFindingsOf,
    testing::Values(
        Sample{"ENTITY B;\nEND_ENTITY;\nENTITY C\n SUBTYPE (B);\nEND_ENTITY;\nENTITY D\n "
               "SUBTYPE;\nEND_ENTITY;\n",
               "5:2+7 E022 error: \"OF\" is missing after \"SUBTYPE\"\n"
               "  5:11+1 the supertype \"B\" of \"C\" is not read\n"
               "8:2+7 E022 warning: \"OF\" is missing after \"SUBTYPE\"\n"},
        Sample{"ENTITY B;\nEND_ENTITY;\nENTITY C\n SUBTYPE OF [B];\nEND_ENTITY;\n",
               "5:10+2 E022 error: \"(\" is missing after \"OF\"\n"
               "  5:14+1 the supertype \"B\" of \"C\" is not read\n"},
        Sample{"ENTITY B;\n\tC : D;\nEND_ENTITY;\nENTITY D;\n INVERSE\n\tE : B FOR;\n\tF : B C;\n\tG : B;\n"
               "\tH : SET OF FOR C;\n\tI : B FRO C;\nEND_ENTITY;\n",
               "7:8+3 E022 error: a name is missing after \"FOR\"\n"
               "  7:2+1 the inverse attribute \"E\" of \"D\" is not read\n"
               "  reported while reading: Entity not found\n"
               "8:6+1 E022 error: \"FOR\" is missing after \"B\"\n"
               "  8:2+1 the inverse attribute \"F\" of \"D\" is not read\n"
               "9:6+1 E022 error: \"FOR\" is missing after \"B\"\n"
               "  9:2+1 the inverse attribute \"G\" of \"D\" is not read\n"
               "10:10+2 E022 error: an entity is missing after \"OF\"\n"
               "  reported while reading: Type not found\n"
               "11:2+1 E006 error: the inverse attribute \"I\" of \"D\" is not read\n"
               "  11:8+3 \"FRO\" is not read as a keyword: did you mean \"FOR\"?\n"}));

/// A function of which the first line, which is line 2, declares A, B and the result.
std::string sFunction(std::string_view body) {
    return "FUNCTION F (A, B : REAL) : REAL;\n" + std::string(body) + "END_FUNCTION;\n";
}

INSTANTIATE_TEST_SUITE_P(
    WordsOfBodies, SchemaFindingsOf,
    testing::Values(
        // All that may have a name of its own.
        Sample{
            "TYPE T = ENUMERATION OF\n (IFF\n ,THN);\nEND_TYPE;\nENTITY E;\n\tRETRUN : REAL;\nEND_ENTITY;\n"
            "FUNCTION F (AGREGATE : AGGREGATE:LABEL OF GENERIC:OTHER; X : E) : LIST OF GENERIC:OTHER;\n"
            " LOCAL\n  IFS, ELS : REAL := 1.;\n  R : LIST OF REAL := [];\n END_LOCAL;\n"
            " CONSTANT\n  ENDS : REAL := 1.;\n END_CONSTANT;\n"
            " PROCEDURE SKP(VAR CAS : REAL);\n  CAS := 1.;\n END_PROCEDURE;\n"
            " REPEAT TOO := 1 TO HIINDEX(R) BY 1;\n  R[TOO] := X.RETRUN + ENDS;\n  SKP(ELS);\n END_REPEAT;\n"
            " ALIAS ALS FOR X;\n  IFS := ALS.RETRUN;\n END_ALIAS;\n"
            " CASE T.IFF OF\n  THN : SKIP;\n  OTHERWISE : INSERT(R, IFS, 0);\n END_CASE;\n"
            " if EXISTS(QUERY(EN <* AGREGATE | EN :=: ?)) then return (R); end_if;\n"
            " RETURN (?);\nEND_FUNCTION;\n"
            "RULE G FOR (E);\n WHERE\n\tWHER : SIZEOF(E) = 1;\nEND_RULE;\n",
            ""},
        Sample{sFunction(" IFF A > B THEN RETURN (A); END_FI;\n RETRUN (B);\n"),
               "3:2+3 E018 warning: the name \"IFF\" is not declared in \"F\"\n"
               "  did you mean \"IF\"?\n"
               "3:29+6 E018 warning: the name \"END_FI\" is not declared in \"F\"\n"
               "  did you mean \"END_IF\"?\n"
               "4:2+6 E018 warning: the function \"RETRUN\" is not declared in \"F\"\n"
               "  did you mean \"RETURN\"?\n"},
        Sample{
            sFunction(" LOCLA\n  R : REAL;\n END_LOCAL;\n IF A > B THN\n  R := A;\n ESLE\n  SKPI;\n END_IF;\n"
                      " RETURN (R);\n"),
            "3:2+5 E018 warning: the name \"LOCLA\" is not declared in \"F\"\n"
            "  did you mean \"LOCAL\"?\n"
            "6:11+3 E018 warning: the name \"THN\" is not declared in \"F\"\n"
            "  did you mean \"THEN\"?\n"
            "8:2+4 E018 warning: the name \"ESLE\" is not declared in \"F\"\n"
            "  did you mean \"ELSE\"?\n"
            "9:3+4 E018 warning: the name \"SKPI\" is not declared in \"F\"\n"
            "  did you mean \"SKIP\"?\n"},
        // The variable of a misspelt loop is no mistake of its own.
        Sample{sFunction(" REPAET I := 1 TO 2;\n  A := I;\n END_REPEAT;\n CASE A OF\n  1 : ESCPAE;\n"
                         "  OTHERWIES : SKIP;\n END_CASE;\n RETURN (SIZEOF(QURY(X <* [A] | X > B)));\n"),
               "3:2+6 E018 warning: the name \"REPAET\" is not declared in \"F\"\n"
               "  did you mean \"REPEAT\"?\n"
               "7:7+6 E018 warning: the name \"ESCPAE\" is not declared in \"F\"\n"
               "  did you mean \"ESCAPE\"?\n"
               "8:3+9 E018 warning: the name \"OTHERWIES\" is not declared in \"F\"\n"
               "  did you mean \"OTHERWISE\"?\n"
               "10:17+4 E018 warning: the function \"QURY\" is not declared in \"F\"\n"
               "  did you mean \"QUERY\"?\n"},
        // What is declared in it is offered, and the types of the schema.
        Sample{"TYPE Label = STRING;\nEND_TYPE;\n"
               "FUNCTION F (Height : REAL) : Lable;\n LOCAL\n  Width : RAEL;\n END_LOCAL;\n"
               " BEGIN\n  Widht := Hieght;\n END;\n RETURN (Width);\nEND_FUNCTION;\n",
               "4:30+5 E018 warning: the name \"Lable\" is not declared in \"F\"\n"
               "  did you mean \"Label\"?\n"
               "6:11+4 E018 warning: the name \"RAEL\" is not declared in \"F\"\n"
               "  did you mean \"REAL\"?\n"
               "9:3+5 E018 warning: the name \"Widht\" is not declared in \"F\"\n"
               "  did you mean \"Width\"?\n"
               "9:12+6 E018 warning: the name \"Hieght\" is not declared in \"F\"\n"
               "  did you mean \"Height\"?\n"},
        Sample{"ENTITY E;\nEND_ENTITY;\nRULE F FOR (E);\n LCOAL\n  N : INTEGER := 0;\n END_LOCAL;\n"
               " WEHRE\n\tW : SIZEOF(E) = N;\nEND_RULE;\n",
               "5:2+5 E018 warning: the name \"LCOAL\" is not declared in \"F\"\n"
               "  did you mean \"LOCAL\"?\n"
               "8:2+5 E018 warning: the name \"WEHRE\" is not declared in \"F\"\n"
               "  did you mean \"WHERE\"?\n"}));

INSTANTIATE_TEST_SUITE_P(
    UnreadTypes, SchemaFindingsOf,
    testing::Values(
        Sample{"TYPE B = BAG [1:?] OF REAL;\nEND_TYPE;\nENTITY C;\n\tD : BAG [1:?] OF REAL;\n"
               "\tE : LIST [1:?] OF BAG [1:?] OF REAL;\n\tF : ARRAY [1:2] OF OPTIONAL REAL;\n\tG : GENERIC;\n"
               "\tH : REAL(8);\nEND_ENTITY;\n",
               "2:6+1 E006 error: the type of \"B\" is not found\n"
               "  BAG is not read: of lists only LIST, SET and ARRAY are\n"
               "  reported while reading: Not type found\n"
               "5:2+1 E006 error: the type of \"D\" is not found\n"
               "  BAG is not read: of lists only LIST, SET and ARRAY are\n"
               "6:2+1 E006 error: the type of the elements of \"E\" is not found\n"
               "  BAG is not read: of lists only LIST, SET and ARRAY are\n"
               "  reported while reading: Type not found\n"
               "7:2+1 E006 error: the type of \"F\" of \"C\" is read as \"REAL\"\n"
               "  the type is read from the word after \"OPTIONAL\" on\n"
               "8:2+1 E006 error: the type of \"G\" is not found\n"
               "  only parameters and variables of functions can have such a type\n"
               "9:2+1 E006 error: the type of \"H\" is not found\n"
               "  the precision of REAL is not read: leave it out\n"},
        Sample{"ENTITY B;\n\tC : D;\nEND_ENTITY;\nENTITY D;\n INVERSE\n\tE : BAG [1:?] OF B FOR "
               "C;\nEND_ENTITY;\n",
               "7:2+1 E006 error: the type of \"E\" is not found\n"
               "  BAG is not read: of lists only LIST, SET and ARRAY are\n"
               "  reported while reading: Entity not found\n"},
        // Derived attributes are kept as text.
        Sample{"ENTITY B;\n DERIVE\n\tC : BAG OF REAL := [];\nEND_ENTITY;\n", ""},
        Sample{"TYPE B = STRING[255];\nEND_TYPE;\nTYPE C = REAL[8];\nEND_TYPE;\nTYPE D = STRING(255) "
               "FIXED;\nEND_TYPE;\n",
               "2:10+6 E022 warning: \"(\" is missing after \"STRING\"\n"
               "4:10+4 E022 error: \"(\" is missing after \"REAL\"\n"
               "  reported while reading: Not type found\n"},
        Sample{"ENTITY B;\n\tC : STRING (255);\n\tD : STRING(255);\n\tE : STRING;\n\tF : STRING "
               "[9];\nEND_ENTITY;\n",
               "3:2+1 E006 error: the length of \"C\" is not read\n"
               "  it is read from round brackets right after STRING, without a blank\n"
               "6:6+6 E022 error: \"(\" is missing after \"STRING\"\n"
               "  6:2+1 the length of \"F\" is not read\n"},
        // Names with a blank are one name, and a misspelt OF is no name.
        Sample{"TYPE IfcLabel = STRING;\nEND_TYPE;\nENTITY C;\n\tD : Ifc Label;\n\tE : SET [1:?] OFF "
               "REAL;\nEND_ENTITY;\n",
               "5:6+9 E013 error: the type \"Ifc Label\" of \"C.D\" is not declared\n"
               "  did you mean \"IfcLabel\"?\n"
               "6:16+3 E006 error: \"OFF\" in \"C.E\" is not read as a keyword\n"
               "  did you mean \"OF\"?\n"
               "  the type of its elements is not found\n"
               "  reported while reading: Type not found\n"}));

INSTANTIATE_TEST_SUITE_P(
    WrongBrackets, SchemaFindingsOf,
    testing::Values(
        Sample{"ENTITY B;\n\tC : SET [1:? OF REAL;\n\tD : SET [1:?) OF REAL;\n\tE : SET [1:*] OF REAL;\n"
               "\tF : SET [:?] OF REAL;\n\tG : SET [?:1] OF REAL;\n\tH : SET [1.5:2] OF REAL;\n"
               "\tI : LIST [1::2] OF REAL;\n\tJ : ARRAY [-1:N + 1] OF REAL;\nEND_ENTITY;\n",
               "3:13+1 E022 warning: \"]\" is missing after \"?\"\n"
               "4:13+1 E022 warning: \"]\" is missing after \"?\"\n"
               "5:10+5 E022 warning: the bounds \"[1:*]\" are not two integers, or one and \"?\" for no "
               "upper bound\n"
               "6:10+4 E022 warning: the bounds \"[:?]\" are not two integers, or one and \"?\" for no upper "
               "bound\n"
               "7:10+5 E022 warning: the bounds \"[?:1]\" are not two integers, or one and \"?\" for no "
               "upper bound\n"
               "8:10+7 E022 warning: the bounds \"[1.5:2]\" are not two integers, or one and \"?\" for no "
               "upper bound\n"
               "9:11+6 E022 warning: the bounds \"[1::2]\" are not two integers, or one and \"?\" for no "
               "upper bound\n"},
        Sample{"TYPE B = ENUMERATION OF\n\t[C\n\t,D];\nEND_TYPE;\nTYPE E = SELECT\n\t(B);\nEND_TYPE;\n",
               "2:22+2 E022 error: \"(\" is missing after \"OF\"\n"
               "  5:1+8 the end of the declaration is not seen because of that\n"
               "  6:6+1 TYPE \"E\" is taken for a part of it and is lost\n"},
        Sample{"TYPE B = ENUMERATION OF\n\t(C;\n\tD);\nEND_TYPE;\n",
               "3:3+1 E022 error: \",\" is missing after \"C\"\n"
               "  3:3+1 the item \"C\" of \"B\" is not read\n"},
        Sample{"ENTITY B\n SUPERTYPE OF (ONEOFF\n\t(C));\nEND_ENTITY;\nENTITY C\n SUBTYPE OF "
               "(B);\nEND_ENTITY;\n",
               "3:16+6 E006 error: \"ONEOFF\" in \"B\" is not read as a keyword\n"
               "  did you mean \"ONEOF\"?\n"}));

INSTANTIATE_TEST_SUITE_P(
    LettersOfNames, SchemaFindingsOf,
    testing::Values(Sample{"ENTITY B;\n\tH\xC3\xB6he : REAL;\n\t_C : REAL;\nEND_ENTITY;\n",
                           "3:3+1 E020 warning: the name \"H\xC3\xB6he\" has \"\xC3\xB6\" in it\n"
                           "  names are letters, digits and \"_\", and begin with a letter\n"
                           "4:2+1 E020 warning: the name \"_C\" begins with \"_\"\n"
                           "  names are letters, digits and \"_\", and begin with a letter\n"},
                    // A blank that does not break lines: the colon is not found, and the name is another.
                    Sample{"ENTITY B;\n\tC\xC2\xA0: REAL;\n WHERE\n\tW : C > 0;\nEND_ENTITY;\n",
                           "3:3+1 E020 error: the name \"C\xC2\xA0\" has \"\xC2\xA0\" in it\n"
                           "  names are letters, digits and \"_\", and begin with a letter\n"
                           "  3:2+2 the attribute \"C\xC2\xA0\" of \"B\" is not read\n"
                           "  5:6+1 it is also used in the rule \"W\" of \"B\"\n"}));

INSTANTIATE_TEST_SUITE_P(
    LostParts, SchemaFindingsOf,
    testing::Values(
        // Another kind of text before an attribute is one mistake.
        Sample{"ENTITY B;\n\t// the name\n\tC : REAL;\nEND_ENTITY;\n",
               "3:9+4 E009 error: \";\" is missing after \"name\"\n"
               "  3:5+3 the attribute \"the\" of \"B\" is not read\n"},
        Sample{"ENTITY B;\n\tOPTIONAL C : REAL;\nEND_ENTITY;\n",
               "3:2+8 E009 error: \";\" is missing after \"OPTIONAL\"\n"
               "  3:2+8 the attribute \"OPTIONAL\" of \"B\" is not read\n"
               "  3:11+1 the attribute \"C\" of \"B\" is not read\n"},
        Sample{"ENTITY B;\nEND_ENTITY;\nENTITY C\n SUBTYPE  OF (B);\nEND_ENTITY;\n",
               "5:15+1 E006 error: the supertype \"B\" of \"C\" is not read\n"
               "  it is read from one line \"SUBTYPE OF (Name)\" below that of the keyword, with one blank "
               "after OF\n"},
        Sample{"ENTITY B;\nEND_ENTITY;\nENTITY C;\nEND_ENTITY;\nENTITY D\n SUBTYPE OF (B, C);\nEND_ENTITY;\n",
               "7:17+1 E006 error: the supertype \"C\" of \"D\" is not read\n"
               "  an entity can have one supertype\n"
               "  reported while reading: Entity not found\n"},
        Sample{"ENTITY B\n SUPERTYPE OF (C ANDOR D);\nEND_ENTITY;\nENTITY C\n SUBTYPE OF (B);\nEND_ENTITY;\n"
               "ENTITY D\n SUBTYPE OF (B);\nEND_ENTITY;\n",
               "3:16+1 E006 error: the subtype \"C\" of \"B\" is not read\n"
               "  subtypes are read from \"SUPERTYPE OF (ONEOF\" on one line and the names in brackets after "
               "it\n"},
        Sample{"ENTITY B;\n\tC: REAL;\n\tD, E : REAL;\nEND_ENTITY;\n",
               "3:2+1 E006 error: the attribute \"C\" of \"B\" is not read\n"
               "  each is read from a line of its own that has \" : \" in it, with the blanks\n"
               "4:2+1 E006 error: the attribute \"D\" of \"B\" is not read\n"
               "  each is read from a line of its own that has \" : \" in it, with the blanks\n"
               "  4:5+1 \"E\" of the same statement is not read either\n"},
        // Two statements are two findings, even on one line; of each statement five names are listed.
        Sample{"ENTITY B;\n\tC, D : REAL; E, F, G, H, I, J, K : REAL;\nEND_ENTITY;\n",
               "3:2+1 E006 error: the attribute \"C\" of \"B\" is not read\n"
               "  each is read from a line of its own that has \" : \" in it, with the blanks\n"
               "  3:5+1 \"D\" of the same statement is not read either\n"
               "3:15+1 E006 error: the attribute \"E\" of \"B\" is not read\n"
               "  each is read from a line of its own that has \" : \" in it, with the blanks\n"
               "  3:18+1 \"F\" of the same statement is not read either\n"
               "  3:21+1 \"G\" of the same statement is not read either\n"
               "  3:24+1 \"H\" of the same statement is not read either\n"
               "  3:27+1 \"I\" of the same statement is not read either\n"
               "  3:30+1 \"J\" of the same statement is not read either, nor is 1 more\n"},
        Sample{"ENTITY B;\n\tC, D, E, F, G, H, I, J : REAL;\nEND_ENTITY;\n",
               "3:2+1 E006 error: the attribute \"C\" of \"B\" is not read\n"
               "  each is read from a line of its own that has \" : \" in it, with the blanks\n"
               "  3:5+1 \"D\" of the same statement is not read either\n"
               "  3:8+1 \"E\" of the same statement is not read either\n"
               "  3:11+1 \"F\" of the same statement is not read either\n"
               "  3:14+1 \"G\" of the same statement is not read either\n"
               "  3:17+1 \"H\" of the same statement is not read either, nor are 2 more\n"},
        Sample{"ENTITY B;\n\tC : LIST [1:?] OF\n\t\tREAL;\nEND_ENTITY;\n",
               "3:2+1 E006 error: the type of \"C\" of \"B\" is read as \"LIST [1:?] OF\"\n"
               "  an attribute is read from one line\n"
               "  reported while reading: Type not found\n"},
        Sample{"ENTITY B;\n\tC : B;\n INVERSE\n\tD: B FOR C;\n DERIVE\n\tE: REAL := 1.;\n UNIQUE\n\tF: "
               "C;\nEND_ENTITY;\n",
               "5:2+1 E006 error: the inverse attribute \"D\" of \"B\" is not read\n"
               "  each is read from a line of its own that has \" : \" in it, with the blanks\n"
               "7:2+1 E006 error: the derived attribute \"E\" of \"B\" is not read\n"
               "  each is read from a line of its own that has \" : \" in it, with the blanks\n"
               "9:2+1 E006 error: the UNIQUE rule \"F\" of \"B\" is not read\n"
               "  each is read from a line of its own that has \" : \" in it, with the blanks\n"},
        Sample{"TYPE B = SET [1:?] OF UNIQUE REAL;\nEND_TYPE;\nENTITY C;\n\tD : LIST [1:?] OF UNIQUE REAL;\n"
               "\tE : ARRAY [1:2] OF UNIQUE REAL;\nEND_ENTITY;\n",
               "2:6+1 E006 error: the type of the elements of \"B\" is not found\n"
               "  only LIST can be of UNIQUE elements; elsewhere the word is read as a part of the name\n"
               "  reported while reading: Type not found\n"
               "6:2+1 E006 error: the type of the elements of \"E\" is not found\n"
               "  only LIST can be of UNIQUE elements; elsewhere the word is read as a part of the name\n"
               "  reported while reading: Type not found\n"},
        Sample{"TYPE B = ENUMERATION OF\n\t(C -- the first\n\t,D);\nEND_TYPE;\n",
               "4:3+1 E006 error: the item \"D\" of \"B\" is not read\n"
               "  names are separated by commas, blanks and tabs; comments are read as names\n"}));

INSTANTIATE_TEST_SUITE_P(
    CutRules, SchemaFindingsOf,
    testing::Values(
        Sample{
            "ENTITY B;\n\tC : REAL;\n WHERE\n\tW1 : C > 0;\n\tW2 : C < ;\n\tW3 : C <> 2;\n\tW4 : C <> "
            "3;\nEND_ENTITY;\n",
            "6:2+2 E007 warning: the rule \"W2\" of \"B\" cannot be read, and the 2 rules after it are lost\n"
            "  reported while reading: Got SyntaxError when parsing an express rule: Unexpected token at "
            "2:11\n\n"
            "Rule: \tW1 : C > 0;\n\tW2 : C < ;\n\tW3 : C <> 2;\n\tW4 : C <> 3;\n\n"},
        Sample{"TYPE B = REAL;\n WHERE\n\tW1 : SELF > 0; -- positive\n\tW2 : SELF < 9;\nEND_TYPE;\n",
               "5:2+2 E007 warning: the rule \"W2\" of \"B\" cannot be read\n"},
        Sample{"TYPE B = REAL;\n WHERE\nEND_TYPE;\n",
               "2:6+1 E007 warning: the WHERE clause of \"B\" has no rule\n"
               "  reported while reading: Got SyntaxError when parsing an express rule: Expected at least "
               "one rule "
               "in where clause at 1:2\n\nRule: \n"},
        Sample{
            "ENTITY B;\n\tC : REAL;\n WHERE\n\tW : (SELF).C > 0;\nEND_ENTITY;\n",
            "5:2+1 E007 warning: the rule \"W\" of \"B\" cannot be read\n"
            "  nothing can be selected from the result of a call or of brackets: \").\" is not understood\n"
            "  reported while reading: Got SyntaxError when parsing an express rule: Expected token "
            "SEMICOLON but got DOT at 1:14\n\nRule: \tW : (SELF).C > 0;\n\n"},
        // What is in a rule without label is not looked at: the colon may be missing.
        Sample{"ENTITY B;\n\tC : REAL;\n WHERE\n\tW C > 0;\nEND_ENTITY;\n",
               "5:2+1 E007 warning: a rule without label of \"B\" cannot be read\n"
               "  reported while reading: Got SyntaxError when parsing an express rule: Expected at least "
               "one rule "
               "in where clause at 1:2\n\nRule: \n"},
        Sample{"TYPE B = REAL;\n WHERE\n\tSELF > 0;\nEND_TYPE;\n",
               "4:2+4 E007 warning: a rule without label of \"B\" cannot be read\n"
               "  reported while reading: Got SyntaxError when parsing an express rule: Expected at least "
               "one rule "
               "in where clause at 1:2\n\nRule: \n"}));

INSTANTIATE_TEST_SUITE_P(
    Names, SchemaFindingsOf,
    testing::Values(
        Sample{"TYPE B = ENUMERATION OF\n\t(C\n\t,c);\nEND_TYPE;\n",
               "4:3+1 E010 error: the item \"c\" of \"B\" is declared twice\n  3:3+1 first declared here\n"},
        // A statement that is there twice is one mistake; two names that meet in one are two.
        Sample{"ENTITY B;\n DERIVE\n\tC, D : REAL := 1.;\n\tC, D : REAL := 1.;\nEND_ENTITY;\n",
               "4:2+1 E006 error: the derived attribute \"C\" of \"B\" is not read\n"
               "  each is read from a line of its own that has \" : \" in it, with the blanks\n"
               "  4:5+1 \"D\" of the same statement is not read either\n"
               "5:2+1 E006 error: the derived attribute \"C\" of \"B\" is not read\n"
               "  each is read from a line of its own that has \" : \" in it, with the blanks\n"
               "  5:5+1 \"D\" of the same statement is not read either\n"
               "5:2+1 E010 error: the attribute \"C\" of \"B\" is declared twice\n"
               "  4:2+1 first declared here\n"
               "  5:5+1 \"D\" of the same statement is declared twice too\n"},
        Sample{"ENTITY B;\n\tC : REAL;\n\tD : REAL;\n\tC, D : REAL;\nEND_ENTITY;\n",
               "5:2+1 E010 error: the attribute \"C\" of \"B\" is declared twice\n  3:2+1 first declared "
               "here\n"
               "5:5+1 E010 error: the attribute \"D\" of \"B\" is declared twice\n  4:2+1 first declared "
               "here\n"},
        Sample{"ENTITY B;\n\tC : REAL;\n\tC : REAL;\nEND_ENTITY;\n",
               "4:2+1 E010 error: the attribute \"C\" of \"B\" is declared twice\n  3:2+1 first declared "
               "here\n"},
        Sample{"TYPE B = REAL;\nEND_TYPE;\nENTITY C\n SUBTYPE OF (B);\nEND_ENTITY;\n",
               "5:14+1 E011 error: the supertype \"B\" of \"C\" is a type, not an entity\n"
               "  2:6+1 it is declared here\n  reported while reading: Entity not found\n"},
        Sample{"RULE R FOR\n\t(Walls);\nEND_RULE;\nENTITY Wall;\nEND_ENTITY;\n",
               "3:3+5 E011 error: the entity \"Walls\" of \"R\" is not declared\n  did you mean "
               "\"Wall\"?\n"},
        Sample{"TYPE Label = Strin;\nEND_TYPE;\nTYPE Row = LIST [1:?] OF Lable;\nEND_TYPE;\n",
               "2:14+5 E013 error: the type \"Strin\" of \"Label\" is not declared\n"
               "  reported while reading: Not type found\n"
               "4:26+5 E013 error: the type \"Lable\" of \"Row\" is not declared\n"
               "  did you mean \"Label\"?\n"
               "  reported while reading: Type not found\n"},
        Sample{"ENTITY B;\n\tC : SET [1:?] OF D;\n INVERSE\n\tE : F FOR C;\nEND_ENTITY;\n",
               "3:19+1 E013 error: the type \"D\" of \"B.C\" is not declared\n"
               "  reported while reading: Type not found\n"
               "5:6+1 E013 error: the entity \"F\" of \"B.E\" is not declared\n"
               "  reported while reading: Entity not found\n"},
        Sample{"ENTITY B;\n\tHost : B;\n INVERSE\n\tC : B FOR host;\nEND_ENTITY;\n",
               "5:12+4 E015 error: the entity \"B\" has no explicit attribute \"host\"\n"
               "  only explicit attributes are found, in the letter case of their declaration\n"
               "  reported while reading: Entity not found\n"},
        Sample{"ENTITY B;\n\tC : REAL;\nEND_ENTITY;\nENTITY D;\n DERIVE\n\tSELF\\B.C : REAL := "
               "1.;\nEND_ENTITY;\n",
               "7:7+1 E016 error: the entity \"B\" is not a supertype of \"D\"\n"
               "  reported while reading: Attribute not found\n"}));

INSTANTIATE_TEST_SUITE_P(
    Expressions, SchemaFindingsOf,
    testing::Values(
        Sample{"ENTITY Wall;\n\tHeight : REAL;\n WHERE\n\tW : SIZEF(SELF.Heigt) > "
               "SELF\\Wal.Height;\nEND_ENTITY;\n",
               "5:6+5 E018 warning: the function \"SIZEF\" is not declared in the rule \"W\" of \"Wall\"\n"
               "  did you mean \"SIZEOF\"?\n"
               "5:17+5 E018 warning: the attribute \"Heigt\" is not declared in the rule \"W\" of \"Wall\"\n"
               "  did you mean \"Height\"?\n"
               "5:31+3 E018 warning: \"Wal\" is not declared in the rule \"W\" of \"Wall\"\n"
               "  did you mean \"Wall\"?\n"},
        Sample{"TYPE Kind = ENUMERATION OF\n\t(SOLID\n\t,HOLLOW);\nEND_TYPE;\nENTITY Wall;\n\tIs : Kind;\n "
               "WHERE\n"
               "\tW : (Is = Kind.SOLD) OR (Is = HOLLOW) OR ('A.WAL' IN TYPEOF(SELF));\nEND_ENTITY;\n",
               "9:17+4 E018 warning: the type \"Kind\" has no item \"SOLD\" in the rule \"W\" of \"Wall\"\n"
               "  did you mean \"SOLID\"?\n"
               "  2:6+4 the type is declared here\n"
               "9:47+3 E018 warning: the name \"WAL\" is not declared in the rule \"W\" of \"Wall\"\n"
               "  did you mean \"Wall\"?\n"},
        // Variables of a query, constants, attributes of supertypes and derived ones are known.
        Sample{"ENTITY B;\n\tC : SET [0:?] OF REAL;\n DERIVE\n\tD : REAL := PI * Twice;\nEND_ENTITY;\n"
               "ENTITY E\n SUBTYPE OF (B);\n WHERE\n\tW : SIZEOF(QUERY(Q <* C | Q > D)) = 0;\nEND_ENTITY;\n"
               "CONSTANT\n\tTwice : REAL := 2.;\nEND_CONSTANT;\n",
               ""},
        Sample{"FUNCTION F\n (G : REAL) : REAL;\n LOCAL\n  H : REAL;\n END_LOCAL;\n H := Nothing(G) + F(H);\n"
               " IF (H > 0) THEN RETURN (H\\Wall.X);\n END_IF;\nEND_FUNCTION;\n",
               "7:7+7 E018 warning: the function \"Nothing\" is not declared in \"F\"\n"
               "8:28+4 E018 warning: \"Wall\" is not declared in \"F\"\n"}));

// One mistake, one finding: what follows from it is a note there.
INSTANTIATE_TEST_SUITE_P(
    OneMistake, SchemaFindingsOf,
    testing::Values(
        // "SUPERTYPE" has the keyword TYPE in it.
        Sample{
            "entity B\n SUPERTYPE OF (ONEOF\n\t(C));\nend_entity;\nENTITY C;\nEND_ENTITY;\n",
            "2:8+1 E002 error: ENTITY \"B\" is not read: the keyword is written \"entity\", and is found in "
            "capitals only\n"
            "  6:8+1 ENTITY \"C\" is taken for a part of it and is lost\n"
            "  reported while reading: Not type found\n"},
        Sample{"(* open\nTYPE B = REAL;\nEND_TYPE;\n(* closed *)\nENTITY C;\nEND_ENTITY;\n",
               "2:1+2 E008 error: nothing closes this comment\n"
               "  3:1+4 TYPE \"B\" is in the comment, and is read all the same\n"},
        Sample{"TYPE B = ENUMERATION OF\n\t(C (* open\n\t,D);\nEND_TYPE;\n",
               "3:5+2 E008 warning: nothing closes this comment\n"},
        // What is not read names nothing.
        Sample{"ENTITY B;\n\tC: SET OF Label;\n INVERSE\n\tD: B FOR E;\nEND_ENTITY;\n",
               "3:2+1 E006 error: the attribute \"C\" of \"B\" is not read\n"
               "  each is read from a line of its own that has \" : \" in it, with the blanks\n"
               "5:2+1 E006 error: the inverse attribute \"D\" of \"B\" is not read\n"
               "  each is read from a line of its own that has \" : \" in it, with the blanks\n"},
        // Both the inverse attribute and its list are looked up.
        Sample{"ENTITY B;\n INVERSE\n\tC : SET OF D FOR E;\nEND_ENTITY;\n",
               "4:13+1 E013 error: the entity \"D\" of \"B.C\" is not declared\n"
               "  reported while reading: Entity not found\n"
               "  reported while reading: Type not found\n"},
        Sample{"TYPE B = BAG [1:3] OF Label;\nEND_TYPE;\n",
               "2:23+5 E013 error: the type \"Label\" of \"B\" is not declared\n"
               "  reported while reading: Not type found\n"}));

INSTANTIATE_TEST_SUITE_P(
    MisspeltKeywords, SchemaFindingsOf,
    testing::Values(
        // "SUBTYPE" has the keyword TYPE in it.
        Sample{"ENTITY B;\nEND_ENTITY;\nENTITIY C\n SUBTYPE OF (B);\nEND_ENTITY;\nENTITY D;\n\tE : "
               "C;\nEND_ENTITY;\n",
               "4:9+1 E002 error: ENTITY \"C\" is not read: the keyword is written \"ENTITIY\"\n"
               "  did you mean \"ENTITY\"?\n"
               "  7:8+1 ENTITY \"D\" is taken for a part of it and is lost\n"
               "  reported while reading: Not type found\n"},
        Sample{"TYP B = REAL;\nEND_TYPE;\nENTITY C;\n\tD : B;\nEND_ENTITY;\n",
               "2:5+1 E002 error: TYPE \"B\" is not read: the keyword is written \"TYP\"\n"
               "  did you mean \"TYPE\"?\n"
               "  4:8+1 ENTITY \"C\" is taken for a part of it and is lost\n"},
        // The library finds the keyword in the word.
        Sample{"ENTITYY B;\nEND_ENTITY;\nENTITY C;\n\tD : B;\nEND_ENTITY;\n",
               "2:9+1 E002 error: ENTITY \"B\" is read under the name \"Y\"\n"
               "  did you mean \"ENTITY\"?\n"},
        Sample{"ENTITY B;\nEND_ENTITIY;\nTYPE C = REAL;\nEND_TYPE;\nENTITY D;\nEND_ENTITY;\n",
               "3:1+11 E004 error: the end of ENTITY \"B\" is written \"END_ENTITIY\"\n"
               "  did you mean \"END_ENTITY\"?\n"
               "  4:6+1 TYPE \"C\" is taken for a part of it and is lost\n"
               "  6:8+1 ENTITY \"D\" is taken for a part of it and is lost\n"},
        Sample{"TYPE B = REAL;\n WHERE\n\tW : SELF > 0;\nEND TYPE;\nTYPE C = REAL;\nEND_TYPE;\n",
               "5:1+8 E004 error: the end of TYPE \"B\" is written \"END TYPE\"\n"
               "  did you mean \"END_TYPE\"?\n"
               "  6:6+1 TYPE \"C\" is taken for a part of it and is lost\n"},
        Sample{"ENTITY B;\n\tC : B;\n INVERS\n\tD : SET [0:?] OF B FOR C;\nEND_ENTITY;\n",
               "4:2+6 E006 error: \"INVERS\" in \"B\" is not read as a keyword\n"
               "  did you mean \"INVERSE\"?\n"
               "  5:2+1 the inverse attribute \"D\" of \"B\" is not read\n"
               "  reported while reading: Type not found\n"},
        // What is unknown in a rule that cannot be read may be why.
        Sample{"ENTITY B;\n\tC : REAL;\n WHERE\n\tW : (C > 0) ANND (D > 0);\n\tX : D > 0;\nEND_ENTITY;\n",
               "5:2+1 E007 warning: the rule \"W\" of \"B\" cannot be read, and the rule after it is lost\n"
               "  reported while reading: Got SyntaxError when parsing an express rule: Expected token "
               "SEMICOLON but got IDENTIFIER at 1:20\n\nRule: \tW : (C > 0) ANND (D > 0);\n\tX : D > 0;\n\n"
               "  5:14+4 the function \"ANND\" is not declared\n"
               "  did you mean \"AND\"?\n"
               "  5:20+1 the name \"D\" is not declared\n"
               "6:6+1 E018 warning: the name \"D\" is not declared in the rule \"X\" of \"B\"\n"},
        Sample{"ENTITY B;\n\tC : REAL;\n DERIV\n\tD : REAL := 1.;\n UNIQE\n\tU : C;\n WERE\n\tW : C > "
               "0;\nEND_ENTITY;\n",
               "4:2+5 E006 error: \"DERIV\" in \"B\" is not read as a keyword\n"
               "  did you mean \"DERIVE\"?\n"
               "  5:2+1 the derived attribute \"D\" of \"B\" is not read\n"
               "6:2+5 E006 error: \"UNIQE\" in \"B\" is not read as a keyword\n"
               "  did you mean \"UNIQUE\"?\n"
               "  7:2+1 the UNIQUE rule \"U\" of \"B\" is not read\n"
               "8:2+4 E006 error: \"WERE\" in \"B\" is not read as a keyword\n"
               "  did you mean \"WHERE\"?\n"
               "  9:2+1 the rule \"W\" of \"B\" cannot be read\n"},
        Sample{"TYPE B = REAL;\n WHER\n\tW : SELF > 0;\nEND_TYPE;\n",
               "3:2+4 E006 error: \"WHER\" in \"B\" is not read as a keyword\n"
               "  did you mean \"WHERE\"?\n"
               "  4:2+1 the rule \"W\" of \"B\" cannot be read\n"},
        Sample{"ENTITY B;\n\tC : REAL;\n where\n\tW : C > 0;\nEND_ENTITY;\n",
               "4:2+5 E006 error: \"where\" in \"B\" is not read as a keyword\n"
               "  keywords are found in capitals only\n"
               "  5:2+1 the rule \"W\" of \"B\" cannot be read\n"},
        Sample{"ENTITY B\n ABSTRCT SUPERTYPE OF (ONEOF\n\t(C));\nEND_ENTITY;\nENTITY C\n SUBTPE OF "
               "(B);\nEND_ENTITY;\n",
               "3:2+7 E006 error: \"ABSTRCT\" in \"B\" is not read as a keyword\n"
               "  did you mean \"ABSTRACT\"?\n"
               "  2:8+1 ABSTRACT of \"B\" is not read\n"
               "7:2+6 E006 error: \"SUBTPE\" in \"C\" is not read as a keyword\n"
               "  did you mean \"SUBTYPE\"?\n"
               "  7:13+1 the supertype \"B\" of \"C\" is not read\n"},
        // Keywords of types are read as names of types.
        Sample{"TYPE B = STRNG(255);\nEND_TYPE;\nTYPE C = ENUMERATON OF\n\t(D);\nEND_TYPE;\nENTITY E;\n\tF : "
               "OPTINAL B;\n"
               "\tG : SETT [0:?] OF B;\nEND_ENTITY;\n",
               "2:10+5 E013 error: the type \"STRNG\" of \"B\" is not declared\n"
               "  did you mean \"STRING\"?\n  reported while reading: Not type found\n"
               "4:10+10 E013 error: the type \"ENUMERATON\" of \"C\" is not declared\n"
               "  did you mean \"ENUMERATION\"?\n  reported while reading: Not type found\n"
               "8:6+7 E013 error: the type \"OPTINAL\" of \"E.F\" is not declared\n"
               "  did you mean \"OPTIONAL\"?\n"
               "9:6+4 E013 error: the type \"SETT\" of \"E.G\" is not declared\n"
               "  did you mean \"SET\"?\n"}));

// In EXPRESS they may be in any letter case.
INSTANTIATE_TEST_SUITE_P(
    KeywordsOfTypes, SchemaFindingsOf,
    testing::Values(
        Sample{"ENTITY B;\n\tC : Optional D;\nEND_ENTITY;\nTYPE D = REAL;\nEND_TYPE;\n",
               "3:6+8 E006 error: \"Optional\" in \"B.C\" is not read as a keyword\n"
               "  keywords are found in capitals only\n"
               "  its type is not found\n"
               "  it is not read as OPTIONAL\n"},
        // Those of one type are one mistake.
        Sample{"ENTITY B;\n\tC : OPTIONAL set [1:?] of B;\nEND_ENTITY;\n",
               "3:15+3 E006 error: \"set\" in \"B.C\" is not read as a keyword\n"
               "  keywords are found in capitals only\n"
               "  3:25+2 \"of\" is not read as one either\n"
               "  its type is not found\n"},
        Sample{"ENTITY B;\n\tC : SET [1:?] of B;\n\tD : OPTIONAL String;\n\tE : OPTIONAL optional "
               "B;\nEND_ENTITY;\n",
               "3:16+2 E006 error: \"of\" in \"B.C\" is not read as a keyword\n"
               "  keywords are found in capitals only\n"
               "  the type of its elements is not found\n"
               "  reported while reading: Type not found\n"
               "4:15+6 E006 error: \"String\" in \"B.D\" is not read as a keyword\n"
               "  keywords are found in capitals only\n"
               "  its type is not found\n"
               "5:15+8 E006 error: \"optional\" in \"B.E\" is not read as a keyword\n"
               "  keywords are found in capitals only\n"
               "  its type is not found\n"},
        Sample{"TYPE B = real;\nEND_TYPE;\nTYPE C = String(9);\nEND_TYPE;\nTYPE D = Enumeration OF\n\t(E);\n"
               "END_TYPE;\nTYPE F = Select\n\t(B);\nEND_TYPE;\nTYPE G = STRING(9) fixed;\nEND_TYPE;\n"
               "TYPE H = LIST [1:?] of B;\nEND_TYPE;\n",
               "2:10+4 E006 error: \"real\" in \"B\" is not read as a keyword\n"
               "  keywords are found in capitals only\n"
               "  its type is not found\n"
               "  reported while reading: Not type found\n"
               "4:10+6 E006 error: \"String\" in \"C\" is not read as a keyword\n"
               "  keywords are found in capitals only\n"
               "  its type is not found\n"
               "  reported while reading: Not type found\n"
               "6:10+11 E006 error: \"Enumeration\" in \"D\" is not read as a keyword\n"
               "  keywords are found in capitals only\n"
               "  its type is not found\n"
               "  reported while reading: Not type found\n"
               "9:10+6 E006 error: \"Select\" in \"F\" is not read as a keyword\n"
               "  keywords are found in capitals only\n"
               "  its type is not found\n"
               "  reported while reading: Not type found\n"
               "12:20+5 E006 error: \"fixed\" in \"G\" is not read as a keyword\n"
               "  keywords are found in capitals only\n"
               "  it is not read as FIXED\n"
               "14:21+2 E006 error: \"of\" in \"H\" is not read as a keyword\n"
               "  keywords are found in capitals only\n"
               "  the type of its elements is not found\n"
               "  reported while reading: Type not found\n"},
        Sample{"ENTITY B;\n\tC : D;\nEND_ENTITY;\nENTITY D;\n INVERSE\n\tE : Set [0:?] OF B FOR C;\n"
               "\tF : SET [0:?] OF B for C;\nEND_ENTITY;\n",
               "7:6+3 E006 error: \"Set\" in \"D.E\" is not read as a keyword\n"
               "  keywords are found in capitals only\n"
               "  its type is not found\n"
               "  reported while reading: Entity not found\n"
               "8:2+1 E006 error: the inverse attribute \"F\" of \"D\" is not read\n"
               "  8:21+3 \"for\" is not read as a keyword: keywords are found in capitals only\n"},
        Sample{"ENTITY B\n SUPERTYPE OF (OneOf\n\t(C));\nEND_ENTITY;\nENTITY C\n SUBTYPE OF (B);\n"
               "END_ENTITY;\n",
               "3:16+5 E006 error: \"OneOf\" in \"B\" is not read as a keyword\n"
               "  keywords are found in capitals only\n"
               "  4:3+1 the subtype \"C\" of \"B\" is not read\n"},
        Sample{"ENTITY B\n SUPERTYPE OF (ONE OF\n\t(C));\nEND_ENTITY;\nENTITY C\n SUBTYPE OF (B);\n"
               "END_ENTITY;\n",
               "3:16+6 E006 error: \"ONE OF\" in \"B\" is not read as a keyword\n"
               "  did you mean \"ONEOF\"?\n"
               "  4:3+1 the subtype \"C\" of \"B\" is not read\n"},
        // Nothing is lost: the library looks neither for this OF nor for the types of derived attributes.
        Sample{"TYPE B = ENUMERATION of\n\t(C);\nEND_TYPE;\nENTITY D;\n\tE : B;\n DERIVE\n\tF : real := "
               "1.;\nEND_ENTITY;\n",
               ""}));

INSTANTIATE_TEST_SUITE_P(
    IllegalNames, SchemaFindingsOf,
    testing::Values(
        // What uses the name without the character is not another mistake.
        Sample{"ENTITY B;\n\tGlobal-Id : REAL;\n UNIQUE\n\tU : GlobalId;\nEND_ENTITY;\n",
               "3:8+1 E020 warning: the name \"Global-Id\" has \"-\" in it\n"
               "  names are letters, digits and \"_\", and begin with a letter\n"
               "  5:6+8 it is also used in the rule \"B.U\"\n"},
        Sample{"ENTITY B-C;\nEND_ENTITY;\nENTITY D\n SUBTYPE OF (BC);\nEND_ENTITY;\n",
               "2:9+1 E020 warning: the name \"B-C\" has \"-\" in it\n"
               "  names are letters, digits and \"_\", and begin with a letter\n"
               "  5:14+2 it is also the supertype of \"D\"\n"
               "  reported while reading: Entity not found\n"},
        Sample{"TYPE B = ENUMERATION OF\n\t(C\n\t,2D);\nEND_TYPE;\nENTITY E;\n\t3F : B;\nEND_ENTITY;\n",
               "4:3+1 E020 warning: the name \"2D\" begins with a digit\n"
               "  names are letters, digits and \"_\", and begin with a letter\n"
               "7:2+1 E020 warning: the name \"3F\" begins with a digit\n"
               "  names are letters, digits and \"_\", and begin with a letter\n"},
        Sample{"ENTITY B C;\nEND_ENTITY;\nENTITY D\n SUBTYPE OF (BC);\nEND_ENTITY;\n",
               "2:8+3 E002 error: ENTITY \"B C\" is read under the name \"B\"\n"
               "  names have no blanks in them\n"
               "  5:14+2 it is also the supertype of \"D\"\n"
               "  reported while reading: Entity not found\n"}));

INSTANTIATE_TEST_SUITE_P(
    Circles, SchemaFindingsOf,
    testing::Values(Sample{"ENTITY B\n SUBTYPE OF (B);\nEND_ENTITY;\n",
                           "3:14+1 E021 error: the entity \"B\" is its own supertype\n"
                           "  reported while reading: Entity not found\n"},
                    Sample{
                        "ENTITY B\n SUBTYPE OF (D);\nEND_ENTITY;\nENTITY C\n SUBTYPE OF "
                        "(B);\nEND_ENTITY;\nENTITY D\n SUBTYPE OF "
                        "(C);\nEND_ENTITY;\n",
                        "3:14+1 E021 error: the entity \"B\" is its own supertype, through \"D\" and \"C\"\n"
                        "  9:14+1 \"D\" is a subtype of \"C\" here\n"
                        "  6:14+1 \"C\" is a subtype of \"B\" here\n"
                        "  reported while reading: Entity not found\n"},
                    // What leads to a circle is not in it.
                    Sample{"TYPE B = C;\nEND_TYPE;\nTYPE C = D;\nEND_TYPE;\nTYPE D = C;\nEND_TYPE;\nTYPE E = "
                           "E;\nEND_TYPE;\n",
                           "4:10+1 E021 error: the type \"C\" is defined by itself, through \"D\"\n"
                           "  6:10+1 \"D\" is defined by \"C\" here\n"
                           "8:10+1 E021 error: the type \"E\" is defined by itself\n"},
                    Sample{"TYPE B = LIST [1:?] OF B;\nEND_TYPE;\nTYPE C = "
                           "SELECT\n\t(B\n\t,D);\nEND_TYPE;\nTYPE D = C;\nEND_TYPE;\n"
                           "ENTITY E;\n\tF : E;\nEND_ENTITY;\n",
                           ""}));

INSTANTIATE_TEST_SUITE_P(
    BrokenLists, SchemaFindingsOf,
    testing::Values(
        Sample{"TYPE B = ENUMERATION OF\n\t(C\n\tD\n\t,,E\n\t,);\nEND_TYPE;\n",
               "3:3+1 E022 warning: \",\" is missing after \"C\"\n"
               "5:2+1 E022 warning: a name is missing after \",\"\n"
               "6:2+1 E022 warning: a name is missing after \",\"\n"},
        // Brackets that are not closed.
        Sample{"ENTITY B\n SUPERTYPE OF (ONEOF\n\t(C)\n SUBTYPE OF (D);\nEND_ENTITY;\nENTITY C\n SUBTYPE OF "
               "(B);\nEND_ENTITY;\nENTITY D;\nEND_ENTITY;\n",
               "4:4+1 E022 warning: \")\" is missing after \")\"\n"},
        Sample{"TYPE B = ENUMERATION OF\n\t(C\n\t,D;\nEND_TYPE;\nENTITY E;\nEND_ENTITY;\nTYPE F = "
               "STRING(9);\nEND_TYPE;\n",
               "4:3+1 E022 error: \")\" is missing after \"D\"\n"
               "  5:1+8 the end of the declaration is not seen because of that\n"
               "  6:8+1 ENTITY \"E\" is taken for a part of it and is lost\n"
               "  8:6+1 TYPE \"F\" is taken for a part of it and is lost\n"},
        // The word that is no list is one mistake.
        Sample{"ENTITY B;\n\tC : LISST [0:?] OF UNIQUE B;\nEND_ENTITY;\n",
               "3:6+5 E013 error: the type \"LISST\" of \"B.C\" is not declared\n"
               "  did you mean \"LIST\"?\n"},
        Sample{"ENTITY B;\nEND_ENTITY;\nENTITY C\n SUBTYPE OF ();\n\tD : LIST (1:?) OF B;\nEND_ENTITY;\n",
               "5:13+1 E022 warning: a name is missing after \"(\"\n"
               "6:6+4 E022 warning: \"[\" is missing after \"LIST\"\n"},
        Sample{"TYPE B = ENUMERATION\n\t(C\n\t,D);\nEND_TYPE;\nENTITY E\n SUPERTYPE OF "
               "(ONEOF\n\t(F));\nEND_ENTITY;\n"
               "ENTITY F\n SUBTYPE OF (E);\nEND_ENTITY;\nRULE G FOR\n\t(E F);\nEND_RULE;\n",
               "2:10+11 E022 warning: \"OF\" is missing after \"ENUMERATION\"\n"
               "14:3+1 E022 warning: \",\" is missing after \"E\"\n"},
        Sample{"ENTITY B\n SUPERTYPE OF (ONEOF\n\t(C\n\t,D));\nEND_ENTITY;\nENTITY C\n SUBTYPE OF (B);\n"
               "\tE : ARRAY [1:2] OF LIST [0:?] OF UNIQUE REAL;\n\tF : STRING(255) FIXED;\nEND_ENTITY;\n"
               "ENTITY D\n SUBTYPE OF (B);\nEND_ENTITY;\nTYPE G = SET OF REAL;\nEND_TYPE;\n",
               ""}));

INSTANTIATE_TEST_SUITE_P(
    MissingSigns, SchemaFindingsOf,
    testing::Values(
        // The next bracket is taken for the one that is missing.
        Sample{"ENTITY B;\nEND_ENTITY;\nENTITY C\n SUBTYPE OF B;\n\tD : REAL;\n WHERE\n\tW : (D > 0);\n"
               "END_ENTITY;\n",
               "5:10+2 E022 error: \"(\" is missing after \"OF\"\n"
               "  5:13+1 the supertype \"B\" of \"C\" is not read\n"
               "  6:2+1 the attribute \"D\" of \"C\" is not read\n"
               "  8:2+1 the rule \"W\" of \"C\" cannot be read\n"},
        Sample{"TYPE B = ENUMERATION OF\n\tC\n\t,D);\nEND_TYPE;\nENTITY E;\nEND_ENTITY;\nTYPE F = "
               "STRING(9);\nEND_TYPE;\n",
               "2:22+2 E022 error: \"(\" is missing after \"OF\"\n"
               "  5:1+8 the end of the declaration is not seen because of that\n"
               "  6:8+1 ENTITY \"E\" is taken for a part of it and is lost\n"
               "  8:6+1 TYPE \"F\" is taken for a part of it and is lost\n"},
        Sample{"TYPE B : REAL;\nEND_TYPE;\nTYPE C STRING(9);\nEND_TYPE;\nTYPE D : B;\nEND_TYPE;\n",
               "2:6+1 E022 error: \"=\" is missing after \"B\"\n"
               "  reported while reading: Not type found\n"
               "4:6+1 E022 error: \"=\" is missing after \"C\"\n"
               "  reported while reading: Not type found\n"
               "6:6+1 E022 error: \"=\" is missing after \"D\"\n"
               "  6:10+1 the type \"B\" of \"D\" is not read\n"},
        Sample{"ENTITY B;\n\tC : REAL;\n DERIVE\n\tD : REAL = 1.;\n\tE : REAL := ABS(C;\nEND_ENTITY;\n",
               "5:6+4 E022 warning: \":=\" is missing after \"REAL\"\n"
               "6:18+1 E022 warning: \")\" is missing after \"C\"\n"},
        Sample{
            "ENTITY B;\n\tC : SET [1..?] OF REAL;\n\tD : LIST [5:1] OF ARRAY [010:9] OF REAL;\n"
            "\tE : SET [] OF REAL;\n\tF : LIST [1:1] OF ARRAY [9:010] OF REAL;\n"
            "\tG : LIST 1:? OF REAL;\nEND_ENTITY;\nTYPE H = SET [2:1] OF REAL;\nEND_TYPE;\n",
            "3:10+6 E022 error: \":\" is missing in \"[1..?]\"\n"
            "  the bounds are not read\n"
            "4:11+5 E022 warning: the bounds \"[5:1]\" are swapped: the first is greater than the second\n"
            "4:26+7 E022 warning: the bounds \"[010:9]\" are swapped: the first is greater than the "
            "second\n"
            "5:10+2 E022 error: \":\" is missing in \"[]\"\n"
            "  the bounds are not read\n"
            "7:6+4 E022 warning: \"[\" is missing after \"LIST\"\n"
            "9:14+5 E022 warning: the bounds \"[2:1]\" are swapped: the first is greater than the second\n"},
        // What is wrong in an attribute explains nothing after it.
        Sample{"ENTITY B;\n\tC : SET [1..?] OF REAL;\n\tD: REAL;\nEND_ENTITY;\n",
               "3:10+6 E022 error: \":\" is missing in \"[1..?]\"\n"
               "  the bounds are not read\n"
               "4:2+1 E006 error: the attribute \"D\" of \"B\" is not read\n"
               "  each is read from a line of its own that has \" : \" in it, with the blanks\n"},
        Sample{"ENTITY B;\n\tC : SET [1:?] OF OPTIONAL REAL;\nEND_ENTITY;\n",
               "3:2+1 E006 error: the type of \"C\" of \"B\" is read as \"REAL\"\n"
               "  the type is read from the word after \"OPTIONAL\" on\n"}));

INSTANTIATE_TEST_SUITE_P(
    NamesBeforeADot, SchemaFindingsOf,
    testing::Values(
        Sample{
            "TYPE WallTypeEnum = ENUMERATION OF\n\t(C);\nEND_TYPE;\nENTITY B;\n\tD : WallTypeEnum;\n WHERE\n"
            "\tW : D = WallTypEnum.C;\nEND_ENTITY;\n",
            "8:10+11 E018 warning: the name \"WallTypEnum\" is not declared in the rule \"W\" of \"B\"\n"
            "  did you mean \"WallTypeEnum\"?\n"},
        // What TYPEOF gives begins with the name of this schema; other strings may be anything.
        Sample{"ENTITY B;\n WHERE\n\tW : 'Z.B' IN TYPEOF(SELF);\n\tX : 'Z.B' <> 'C';\nEND_ENTITY;\n",
               "4:7+3 E018 warning: the name \"Z.B\" is of another schema than \"A\" in the rule \"W\" of "
               "\"B\"\n"}));

TEST(SchemaFindings, OfALongCircleFiveNamesAreListed) {
    std::string statements;
    for (int index = 0; index < 8; ++index)
        statements +=
            "TYPE T" + std::to_string(index) + " = T" + std::to_string((index + 1) % 8) + ";\nEND_TYPE;\n";
    const auto findings = findingsOfText(sSchema(statements));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].message, "the type \"T0\" is defined by itself, through \"T1\", \"T2\", \"T3\", "
                                   "\"T4\", \"T5\" and 2 more");
    EXPECT_EQ(findings[0].notes.size(), SchemaRun::maxPlaces);
}

// A name that is missing has one finding, at its first use.
INSTANTIATE_TEST_SUITE_P(
    MissingNames, SchemaFindingsOf,
    testing::Values(
        // Each use has another rule; the letter case does not matter.
        Sample{"ENTITY B\n SUBTYPE OF (Lost);\n\tC : Lost;\nEND_ENTITY;\nTYPE D = SELECT\n\t(B\n\t,LOST);\n"
               "END_TYPE;\nENTITY E;\n WHERE\n\tW : 'A.LOST' IN TYPEOF(SELF);\nEND_ENTITY;\n",
               "3:14+4 E011 error: the supertype \"Lost\" of \"B\" is not declared\n"
               "  reported while reading: Entity not found\n"
               "  4:6+4 it is also the type of \"B.C\"\n"
               "  8:3+4 it is also the member of \"D\"\n"
               "  reported while reading: Object not found\n"
               "  12:9+4 it is also used in the rule \"W\" of \"E\"\n"},
        Sample{"ENTITY B\n SUBTYPE OF (Lost);\n\tC : Lost;\nEND_ENTITY;\nTYPE D = SELECT\n\t(B\n\t,LOST);\n"
               "END_TYPE;\nENTITY E;\n WHERE\n\tW : 'A.LOST' IN TYPEOF(SELF);\nEND_ENTITY;\n"
               "ENTITY LOST;\nEND_ENTITY;\n",
               ""},
        // An expression that comes first has a note all the same: it loses no data.
        Sample{"TYPE B = REAL;\n WHERE\n\tW : Lost(SELF) > 0;\nEND_TYPE;\nTYPE C = Lost;\nEND_TYPE;\n",
               "6:10+4 E013 error: the type \"Lost\" of \"C\" is not declared\n"
               "  reported while reading: Not type found\n"
               "  4:6+4 it is also used in the rule \"W\" of \"B\"\n"},
        // Five other places are listed.
        Sample{"ENTITY B;\n\tC : Lost;\n\tD : Lost;\n\tE : Lost;\n\tF : Lost;\n\tG : Lost;\n\tH : "
               "Lost;\nEND_ENTITY;\n",
               "3:6+4 E013 error: the type \"Lost\" of \"B.C\" is not declared\n"
               "  4:6+4 it is also the type of \"B.D\"\n  5:6+4 it is also the type of \"B.E\"\n"
               "  6:6+4 it is also the type of \"B.F\"\n  7:6+4 it is also the type of \"B.G\"\n"
               "  8:6+4 it is also the type of \"B.H\"\n"},
        Sample{"ENTITY B;\n\tC : Lost;\n\tD : Lost;\n\tE : Lost;\n\tF : Lost;\n\tG : Lost;\n\tH : Lost;\n"
               "\tI : Lost;\nEND_ENTITY;\n",
               "3:6+4 E013 error: the type \"Lost\" of \"B.C\" is not declared\n"
               "  4:6+4 it is also the type of \"B.D\"\n  5:6+4 it is also the type of \"B.E\"\n"
               "  6:6+4 it is also the type of \"B.F\"\n  7:6+4 it is also the type of \"B.G\"\n"
               "  8:6+4 it is also the type of \"B.H\", and is used in 1 more place\n"},
        Sample{"ENTITY B;\n\tC : Lost;\n\tD : Lost;\n\tE : Lost;\n\tF : Lost;\n\tG : Lost;\n\tH : Lost;\n"
               "\tI : Lost;\n\tJ : Lost;\nEND_ENTITY;\n",
               "3:6+4 E013 error: the type \"Lost\" of \"B.C\" is not declared\n"
               "  4:6+4 it is also the type of \"B.D\"\n  5:6+4 it is also the type of \"B.E\"\n"
               "  6:6+4 it is also the type of \"B.F\"\n  7:6+4 it is also the type of \"B.G\"\n"
               "  8:6+4 it is also the type of \"B.H\", and is used in 2 more places\n"},
        // What is declared as something else is a mistake of each place.
        Sample{"TYPE B = REAL;\nEND_TYPE;\nENTITY C\n SUBTYPE OF (B);\nEND_ENTITY;\nENTITY D\n SUBTYPE OF "
               "(B);\nEND_ENTITY;\n",
               "5:14+1 E011 error: the supertype \"B\" of \"C\" is a type, not an entity\n"
               "  2:6+1 it is declared here\n  reported while reading: Entity not found\n"
               "8:14+1 E011 error: the supertype \"B\" of \"D\" is a type, not an entity\n"
               "  2:6+1 it is declared here\n  reported while reading: Entity not found\n"},
        // Each report is taken by the finding that it is about.
        Sample{"ENTITY B;\n INVERSE\n\tC : SET OF D FOR E;\n\tF : SET OF D FOR E;\n\tG : B FOR H;\n\tI : B "
               "FOR H;\nEND_ENTITY;\nTYPE J = LIST [1:?] OF K;\nEND_TYPE;\n",
               "4:13+1 E013 error: the entity \"D\" of \"B.C\" is not declared\n"
               "  reported while reading: Entity not found\n"
               "  reported while reading: Type not found\n"
               "  5:13+1 it is also the entity of \"B.F\"\n"
               "6:12+1 E015 error: the entity \"B\" has no explicit attribute \"H\"\n"
               "  reported while reading: Entity not found\n"
               "  7:12+1 it is also inverted by \"B.I\"\n"
               "9:24+1 E013 error: the type \"K\" of \"J\" is not declared\n"
               "  reported while reading: Type not found\n"}));

// An attribute that is missing in a supertype is missed by all its subtypes, and by no other entity.
INSTANTIATE_TEST_SUITE_P(
    MissingAttributes, SchemaFindingsOf,
    testing::Values(
        Sample{
            "ENTITY B;\n\tC : REAL;\nEND_ENTITY;\nENTITY D\n SUBTYPE OF (B);\n DERIVE\n"
            "\tSELF\\B.Gone : REAL := 1.;\nEND_ENTITY;\nENTITY E\n SUBTYPE OF (B);\n DERIVE\n"
            "\tSELF\\B.Gone : REAL := 1.;\nEND_ENTITY;\nENTITY F\n SUBTYPE OF (B);\n UNIQUE\n\tU : Gone;\n"
            " WHERE\n\tW : GONE > 0;\nEND_ENTITY;\nENTITY G;\n WHERE\n\tW : Gone > SELF.Gone;\nEND_ENTITY;\n",
            "8:9+4 E016 error: the entity \"B\" has no explicit attribute \"Gone\"\n"
            "  reported while reading: Attribute not found\n"
            "  13:9+4 it is also declared again as \"E.Gone\"\n"
            "  18:6+4 it is also used in the rule \"F.U\"\n"
            "  20:6+4 it is also used in the rule \"W\" of \"F\"\n"
            "24:6+4 E018 warning: the name \"Gone\" is not declared in the rule \"W\" of \"G\"\n"
            "  24:18+4 it is also used in the rule \"W\" of \"G\"\n"},
        // One that is declared, but is not explicit, is a mistake of each place.
        Sample{"ENTITY B;\n\tC : B;\n INVERSE\n\tD : B FOR c;\n\tE : B FOR c;\nEND_ENTITY;\n",
               "5:12+1 E015 error: the entity \"B\" has no explicit attribute \"c\"\n"
               "  only explicit attributes are found, in the letter case of their declaration\n"
               "  reported while reading: Entity not found\n"
               "6:12+1 E015 error: the entity \"B\" has no explicit attribute \"c\"\n"
               "  only explicit attributes are found, in the letter case of their declaration\n"
               "  reported while reading: Entity not found\n"},
        // To inherit from it mends both.
        Sample{"ENTITY B;\n\tC : REAL;\n\tD : REAL;\nEND_ENTITY;\nENTITY E;\n DERIVE\n\tSELF\\B.C : REAL := "
               "1.;\n"
               "\tSELF\\B.D : REAL := 1.;\nEND_ENTITY;\n",
               "8:7+1 E016 error: the entity \"B\" is not a supertype of \"E\"\n"
               "  reported while reading: Attribute not found\n"
               "  9:7+1 it is also the entity of \"E.D\"\n"},
        Sample{
            "TYPE Kind = ENUMERATION OF\n\t(SOLID\n\t,HOLLOW);\nEND_TYPE;\nENTITY B;\n\tIs : Kind;\n WHERE\n"
            "\tV : Is = Kind.OPEN;\n\tW : Is <> Kind.open;\n\tX : SELF\\B.Thick > SELF\\B.Thick;\n"
            "\tY : Area(1) > Area(2);\nEND_ENTITY;\n",
            "9:16+4 E018 warning: the type \"Kind\" has no item \"OPEN\" in the rule \"V\" of \"B\"\n"
            "  2:6+4 the type is declared here\n"
            "  10:17+4 it is also used in the rule \"W\" of \"B\"\n"
            "11:13+5 E018 warning: the entity \"B\" has no attribute \"Thick\" in the rule \"X\" of \"B\"\n"
            "  11:28+5 it is also used in the rule \"X\" of \"B\"\n"
            "12:6+4 E018 warning: the function \"Area\" is not declared in the rule \"Y\" of \"B\"\n"
            "  12:16+4 it is also used in the rule \"Y\" of \"B\"\n"}));

// The name that was on a missing line is the one that is missing. Of a type that has neither a name nor a
// type the library reports nothing: what it looks up has no name either, and is found.
INSTANTIATE_TEST_SUITE_P(
    WithoutFirstLine, SchemaFindingsOf,
    testing::Values(
        Sample{"END_TYPE;\nTYPE B = REAL;\nEND_TYPE;\nENTITY C;\n\tD : Label;\n\tE : Label;\nEND_ENTITY;\n",
               "2:5+4 E005 error: the line that begins a TYPE is missing, and this one is read as one\n"
               "  6:6+5 the type \"Label\" of \"C.D\" is not declared: that may be what this would declare\n"
               "  7:6+5 it is also the type of \"C.E\"\n"
               "  3:6+1 TYPE \"B\" is taken for a part of it and is lost\n"},
        Sample{"ENTITY A;\nEND_ENTITY;\n SUBTYPE OF (A);\n\tB : A;\nEND_ENTITY;\nTYPE C = REAL;\nEND_TYPE;\n"
               "ENTITY D\n SUBTYPE OF (E);\nEND_ENTITY;\n",
               "4:5+4 E005 error: the line that begins an ENTITY is missing, and this one is read as TYPE "
               "\"OF\"\n"
               "  10:14+1 the supertype \"E\" of \"D\" is not declared: that may be what this would declare\n"
               "  reported while reading: Entity not found\n"
               "  6:1+10 it ends here\n"
               "  7:6+1 TYPE \"C\" is taken for a part of it and is lost\n"
               "  reported while reading: Not type found\n"},
        Sample{
            "\tB : REAL;\nEND_ENTITY;\nENTITY C;\n\tD : E;\nEND_ENTITY;\nENTITY F;\n\tG : E;\nEND_ENTITY;\n",
            "3:5+6 E005 error: the line that begins an ENTITY is missing, and this one is read as one\n"
            "  5:6+1 the type \"E\" of \"C.D\" is not declared: that may be what this would declare\n"
            "  8:6+1 it is also the type of \"F.G\"\n"
            "  4:8+1 ENTITY \"C\" is taken for a part of it and is lost\n"},
        // Of two missing names, or after two missing lines, it is not known.
        Sample{"END_TYPE;\nTYPE B = REAL;\nEND_TYPE;\nENTITY C;\n\tD : Label;\n\tE : Text;\nEND_ENTITY;\n",
               "2:5+4 E005 error: the line that begins a TYPE is missing, and this one is read as one\n"
               "  3:6+1 TYPE \"B\" is taken for a part of it and is lost\n"
               "6:6+5 E013 error: the type \"Label\" of \"C.D\" is not declared\n"
               "7:6+4 E013 error: the type \"Text\" of \"C.E\" is not declared\n"},
        Sample{"END_TYPE;\nEND_TYPE;\nENTITY C;\n\tD : Label;\nEND_ENTITY;\n",
               "2:5+4 E005 error: the line that begins a TYPE is missing, and this one is read as one\n"
               "5:6+5 E013 error: the type \"Label\" of \"C.D\" is not declared\n"},
        // A type is no supertype, and a name that is used once and is like another is misspelt.
        Sample{"END_TYPE;\nTYPE B = REAL;\nEND_TYPE;\nENTITY C\n SUBTYPE OF (D);\nEND_ENTITY;\n",
               "2:5+4 E005 error: the line that begins a TYPE is missing, and this one is read as one\n"
               "  3:6+1 TYPE \"B\" is taken for a part of it and is lost\n"
               "6:14+1 E011 error: the supertype \"D\" of \"C\" is not declared\n"
               "  reported while reading: Entity not found\n"},
        Sample{"END_TYPE;\nTYPE B = REAL;\nEND_TYPE;\nTYPE Label = REAL;\nEND_TYPE;\nENTITY C;\n\tD : "
               "Lable;\nEND_ENTITY;\n",
               "2:5+4 E005 error: the line that begins a TYPE is missing, and this one is read as one\n"
               "  3:6+1 TYPE \"B\" is taken for a part of it and is lost\n"
               "8:6+5 E013 error: the type \"Lable\" of \"C.D\" is not declared\n"
               "  did you mean \"Label\"?\n"},
        Sample{"END_TYPE;\nTYPE Label = REAL;\nEND_TYPE;\nENTITY C;\n\tD : Lable;\n\tE : Count;\n\tF : "
               "Count;\nEND_ENTITY;\n",
               "2:5+4 E005 error: the line that begins a TYPE is missing, and this one is read as one\n"
               "  7:6+5 the type \"Count\" of \"C.E\" is not declared: that may be what this would declare\n"
               "  8:6+5 it is also the type of \"C.F\"\n"
               "  3:6+5 TYPE \"Label\" is taken for a part of it and is lost\n"
               "6:6+5 E013 error: the type \"Lable\" of \"C.D\" is not declared\n"
               "  did you mean \"Label\"?\n"},
        // Names of one family are no typing mistakes.
        Sample{"END_TYPE;\nTYPE WallKind = REAL;\nEND_TYPE;\nENTITY C;\n\tD : Wall;\nEND_ENTITY;\n",
               "2:5+4 E005 error: the line that begins a TYPE is missing, and this one is read as one\n"
               "  6:6+4 the type \"Wall\" of \"C.D\" is not declared: that may be what this would declare\n"
               "  3:6+8 TYPE \"WallKind\" is taken for a part of it and is lost\n"},
        // With the line nothing is wrong.
        Sample{"TYPE Label = REAL;\nEND_TYPE;\nTYPE B = REAL;\nEND_TYPE;\nENTITY C;\n\tD : Label;\n\tE : "
               "Label;\nEND_ENTITY;\n",
               ""}));

struct Text {
    std::string text;
    std::string findings;
};

TEST(SchemaFindings, SayWhyNothingWasFound) {
    const Text texts[] = {
        {"", "1:1+0 E001 error: no schema was found: the file is empty\n"},
        {"walls", "1:1+0 E001 error: no schema was found: no line has the keyword SCHEMA\n"},
        {" \n\t\n", "1:1+0 E001 error: no schema was found: there is nothing but white space in the file\n"},
        {"\nSCHEMA ;\nEND_SCHEMA;\n", "2:1+6 E001 error: no schema was found: the last line that mentions "
                                      "SCHEMA counts, and gives no name\n"},
        {"SCEMA A;\nTYPE B = REAL;\nEND_TYPE;\nEND_SCHEMA;\n",
         "1:1+5 E001 error: no schema was found: the keyword is written \"SCEMA\"\n"
         "  did you mean \"SCHEMA\"?\n"},
        {"SCHEMA A;\nENTITIY B;\nEND_ENTITI;\n",
         "1:1+6 E001 error: the schema has no declarations: the first keyword is written \"ENTITIY\"\n"
         "  did you mean \"ENTITY\"?\n"},
        {"\n schema WALLS;\n", "2:2+6 E001 error: no schema was found: the keyword is written \"schema\"\n"
                               "  keywords are found in capitals only\n"},
        {std::string("S\0C\0H\0", 6),
         "1:1+0 E001 error: no schema was found: the text is UTF-16\n  save it as UTF-8\n"},
        {"SCHEMA A;\rTYPE B = REAL;\rEND_TYPE;\rEND_SCHEMA;\r",
         "1:1+6 E001 error: the schema has no declarations: its lines end with carriage returns alone\n"
         "  end them with line feeds\n"},
        {"SCHEMA A;\nEND_SCHEMA;\n", "1:1+6 E001 warning: the schema has no declarations: there is no TYPE, "
                                     "ENTITY, FUNCTION or RULE in it\n"},
        {"SCHEMA A;\nentity B;\nend_entity;\n",
         "1:1+6 E001 error: the schema has no declarations: the first keyword is written \"entity\"\n"
         "  keywords are found in capitals only\n"},
    };
    for (const auto& [text, findings] : texts)
        EXPECT_EQ(sDump(findingsOfText(text)), findings) << text;
}

TEST(SchemaFindings, WhatComesAfterTheSchemaIsNotRead) {
    EXPECT_EQ(
        sDump(findingsOfText("SCHEMA A;\nTYPE B = REAL;\nEND_TYPE;\nEND_SCHEMA;\nENTITY C;\nEND_ENTITY;\n")),
        "5:8+1 E002 error: ENTITY \"C\" is not read: it comes after the line with END_SCHEMA\n");
    EXPECT_EQ(sDump(findingsOfText("SCHEMA A;\nTYPE B = REAL;\nEND_TYPE;\nEND_SCHEMA;\nEND_SCHEMA;\n")),
              "1:1+6 E001 error: no schema was found: the last line that mentions SCHEMA counts, and gives "
              "no name\n");
}

TEST(SchemaFindings, LineEndsChangeNoPlace) {
    const std::string lines = "SCHEMA A;\nENTITY B;\n\tC : \xC3\x84rger;\nEND_ENTITY;\nEND_SCHEMA;\n";
    std::string returns;
    for (const char letter : lines)
        returns += letter == '\n' ? std::string("\r\n") : std::string(1, letter);
    const auto* expected = "3:6+5 E013 error: the type \"\xC3\x84rger\" of \"B.C\" is not declared\n";
    EXPECT_EQ(sDump(findingsOfText(lines)), expected);
    EXPECT_EQ(sDump(findingsOfText(returns)), expected);
    EXPECT_EQ(sDump(findingsOfText("\xEF\xBB\xBF" + lines)), expected);
}

TEST(SchemaFindings, OfSeveralSchemasTheLastCounts) {
    EXPECT_EQ(
        sDump(findingsOfText("SCHEMA A;\nTYPE B = C;\nEND_TYPE;\nEND_SCHEMA;\nSCHEMA D;\nTYPE B = REAL;\n"
                             "END_TYPE;\nEND_SCHEMA;\n")),
        "");
}

TEST(SchemaFindings, AReportThatIsExplainedIsNoFindingOfItsOwn) {
    const auto findings = findingsOfText(sSchema("TYPE B = C;\nEND_TYPE;\n"));
    ASSERT_EQ(findings.size(), 1U);
    ASSERT_TRUE(findings.front().origin);
    EXPECT_EQ(findings.front().origin->function, "kiv::ifc::def::schema::Type::vUpdate");
    EXPECT_EQ(findings.front().origin->file, "Source/Format/Ifc/Def/Schema/IfcSchemaType");
    EXPECT_EQ(findings.front().origin->line, 85);
}

/// Types that are made of one another are resolved, and report, several times.
TEST(SchemaFindings, RepeatedReportsAreOne) {
    const auto findings =
        findingsOfText(sSchema("TYPE B = REAL;\n WHERE\n\tW : SELF > ;\nEND_TYPE;\nTYPE C = B;\nEND_TYPE;\n"
                               "TYPE D = B;\nEND_TYPE;\n"));
    ASSERT_EQ(findings.size(), 1U) << sDump(findings);
    EXPECT_EQ(findings.front().code, "E007");
}

TEST(SchemaFindings, AreLimitedPerCode) {
    std::string text = "SCHEMA A;\nENTITY B;\n";
    for (std::size_t index = 0; index < SchemaRun::maxFindingsPerCode + 10; ++index)
        text += "\tC" + std::to_string(index) + " : Nowhere" + std::to_string(index) + ";\n";
    text += "END_ENTITY;\nEND_SCHEMA;\n";
    EXPECT_EQ(findingsOfText(text).size(), SchemaRun::maxFindingsPerCode);
}

/// Warnings, as many as are kept of them and one more.
std::string sTooManyWrongBounds() {
    std::string text;
    for (std::size_t index = 0; index <= SchemaRun::maxFindingsPerCode; ++index)
        text += "ENTITY B" + std::to_string(index) + ";\n\tC : LIST [1:*] OF REAL;\nEND_ENTITY;\n";
    return text;
}

std::size_t errorsIn(const std::string& statements) {
    const auto findings = findingsOfText(sSchema(statements));
    return static_cast<std::size_t>(std::ranges::count(findings, Severity::Error, &Finding::severity));
}

INSTANTIATE_TEST_SUITE_P(
    ColonsTooMany, SchemaFindingsOf,
    testing::Values(
        Sample{"TYPE L = STRING;\nEND_TYPE;\nENTITY B;\n Name : L : REAL;\n Other : L : REAL;\nEND_ENTITY;\n",
               "5:9+1 E022 warning: there is a \":\" too many after \"L\"\n"
               "6:10+1 E022 warning: there is a \":\" too many after \"L\"\n"},
        // That it is no type is the same mistake.
        Sample{"ENTITY B;\n I : OPTIONAL J : REAL;\nEND_ENTITY;\n",
               "3:15+1 E022 error: there is a \":\" too many after \"J\"\n"
               "  the type \"J\" of \"B.I\" is not declared\n"},
        Sample{"ENTITY B;\n I : LIST [0:?] OF J : REAL;\nEND_ENTITY;\n",
               "3:20+1 E022 error: there is a \":\" too many after \"J\"\n"
               "  the type \"J\" of \"B.I\" is not declared\n"
               "  reported while reading: Type not found\n"},
        Sample{"TYPE J = REAL;\nEND_TYPE;\nENTITY B;\n I : J : REAL;\nEND_ENTITY;\n",
               "5:6+1 E022 warning: there is a \":\" too many after \"J\"\n"},
        Sample{"ENTITY B;\n Y : C;\nEND_ENTITY;\nENTITY C;\n D : REAL;\n INVERSE:\n E : SET OF B FOR "
               "Y;\nEND_ENTITY;\n",
               "7:2+7 E022 warning: there is a \":\" too many after \"INVERSE\"\n"},
        Sample{"ENTITY B;\n I : REAL:\n J : REAL;\nEND_ENTITY;\n",
               "3:6+4 E009 warning: \";\" is missing after \"REAL\"\n"}));

INSTANTIATE_TEST_SUITE_P(
    LengthsInTypes, SchemaFindingsOf,
    testing::Values(
        Sample{"ENTITY B;\n C : OPTIONAL STRING (255);\n D : LIST [1:?] OF STRING (255);\nEND_ENTITY;\n",
               "3:2+1 E006 error: the length of \"C\" is not read\n"
               "  it is read from round brackets right after STRING, without a blank\n"
               "4:2+1 E006 error: the length of \"D\" is not read\n"
               "  it is read from round brackets right after STRING, without a blank\n"},
        Sample{"ENTITY B;\n C : OPTIONAL STRING(255);\n D : LIST [1:?] OF STRING;\nEND_ENTITY;\n", ""}));

INSTANTIATE_TEST_SUITE_P(
    OpenBounds, SchemaFindingsOf,
    testing::Values(
        Sample{"ENTITY B;\n C : LIST [1:2;\nEND_ENTITY;\n",
               "3:14+1 E022 error: \"]\" is missing after \"2\"\n  reported while reading: Type not found\n"},
        Sample{
            "TYPE B = LIST [1:2;\nEND_TYPE;\n",
            "2:18+1 E022 error: \"]\" is missing after \"2\"\n  reported while reading: Type not found\n"}));

INSTANTIATE_TEST_SUITE_P(
    Nameless, SchemaFindingsOf,
    testing::Values(Sample{"ENTITY B;\nEND_ENTITY;\nRULE FOR (B);\nWHERE\n W : Q > 0;\nEND_RULE;\n",
                           "4:1+4 E002 error: a name is missing after \"RULE\"\n"
                           "6:6+1 E018 warning: the name \"Q\" is not declared in the RULE without a name\n"},
                    Sample{"TYPE = SELECT (X);\nEND_TYPE;\n",
                           "2:1+4 E002 error: a name is missing after \"TYPE\"\n"
                           "  2:16+1 the member \"X\" of the TYPE without a name is not declared: that may "
                           "be what this would declare\n"
                           "  reported while reading: Not type found\n"},
                    Sample{"ENTITY B;\nEND_ENTITY;\nRULE FOR (B);\nWHERE\n W : 1 > 0;\n",
                           "4:6+3 E004 error: END_RULE of the RULE without a name is missing\n"}));

INSTANTIATE_TEST_SUITE_P(NamesInPieces, SchemaFindingsOf,
                         testing::Values(Sample{
                             "ENTITY B;\n C : Ifc Label Text;\nEND_ENTITY;\n",
                             "3:6+14 E013 error: the type \"Ifc Label Text\" of \"B.C\" is not declared\n"}));

INSTANTIATE_TEST_SUITE_P(Locals, SchemaFindingsOf,
                         testing::Values(Sample{
                             "FUNCTION F (A : STRING) : STRING;\n RETURN (A[n:m]);\nEND_FUNCTION;\n",
                             "3:12+1 E018 warning: the name \"n\" is not declared in \"F\"\n3:14+1 E018 "
                             "warning: the name \"m\" is not declared in \"F\"\n"}));

/// Some entity has what comes after a dot, or nothing has.
INSTANTIATE_TEST_SUITE_P(
    AttributesOfAnything, SchemaFindingsOf,
    testing::Values(
        Sample{"TYPE K = ENUMERATION OF (X);\nEND_TYPE;\nENTITY B;\n Kind : K;\n Walls : SET [1:?] OF B;\n "
               "WHERE\n"
               " W : EXISTS(SELF.Kind.Foo);\n V : SIZEOF(QUERY(t <* Walls | t.Wals <> ?)) > 0;\nEND_ENTITY;\n"
               "FUNCTION F (A : B) : K;\n RETURN (A.Foo);\nEND_FUNCTION;\n",
               "8:23+3 E018 warning: the attribute \"Foo\" is not declared in the rule \"W\" of \"B\"\n"
               "  12:12+3 it is also used in \"F\"\n"
               "9:34+4 E018 warning: the attribute \"Wals\" is not declared in the rule \"V\" of \"B\"\n"
               "  did you mean \"Walls\"?\n"},
        // What an entity lacks is missing once.
        Sample{"ENTITY B;\n WHERE\n W : SELF.Foo > 0;\nEND_ENTITY;\n"
               "FUNCTION F (A : B) : REAL;\n RETURN (A.Foo);\nEND_FUNCTION;\n",
               "4:11+3 E018 warning: the attribute \"Foo\" is not declared in the rule \"W\" of \"B\"\n"
               "  7:12+3 it is also used in \"F\"\n"},
        // The supertype that is not declared may have it.
        Sample{"ENTITY B\n SUBTYPE OF (C);\nEND_ENTITY;\n"
               "FUNCTION F (A : B) : REAL;\n RETURN (A.Foo);\nEND_FUNCTION;\n",
               "3:14+1 E011 error: the supertype \"C\" of \"B\" is not declared\n"
               "  reported while reading: Entity not found\n"}));

/// Of a file that was cut off that is said once.
TEST(SchemaFindings, OfACutOffFileNamesAreNoted) {
    EXPECT_EQ(
        sDump(findingsOfText("SCHEMA A;\nENTITY B\n SUBTYPE OF (C);\n D : E;\nEND_ENTITY;\nENTITY F;\n G "
                             ": REAL;\n WHERE\n W : SELF.G >")),
        "1:8+1 E019 error: the end of the schema \"A\" is missing: no line has END_SCHEMA\n"
        "  6:8+1 END_ENTITY of ENTITY \"F\" is missing\n"
        "  reported while reading: Got SyntaxError when parsing an express rule: Unexpected token at "
        "2:1\n\nRule:  W : SELF.G >\n\n"
        "  9:2+1 the rule \"F.W\" is cut off\n  3:14+1 the supertype \"C\" of \"B\" is not declared\n"
        "  4:6+1 the type \"E\" of \"B.D\" is not declared\n");
    std::string text = "SCHEMA A;\nENTITY B;\n";
    for (std::size_t index = 0; index < 20; ++index)
        text += "\tC" + std::to_string(index) + " : Nowhere" + std::to_string(index) + ";\n";
    EXPECT_EQ(sDump(findingsOfText(text + "END_ENTITY;\n")),
              "1:8+1 E019 error: the end of the schema \"A\" is missing: no line has END_SCHEMA\n"
              "  3:7+8 the type \"Nowhere0\" of \"B.C0\" is not declared\n"
              "  4:7+8 the type \"Nowhere1\" of \"B.C1\" is not declared\n"
              "  5:7+8 the type \"Nowhere2\" of \"B.C2\" is not declared\n"
              "  6:7+8 the type \"Nowhere3\" of \"B.C3\" is not declared\n"
              "  7:7+8 the type \"Nowhere4\" of \"B.C4\" is not declared, and 15 more\n");
}

/// Names of the schema that a text has are not known then.
TEST(SchemaFindings, WithoutASchemaStringsAreNotLookedAt) {
    const std::string_view text =
        "SCHEMA A;\nENTITY B;\n WHERE\n W : 'A.X' IN TYPEOF(SELF);\nEND_ENTITY;\nEND_SCHEMA;\n";
    EXPECT_EQ(sDump(schemaFindingsOf(nullptr, std::vector<Assertion>(), text, "a.exp")),
              "1:1+6 E001 error: no schema was found: the last line that mentions SCHEMA counts, and gives "
              "no name\n");
}

/// A single name is rather misspelt.
TEST(SchemaFindings, WithoutTheEndOfTheSchemaANameIsAFinding) {
    EXPECT_EQ(findingsOfText("SCHEMA A;\nENTITY B;\n C : D;\nEND_ENTITY;\n").size(), 2U);
}

TEST(SchemaFindings, AnEntityThatIsNotDeclaredIsOneFindingHoweverOftenItIsUsed) {
    EXPECT_EQ(sDump(findingsOfText(sSchema("ENTITY Wall;\n\tC : REAL;\n WHERE\n\tV : SELF\\Wal.C > 0;\n"
                                           "\tW : SELF\\Wal.C < 9;\nEND_ENTITY;\n"))),
              "5:11+3 E018 warning: \"Wal\" is not declared in the rule \"V\" of \"Wall\"\n"
              "  did you mean \"Wall\"?\n"
              "  6:11+3 it is also used in the rule \"W\" of \"Wall\"\n");
}

/// What is over the limit takes no other finding with it.
TEST(SchemaFindings, ErrorsStayAfterTooManyWarnings) {
    const auto warnings = sTooManyWrongBounds();
    EXPECT_EQ(errorsIn(warnings), 0U);
    EXPECT_EQ(errorsIn(warnings + "ENTITY W;\n\tA REAL;\nEND_ENTITY;\nENTITY X;\n\tA REAL;\nEND_ENTITY;\n"),
              2U);
}

TEST(SchemaFindings, ReportsAreErrorsAfterTooManyWarnings) {
    EXPECT_EQ(errorsIn(sTooManyWrongBounds() + "TYPE T = LIST [1:?] OF;\nEND_TYPE;\n"), 1U);
}

/// Has something of everything that is looked at.
constexpr std::string_view Everything =
    "(* (* nested *) *)\nSCHEMA A;\n-- tail\nTYPE Kind = ENUMERATION OF\n\t(SOLID\n\t,HOLLOW);\nEND_TYPE;\n"
    "TYPE Choice = SELECT\n\t(Wall\n\t,Kind);\nEND_TYPE;\nENTITY Element\n ABSTRACT SUPERTYPE OF "
    "(ONEOF\n\t(Wall));\n"
    "\tName : OPTIONAL STRING;\n INVERSE\n\tOwn : SET [0:1] OF Wall FOR Of;\nEND_ENTITY;\nENTITY Wall\n"
    " SUBTYPE OF (Element);\n\tOf : Element;\n DERIVE\n\tSELF\\Element.Name : STRING := 'a''b';\n UNIQUE\n"
    "\tU : Of;\n WHERE\n\tW : SIZEOF(QUERY(x <* [1:2] | x > 1)) > 0;\n\tV : 'A.WALL' IN "
    "TYPEOF(SELF);\nEND_ENTITY;\n"
    "FUNCTION F\n (X : REAL) : REAL;\n RETURN (ABS(X));\nEND_FUNCTION;\nRULE R "
    "FOR\n\t(Wall);\nEND_RULE;\nEND_SCHEMA;\n";

/// Every place is in the text, and every reference to another one too.
void vPlacesCheck(std::string_view text) {
    const auto lineCount = static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
    for (const auto& finding : findingsOfText(text)) {
        ASSERT_LE(finding.place.position.line, lineCount) << text;
        ASSERT_LE(finding.place.position.column + finding.place.position.length, text.size() + 2) << text;
        ASSERT_FALSE(finding.message.empty()) << text;
    }
}

TEST(SchemaFindings, TheSampleOfEverythingHasNone) {
    EXPECT_EQ(sDump(findingsOfText(Everything)), "");
}

TEST(SchemaFindings, ASemicolonAfterTheNameOfAnEntityHidesNoSupertype) {
    EXPECT_EQ(
        sDump(findingsOfText(sSchema("ENTITY B;\nEND_ENTITY;\nENTITY C;\n SUBTYPE OF (B);\nEND_ENTITY;\n"))),
        "");
}

TEST(SchemaFindings, SurviveEveryPrefix) {
    for (std::size_t size = 0; size < Everything.size(); ++size)
        vPlacesCheck(Everything.substr(0, size));
}

TEST(SchemaFindings, SurviveEveryDeletionAndChangeOfAByte) {
    for (std::size_t pos = 0; pos < Everything.size(); ++pos) {
        std::string text(Everything);
        for (const char letter : {'\0', '(', '\'', '\n', '\xC3'}) {
            text[pos] = letter;
            vPlacesCheck(text);
        }
        vPlacesCheck(text.erase(pos, 1));
    }
}

class SchemaRuleExamples : public testing::TestWithParam<Rule> {};

TEST_P(SchemaRuleExamples, TheWrongOneYieldsThatCodeAndTheRightOneNothing) {
    const auto& rule = GetParam();
    const auto findings = findingsOfText(rule.wrong.text);
    ASSERT_FALSE(findings.empty());
    for (const auto& finding : findings) {
        EXPECT_EQ(finding.code, rule.code) << sDump(findings);
        EXPECT_EQ(finding.severity, rule.severity);
    }
    EXPECT_EQ(sDump(findingsOfText(rule.right.text)), "");
}

INSTANTIATE_TEST_SUITE_P(All, SchemaRuleExamples,
                         testing::ValuesIn(getSchemaRules().begin(), getSchemaRules().end()),
                         [](const auto& example) { return std::string(example.param.code); });

TEST(SchemaRules, AreInTheOrderOfTheirCodes) {
    std::string_view before;
    for (const auto& rule : getSchemaRules()) {
        EXPECT_LT(before, rule.code);
        EXPECT_TRUE((rule.code.starts_with('E') || rule.code.starts_with('R')) && rule.code.size() == 4)
            << rule.code;
        EXPECT_TRUE(rule.summary.ends_with('.')) << rule.code;
        before = rule.code;
    }
}

} // namespace

} // namespace kiv::kit
