#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"

#include "Format/Ifc/Def/Schema/SchemaTestTools.h"
#include "Support/AssertCollector.h"
#include "Support/FailingStreamCheck.h"
#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

namespace {

using namespace kiv::ifc::def::schema;
using namespace kiv::test;
using testing::ElementsAre;
using testing::IsEmpty;

kiv::assert::AssertRecord notFoundAt(int line) {
    return {0, "Entity not found", "kiv::ifc::def::schema::Entity::vUpdate",
            "Source/Format/Ifc/Def/Schema/IfcSchemaEntity", line};
}

const auto SupertypeNotFound = notFoundAt(316);
const auto SubtypeNotFound = notFoundAt(325);

/// A schema whose first object is the entity X with these lines between its header and END_ENTITY.
struct Declared {
    explicit Declared(const std::string& lines) :
        schema(schemaFromText("ENTITY X;\n" + lines +
                              "\nEND_ENTITY;\n"
                              "ENTITY A;\nEND_ENTITY;\n"
                              "ENTITY B;\nEND_ENTITY;\n"
                              "ENTITY C;\nEND_ENTITY;")),
        entity(entityOf(*schema, "X")) {}

    Strings attributesOf() const {
        Strings result;
        for (const auto& attribute : entity.getAttributes())
            result.push_back(std::string(attribute.getName()) + " : " +
                             (attribute.isOptional() ? "OPTIONAL " : "") +
                             std::string(attribute.getTypeText()));
        return result;
    }

    Strings inversesOf() const {
        Strings result;
        for (const auto& inverse : entity.getAttributesInverse())
            result.push_back(std::string(inverse.getName()) + " : " + std::string(inverse.getTypeText()) +
                             " FOR " + std::string(inverse.getForAttributeName()));
        return result;
    }

    Strings uniquesOf() const {
        Strings result;
        if (entity.pUnique())
            for (const auto& rule : entity.pUnique()->getRules())
                result.emplace_back(rule.label);
        return result;
    }

    Strings derivesOf() const {
        Strings result;
        if (entity.pDerive())
            for (const auto& value : entity.pDerive()->getValues())
                result.push_back(std::string(value.getName()) + " : " + std::string(value.getRest()));
        return result;
    }

    Strings labelsOf() const {
        Strings result;
        if (entity.pWhere())
            for (const auto& rule : entity.pWhere()->getRules())
                result.emplace_back(rule.label);
        return result;
    }

    std::unique_ptr<Schema> schema;
    const Entity& entity;
};

// ---- Supertypes and subtypes

struct TreeRow {
    std::string lines;
    bool abstract;
    Strings subtypes;
    std::string supertype;
};

void vTreeCheck(std::initializer_list<TreeRow> rows) {
    for (const auto& row : rows) {
        SCOPED_TRACE(row.lines);
        const Declared declared(row.lines);
        EXPECT_EQ(declared.entity.isAbstract(), row.abstract);
        EXPECT_EQ(stringsOf(declared.entity.getSupertypeOfNames()), row.subtypes);
        EXPECT_EQ(declared.entity.getSupertypeName(), row.supertype);
    }
}

TEST(EntityTest, EmptyDeclarationHasNothing) {
    const Declared declared("");
    EXPECT_EQ(declared.entity.getKind(), ObjectBase::Type::Entity);
    EXPECT_FALSE(declared.entity.isAbstract());
    EXPECT_EQ(declared.entity.pSupertype(), nullptr);
    EXPECT_EQ(declared.entity.getSupertypeName(), "");
    EXPECT_THAT(declared.entity.getSupertypeOfNames(), IsEmpty());
    EXPECT_THAT(declared.entity.getSubtypes(), IsEmpty());
    EXPECT_THAT(declared.entity.getAttributes(), IsEmpty());
    EXPECT_THAT(declared.entity.getAttributesInverse(), IsEmpty());
    EXPECT_EQ(declared.entity.pWhere(), nullptr);
    EXPECT_EQ(declared.entity.pUnique(), nullptr);
    EXPECT_EQ(declared.entity.pDerive(), nullptr);
}

TEST(EntityTest, AbstractSupertypeOnTheFirstLineIsAbstractWithItsSubtypes) {
    vTreeCheck({
        {" ABSTRACT SUPERTYPE OF (ONEOF (A, B));", true, {"A", "B"}, ""},
        {" ABSTRACT SUPERTYPE OF (ONEOF\n\t(A\n\t,B));", true, {"A", "B"}, ""},
        {" ABSTRACT SUPERTYPE;", true, {}, ""},
        {" ABSTRACT;", true, {}, ""},
        {"ABSTRACT SUPERTYPE;", true, {}, ""},
        {"\n\n ABSTRACT SUPERTYPE OF (ONEOF (A));", true, {"A"}, ""},
    });
}

TEST(EntityTest, AbstractOnALaterLineIsIgnored) {
    vTreeCheck({
        {" SUBTYPE OF (A);\n ABSTRACT SUPERTYPE OF (ONEOF (B));", false, {"B"}, "A"},
        // A line of blanks is a line.
        {" \n ABSTRACT SUPERTYPE OF (ONEOF (A));", false, {"A"}, ""},
    });
}

TEST(EntityTest, SearchGoesOnAfterAbstract) {
    vTreeCheck({{" SUPERTYPE OF (ONEOF (A)) ABSTRACT;", true, {}, ""},
                {" SUBTYPE OF (A); ABSTRACT;", true, {}, ""},
                {" ABSTRACT SUBTYPE OF (A);", true, {}, "A"}});
}

TEST(EntityTest, SubtypesAreReadInTheExactFormOnly) {
    vTreeCheck({
        {" SUPERTYPE OF (ONEOF (A, B));", false, {"A", "B"}, ""},
        {" SUPERTYPE OF (ONEOF(A,B));", false, {"A", "B"}, ""},
        {" SUPERTYPE OF (ONEOF\n\n (A\n ,B\n ,C)\n );", false, {"A", "B", "C"}, ""},
        {" SUPERTYPE OF (ONEOF ());", false, {}, ""},
        {" SUPERTYPE OF (A ANDOR B);", false, {}, ""},
        {" SUPERTYPE OF (A);", false, {}, ""},
        {" SUPERTYPE OF(ONEOF (A));", false, {}, ""},
        {" SUPERTYPE OF ( ONEOF (A));", false, {}, ""},
        {" SUPERTYPE OF\n (ONEOF (A));", false, {}, ""},
        {" supertype of (oneof (A));", false, {}, ""},
    });
}

TEST(EntityTest, OnlyTheFirstListOfSubtypesIsRead) {
    vTreeCheck({{" SUPERTYPE OF (ONEOF (A));\n SUPERTYPE OF (ONEOF (B));", false, {"A"}, ""},
                {" SUPERTYPE OF (ONEOF (A)) SUPERTYPE OF (ONEOF (B));", false, {"A"}, ""}});
}

TEST(EntityTest, SupertypeNameIsTheTextBetweenTheParentheses) {
    vTreeCheck({
        {" SUBTYPE OF (A);", false, {}, "A"},
        {" SUBTYPE OF (IfcRoot);", false, {}, "IfcRoot"},
        {"SUBTYPE OF (A); x", false, {}, "A"},
        {" SUBTYPE OF  x (A);", false, {}, "A"},
        {" SUBTYPE OF ( A );", false, {}, " A "},
        {" SUBTYPE OF (A, B);", false, {}, "A, B"},
        {" SUBTYPE OF ();", false, {}, ""},
        {" SUBTYPE OF(A);", false, {}, ""},
        {" subtype of (A);", false, {}, ""},
    });
}

TEST(EntityTest, SupertypeWithoutItsClosingTakesTheRestOfTheLine) {
    vTreeCheck({{" SUBTYPE OF (A", false, {}, "A"},
                {" SUBTYPE OF (A)", false, {}, "A)"},
                {" SUBTYPE OF (A) ;", false, {}, "A) ;"}});
}

TEST(EntityTest, SupertypeWithoutItsParenthesisIsLookedForOnTheNextLines) {
    vTreeCheck({{" SUBTYPE OF \n (A);", false, {}, "A"},
                {" SUBTYPE OF \n\n \n (A);", false, {}, "A"},
                {" SUBTYPE OF \n\tWidth : STRING(255);", false, {}, "255"}});
}

TEST(EntityTest, OnlyTheFirstSupertypeIsRead) {
    vTreeCheck({{" SUBTYPE OF (A);\n SUBTYPE OF (B);", false, {}, "A"},
                {" SUBTYPE OF ();\n SUBTYPE OF (B);", false, {}, ""}});
}

TEST(EntityTest, SubtypesAndSupertypeMayStandOnOneLine) {
    vTreeCheck({
        {" SUPERTYPE OF (ONEOF (A, B)) SUBTYPE OF (C);", false, {"A", "B"}, "C"},
        {" ABSTRACT SUPERTYPE OF (ONEOF (A, B)) SUBTYPE OF (C);", true, {"A", "B"}, "C"},
        {" SUPERTYPE OF (ONEOF\n (A\n ,B)) SUBTYPE OF (C);", false, {"A", "B"}, "C"},
        {" SUPERTYPE OF (ONEOF\n (A\n ,B))\n SUBTYPE OF (C);", false, {"A", "B"}, "C"},
        // The subtypes are looked for first, so that what comes before them is passed by.
        {" SUBTYPE OF (C) SUPERTYPE OF (ONEOF (A));", false, {"A"}, ""},
    });
}

TEST(EntityTest, TheHeaderLineIsNotScanned) {
    const auto schema = schemaFromText("ENTITY X ABSTRACT INVERSE First : REAL; END_ENTITY;\n"
                                       "  Name : STRING;\n"
                                       "END_ENTITY;\n"
                                       "ENTITY A;\nEND_ENTITY;");
    const auto& entity = entityOf(*schema, "X");
    EXPECT_FALSE(entity.isAbstract());
    ASSERT_EQ(entity.getAttributes().size(), 1U);
    EXPECT_EQ(entity.getAttributes()[0].getName(), "Name");
    EXPECT_THAT(namesOf(schema->getObjects()), ElementsAre("X", "A"));
}

// ---- Explicit attributes

struct ClauseRow {
    std::string lines;
    Strings expected;
};

TEST(EntityTest, LinesWithABlankColonBlankAreAttributes) {
    const ClauseRow rows[] = {
        {"Name : IfcLabel;", {"Name : IfcLabel"}},
        {"\t Name \t : \t IfcLabel;", {"Name : IfcLabel"}},
        {"Name : OPTIONAL IfcLabel;", {"Name : OPTIONAL IfcLabel"}},
        {"Name : OPTIONAL\tIfcLabel;", {"Name : OPTIONAL IfcLabel"}},
        {"A1 : REAL;\nA2 : STRING(5);\nA3 : LIST [1:?] OF REAL;",
         {"A1 : REAL", "A2 : STRING(5)", "A3 : LIST [1:?] OF REAL"}},
        {"Name : IfcLabel", {"Name : IfcLabel"}},
        {"Name : IfcLabel ;", {"Name : IfcLabel "}},
        {"Name : IfcLabel; (* note *)", {"Name : IfcLabel"}},
        {"A1, A2 : REAL;", {"A1, A2 : REAL"}},
        {"A1 : A2 : REAL;", {"A1 : A2 : REAL"}},
        {"A1 : LIST [ 1 : 3 ] OF REAL;", {"A1 : LIST [ 1 : 3 ] OF REAL"}},
        {" : REAL;", {" : REAL"}},
        {"A1 : ;", {"A1 : "}},
        {"A1 : OPTIONAL;", {"A1 : OPTIONAL "}},
        {"Name: IfcLabel;", {}},
        {"Name :IfcLabel;", {}},
        {"Name :\tIfcLabel;", {}},
        {"Name\t: IfcLabel;", {}},
        {"Name :", {}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Declared(row.lines).attributesOf(), row.expected) << row.lines;
}

TEST(EntityTest, OptionalAnywhereAfterTheColonIsTakenAndWhatPrecedesItIsLost) {
    const ClauseRow rows[] = {
        {"A1 : LIST OF OPTIONAL REAL;", {"A1 : OPTIONAL REAL"}},
        {"A1 : ISOPTIONALREAL;", {"A1 : OPTIONAL REAL"}},
        {"OPTIONAL : REAL;", {"OPTIONAL : REAL"}},
        {"A1 : optional REAL;", {"A1 : optional REAL"}},
        {"A1 : REAL; OPTIONAL x;", {"A1 : OPTIONAL x"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Declared(row.lines).attributesOf(), row.expected) << row.lines;
}

TEST(EntityTest, NothingElseIsDoneWithTheLineOfAnAttribute) {
    const Declared declared("WHERE1 : REAL;\n"
                            "UNIQUE1 : REAL;\n"
                            "DERIVE1 : REAL;\n"
                            "INVERSE1 : REAL;\n"
                            "A1 : LIST OF UNIQUE REAL; END_ENTITY;\n"
                            "A2 : REAL;");
    EXPECT_THAT(declared.attributesOf(),
                ElementsAre("WHERE1 : REAL", "UNIQUE1 : REAL", "DERIVE1 : REAL", "INVERSE1 : REAL",
                            "A1 : LIST OF UNIQUE REAL", "A2 : REAL"));
    EXPECT_EQ(declared.entity.pUnique(), nullptr);
    EXPECT_EQ(declared.entity.pDerive(), nullptr);
    EXPECT_EQ(declared.entity.pWhere(), nullptr);
}

TEST(EntityTest, AttributeMayStandOnTheLineOfTheSupertype) {
    const Declared declared(" SUBTYPE OF (A); Name : REAL;");
    EXPECT_EQ(declared.entity.getSupertypeName(), "A");
    EXPECT_THAT(declared.attributesOf(), ElementsAre("SUBTYPE OF (A); Name : REAL"));
}

TEST(EntityTest, AfterAClauseHasBegunNoLineIsAnAttribute) {
    for (const auto* clause : {" INVERSE", " UNIQUE", " DERIVE", " WHERE\n  WR1 : TRUE;\n END_IF;"}) {
        const Declared declared(std::string("A1 : REAL;\n") + clause +
                                "\n  A2 : REAL;\n\n(* note *)\n  A3 : REAL;");
        EXPECT_THAT(declared.attributesOf(), ElementsAre("A1 : REAL")) << clause;
    }
}

TEST(EntityTest, LinesThatMatchNoRuleAreIgnored) {
    const Declared declared("(* a comment *)\n-- another\n \t\nA1 : REAL;\nnonsense;\n\nA2 : REAL;");
    EXPECT_THAT(declared.attributesOf(), ElementsAre("A1 : REAL", "A2 : REAL"));
}

// ---- Inverse attributes

TEST(EntityTest, InverseLinesAreInverseAttributes) {
    const ClauseRow rows[] = {
        {" INVERSE\n\tI1 : SET [0:?] OF A FOR Other;", {"I1 : SET [0:?] OF A FOR Other"}},
        {" INVERSE\n\tI1 : A FOR Other;\n I2 : B FOR Next;", {"I1 : A FOR Other", "I2 : B FOR Next"}},
        {" INVERSE\n \t I1 \t : A FOR Other; x", {"I1 : A FOR Other"}},
        {" INVERSE\n\n I1 : A FOR Other;\n\n I2 : B FOR Next;", {"I1 : A FOR Other", "I2 : B FOR Next"}},
        {"(* INVERSE follows *)\n I1 : A FOR Other;", {"I1 : A FOR Other"}},
        // A line with a colon alone is ignored and leaves the clause open.
        {" INVERSE\n I1 : A;\n I2 : B FOR Next;", {"I2 : B FOR Next"}},
        {" inverse\n I1 : A FOR Other;", {}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Declared(row.lines).inversesOf(), row.expected) << row.lines;
}

TEST(EntityTest, LineWithoutAColonClosesInverse) {
    const ClauseRow rows[] = {
        {" INVERSE\n I1 : A FOR Other;\n (* note *)\n I2 : B FOR Next;", {"I1 : A FOR Other"}},
        {" INVERSE\n I1 : A FOR Other;\n \n I2 : B FOR Next;", {"I1 : A FOR Other"}},
        {" INVERSE\n I1 : A\n  FOR Other;\n I2 : B FOR Next;", {}},
        {" INVERSE\n I1 : A FOR Other;\n DERIVE\n I2 : B FOR Next;", {"I1 : A FOR Other"}},
        {" INVERSE\n I1 : A FOR Other;\n UNIQUE\n I2 : B FOR Next;", {"I1 : A FOR Other"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Declared(row.lines).inversesOf(), row.expected) << row.lines;
}

TEST(EntityTest, InverseIsNotOpenedTwice) {
    const Declared declared(" INVERSE\n I1 : A FOR Other;\n x\n INVERSE\n I2 : B FOR Next;");
    EXPECT_THAT(declared.inversesOf(), ElementsAre("I1 : A FOR Other"));
}

TEST(EntityTest, LineOfAnInverseAttributeMayOpenAnotherClause) {
    const Declared declared(" INVERSE\n I1 : LIST OF UNIQUE A FOR Other;\n I2 : B FOR Next;");
    EXPECT_THAT(declared.inversesOf(), ElementsAre("I1 : LIST OF UNIQUE A FOR Other", "I2 : B FOR Next"));
    ASSERT_NE(declared.entity.pUnique(), nullptr);
    EXPECT_THAT(declared.uniquesOf(), ElementsAre("I1", "I2"));
}

TEST(EntityTest, LineThatOpensInverseOrUniqueMayBeItsFirstEntry) {
    // A clause has begun already, so that the colon makes no explicit attribute of the line.
    const Declared inverse(" UNIQUE\n x\n INVERSE I1 : A FOR Other;\n I2 : B FOR Next;");
    EXPECT_THAT(inverse.inversesOf(), ElementsAre("INVERSE I1 : A FOR Other", "I2 : B FOR Next"));
    const Declared unique(" INVERSE\n x\n UNIQUE U1 : A;\n U2 : B;");
    EXPECT_THAT(unique.uniquesOf(), ElementsAre("UNIQUE U1", "U2"));
}

TEST(EntityTest, LineThatOpensDeriveIsNoEntryOfIt) {
    const Declared declared(" INVERSE\n x\n DERIVE D1 : REAL := 1.0;\n D2 : REAL := 2.0;");
    EXPECT_THAT(declared.derivesOf(), ElementsAre("D2 : REAL := 2.0;"));
}

// ---- Uniqueness rules

TEST(EntityTest, UniqueLinesAreRules) {
    const ClauseRow rows[] = {
        {" UNIQUE\n\tUR1 : A1;\n\tUR2 : A1, A2;", {"UR1", "UR2"}},
        {" UNIQUE\n\n UR1 : A1;\n\n UR2 : A2;", {"UR1", "UR2"}},
        {" UNIQUE\n UR1 : A1;\n (* note *)\n UR2 : A2;", {"UR1"}},
        {" UNIQUE\n UR1 : A1;\n UNIQUE\n UR2 : A2;", {"UR1"}},
        {" UNIQUE\n UR1: A1;\n UR2 : A2;", {}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Declared(row.lines).uniquesOf(), row.expected) << row.lines;
}

TEST(EntityTest, UniqueClauseWithoutRulesIsThereAndEmpty) {
    const Declared declared(" UNIQUE");
    ASSERT_NE(declared.entity.pUnique(), nullptr);
    EXPECT_THAT(declared.entity.pUnique()->getRules(), IsEmpty());
}

// ---- Derived attributes

TEST(EntityTest, DeriveLinesAreDerivedAttributes) {
    const ClauseRow rows[] = {
        {" DERIVE\n\tD1 : REAL := 1.0;\n\tD2 : INTEGER := 2;", {"D1 : REAL := 1.0;", "D2 : INTEGER := 2;"}},
        {" DERIVE\n SELF\\A.Name : REAL := 1.0;", {"SELF\\A.Name : REAL := 1.0;"}},
        {" DERIVE\n\n D1 : REAL := 1.0; (* note *)", {"D1 : REAL := 1.0; (* note *)"}},
        {" DERIVE\n D1 \t : REAL := a : b;", {"D1 \t : REAL := a : b;"}},
        {" DERIVE\n D1 : REAL := 1.0;\n x\n D2 : REAL := 2.0;", {"D1 : REAL := 1.0;"}},
        {" DERIVE\n D1 : REAL := 1.0;\n x\n DERIVE\n D2 : REAL := 2.0;", {"D1 : REAL := 1.0;"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Declared(row.lines).derivesOf(), row.expected) << row.lines;
}

TEST(EntityTest, DeriveOverThreeLinesIsJoinedWithoutSeparators) {
    const ClauseRow rows[] = {
        {" DERIVE\n D1 : REAL := f(a,\n  b,\nc);\n D2 : REAL := 2.0;",
         {"D1 : REAL := f(a,  b,c);", "D2 : REAL := 2.0;"}},
        // An empty line adds nothing.
        {" DERIVE\n D1 : REAL :=\n\n 1.0;", {"D1 : REAL := 1.0;"}},
        // The join needs a colon on the first line.
        {" DERIVE\n D1\n : REAL := 1.0;", {}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Declared(row.lines).derivesOf(), row.expected) << row.lines;
}

TEST(EntityTest, JoinedDeriveLineMayBeTheLastLine) {
    const auto schema =
        schemaFromText("ENTITY X;\n DERIVE\n D1 : REAL := 1.0\nEND_ENTITY;\nENTITY A;\nEND_ENTITY;");
    const auto* derive = entityOf(*schema, "X").pDerive();
    ASSERT_NE(derive, nullptr);
    ASSERT_EQ(derive->getValues().size(), 1U);
    EXPECT_EQ(derive->getValues()[0].getRest(), "REAL := 1.0END_ENTITY;");
    EXPECT_THAT(namesOf(schema->getObjects()), ElementsAre("X", "A"));
}

TEST(EntityTest, DeriveLineThatTheEndOfTheStreamLeavesOpenIsKept) {
    const auto schema = schemaFromWholeText("SCHEMA S;\nENTITY X;\n DERIVE\n D1 : REAL :=\n 1.0");
    const auto* derive = entityOf(*schema, "X").pDerive();
    ASSERT_NE(derive, nullptr);
    ASSERT_EQ(derive->getValues().size(), 1U);
    EXPECT_EQ(derive->getValues()[0].getRest(), "REAL := 1.0");
}

TEST(EntityTest, InverseLineClosesAnOpenDerive) {
    const Declared declared(" DERIVE\n D1 : REAL := 1.0;\n INVERSE\n I1 : A FOR Other;");
    EXPECT_THAT(declared.derivesOf(), ElementsAre("D1 : REAL := 1.0;"));
    EXPECT_THAT(declared.inversesOf(), ElementsAre("I1 : A FOR Other"));
}

TEST(EntityTest, UniqueLineClosesAnOpenDerive) {
    const Declared declared(" DERIVE\n D1 : REAL := 1.0;\n UNIQUE\n UR1 : A1;");
    EXPECT_THAT(declared.derivesOf(), ElementsAre("D1 : REAL := 1.0;"));
    EXPECT_THAT(declared.uniquesOf(), ElementsAre("UR1"));
}

TEST(EntityTest, DeriveLineClosesAnOpenUnique) {
    const Declared declared(" UNIQUE\n UR1 : A1;\n DERIVE\n D1 : REAL := 1.0;");
    EXPECT_THAT(declared.uniquesOf(), ElementsAre("UR1"));
    EXPECT_THAT(declared.derivesOf(), ElementsAre("D1 : REAL := 1.0;"));
}

// ---- All clauses

TEST(EntityTest, ClausesFollowOneAnotherInAnyOrder) {
    const std::string parts[] = {" DERIVE\n  D1 : REAL := 1.0;\n", " INVERSE\n  I1 : A FOR Other;\n",
                                 " UNIQUE\n  UR1 : A1;\n"};
    for (const auto& order : {std::array{0, 1, 2}, std::array{0, 2, 1}, std::array{1, 0, 2},
                              std::array{1, 2, 0}, std::array{2, 0, 1}, std::array{2, 1, 0}}) {
        std::string lines = " SUBTYPE OF (A);\n  A1 : REAL;\n";
        for (const int part : order)
            lines += parts[part];
        const Declared declared(lines + " WHERE\n  WR1 : A1 > 0.0;");
        SCOPED_TRACE(lines);
        EXPECT_THAT(declared.attributesOf(), ElementsAre("A1 : REAL"));
        EXPECT_THAT(declared.derivesOf(), ElementsAre("D1 : REAL := 1.0;"));
        EXPECT_THAT(declared.inversesOf(), ElementsAre("I1 : A FOR Other"));
        EXPECT_THAT(declared.uniquesOf(), ElementsAre("UR1"));
        EXPECT_THAT(declared.labelsOf(), ElementsAre("WR1"));
    }
}

TEST(EntityTest, LineMayServeSeveralClausesUniqueBeforeDerive) {
    // Both clauses are open; the rule is taken from the line alone, the derivation from the joined one.
    const Declared declared(" UNIQUE DERIVE\n X1 : A1,\n A2;");
    EXPECT_THAT(declared.derivesOf(), ElementsAre("X1 : A1, A2;"));
    EXPECT_THAT(declared.uniquesOf(), ElementsAre("X1"));
    EXPECT_THAT(declared.entity.pUnique()->getRules()[0].attributeNames, ElementsAre("A1"));
}

TEST(EntityTest, LaterWhereReplacesAnEarlierOne) {
    const Declared declared(" WHERE\n  WR1 : TRUE;\n END_IF;\n WHERE\n  WR2 : TRUE;");
    EXPECT_THAT(declared.labelsOf(), ElementsAre("WR2"));
}

TEST(EntityTest, LineOnWhichWhereStopsMayEndTheEntity) {
    const auto schema =
        schemaFromText("ENTITY X;\n WHERE\n  WR1 : TRUE; END_ENTITY;\nENTITY A;\nEND_ENTITY;");
    EXPECT_THAT(namesOf(schema->getObjects()), ElementsAre("X", "A"));
}

TEST(EntityTest, EndIsFoundAnywhereInALine) {
    const auto schema =
        schemaFromText("ENTITY X;\n A1 : REAL;\n -- no END_ENTITY here\nENTITY A;\nEND_ENTITY;");
    EXPECT_THAT(namesOf(schema->getObjects()), ElementsAre("X", "A"));
}

TEST(EntityTest, StreamThatEndsInsideTheDeclarationEndsIt) {
    for (const auto* text :
         {"SCHEMA S;\nENTITY X;", "SCHEMA S;\nENTITY X;\n", "SCHEMA S;\nENTITY X;\n SUBTYPE OF (A",
          "SCHEMA S;\nENTITY X;\n INVERSE\n", "SCHEMA S;\nENTITY X;\n DERIVE\n D1 : REAL",
          "SCHEMA S;\nENTITY X;\n WHERE\n", "SCHEMA S;\nENTITY X;\n WHERE\n WR1 :"})
        EXPECT_THAT(namesOf(schemaFromWholeText(text)->getObjects()), ElementsAre("X")) << text;
}

TEST(EntityTest, StreamThatFailsInsideTheDeclarationIsAnException) {
    const std::string_view text =
        "SCHEMA S;\nENTITY X\n SUPERTYPE OF (ONEOF\n (A\n ,B))\n SUBTYPE OF (C);\n  A1 : REAL;\n"
        " DERIVE\n  D1 : REAL :=\n  1.0;\n INVERSE\n  I1 : A FOR B;\n UNIQUE\n  UR1 : A1;\n"
        " WHERE\n  WR1 :\n TRUE;\nEND_ENTITY;\n";
    vFailingStreamCheck(text, 10, [](std::istream& stream) { schemaFromStream(stream); });
}

// ---- Resolution

TEST(EntityTest, SupertypeIsResolvedInAnyLetterCase) {
    AssertCollector reports;
    const auto schema =
        schemaFromText("ENTITY A;\n SUBTYPE OF (ROOT);\nEND_ENTITY;\nENTITY Root;\nEND_ENTITY;");
    EXPECT_EQ(entityOf(*schema, "A").pSupertype(), &entityOf(*schema, "Root"));
    EXPECT_EQ(entityOf(*schema, "A").getSupertypeName(), "ROOT");
    EXPECT_THAT(reports.getRecords(), IsEmpty());
}

TEST(EntityTest, SupertypeThatIsNoEntityIsReported) {
    for (const auto* other : {"TYPE Other = REAL;\nEND_TYPE;", "FUNCTION Other : REAL;\nEND_FUNCTION;",
                              "RULE Other FOR (A);\nEND_RULE;", ""}) {
        AssertCollector reports;
        const auto schema =
            schemaFromText(std::string("ENTITY A;\n SUBTYPE OF (Other);\nEND_ENTITY;\n") + other);
        EXPECT_THAT(reports.getRecords(), ElementsAre(SupertypeNotFound)) << other;
        EXPECT_EQ(entityOf(*schema, "A").pSupertype(), nullptr) << other;
        EXPECT_EQ(entityOf(*schema, "A").getSupertypeName(), "Other") << other;
        EXPECT_EQ(entityOf(*schema, "A").getFirstNumber(), 1) << other;
    }
}

TEST(EntityTest, SupertypeNameIsLookedUpAsWritten) {
    for (const auto* text : {" SUBTYPE OF ( Root );", " SUBTYPE OF (Root)", " SUBTYPE OF (Root, Root);"}) {
        AssertCollector reports;
        const auto schema =
            schemaFromText(std::string("ENTITY A;\n") + text + "\nEND_ENTITY;\nENTITY Root;\nEND_ENTITY;");
        EXPECT_THAT(reports.getRecords(), ElementsAre(SupertypeNotFound)) << text;
        EXPECT_EQ(entityOf(*schema, "A").pSupertype(), nullptr) << text;
    }
}

TEST(EntityTest, SubtypesAreResolvedInTheOrderOfTheList) {
    AssertCollector reports;
    const auto schema =
        schemaFromText("ENTITY Root\n SUPERTYPE OF (ONEOF (c, A, B));\nEND_ENTITY;\n"
                       "ENTITY A;\nEND_ENTITY;\nENTITY B;\nEND_ENTITY;\nENTITY C;\nEND_ENTITY;");
    EXPECT_THAT(entityOf(*schema, "Root").getSupertypeOfNames(), ElementsAre("c", "A", "B"));
    EXPECT_THAT(namesOf(entityOf(*schema, "Root").getSubtypes()), ElementsAre("C", "A", "B"));
    EXPECT_THAT(reports.getRecords(), IsEmpty());
}

TEST(EntityTest, SubtypesThatAreNoEntitiesAreReportedAndLeftOut) {
    AssertCollector reports;
    const auto schema =
        schemaFromText("ENTITY Root\n SUPERTYPE OF (ONEOF (T, A, Missing, F, B));\nEND_ENTITY;\n"
                       "ENTITY A;\nEND_ENTITY;\nENTITY B;\nEND_ENTITY;\n"
                       "TYPE T = REAL;\nEND_TYPE;\nFUNCTION F : REAL;\nEND_FUNCTION;");
    EXPECT_THAT(namesOf(entityOf(*schema, "Root").getSubtypes()), ElementsAre("A", "B"));
    EXPECT_THAT(entityOf(*schema, "Root").getSupertypeOfNames(), ElementsAre("T", "A", "Missing", "F", "B"));
    EXPECT_THAT(reports.getRecords(), ElementsAre(SubtypeNotFound, SubtypeNotFound, SubtypeNotFound));
}

TEST(EntityTest, SubtypeThatIsNotListedHasItsSupertypeButIsNotAmongItsSubtypes) {
    const auto schema = schemaFromText("ENTITY Root\n SUPERTYPE OF (ONEOF (A));\nEND_ENTITY;\n"
                                       "ENTITY A\n SUBTYPE OF (Root);\nEND_ENTITY;\n"
                                       "ENTITY B\n SUBTYPE OF (Root);\nEND_ENTITY;\n"
                                       "ENTITY Z;\nEND_ENTITY;");
    const auto& root = entityOf(*schema, "Root");
    const auto& unlisted = entityOf(*schema, "B");
    EXPECT_EQ(unlisted.pSupertype(), &root);
    EXPECT_THAT(namesOf(root.getSubtypes()), ElementsAre("A"));
    EXPECT_EQ(root.getFirstNumber(), 1);
    EXPECT_EQ(root.getLastNumber(), 2);
    EXPECT_EQ(entityOf(*schema, "Z").getFirstNumber(), 3);
    EXPECT_EQ(unlisted.getFirstNumber(), 0);
    EXPECT_EQ(unlisted.getLastNumber(), 0);
    EXPECT_TRUE(unlisted.isSameOrSubtypeOf(root));
}

TEST(EntityTest, EntityThatIsItsOwnSupertypeHasNone) {
    AssertCollector reports;
    const auto schema = schemaFromText("ENTITY A\n SUBTYPE OF (A);\nEND_ENTITY;");
    EXPECT_EQ(entityOf(*schema, "A").pSupertype(), nullptr);
    EXPECT_THAT(reports.getRecords(), ElementsAre(SupertypeNotFound));
}

TEST(EntityTest, SupertypeThatWouldCloseACircleIsNotFound) {
    AssertCollector reports;
    // Resolved in the order of the hashes: A (C4), C (C6), B (C7); B is the one that would close the circle.
    const auto schema = schemaFromText("ENTITY A\n SUBTYPE OF (B);\nEND_ENTITY;\n"
                                       "ENTITY B\n SUBTYPE OF (C);\nEND_ENTITY;\n"
                                       "ENTITY C\n SUBTYPE OF (A);\nEND_ENTITY;\n"
                                       "ENTITY Tail\n SUBTYPE OF (C);\nEND_ENTITY;");
    EXPECT_THAT(reports.getRecords(), ElementsAre(SupertypeNotFound));
    EXPECT_EQ(entityOf(*schema, "A").pSupertype(), &entityOf(*schema, "B"));
    EXPECT_EQ(entityOf(*schema, "C").pSupertype(), &entityOf(*schema, "A"));
    EXPECT_EQ(entityOf(*schema, "B").pSupertype(), nullptr);
    EXPECT_EQ(entityOf(*schema, "Tail").pSupertype(), &entityOf(*schema, "C"));
    EXPECT_TRUE(entityOf(*schema, "Tail").isSameOrSubtypeOf(entityOf(*schema, "B")));
}

// ---- Attribute look-ups

constexpr std::string_view Family = "ENTITY Root\n SUPERTYPE OF (ONEOF (Mid));\n"
                                    "  Name : STRING;\n"
                                    "  Tag : STRING;\n"
                                    " INVERSE\n"
                                    "  Users : SET OF Leaf FOR Extra;\n"
                                    "END_ENTITY;\n"
                                    "ENTITY Mid\n SUPERTYPE OF (ONEOF (Leaf)) SUBTYPE OF (Root);\n"
                                    "  Tag : REAL;\n"
                                    "END_ENTITY;\n"
                                    "ENTITY Leaf\n SUBTYPE OF (Mid);\n"
                                    "  Extra : Root;\n"
                                    " INVERSE\n"
                                    "  Owners : SET OF Leaf FOR Extra;\n"
                                    "END_ENTITY;\n"
                                    "ENTITY Other;\n"
                                    "  Name : STRING;\n"
                                    "END_ENTITY;";

/// The name of the entity that declares the attribute; "-" for null.
std::string ownerOf(const AttributeBase* attribute) {
    return std::string(attribute ? attribute->getEntity().getName() : "-");
}

TEST(EntityTest, AttributeIsFoundByItsExactNameInTheEntityAndAbove) {
    const auto schema = schemaFromText(Family);
    const auto& leaf = entityOf(*schema, "Leaf");
    EXPECT_EQ(ownerOf(leaf.pAttributeFromName(AttributeName("Extra"), false)), "Leaf");
    EXPECT_EQ(ownerOf(leaf.pAttributeFromName(AttributeName("Extra"), true)), "Leaf");
    EXPECT_EQ(ownerOf(leaf.pAttributeFromName(AttributeName("Name"), false)), "-");
    EXPECT_EQ(ownerOf(leaf.pAttributeFromName(AttributeName("Name"), true)), "Root");
    EXPECT_EQ(ownerOf(leaf.pAttributeFromName(AttributeName("Tag"), true)), "Mid");
    EXPECT_EQ(ownerOf(leaf.pAttributeFromName(AttributeName("Missing"), true)), "-");
    EXPECT_EQ(ownerOf(leaf.pAttributeFromName(AttributeName(""), true)), "-");
    EXPECT_EQ(ownerOf(leaf.pAttributeFromName(AttributeName("Owners"), true)), "-");
}

TEST(EntityTest, AttributeFromNameIsCaseSensitive) {
    const auto schema = schemaFromText(Family);
    const auto& root = entityOf(*schema, "Root");
    EXPECT_EQ(ownerOf(root.pAttributeFromName(AttributeName("Name"), true)), "Root");
    EXPECT_EQ(ownerOf(root.pAttributeFromName(AttributeName("name"), true)), "-");
    EXPECT_EQ(ownerOf(root.pAttributeFromName(AttributeName("NAME"), true)), "-");
}

TEST(EntityTest, AttributeOfAnotherEntityIsAKey) {
    const auto schema = schemaFromText(Family);
    const AttributeName key(entityOf(*schema, "Other").getAttributes()[0]);
    EXPECT_EQ(ownerOf(entityOf(*schema, "Leaf").pAttributeFromName(key, true)), "Root");
}

TEST(EntityTest, OfTwoAttributesOfOneNameTheFirstIsFound) {
    const Declared declared("A1 : REAL;\nA1 : STRING;\na1 : NUMBER;");
    EXPECT_EQ(declared.entity.pAttributeFromName(AttributeName("A1"), false)->getTypeText(), "REAL");
    EXPECT_EQ(declared.entity.pAttributeFromName(AttributeName("a1"), false)->getTypeText(), "NUMBER");
    EXPECT_EQ(declared.entity.pAttributeFromNameUpper("A1", false)->getTypeText(), "REAL");
}

TEST(EntityTest, AttributeFromNameUpperFindsNothingForAMixedCaseArgument) {
    const auto schema = schemaFromText(Family);
    const auto& leaf = entityOf(*schema, "Leaf");
    EXPECT_EQ(ownerOf(leaf.pAttributeFromNameUpper("Name", true)), "-");
    EXPECT_EQ(ownerOf(leaf.pAttributeFromNameUpper("name", true)), "-");
    EXPECT_EQ(ownerOf(leaf.pAttributeFromNameUpper("NAME", true)), "Root");
    EXPECT_EQ(ownerOf(leaf.pAttributeFromNameUpper("NAME", false)), "-");
    EXPECT_EQ(ownerOf(leaf.pAttributeFromNameUpper("TAG", true)), "Mid");
    EXPECT_EQ(ownerOf(leaf.pAttributeFromNameUpper("EXTRA", false)), "Leaf");
    EXPECT_EQ(ownerOf(leaf.pAttributeFromNameUpper("", true)), "-");
}

TEST(EntityTest, AttributeInverseFromNameFindsAMixedCaseArgument) {
    const auto schema = schemaFromText(Family);
    const auto& leaf = entityOf(*schema, "Leaf");
    EXPECT_EQ(ownerOf(leaf.pAttributeInverseFromName("oWners", false)), "Leaf");
    EXPECT_EQ(ownerOf(leaf.pAttributeInverseFromName("USERS", true)), "Root");
    EXPECT_EQ(ownerOf(leaf.pAttributeInverseFromName("users", false)), "-");
    EXPECT_EQ(ownerOf(leaf.pAttributeInverseFromName("Extra", true)), "-");
    EXPECT_EQ(ownerOf(leaf.pAttributeInverseFromName("Missing", true)), "-");
}

TEST(EntityTest, AttributeInverseFromNameUpperNeedsAnUpperCasedArgument) {
    const auto schema = schemaFromText(Family);
    const auto& leaf = entityOf(*schema, "Leaf");
    EXPECT_EQ(ownerOf(leaf.pAttributeInverseFromNameUpper("OWNERS", false)), "Leaf");
    EXPECT_EQ(ownerOf(leaf.pAttributeInverseFromNameUpper("Owners", false)), "-");
    EXPECT_EQ(ownerOf(leaf.pAttributeInverseFromNameUpper("USERS", true)), "Root");
    EXPECT_EQ(ownerOf(leaf.pAttributeInverseFromNameUpper("USERS", false)), "-");
}

// ---- Relations of entities

constexpr std::string_view Relatives =
    "ENTITY R1\n SUPERTYPE OF (ONEOF (A, B));\nEND_ENTITY;\n"
    "ENTITY A\n SUPERTYPE OF (ONEOF (A1, A2)) SUBTYPE OF (R1);\nEND_ENTITY;\n"
    "ENTITY A1\n SUBTYPE OF (A);\nEND_ENTITY;\n"
    "ENTITY A2\n SUPERTYPE OF (ONEOF (A21)) SUBTYPE OF (A);\nEND_ENTITY;\n"
    "ENTITY A21\n SUBTYPE OF (A2);\nEND_ENTITY;\n"
    "ENTITY B\n SUBTYPE OF (R1);\nEND_ENTITY;\n"
    "ENTITY U\n SUBTYPE OF (A);\nEND_ENTITY;\n"
    "ENTITY R2\n SUPERTYPE OF (ONEOF (C));\nEND_ENTITY;\n"
    "ENTITY C\n SUBTYPE OF (R2);\nEND_ENTITY;\n";

struct BaseRow {
    std::string_view a;
    std::string_view b;
    std::string_view base;
};

TEST(EntityTest, CommonBaseIsTheDeepestCommonAncestor) {
    const auto schema = schemaFromText(Relatives);
    const BaseRow rows[] = {
        {"A", "A", "A"},     {"R1", "R1", "R1"}, {"A", "R1", "R1"}, {"A21", "R1", "R1"},
        {"A21", "A2", "A2"}, {"A21", "A", "A"},  {"A1", "A2", "A"}, {"A1", "A21", "A"},
        {"A21", "B", "R1"},  {"A", "B", "R1"},   {"U", "A1", "A"},  {"U", "A21", "A"},
    };
    for (const auto& row : rows) {
        const auto& a = entityOf(*schema, row.a);
        const auto& b = entityOf(*schema, row.b);
        EXPECT_EQ(Entity::pCommonBaseGet(a, b), &entityOf(*schema, row.base)) << row.a << ' ' << row.b;
        EXPECT_EQ(Entity::pCommonBaseGet(b, a), &entityOf(*schema, row.base)) << row.b << ' ' << row.a;
    }
}

TEST(EntityTest, CommonBaseOfTwoRootsIsNull) {
    const auto schema = schemaFromText(Relatives);
    for (const auto& row : {BaseRow{"R1", "R2", ""}, BaseRow{"A21", "C", ""}, BaseRow{"A", "R2", ""}}) {
        EXPECT_EQ(Entity::pCommonBaseGet(entityOf(*schema, row.a), entityOf(*schema, row.b)), nullptr)
            << row.a;
        EXPECT_EQ(Entity::pCommonBaseGet(entityOf(*schema, row.b), entityOf(*schema, row.a)), nullptr)
            << row.a;
    }
}

TEST(EntityTest, SubtypeIsAlsoOneThatNoListNames) {
    const auto schema = schemaFromText(Relatives);
    const auto isSubtype = [&](std::string_view a, std::string_view b) {
        return entityOf(*schema, a).isSameOrSubtypeOf(entityOf(*schema, b));
    };
    EXPECT_TRUE(isSubtype("A", "A"));
    EXPECT_TRUE(isSubtype("A21", "A2"));
    EXPECT_TRUE(isSubtype("A21", "R1"));
    EXPECT_TRUE(isSubtype("U", "A"));
    EXPECT_TRUE(isSubtype("U", "R1"));
    EXPECT_FALSE(isSubtype("R1", "A"));
    EXPECT_FALSE(isSubtype("A1", "A2"));
    EXPECT_FALSE(isSubtype("A1", "U"));
    EXPECT_FALSE(isSubtype("U", "A1"));
    EXPECT_FALSE(isSubtype("C", "R1"));
}

TEST(EntityTest, DescendantsNumbersLieBetweenTheFirstAndTheLastNumber) {
    const auto schema = schemaFromText(Relatives);
    const Strings listed{"R1", "A", "A1", "A2", "A21", "B", "R2", "C"};
    for (const auto& d : listed)
        for (const auto& e : listed) {
            const auto& descendant = entityOf(*schema, d);
            const auto& entity = entityOf(*schema, e);
            const bool inside = entity.getFirstNumber() <= descendant.getFirstNumber() &&
                                descendant.getFirstNumber() <= entity.getLastNumber();
            EXPECT_EQ(inside, descendant.isSameOrSubtypeOf(entity)) << d << ' ' << e;
        }
}

TEST(EntityTest, PointerOfAnotherKindIsNoEntity) {
    const auto schema = schemaFromText("TYPE T = INTEGER;\nEND_TYPE;\nENTITY E;\nEND_ENTITY;");
    EXPECT_EQ(Entity::pFrom(nullptr), nullptr);
    EXPECT_EQ(Entity::pFrom(schema->pObjectFromName("T")), nullptr);
    EXPECT_EQ(Entity::pFrom(schema->pObjectFromName("E")), schema->pObjectFromName("E"));
    // INTEGER is number 2 among the data types, as an entity is among the objects.
    EXPECT_EQ(Entity::pFrom(typeOf(*schema, "T").pDataType()), nullptr);
}

TEST(EntityTest, EntityThatAHostReadsByItselfIsResolvedOnABuiltSchema) {
    const auto schema = schemaFromText("ENTITY A;\n  B : REAL;\nEND_ENTITY;");
    std::istringstream text("ENTITY X\n SUBTYPE OF (A);\n"
                            " INVERSE\n  I : A FOR B;\n"
                            " DERIVE\n  SELF\\A.B : REAL := 1;\n"
                            "END_ENTITY;\n");
    ReadLineHelper line;
    ASSERT_TRUE(line.boNextLine(text));
    Entity entity(*schema, line, 0, text);
    entity.vUpdate(*schema);
    entity.vUpdateInverse(*schema);
    const auto* const attribute = &entityOf(*schema, "A").getAttributes()[0];
    EXPECT_EQ(entity.getAttributesInverse()[0].pReferredAttribute(), attribute);
    EXPECT_EQ(entity.pDerive()->getValues().at(0).pRedeclared(), attribute);
}

TEST(EntityTest, EntityThatAHostReadsByItselfMayBeDestroyedAfterItsLineHelper) {
    const auto schema = schemaFromText("");
    std::istringstream text("ENTITY X\n SUPERTYPE OF (ONEOF (Y, Z));\n  A : REAL;\n"
                            " INVERSE\n  I : X FOR A;\n WHERE\n  W : A > 0;\nEND_ENTITY;\n");
    auto line = std::make_unique<ReadLineHelper>();
    ASSERT_TRUE(line->boNextLine(text));
    auto entity = std::make_unique<Entity>(*schema, *line, 0, text);
    EXPECT_THAT(entity->getSupertypeOfNames(), ElementsAre("Y", "Z"));
    EXPECT_EQ(entity->getAttributes().size(), 1U);
    EXPECT_EQ(entity->getAttributesInverse().size(), 1U);
    line.reset();
    entity.reset(); // a sanitizer reports what is wrong here
}

} // namespace
