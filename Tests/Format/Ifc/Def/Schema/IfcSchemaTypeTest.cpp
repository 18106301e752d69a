#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"

#include "Format/Ifc/Def/Schema/SchemaTestTools.h"
#include "Support/AssertCollector.h"
#include "Support/ExpressionText.h"
#include "Support/FailingStreamCheck.h"
#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using namespace kiv::ifc::def::schema;
using namespace kiv::test;
using testing::ElementsAre;

const kiv::assert::AssertRecord NotFound{0, "Not type found", "kiv::ifc::def::schema::Type::vUpdate",
                                         "Source/Format/Ifc/Def/Schema/IfcSchemaType", 85};

/// The labels of the rules that a type holds; none without a clause.
Strings labelsOf(const Type& type) {
    Strings labels;
    if (type.pWhere())
        for (const auto& rule : type.pWhere()->getRules())
            labels.emplace_back(rule.label);
    return labels;
}

// ---- Reading

TEST(TypeTest, OfAStringHasItsKeywordAndADataTypeAndNoClause) {
    AssertCollector reports;
    const auto schema = schemaFromText("TYPE IfcLabel = STRING;\nEND_TYPE;");
    const auto& type = typeOf(*schema, "IfcLabel");
    EXPECT_EQ(type.getKind(), ObjectBase::Type::Type);
    EXPECT_EQ(type.getName(), "IfcLabel");
    EXPECT_EQ(type.getUnderlyingText(), "STRING");
    EXPECT_EQ(type.getUnderlyingKeyword(), "STRING");
    ASSERT_NE(type.pDataType(), nullptr);
    EXPECT_EQ(type.pDataType()->getDataTypeKind(), DataTypeKind::String);
    EXPECT_EQ(type.pUnderlying(), type.pDataType());
    EXPECT_EQ(type.pWhere(), nullptr);
    EXPECT_TRUE(type.getDerivedTypes().empty());
    EXPECT_TRUE(reports.getRecords().empty());
}

struct HeaderRow {
    std::string_view header;
    std::string_view name;
    std::string_view text;
    std::string_view keyword;
};

TEST(TypeTest, TextAndKeywordAreTakenFromTheHeaderLine) {
    const HeaderRow rows[] = {
        {"TYPE A = REAL;", "A", "REAL", "REAL"},
        {"TYPE A = REAL", "A", "REAL", "REAL"},
        {"TYPE A =REAL;", "A", "REAL", "REAL"},
        {"TYPE A   =   REAL;", "A", "REAL", "REAL"},
        {"TYPE A = = == REAL;", "A", "REAL", "REAL"},
        {"TYPE A = REAL ;", "A", "REAL ", "REAL"},
        {"TYPE A = STRING(22) FIXED;", "A", "STRING(22) FIXED", "STRING(22)"},
        {"TYPE A = LIST [1:?] OF REAL;", "A", "LIST [1:?] OF REAL", "LIST"},
        {"TYPE A = REAL; (* note *)", "A", "REAL", "REAL"},
        {"TYPE A = ;", "A", "", ""},
        {"TYPE A =", "A", "", ""},
        // Without a blank before it, the '=' belongs to the name.
        {"TYPE A=REAL;", "A=REAL", "", ""},
        {"TYPE A;", "A", "", ""},
        {"TYPE A", "A", "", ""},
        {"TYPE A : REAL;", "A", "", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.header);
        const auto schema = schemaFromText(std::string(row.header) + "\nEND_TYPE;");
        ASSERT_EQ(schema->getObjects().size(), 1U);
        const auto* type = Type::pFrom(schema->getObjects()[0]);
        ASSERT_NE(type, nullptr);
        EXPECT_EQ(type->getName(), row.name);
        EXPECT_EQ(type->getUnderlyingText(), row.text);
        EXPECT_EQ(type->getUnderlyingKeyword(), row.keyword);
        EXPECT_EQ(type->pUnderlying() == nullptr, row.keyword.empty());
        EXPECT_EQ(type->pDataType() == nullptr, row.keyword.empty());
    }
}

TEST(TypeTest, HeaderWithoutEqualSignIsReportedWhenItIsResolved) {
    for (const auto* header : {"TYPE A;", "TYPE A", "TYPE A=REAL;"}) {
        AssertCollector reports;
        const auto schema = schemaFromText(std::string(header) + "\nEND_TYPE;");
        EXPECT_THAT(reports.getRecords(), ElementsAre(NotFound)) << header;
        ASSERT_FALSE(schema->getObjects().empty());
        const auto* type = Type::pFrom(schema->getObjects().front());
        ASSERT_NE(type, nullptr);
        EXPECT_EQ(type->getUnderlyingText(), "");
        EXPECT_EQ(type->getUnderlyingKeyword(), "");
        EXPECT_EQ(type->pDataType(), nullptr);
    }
}

TEST(TypeTest, ClauseIsReadAndItsRulesAreParsed) {
    AssertCollector reports;
    const auto schema = schemaFromText("TYPE A = REAL;\n"
                                       " WHERE\n"
                                       "  WR1 : SELF > 0.0;\n"
                                       "  WR2 : SELF < 1.0;\n"
                                       "END_TYPE;\n"
                                       "TYPE B = REAL;\nEND_TYPE;");
    const auto& type = typeOf(*schema, "A");
    ASSERT_NE(type.pWhere(), nullptr);
    ASSERT_EQ(type.pWhere()->getRules().size(), 2U);
    EXPECT_EQ(sExpressionText(*type.pWhere()->getRules()[1].expression), "(SELF < 1.0)");
    EXPECT_THAT(namesOf(schema->getObjects()), ElementsAre("A", "B"));
    EXPECT_TRUE(reports.getRecords().empty());
}

TEST(TypeTest, LaterClauseReplacesAnEarlierOne) {
    const auto schema = schemaFromText("TYPE A = REAL;\n"
                                       " WHERE\n"
                                       "  WR1 : SELF > 0.0;\n"
                                       "END_IF;\n"
                                       " WHERE\n"
                                       "  WR2 : SELF < 1.0;\n"
                                       "END_TYPE;");
    EXPECT_THAT(labelsOf(typeOf(*schema, "A")), ElementsAre("WR2"));
}

TEST(TypeTest, ClauseThatStopsAtAnotherEndDoesNotEndTheType) {
    const auto schema = schemaFromText("TYPE A = REAL;\n"
                                       " WHERE\n"
                                       "  WR1 : SELF > 0.0;\n"
                                       "END_ENTITY;\n"
                                       "TYPE B = REAL;\n"
                                       "END_TYPE;\n"
                                       "TYPE C = REAL;\n"
                                       "END_TYPE;");
    EXPECT_THAT(namesOf(schema->getObjects()), ElementsAre("A", "C"));
}

TEST(TypeTest, TheHeaderLineIsNeverSearchedForItsEnd) {
    const auto schema = schemaFromText("TYPE A = REAL; END_TYPE;\n"
                                       "TYPE B = REAL;\n"
                                       "END_TYPE;\n"
                                       "TYPE C = REAL;\n"
                                       "END_TYPE;");
    EXPECT_THAT(namesOf(schema->getObjects()), ElementsAre("A", "C"));
}

TEST(TypeTest, TheHeaderLineIsNeverSearchedForAClause) {
    const auto schema = schemaFromText("TYPE A = REAL; WHERE\n  WR1 : SELF > 0.0;\nEND_TYPE;");
    EXPECT_EQ(typeOf(*schema, "A").pWhere(), nullptr);
}

TEST(TypeTest, LastLineOfAListIsNotSearchedForTheEnd) {
    const auto schema = schemaFromText("TYPE A = ENUMERATION OF\n"
                                       " (X, Y); END_TYPE;\n"
                                       "TYPE B = REAL;\n"
                                       "END_TYPE;");
    EXPECT_THAT(namesOf(schema->getObjects()), ElementsAre("A"));
}

TEST(TypeTest, EndIsFoundAnywhereInALine) {
    const auto schema = schemaFromText("TYPE A = REAL;\n\n-- no END_TYPE; here\nTYPE B = REAL;\nEND_TYPE;");
    EXPECT_THAT(namesOf(schema->getObjects()), ElementsAre("A", "B"));
}

TEST(TypeTest, StreamThatEndsInsideTheTypeEndsIt) {
    for (const auto* text :
         {"SCHEMA S;\nTYPE A = REAL;", "SCHEMA S;\nTYPE A = REAL;\n", "SCHEMA S;\nTYPE A = REAL;\n x\n"})
        EXPECT_NE(typeOf(*schemaFromWholeText(text), "A").pDataType(), nullptr) << text;
    const auto schema = schemaFromWholeText("SCHEMA S;\nTYPE A = REAL;\n WHERE\n  WR1 : SELF > 0.0;");
    EXPECT_THAT(labelsOf(typeOf(*schema, "A")), ElementsAre("WR1"));
}

TEST(TypeTest, StreamThatFailsInsideTheTypeIsAnException) {
    const std::string_view text =
        "SCHEMA S;\nTYPE A = ENUMERATION OF\n (X\n,Y);\n WHERE\n  WR1 : TRUE;\nEND_TYPE;\n";
    vFailingStreamCheck(text, 10, [](std::istream& stream) { schemaFromStream(stream); });
}

// ---- Resolution

TEST(TypeTest, OfATypeGetsThatTypesDataTypeAndIsListedThereOnce) {
    AssertCollector reports;
    const auto schema = schemaFromText("TYPE Length = Measure;\nEND_TYPE;\n"
                                       "TYPE Measure = REAL;\nEND_TYPE;\n"
                                       "TYPE Width = Length;\nEND_TYPE;\n");
    const auto& measure = typeOf(*schema, "Measure");
    const auto& length = typeOf(*schema, "Length");
    const auto& width = typeOf(*schema, "Width");
    EXPECT_EQ(length.getUnderlyingKeyword(), "Measure");
    EXPECT_EQ(length.pUnderlying(), &measure);
    EXPECT_EQ(width.pUnderlying(), &length);
    ASSERT_NE(measure.pDataType(), nullptr);
    EXPECT_EQ(length.pDataType(), measure.pDataType());
    EXPECT_EQ(width.pDataType(), measure.pDataType());
    EXPECT_THAT(namesOf(measure.getDerivedTypes()), ElementsAre("Length"));
    EXPECT_THAT(namesOf(length.getDerivedTypes()), ElementsAre("Width"));
    EXPECT_TRUE(width.getDerivedTypes().empty());
    EXPECT_TRUE(reports.getRecords().empty());
}

TEST(TypeTest, DerivedTypesAreListedInTheOrderInWhichTheyAreResolved) {
    std::string text = "TYPE Base = REAL;\nEND_TYPE;\n";
    for (const char name : std::string("ABCDEFGH"))
        text += std::string("TYPE ") + name + " = Base;\nEND_TYPE;\n";
    const auto schema = schemaFromText(text);
    // By the hashes of the names: E C0, D C1, G C2, F C3, A C4, C C6, B C7, H CD.
    EXPECT_THAT(namesOf(typeOf(*schema, "Base").getDerivedTypes()),
                ElementsAre("E", "D", "G", "F", "A", "C", "B", "H"));
}

TEST(TypeTest, UnderlyingNameIsFoundInAnyLetterCase) {
    const auto schema = schemaFromText("TYPE A = ifcLABEL;\nEND_TYPE;\nTYPE IfcLabel = STRING;\nEND_TYPE;");
    EXPECT_EQ(typeOf(*schema, "A").pUnderlying(), &typeOf(*schema, "IfcLabel"));
}

TEST(TypeTest, KeywordsOfDataTypesAreCaseSensitive) {
    AssertCollector reports;
    const auto schema = schemaFromText("TYPE A = real;\nEND_TYPE;");
    EXPECT_EQ(typeOf(*schema, "A").pDataType(), nullptr);
    EXPECT_THAT(reports.getRecords(), ElementsAre(NotFound));
}

TEST(TypeTest, NamingWhatIsNoTypeIsReported) {
    for (const auto* other : {"ENTITY Other;\nEND_ENTITY;", "FUNCTION Other : REAL;\nEND_FUNCTION;",
                              "RULE Other FOR (A);\nEND_RULE;", ""}) {
        AssertCollector reports;
        const auto schema = schemaFromText(std::string("TYPE A = Other;\nEND_TYPE;\n") + other);
        EXPECT_THAT(reports.getRecords(), ElementsAre(NotFound)) << other;
        EXPECT_EQ(typeOf(*schema, "A").pUnderlying(), nullptr) << other;
        EXPECT_EQ(typeOf(*schema, "A").pDataType(), nullptr) << other;
        EXPECT_EQ(typeOf(*schema, "A").getUnderlyingKeyword(), "Other") << other;
    }
}

TEST(TypeTest, BracketAfterTheKeywordWithoutABlankMakesItUnknown) {
    AssertCollector reports;
    const auto schema = schemaFromText("TYPE A = LIST[1:?] OF REAL;\nEND_TYPE;");
    EXPECT_EQ(typeOf(*schema, "A").getUnderlyingKeyword(), "LIST[1:?]");
    EXPECT_EQ(typeOf(*schema, "A").pDataType(), nullptr);
    EXPECT_THAT(reports.getRecords(), ElementsAre(NotFound));
}

TEST(TypeTest, OfATypeThatIsNotResolvedHasNoDataTypeButIsNotReported) {
    // A's hash is smaller than C's: A resolves C through itself, then C is resolved again.
    AssertCollector reports;
    const auto schema = schemaFromText("TYPE A = C;\nEND_TYPE;\nTYPE C = Missing;\nEND_TYPE;");
    EXPECT_EQ(typeOf(*schema, "A").pUnderlying(), &typeOf(*schema, "C"));
    EXPECT_EQ(typeOf(*schema, "A").pDataType(), nullptr);
    EXPECT_THAT(reports.getRecords(), ElementsAre(NotFound, NotFound));
}

TEST(TypeTest, RulesAreParsedOnceForEachTimeATypeIsResolved) {
    // Each type is resolved by the schema, and through each type that names it.
    const auto schema = schemaFromText("TYPE A = REAL;\n WHERE\n  WA : TRUE;\nEND_TYPE;\n"
                                       "TYPE B = A;\n WHERE\n  WB : TRUE;\nEND_TYPE;\n"
                                       "TYPE C = A;\n WHERE\n  WC : TRUE;\nEND_TYPE;\n"
                                       "TYPE D = B;\n WHERE\n  WD : TRUE;\nEND_TYPE;\n");
    EXPECT_THAT(labelsOf(typeOf(*schema, "A")), ElementsAre("WA", "WA", "WA"));
    EXPECT_THAT(labelsOf(typeOf(*schema, "B")), ElementsAre("WB", "WB"));
    EXPECT_THAT(labelsOf(typeOf(*schema, "C")), ElementsAre("WC"));
    EXPECT_THAT(labelsOf(typeOf(*schema, "D")), ElementsAre("WD"));
}

// By the schema, and through B, C and D: four times, and no fifth time through E, which names B.
TEST(TypeTest, SyntaxErrorIsReportedOnceForEachTimeATypeIsResolved) {
    AssertCollector reports;
    const auto schema = schemaFromText("TYPE A = REAL;\n WHERE\n  WA : TRUE;\n  WB : ;\nEND_TYPE;\n"
                                       "TYPE B = A;\nEND_TYPE;\nTYPE C = A;\nEND_TYPE;\n"
                                       "TYPE D = A;\nEND_TYPE;\nTYPE E = B;\nEND_TYPE;\n");
    EXPECT_THAT(labelsOf(typeOf(*schema, "A")), ElementsAre("WA", "WA", "WA", "WA"));
    const auto records = reports.getRecords();
    ASSERT_EQ(records.size(), 4U);
    for (const auto& record : records)
        EXPECT_EQ(record, records[0]);
    EXPECT_TRUE(records[0].message.ends_with("\n\nRule:   WA : TRUE;\n  WB : ;\n")) << records[0].message;
}

TEST(TypeTest, DerivedTypeIsListedOnceHoweverOftenItIsResolved) {
    const auto schema = schemaFromText("TYPE A = REAL;\nEND_TYPE;\n"
                                       "TYPE B = A;\nEND_TYPE;\n"
                                       "TYPE C = B;\nEND_TYPE;\n"
                                       "TYPE D = B;\nEND_TYPE;\n");
    EXPECT_THAT(namesOf(typeOf(*schema, "A").getDerivedTypes()), ElementsAre("B"));
    EXPECT_THAT(namesOf(typeOf(*schema, "B").getDerivedTypes()), ElementsAre("D", "C"));
}

TEST(TypeTest, CircleOfTypesEndsWithoutADataType) {
    AssertCollector reports;
    const auto schema =
        schemaFromText("TYPE A = B;\nEND_TYPE;\nTYPE B = C;\nEND_TYPE;\nTYPE C = A;\nEND_TYPE;\n"
                       "TYPE Tail = A;\nEND_TYPE;");
    for (const auto* name : {"A", "B", "C", "Tail"})
        EXPECT_EQ(typeOf(*schema, name).pDataType(), nullptr) << name;
    EXPECT_EQ(typeOf(*schema, "A").pUnderlying(), &typeOf(*schema, "B"));
    EXPECT_EQ(typeOf(*schema, "B").pUnderlying(), &typeOf(*schema, "C"));
    EXPECT_EQ(typeOf(*schema, "C").pUnderlying(), &typeOf(*schema, "A"));
    EXPECT_TRUE(reports.getRecords().empty());
}

TEST(TypeTest, TypeOfItselfEndsWithoutADataType) {
    const auto schema = schemaFromText("TYPE A = A;\nEND_TYPE;");
    EXPECT_EQ(typeOf(*schema, "A").pDataType(), nullptr);
}

TEST(TypeTest, PointerOfAnotherKindIsNoType) {
    const auto schema = schemaFromText("TYPE T = REAL;\nEND_TYPE;\nENTITY E;\nEND_ENTITY;");
    EXPECT_EQ(Type::pFrom(nullptr), nullptr);
    EXPECT_EQ(Type::pFrom(schema->pObjectFromName("E")), nullptr);
    EXPECT_EQ(Type::pFrom(typeOf(*schema, "T").pDataType()), nullptr);
    EXPECT_EQ(Type::pFrom(schema->pObjectFromName("T")), schema->pObjectFromName("T"));
}

} // namespace
