// How the text is found and framed: pStepStreamRead and the statement loop of Schema.

#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"

#include "Format/Ifc/Def/Schema/SampleText.h"
#include "Format/Ifc/Def/Schema/SchemaTestTools.h"
#include "Support/AssertCollector.h"
#include "Support/FailingStream.h"
#include "Support/ModelText.h"
#include "Support/SchemaFromText.h"
#include "kiv/Base/Exception.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaFunction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <ios>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

namespace {

using namespace kiv::ifc::def::schema;
using namespace kiv::test;
using testing::ElementsAre;

/// One call of a factory.
struct Call {
    std::string line;
    std::size_t pos;

    friend bool operator==(const Call&, const Call&) = default;
};

void PrintTo(const Call& call, std::ostream* stream) {
    *stream << '"' << call.line << "\" at " << call.pos;
}

/// The calls that a text leads to when the factory consumes nothing.
std::vector<Call> callsOf(std::string_view text) {
    std::istringstream stream{std::string(text)};
    std::vector<Call> calls;
    const auto* result =
        pStepStreamRead(stream, [&](std::istream& in, const std::string& line, std::size_t pos) {
            EXPECT_EQ(&in, &stream);
            calls.push_back({line, pos});
            return static_cast<Schema*>(nullptr);
        });
    EXPECT_EQ(result, nullptr);
    EXPECT_TRUE(stream.eof());
    return calls;
}

struct HeaderRow {
    std::string_view text;
    std::vector<Call> calls;
};

// ---- Finding the header

TEST(StepStreamTest, CallsTheFactoryWithTheHeaderLineAndThePlaceOfTheKeyword) {
    const HeaderRow rows[] = {
        {"SCHEMA A;", {{"SCHEMA A;", 0}}},
        {"SCHEMA A;\n", {{"SCHEMA A;", 0}}},
        {"SCHEMA", {{"SCHEMA", 0}}},
        {"\n\n  SCHEMA A;\n", {{"  SCHEMA A;", 2}}},
        {"some SCHEMATA\n", {{"some SCHEMATA", 5}}},
        {"SCHEMA SCHEMA;\n", {{"SCHEMA SCHEMA;", 0}}},
        {"SCHEMA A;\r\n", {{"SCHEMA A;", 0}}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(callsOf(row.text), row.calls) << row.text;
}

TEST(StepStreamTest, WithoutAHeaderTheFactoryIsNotCalledAndTheResultIsNull) {
    for (const auto* text : {"", "\n", "schema A;\n", "Schema A;\n", "SCHEM\nA", "SCHEM A", "S CHEMA"})
        EXPECT_TRUE(callsOf(text).empty()) << text;
}

TEST(StepStreamTest, LinesInsideACommentAreSkipped) {
    const HeaderRow rows[] = {
        {"(*\nSCHEMA no;\n*)\nSCHEMA A;\n", {{"SCHEMA A;", 0}}},
        {"(* SCHEMA no;\nSCHEMA no;\n*)\nSCHEMA A;\n", {{"SCHEMA A;", 0}}},
        {"(*\r\nSCHEMA no;\r\n*)\r\nSCHEMA A;\r\n", {{"SCHEMA A;", 0}}},
        {"(*\n\nSCHEMA no;\n", {}},
        // The line that closes the comment is read.
        {"(*\n*) SCHEMA A;\n", {{"*) SCHEMA A;", 3}}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(callsOf(row.text), row.calls) << row.text;
}

TEST(StepStreamTest, LineThatOpensAndClosesACommentIsNotSkipped) {
    const HeaderRow rows[] = {
        {"(* SCHEMA *)\n", {{"(* SCHEMA *)", 3}}},
        {"(* SCHEMA no; *)\nSCHEMA A;\n", {{"(* SCHEMA no; *)", 3}, {"SCHEMA A;", 0}}},
        {"(* a *) SCHEMA A;\n", {{"(* a *) SCHEMA A;", 8}}},
        // "(*)" holds both, though they share the asterisk.
        {"(*)\nSCHEMA A;\n", {{"SCHEMA A;", 0}}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(callsOf(row.text), row.calls) << row.text;
}

TEST(StepStreamTest, CommentsAreSeenAtTheVeryStartOfALineOnly) {
    const HeaderRow rows[] = {
        {" (*\nSCHEMA A;\n", {{"SCHEMA A;", 0}}},
        {" (* SCHEMA\n", {{" (* SCHEMA", 4}}},
        {"text (*\nSCHEMA A;\n", {{"SCHEMA A;", 0}}},
        {"(*\n *)\nSCHEMA no;\n", {}},
        {"(*\ntext *)\nSCHEMA no;\n", {}},
        {"(*\n(* inner *)\nSCHEMA no;\n*)\nSCHEMA A;\n", {{"SCHEMA A;", 0}}},
        {"*)\nSCHEMA A;\n", {{"SCHEMA A;", 0}}},
        {"(\n* SCHEMA A;\n", {{"* SCHEMA A;", 2}}},
        {"-- SCHEMA A;\n", {{"-- SCHEMA A;", 3}}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(callsOf(row.text), row.calls) << row.text;
}

TEST(StepStreamTest, EveryLineWithTheKeywordCallsTheFactoryAgain) {
    EXPECT_THAT(callsOf("SCHEMA A;\nTYPE x;\nEND_SCHEMA;\n"),
                ElementsAre(Call{"SCHEMA A;", 0}, Call{"END_SCHEMA;", 4}));
}

TEST(StepStreamTest, HeaderAfterABlockCommentIsRead) {
    const auto schema = schemaFromWholeText("(*\nabout this SCHEMA\n*)\n\nSCHEMA IFC4;\n"
                                            "ENTITY A;\nEND_ENTITY;\nEND_SCHEMA;\n");
    ASSERT_NE(schema, nullptr);
    EXPECT_EQ(schema->getName(), "IFC4");
    EXPECT_NE(schema->pObjectFromName("A"), nullptr);
}

TEST(StepStreamTest, AStreamWithOneSchemaCallsTheFactoryOnce) {
    std::istringstream stream("SCHEMA A;\nENTITY E;\nEND_ENTITY;\nEND_SCHEMA;\n\n(* end *)\n");
    int calls = 0;
    std::unique_ptr<Schema> schema;
    const auto* result =
        pStepStreamRead(stream, [&](std::istream& in, const std::string& line, std::size_t pos) {
            ++calls;
            schema = std::make_unique<Schema>(in, line, pos);
            return schema.get();
        });
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(result, schema.get());
    EXPECT_TRUE(stream.eof());
}

TEST(StepStreamTest, OfSeveralSchemasTheLastIsReturned) {
    std::istringstream stream("SCHEMA A;\nEND_SCHEMA;\nSCHEMA B;\nENTITY E;\nEND_ENTITY;\nEND_SCHEMA;\n");
    std::vector<std::unique_ptr<Schema>> schemas;
    const auto* result =
        pStepStreamRead(stream, [&](std::istream& in, const std::string& line, std::size_t pos) {
            schemas.push_back(std::make_unique<Schema>(in, line, pos));
            return schemas.back().get();
        });
    ASSERT_EQ(schemas.size(), 2U);
    EXPECT_EQ(result, schemas[1].get());
    EXPECT_EQ(schemas[0]->getName(), "A");
    EXPECT_EQ(schemas[1]->getName(), "B");
    EXPECT_TRUE(schemas[0]->getObjects().empty());
    EXPECT_EQ(schemas[1]->getObjects().size(), 1U);
}

TEST(StepStreamTest, LaterResultReplacesAnEarlierEvenByNull) {
    std::istringstream stream("SCHEMA A;\nEND_SCHEMA;\nSCHEMA B;\n");
    std::unique_ptr<Schema> first;
    const auto* result =
        pStepStreamRead(stream, [&](std::istream& in, const std::string& line, std::size_t pos) {
            if (first)
                return static_cast<Schema*>(nullptr);
            first = std::make_unique<Schema>(in, line, pos);
            return first.get();
        });
    EXPECT_EQ(result, nullptr);
    EXPECT_NE(first, nullptr);
}

TEST(StepStreamTest, AnEmptyFactoryFailsAsAnEmptyFunctionDoes) {
    std::istringstream stream("\nSCHEMA A;\n");
    EXPECT_THROW(pStepStreamRead(stream, nullptr), std::bad_function_call);
}

TEST(StepStreamTest, AnEmptyFactoryIsNotNoticedWithoutAHeader) {
    std::istringstream stream("nothing here\n");
    EXPECT_EQ(pStepStreamRead(stream, nullptr), nullptr);
}

TEST(StepStreamTest, WhatTheFactoryThrowsPasses) {
    std::istringstream stream("SCHEMA A;\n");
    EXPECT_THROW(pStepStreamRead(
                     stream, [](std::istream&, const std::string&, std::size_t) -> Schema* { throw 4711; }),
                 int);
}

// ---- The header's name

TEST(SchemaReaderTest, NameIsTheTextAfterTheKeyword) {
    struct {
        std::string line;
        std::size_t pos;
        std::string_view name;
    } const rows[] = {
        {"SCHEMA IFC4;", 0, "IFC4"},
        {"SCHEMA IFC4 ;", 0, "IFC4 "},
        {"SCHEMA IFC4", 0, "IFC4"},
        {"SCHEMA IFC4 and more", 0, "IFC4 and more"},
        {"SCHEMA    IFC4;", 0, "IFC4"},
        {"SCHEMA\tIFC4;", 0, "\tIFC4"},
        {"SCHEMAIFC4;", 0, "IFC4"},
        {"SCHEMA A;B;", 0, "A"},
        {"SCHEMA;", 0, ""},
        {"SCHEMA", 0, ""},
        {"SCHEMA   ", 0, ""},
        {"; SCHEMA Y; z", 2, "Y"},
    };
    for (const auto& row : rows) {
        std::istringstream stream("END_SCHEMA;\n");
        EXPECT_EQ(Schema(stream, row.line, row.pos).getName(), row.name) << row.line;
    }
}

TEST(SchemaReaderTest, BlankBeforeTheSemicolonStaysInTheName) {
    EXPECT_EQ(schemaFromWholeText("SCHEMA IFC4 ;\nEND_SCHEMA;\n")->getName(), "IFC4 ");
}

TEST(SchemaReaderTest, HeaderWithoutSemicolonTakesTheRestOfTheLine) {
    EXPECT_EQ(schemaFromWholeText("SCHEMA IFC4 x\nEND_SCHEMA;\n")->getName(), "IFC4 x");
}

// ---- The statement loop

struct StatementRow {
    std::string_view text;
    /// The objects, each as kind and name: "2 Wall".
    Strings objects;
};

Strings kindsAndNamesOf(const Schema& schema) {
    Strings result;
    for (const auto* object : schema.getObjects())
        result.push_back(std::to_string(static_cast<int>(object->getKind())) + ' ' +
                         std::string(object->getName()));
    return result;
}

void vStatementsCheck(std::initializer_list<StatementRow> rows) {
    for (const auto& row : rows) {
        // Not by pStepStreamRead, which would take each END_SCHEMA that is left over for a header.
        std::istringstream stream(std::string(row.text) + "\nEND_SCHEMA;\n");
        EXPECT_EQ(kindsAndNamesOf(Schema(stream, "SCHEMA TEST;", 0)), row.objects) << row.text;
    }
}

TEST(SchemaReaderTest, EachKeywordStartsItsStatement) {
    vStatementsCheck({
        {"TYPE A = REAL;\nEND_TYPE;", {"1 A"}},
        {"ENTITY A;\nEND_ENTITY;", {"2 A"}},
        {"FUNCTION A (x : REAL) : REAL;\nEND_FUNCTION;", {"3 A"}},
        {"RULE A FOR (B);\nEND_RULE;", {"4 A"}},
    });
}

TEST(SchemaReaderTest, StatementsFollowOneAnother) {
    vStatementsCheck({{"TYPE A = REAL;\nEND_TYPE;\nENTITY B;\nEND_ENTITY;\nRULE C FOR (B);\nEND_RULE;\n"
                       "FUNCTION D : REAL;\nEND_FUNCTION;\nENTITY E;\nEND_ENTITY;",
                       {"1 A", "2 B", "4 C", "3 D", "2 E"}}});
}

TEST(SchemaReaderTest, EmptyLineBetweenStatementsIsIgnored) {
    vStatementsCheck({{"\nENTITY A;\nEND_ENTITY;\n\n\nENTITY B;\nEND_ENTITY;\n\n", {"2 A", "2 B"}}});
}

TEST(SchemaReaderTest, LinesWithoutAKeywordAreIgnored) {
    vStatementsCheck({
        {"(* a comment *)\nCONSTANT\n  x : REAL := 1;\nEND_CONSTANT;\nENTITY A;\nEND_ENTITY;", {"2 A"}},
        {"   \n\t\nTYP\nX\nENTITY A;\nEND_ENTITY;", {"2 A"}},
    });
}

TEST(SchemaReaderTest, KeywordsInLowerCaseAreNotRecognised) {
    vStatementsCheck({
        {"entity A;\nEnd_Entity;\ntype B = REAL;\nfunction C;\nrule D;\nEntity E;\nend_schema;", {}},
    });
}

TEST(SchemaReaderTest, KeywordsAreFoundAnywhereInALine) {
    vStatementsCheck({
        {"  \tENTITY A;\nEND_ENTITY;", {"2 A"}},
        {"(* see ENTITY A; *)\nEND_ENTITY;", {"2 A;"}},
        {"(* see TYPE Foo = REAL; *)\nEND_TYPE;", {"1 Foo"}},
        {"PROTOTYPES\nEND_TYPE;", {"1 S"}},
        {"FERRULES\nEND_RULE;", {"4 S"}},
        // A stray end line starts a statement, too.
        {"END_ENTITY;\nX : REAL;\nEND_ENTITY;\nENTITY B;\nEND_ENTITY;", {"2 ", "2 B"}},
    });
}

TEST(SchemaReaderTest, OfSeveralKeywordsInALineTheFirstInTheFixedOrderDecides) {
    vStatementsCheck({
        {"ENTITY A TYPE B = REAL;\nEND_TYPE;", {"1 B"}},
        {"ENTITY MyTYPE;\nEND_TYPE;", {"1 "}},
        // So the inheritance of an entity must not be on its header line.
        {"ENTITY A SUBTYPE OF (B);\nEND_TYPE;", {"1 OF"}},
        {"FUNCTION A ENTITY B;\nEND_ENTITY;", {"2 B"}},
        {"RULE A FUNCTION B;\nEND_FUNCTION;", {"3 B"}},
        {"END_SCHEMA RULE A FOR (B);\nEND_RULE;", {"4 A"}},
        {"END_SCHEMA_TYPE A = REAL;\nEND_TYPE;", {"1 A"}},
    });
}

TEST(SchemaReaderTest, EndSchemaEndsTheSchemaWhereverItIsInTheLine) {
    vStatementsCheck({
        {"ENTITY A;\nEND_ENTITY;\nEND_SCHEMA;\nENTITY B;\nEND_ENTITY;", {"2 A"}},
        {"-- the END_SCHEMA comes later\nENTITY B;\nEND_ENTITY;", {}},
    });
}

TEST(SchemaReaderTest, ReadingStopsAfterTheEndLine) {
    std::istringstream stream("ENTITY A;\nEND_ENTITY;\nEND_SCHEMA;\nnext line\n");
    const Schema schema(stream, "SCHEMA A;", 0);
    std::string next;
    std::getline(stream, next);
    EXPECT_EQ(next, "next line");
}

TEST(SchemaReaderTest, StatementsConsumeTheirOwnLines) {
    vStatementsCheck({
        {"ENTITY A;\n DERIVE\n  TYPE1 : REAL := 1;\n UNIQUE\n  RULE1 : x;\n WHERE\n  FUNCTION1 : x > "
         "0;\nEND_ENTITY;",
         {"2 A"}},
        {"FUNCTION A;\n TYPE\n ENTITY\n RULE\nEND_FUNCTION;", {"3 A"}},
    });
}

TEST(SchemaReaderTest, StreamWithoutEndSchemaStillYieldsAResolvedSchema) {
    for (const auto* end : {"", "\n"}) {
        const auto schema =
            schemaFromWholeText(std::string("SCHEMA A;\n"
                                            "ENTITY Wall\n SUBTYPE OF (Root);\nEND_ENTITY;\n"
                                            "ENTITY Root\n SUPERTYPE OF (ONEOF (Wall));\nEND_ENTITY;") +
                                end);
        ASSERT_NE(schema, nullptr);
        EXPECT_EQ(entityOf(*schema, "Wall").pSupertype(), &entityOf(*schema, "Root"));
        EXPECT_EQ(entityOf(*schema, "Wall").getFirstNumber(), 2);
    }
}

TEST(SchemaReaderTest, StreamThatEndsWithTheHeaderYieldsAnEmptySchema) {
    for (const auto* text : {"SCHEMA A;", "SCHEMA A;\n"}) {
        const auto schema = schemaFromWholeText(text);
        ASSERT_NE(schema, nullptr);
        EXPECT_EQ(schema->getName(), "A");
        EXPECT_TRUE(schema->getObjects().empty());
    }
}

TEST(SchemaReaderTest, StreamThatEndsInsideAStatementKeepsWhatWasRead) {
    const auto schema = schemaFromWholeText("SCHEMA A;\nENTITY Wall;\n  Height : REAL;");
    ASSERT_EQ(entityOf(*schema, "Wall").getAttributes().size(), 1U);
    EXPECT_EQ(entityOf(*schema, "Wall").getAttributes()[0].getTypeText(), "REAL");
}

TEST(SchemaReaderTest, StreamThatEndsInsideAListOfNamesIsAnException) {
    for (const auto* text : {"SCHEMA A;\nENTITY Wall\n SUPERTYPE OF (ONEOF (A,\n B",
                             "SCHEMA A;\nTYPE K = ENUMERATION OF\n", "SCHEMA A;\nTYPE K = SELECT\n(A,"})
        EXPECT_THROW(schemaFromWholeText(text), kiv::exception) << text;
}

// ---- Line ends and byte order marks

std::string sWithCarriageReturns(std::string_view text) {
    std::string result;
    for (const char byte : text) {
        if (byte == '\n')
            result += '\r';
        result += byte;
    }
    return result;
}

TEST(SchemaReaderTest, SampleHasTheObjectsThatItDeclares) {
    AssertCollector reports;
    const auto schema = schemaFromWholeText(SampleText);
    EXPECT_THAT(kindsAndNamesOf(*schema), ElementsAre("1 Label", "1 Name", "1 Kind", "1 Thing", "1 Grid",
                                                      "2 Root", "2 Wall", "2 Door", "3 Plain", "4 One"));
    EXPECT_TRUE(reports.getRecords().empty());
    const auto& wall = entityOf(*schema, "Wall");
    ASSERT_NE(wall.pWhere(), nullptr);
    EXPECT_EQ(wall.pWhere()->getRules().size(), 2U);
}

TEST(SchemaReaderTest, CarriageReturnsBeforeLineFeedsChangeNothing) {
    EXPECT_EQ(sModelText(*schemaFromWholeText(sWithCarriageReturns(SampleText))),
              sModelText(*schemaFromWholeText(SampleText)));
}

TEST(SchemaReaderTest, AByteOrderMarkAtTheStartChangesNothing) {
    EXPECT_EQ(sModelText(*schemaFromWholeText("\xEF\xBB\xBF" + std::string(SampleText))),
              sModelText(*schemaFromWholeText(SampleText)));
    EXPECT_EQ(sModelText(*schemaFromWholeText("\xEF\xBB\xBF" + sWithCarriageReturns(SampleText))),
              sModelText(*schemaFromWholeText(SampleText)));
}

TEST(SchemaReaderTest, AByteOrderMarkBeforeTheHeaderLineIsNoPartOfIt) {
    EXPECT_THAT(callsOf("\xEF\xBB\xBFSCHEMA A;\n"), ElementsAre(Call{"SCHEMA A;", 0}));
}

TEST(SchemaReaderTest, AByteOrderMarkAnywhereElseIsText) {
    EXPECT_THAT(callsOf("\n\xEF\xBB\xBFSCHEMA A;\n"), ElementsAre(Call{"\xEF\xBB\xBFSCHEMA A;", 3}));
    EXPECT_THAT(callsOf(" \xEF\xBB\xBFSCHEMA A;\n"), ElementsAre(Call{" \xEF\xBB\xBFSCHEMA A;", 4}));
}

TEST(SchemaReaderTest, OnlyOneCarriageReturnOfALineEndIsRemoved) {
    const auto schema = schemaFromText("ENTITY Wall\r\r\nEND_ENTITY;");
    EXPECT_THAT(namesOf(schema->getObjects()), ElementsAre("Wall\r"));
}

TEST(SchemaReaderTest, CarriageReturnInsideALineIsText) {
    const auto schema = schemaFromText("ENTITY Wa\rll\nEND_ENTITY;");
    EXPECT_THAT(namesOf(schema->getObjects()), ElementsAre("Wa\rll"));
}

// ---- Streams that fail

TEST(SchemaReaderTest, StreamThatFailsAtAnyByteIsAnExceptionWithAnEmptyMessage) {
    for (std::size_t bytes = 0; bytes <= SampleText.size(); ++bytes) {
        FailingStream stream(SampleText, bytes);
        try {
            schemaFromStream(stream);
            ADD_FAILURE() << "no exception after " << bytes << " bytes";
        } catch (const kiv::exception& error) {
            EXPECT_STREQ(error.what(), "") << bytes;
        }
    }
}

/// A factory that makes the schema and leaves it with its caller.
std::function<Schema*(std::istream&, const std::string&, std::size_t)>
factoryFor(std::unique_ptr<Schema>& schema) {
    return [&schema](std::istream& in, const std::string& line, std::size_t pos) {
        schema = std::make_unique<Schema>(in, line, pos);
        return schema.get();
    };
}

TEST(SchemaReaderTest, StreamThatFailsAfterTheSchemaWasBuiltLosesNothing) {
    FailingStream stream("SCHEMA A;\nEND_SCHEMA;\nmore\n", 24);
    std::unique_ptr<Schema> schema;
    EXPECT_THROW(pStepStreamRead(stream, factoryFor(schema)), kiv::exception);
    ASSERT_NE(schema, nullptr);
    EXPECT_EQ(schema->getName(), "A");
}

/// As std::getline does.
TEST(SchemaReaderTest, StreamThatIsToThrowAtItsEndDoesSoAndLosesNothing) {
    for (const auto mask : {std::ios::failbit, std::ios::eofbit}) {
        std::istringstream stream("SCHEMA A;\nEND_SCHEMA;\nmore\n");
        stream.exceptions(mask);
        std::unique_ptr<Schema> schema;
        EXPECT_THROW(pStepStreamRead(stream, factoryFor(schema)), std::ios::failure);
        ASSERT_NE(schema, nullptr);
        EXPECT_EQ(schema->getName(), "A");
    }
}

TEST(SchemaReaderTest, StreamThatIsToThrowAtItsEndDoesSoInsideASchemaThatHasNone) {
    const std::pair<std::string, bool> rows[] = {
        {"ENTITY X;\nEND_ENTITY;\n", true},
        {"ENTITY X;\nEND_ENTITY;\nEND_SCHEMA;\nmore\n", false},
    };
    for (const auto& [text, isThrown] : rows) {
        SCOPED_TRACE(text);
        std::istringstream stream(text);
        stream.exceptions(std::ios::failbit);
        if (isThrown) {
            EXPECT_THROW(Schema(stream, "SCHEMA A;", 0), std::ios::failure);
        } else {
            EXPECT_EQ(Schema(stream, "SCHEMA A;", 0).getObjects().size(), 1U);
        }
    }
}

TEST(SchemaReaderTest, StreamThatFailsRightAfterTheHeaderIsAnException) {
    FailingStream stream("", 0);
    EXPECT_THROW(Schema(stream, "SCHEMA A;", 0), kiv::exception);
}

} // namespace
