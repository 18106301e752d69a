#include "kiv/Format/Ifc/Def/Schema/IfcSchemaWhere.h"

#include "Format/Ifc/Def/Schema/SchemaTestTools.h"
#include "Support/AssertCollector.h"
#include "Support/ExpressionText.h"
#include "Support/FailingStreamCheck.h"
#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace kiv::ifc::def::schema;
using namespace kiv::test;
using testing::ElementsAre;
using testing::EndsWith;
using testing::StartsWith;

/// A clause read from the lines that follow its WHERE line.
struct Clause {
    explicit Clause(const std::string& lines) :
        text(" WHERE\n" + lines),
        schema(schemaFromText("TYPE Kind = ENUMERATION OF (A1, B1);\nEND_TYPE;")),
        where(*schema, text.line, 6, text.stream) {}

    Strings linesOf() const { return stringsOf(where.getLines()); }

    /// The rules as "label : expression".
    Strings rulesOf() const {
        Strings rules;
        for (const auto& rule : where.getRules())
            rules.push_back(std::string(rule.label) + " : " + sExpressionText(*rule.expression));
        return rules;
    }

    LineAndStream text;
    std::unique_ptr<Schema> schema;
    Where where;
};

// ---- Collecting the text

struct LinesRow {
    std::string_view text;
    Strings lines;
    /// The line that is current afterwards.
    std::string_view last;
};

void vLinesCheck(std::initializer_list<LinesRow> rows) {
    for (const auto& row : rows) {
        const Clause clause{std::string(row.text)};
        EXPECT_EQ(clause.linesOf(), row.lines) << row.text;
        EXPECT_EQ(clause.text.line.getLine(), row.last) << row.text;
    }
}

TEST(WhereTest, KeepsTheRuleLinesAndNotTheEndLine) {
    Clause clause("WR1 : A > 0;\nWR2 : B > 0;\nEND_ENTITY;\nnext\n");
    EXPECT_THAT(clause.linesOf(), ElementsAre("WR1 : A > 0;", "WR2 : B > 0;"));
    EXPECT_EQ(clause.where.getText(), "WR1 : A > 0;\nWR2 : B > 0;\n");
    EXPECT_EQ(clause.text.line.getLine(), "END_ENTITY;");
    clause.where.parseRules(*clause.schema);
    EXPECT_THAT(clause.rulesOf(), ElementsAre("WR1 : (A > 0)", "WR2 : (B > 0)"));
}

TEST(WhereTest, LeavesTheLinesAfterTheEndLineInTheStream) {
    Clause clause("WR1 : A > 0;\nEND_TYPE;\nnext\n");
    ASSERT_TRUE(clause.text.line.boNextLine(clause.text.stream));
    EXPECT_EQ(clause.text.line.getLine(), "next");
}

TEST(WhereTest, RuleOverThreeLinesIsKeptAsThreeLinesAndParsedAsOneRule) {
    Clause clause("WR1 : (A > 0)\nAND\n(B > 0);\nEND_ENTITY;\n");
    EXPECT_THAT(clause.linesOf(), ElementsAre("WR1 : (A > 0)", "AND", "(B > 0);"));
    clause.where.parseRules(*clause.schema);
    EXPECT_THAT(clause.rulesOf(), ElementsAre("WR1 : ((A > 0) AND (B > 0))"));
}

TEST(WhereTest, LinesOutsideRulesAreDropped) {
    vLinesCheck({
        {"\n  \n(* a note *)\nWR1 : A;\n\n-- another\nWR2 : B;\n\nEND_ENTITY;\n",
         {"WR1 : A;", "WR2 : B;"},
         "END_ENTITY;"},
        {"A > 0;\nEND_ENTITY;\n", {}, "END_ENTITY;"},
        {"END_ENTITY;\n", {}, "END_ENTITY;"},
    });
}

TEST(WhereTest, LinesInsideARuleAreAllKept) {
    vLinesCheck({{"WR1 :\n\n \t\n(* a note *)\nA;\nEND_ENTITY;\n",
                  {"WR1 :", "", " \t", "(* a note *)", "A;"},
                  "END_ENTITY;"}});
}

TEST(WhereTest, LineIsKeptAsRead) {
    vLinesCheck({{"\t WR1 : A ; \r\nEND_ENTITY;\r\n", {"\t WR1 : A ; "}, "END_ENTITY;"}});
}

TEST(WhereTest, AnyColonOpensARuleAndAnySemicolonClosesIt) {
    vLinesCheck({
        {"a:b\nc\nEND_X\n", {"a:b", "c", "END_X"}, "END_X"},
        {"(* note: x *)\nWR1 : A;\nEND_X\n", {"(* note: x *)", "WR1 : A;"}, "END_X"},
        {"WR1 : A = ';'\nAND B;\nEND_X\n", {"WR1 : A = ';'"}, "END_X"},
        {"WR1 : A; WR2 : B;\nEND_X\n", {"WR1 : A; WR2 : B;"}, "END_X"},
        {"; WR1 : A\nB;\nEND_X\n", {"; WR1 : A"}, "END_X"},
    });
}

TEST(WhereTest, FirstLineWithEndStopsWhereverTheWordIs) {
    vLinesCheck({
        {"END_\nWR1 : A;\n", {}, "END_"},
        {"WR1 : A; END_ENTITY;\nWR2 : B;\n", {"WR1 : A; END_ENTITY;"}, "WR1 : A; END_ENTITY;"},
        {"WR1 : BACKEND_A;\nWR2 : B;\nEND_TYPE;\n", {"WR1 : BACKEND_A;"}, "WR1 : BACKEND_A;"},
        {"WR1 : A;\nEND_IF;\nWR2 : B;\nEND_TYPE;\n", {"WR1 : A;"}, "END_IF;"},
        {"WR1 : A;\nEND\n_ENTITY;\nend_entity;\n END_TYPE;\n", {"WR1 : A;"}, " END_TYPE;"},
    });
}

TEST(WhereTest, EndLineInsideAnOpenRuleIsKept) {
    vLinesCheck({{"WR1 : A\nEND_ENTITY;\nnext\n", {"WR1 : A", "END_ENTITY;"}, "END_ENTITY;"}});
}

TEST(WhereTest, TheLineOfTheKeywordIsNoPartOfTheClause) {
    const auto schema = schemaFromText("ENTITY E;\n WHERE WR0: A;\n  WR1 : B;\nEND_ENTITY;");
    const auto* where = entityOf(*schema, "E").pWhere();
    ASSERT_NE(where, nullptr);
    EXPECT_EQ(where->getText(), "  WR1 : B;\n");
}

TEST(WhereTest, ClauseWithoutItsEndLineStopsAtTheEndOfTheStream) {
    const std::pair<std::string, Strings> rows[] = {
        {"WR1 : A;\n", {"WR1 : A;"}},
        {"WR1 : A;", {"WR1 : A;"}},
        {"WR1 : A\n", {"WR1 : A"}},
        {"WR1 : A", {"WR1 : A"}},
        {"", {}},
    };
    for (const auto& [text, lines] : rows)
        EXPECT_EQ(Clause(text).linesOf(), lines) << text;
}

TEST(WhereTest, StreamThatFailsIsAnException) {
    const auto schema = schemaFromText("");
    const std::string_view text = "WHERE\nWR1 : A;\nWR2 : B\n;\nEND_ENTITY;\n";
    vFailingStreamCheck(text, 6, [&](std::istream& stream) {
        ReadLineHelper line;
        ASSERT_TRUE(line.boNextLine(stream));
        const Where where(*schema, line, 5, stream);
    });
}

// ---- Parsing the rules

kiv::assert::AssertRecord recordOf(const std::string& error, std::string_view text) {
    return {0, "Got SyntaxError when parsing an express rule: " + error + "\n\nRule: " + std::string(text),
            "kiv::ifc::def::schema::Where::parseRules", "Source/Format/Ifc/Def/Schema/IfcSchemaWhere", 0};
}

struct ReportRow {
    /// The lines of the clause, before the end line.
    std::string text;
    Strings rules;
    /// Empty when there is no report.
    std::string error;
};

void vReportsCheck(std::initializer_list<ReportRow> rows) {
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        AssertCollector reports;
        Clause clause(row.text + "END_ENTITY;\n");
        clause.where.parseRules(*clause.schema);
        EXPECT_EQ(clause.rulesOf(), row.rules);
        std::vector<kiv::assert::AssertRecord> expected;
        if (!row.error.empty())
            expected.push_back(recordOf(row.error, clause.where.getText()));
        EXPECT_EQ(reports.getRecords(), expected);
    }
}

TEST(WhereTest, RulesAreNotParsedBeforeTheyAreAskedFor) {
    const Clause clause("WR1 : A;\nEND_ENTITY;\n");
    EXPECT_TRUE(clause.where.getRules().empty());
}

TEST(WhereTest, GoodRulesAreNotReported) {
    vReportsCheck({
        {"WR1 : A > 0;\n", {"WR1 : (A > 0)"}, ""},
        {"WR1 : A; WR2 : B;\n", {"WR1 : A", "WR2 : B"}, ""},
        {"WR1 : Kind.A1 = A;\n", {"WR1 : (Kind::A1 = A)"}, ""},
        {"(* note: x *)\nWR1 : A;\n", {"WR1 : A"}, ""},
        {"WR1 : A -- note\n;\n", {"WR1 : A"}, ""},
    });
}

TEST(WhereTest, SyntaxErrorIsOneReportWithTheTextOfTheWholeClause) {
    AssertCollector reports;
    Clause clause("WR1 : A;\nWR2 : B +;\nWR3 : C;\nEND_ENTITY;\n");
    clause.where.parseRules(*clause.schema);
    const auto records = reports.getRecords();
    ASSERT_EQ(records.size(), 1U);
    EXPECT_THAT(records[0].message, StartsWith("Got SyntaxError when parsing an express rule: "));
    EXPECT_THAT(records[0].message, EndsWith("\n\nRule: WR1 : A;\nWR2 : B +;\nWR3 : C;\n"));
    EXPECT_EQ(records[0], recordOf("Unexpected token at 2:10", "WR1 : A;\nWR2 : B +;\nWR3 : C;\n"));
}

TEST(WhereTest, RulesBeforeASyntaxErrorAreKeptAndThoseAfterItAreNotParsed) {
    vReportsCheck({
        {"WR1 : A;\nWR2 : B +;\nWR3 : C;\n", {"WR1 : A"}, "Unexpected token at 2:10"},
        {"WR1 : A;\nWR2 : B;\nWR3 C : D;\nWR4 : D;\n",
         {"WR1 : A", "WR2 : B"},
         "Expected token COLON but got IDENTIFIER at 3:7"},
    });
}

TEST(WhereTest, FirstRuleThatFailsIsReportedWithItsOwnError) {
    vReportsCheck({
        {"WR1 : A B;\nWR2 : C;\n", {}, "Expected token SEMICOLON but got IDENTIFIER at 1:11"},
        {"WR1 : {0 > A};\n", {}, "Expected a interval operator at 1:11"},
        {"WR1 : % ;\n", {}, "ExpressTokenizer didn't expect the character % here..."},
    });
}

TEST(WhereTest, SyntaxErrorOfTheVeryFirstTokenIsReported) {
    vReportsCheck({{"_WR1 : A;\n", {}, "ExpressTokenizer didn't expect the character _ here..."}});
}

TEST(WhereTest, ClauseWithoutARuleIsReported) {
    vReportsCheck({
        {"", {}, "Expected at least one rule in where clause at 1:2"},
        {"1 : A;\n", {}, "Expected at least one rule in where clause at 1:2"},
        {"-- note: x\nWR1 : A;\n", {}, "Expected at least one rule in where clause at 1:11"},
        {"(* note: x;\n*)\n", {}, "Expected at least one rule in where clause at 1:2"},
        {"(A) : B;\n", {}, "Expected at least one rule in where clause at 1:2"},
    });
}

TEST(WhereTest, WhatIsNoRuleAfterARuleIsNotReported) {
    vReportsCheck({
        {"WR1 : A; 2 : B;\n", {"WR1 : A"}, ""},
        {"WR1 : A; -- x: y\nWR2 : B;\n", {"WR1 : A"}, ""},
    });
}

TEST(WhereTest, EndLineInsideAnOpenRuleIsASyntaxError) {
    vReportsCheck({{"WR1 : A\n", {}, "Expected token SEMICOLON but got IDENTIFIER at 2:11"}});
}

TEST(WhereTest, RuleBeforeAnUnexpectedCharacterIsLostWithIt) {
    // The token after a rule's ';' is read before the rule is complete.
    vReportsCheck({{"WR1 : A;\nWR2 : B;\n%R3 : C;\n",
                    {"WR1 : A"},
                    "ExpressTokenizer didn't expect the character % here..."}});
}

TEST(WhereTest, CommentOrLiteralThatIsNotClosedEndsTheTextWhereItBegins) {
    vReportsCheck({
        {"WR1 : A (* x;\n", {}, "Expected token SEMICOLON but got END_OF_FILE at 1:11"},
        {"WR1 : A = 'x;\n", {}, "Unexpected token at 1:12"},
        {"WR1 : A;\nWR2 : (* B;\n", {"WR1 : A"}, "Unexpected token at 2:7"},
        {"WR1 : A; (* x *) (* y\n;\n", {"WR1 : A"}, ""},
        {"(*: x;\n", {}, "Expected at least one rule in where clause at 1:2"},
        {"': x;\n", {}, "Expected at least one rule in where clause at 1:2"},
    });
}

TEST(WhereTest, OpeningsInsideACommentOrALiteralOpenNothing) {
    vReportsCheck({
        {"WR1 : A = '(*';\n", {"WR1 : (A = '(*')"}, ""},
        {"WR1 : A = '--';\n", {"WR1 : (A = '--')"}, ""},
        {"WR1 : (* ' *) A;\n", {"WR1 : A"}, ""},
        {"WR1 : (* -- *) A;\n", {"WR1 : A"}, ""},
        {"WR1 : (* (* *) A;\n", {"WR1 : A"}, ""},
        {"WR1 : A -- it's (* open\nWR2 : B;\n", {"WR1 : A", "WR2 : B"}, ""},
        {"WR1 : A; WR2 : B -- it's (* open\nWR3 : C;\n", {"WR1 : A", "WR2 : B", "WR3 : C"}, ""},
        {"WR1 : (A) - (* x *) B;\n", {"WR1 : (A - B)"}, ""},
        {"WR1 : A - (*x*)- B;\n", {"WR1 : (A - (- B))"}, ""},
    });
}

TEST(WhereTest, ZeroByteEndsTheRules) {
    vReportsCheck({{std::string("WR1 : A;\nWR2\0: B;\n", 18),
                    {"WR1 : A"},
                    "Expected token COLON but got END_OF_FILE at 2:5"}});
}

TEST(WhereTest, WithoutASinkASyntaxErrorIsDropped) {
    Clause clause("WR1 : A;\nWR2 : ;\nEND_ENTITY;\n");
    EXPECT_NO_THROW(clause.where.parseRules(*clause.schema));
    EXPECT_THAT(clause.rulesOf(), ElementsAre("WR1 : A"));
}

TEST(WhereTest, NumberOutOfRangeLeavesTheParsing) {
    AssertCollector reports;
    const std::pair<std::string, std::string_view> rows[] = {
        {"WR1 : A = 2147483648;\nEND_ENTITY;\n", "stoi argument out of range"},
        {"WR1 : A = 1.0E999;\nEND_ENTITY;\n", "stod argument out of range"},
    };
    for (const auto& [text, message] : rows) {
        Clause clause(text);
        try {
            clause.where.parseRules(*clause.schema);
            ADD_FAILURE() << "no exception";
        } catch (const std::out_of_range& error) {
            EXPECT_EQ(error.what(), message);
        }
    }
    EXPECT_TRUE(reports.getRecords().empty());
}

TEST(WhereTest, NumberOutOfRangeLeavesTheLoad) {
    for (const auto* statements : {"ENTITY E;\n WHERE\n  WR1 : A = 2147483648;\nEND_ENTITY;",
                                   "TYPE T = REAL;\n WHERE\n  WR1 : SELF = 2147483648;\nEND_TYPE;"}) {
        try {
            schemaFromText(statements);
            ADD_FAILURE() << "no exception";
        } catch (const std::out_of_range& error) {
            EXPECT_STREQ(error.what(), "stoi argument out of range");
        }
    }
}

TEST(WhereTest, ParsingAgainAppendsTheRulesAgain) {
    AssertCollector reports;
    Clause clause("WR1 : A;\nWR2 : B;\nEND_ENTITY;\n");
    clause.where.parseRules(*clause.schema);
    clause.where.parseRules(*clause.schema);
    EXPECT_THAT(clause.rulesOf(), ElementsAre("WR1 : A", "WR2 : B", "WR1 : A", "WR2 : B"));
    EXPECT_TRUE(reports.getRecords().empty());
}

TEST(WhereTest, ParsingAgainReportsASyntaxErrorAgain) {
    AssertCollector reports;
    Clause clause("WR1 : A;\nWR2 : ;\nEND_ENTITY;\n");
    clause.where.parseRules(*clause.schema);
    clause.where.parseRules(*clause.schema);
    EXPECT_THAT(clause.rulesOf(), ElementsAre("WR1 : A", "WR1 : A"));
    EXPECT_EQ(reports.getRecords().size(), 2U);
}

// The rules of the text, again for each time that it is parsed, by whichever way they are looked at.
TEST(WhereTest, ParsingManyTimesGivesTheRulesThatOften) {
    Clause clause("WR1 : A;\nWR2 : B;\nWR3 : C;\nEND_ENTITY;\n");
    EXPECT_EQ(clause.where.getRules().size(), 0U);
    EXPECT_EQ(clause.where.getRules().begin(), clause.where.getRules().end());
    constexpr std::string_view Texts[] = {"A", "B", "C"};
    for (std::size_t times = 1; times != 5; ++times) {
        clause.where.parseRules(*clause.schema);
        const auto rules = clause.where.getRules();
        ASSERT_EQ(rules.size(), 3 * times);
        EXPECT_FALSE(rules.empty());
        std::size_t index = 0;
        for (const auto& rule : rules) {
            ASSERT_LT(index, rules.size());
            EXPECT_EQ(&rule, &rules[index]);
            EXPECT_EQ(sExpressionText(*rule.expression), Texts[index % 3]);
            ++index;
        }
        EXPECT_EQ(index, rules.size());
    }
}

// Kind.A1 is an item where the schema knows Kind, and an attribute where it does not.
TEST(WhereTest, EachSchemaGivesRulesOfItsOwn) {
    AssertCollector reports;
    Clause clause("WR1 : Kind.A1 = x;\nWR2 : B;\nEND_ENTITY;\n");
    const auto other = schemaFromText("ENTITY Other;\nEND_ENTITY;");
    for (auto* const schema : {clause.schema.get(), clause.schema.get(), clause.schema.get(), other.get(),
                               other.get(), clause.schema.get()})
        clause.where.parseRules(*schema);
    const std::string item = "WR1 : (Kind::A1 = x)";
    const std::string attribute = "WR1 : (Kind.A1 = x)";
    EXPECT_THAT(clause.rulesOf(), ElementsAre(item, "WR2 : B", item, "WR2 : B", item, "WR2 : B", attribute,
                                              "WR2 : B", attribute, "WR2 : B", item, "WR2 : B"));
    EXPECT_TRUE(reports.getRecords().empty());
}

TEST(WhereTest, NumberOutOfRangeIsRaisedAgainAndKeepsTheRulesBeforeIt) {
    Clause clause("WR1 : A;\nWR2 : A = 2147483648;\nEND_ENTITY;\n");
    EXPECT_THROW(clause.where.parseRules(*clause.schema), std::out_of_range);
    EXPECT_THROW(clause.where.parseRules(*clause.schema), std::out_of_range);
    EXPECT_THAT(clause.rulesOf(), ElementsAre("WR1 : A", "WR1 : A"));
}

TEST(WhereTest, ClauseWithoutARuleIsReportedEachTimeAndStaysEmpty) {
    AssertCollector reports;
    Clause clause("(* : *) ;\nEND_ENTITY;\n");
    for (int time = 0; time != 3; ++time)
        clause.where.parseRules(*clause.schema);
    EXPECT_TRUE(clause.where.getRules().empty());
    EXPECT_EQ(clause.where.getRules().begin(), clause.where.getRules().end());
    const auto records = reports.getRecords();
    ASSERT_EQ(records.size(), 3U);
    EXPECT_EQ(records[1], records[0]);
    EXPECT_EQ(records[2], records[0]);
    EXPECT_THAT(records[0].message, EndsWith("\n\nRule: (* : *) ;\n"));
}

// The first parsing has nobody to report to.
TEST(WhereTest, SinkThatComesLaterGetsTheReportOfEachParsingFromThenOn) {
    Clause clause("WR1 : A;\nWR2 : ;\nEND_ENTITY;\n");
    clause.where.parseRules(*clause.schema);
    AssertCollector reports;
    clause.where.parseRules(*clause.schema);
    clause.where.parseRules(*clause.schema);
    const auto records = reports.getRecords();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0], records[1]);
    EXPECT_THAT(records[0].message, StartsWith("Got SyntaxError when parsing an express rule: "));
    EXPECT_THAT(records[0].message, EndsWith("\n\nRule: WR1 : A;\nWR2 : ;\n"));
}

TEST(WhereTest, ReportsOfOneClauseShareTheirText) {
    struct PlaceSink final : kiv::assert::Sink {
        void vReport(const kiv::assert::AssertInfo& info) override { texts.push_back(info.message.data()); }
        std::vector<const char*> texts;
    } sink;
    const kiv::assert::ScopedSink installed(sink);
    Clause clause("WR1 : ;\nEND_ENTITY;\n");
    for (int time = 0; time != 3; ++time)
        clause.where.parseRules(*clause.schema);
    ASSERT_EQ(sink.texts.size(), 3U);
    EXPECT_EQ(sink.texts[1], sink.texts[0]);
    EXPECT_EQ(sink.texts[2], sink.texts[0]);
}

TEST(WhereTest, NamesDeclaredAfterTheClauseAreKnownToItsRules) {
    AssertCollector reports;
    const auto schema = schemaFromText("ENTITY E;\n WHERE\n  WR1 : Later.A1 = x;\nEND_ENTITY;\n"
                                       "TYPE Later = ENUMERATION OF (A1);\nEND_TYPE;");
    const auto* where = entityOf(*schema, "E").pWhere();
    ASSERT_NE(where, nullptr);
    ASSERT_EQ(where->getRules().size(), 1U);
    EXPECT_EQ(sExpressionText(*where->getRules()[0].expression), "(Later::A1 = x)");
    EXPECT_TRUE(reports.getRecords().empty());
}

} // namespace
