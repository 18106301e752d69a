#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"

#include "Format/Ifc/Def/Schema/DataTypeTools.h"
#include "Format/Ifc/Def/Schema/SchemaTestTools.h"
#include "Support/SchemaFromText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

using namespace kiv::ifc::def::schema;
using namespace kiv::test;
using testing::ElementsAre;

struct KindRow {
    std::string text;
    std::uint32_t kind;
    std::string name;
};

TEST(DataTypeTest, EachKeywordMakesItsKind) {
    const KindRow rows[] = {
        {"REAL;", 0, "REAL"},
        {"BOOLEAN;", 1, "BOOLEAN"},
        {"INTEGER;", 2, "INTEGER"},
        {"NUMBER;", 3, "NUMBER"},
        {"STRING;", 4, "STRING"},
        {"STRING(255);", 4, "STRING(255)"},
        {"LOGICAL;", 5, "LOGICAL"},
        {"BINARY;", 6, "BINARY"},
        {"BINARY(32);", 6, "BINARY(32)"},
        {"ENUMERATION OF (A, B);", 7, "ENUMERATION"},
        {"SELECT (Ent);", 8, "SELECT"},
        {"ARRAY [1:2] OF REAL;", 9, "ARRAY"},
        {"LIST [1:2] OF REAL;", 10, "LIST"},
        {"SET [1:2] OF REAL;", 11, "SET"},
    };
    for (const auto& row : rows)
        for (const auto form : BothForms) {
            SCOPED_TRACE(row.text);
            const Declared declared(form, row.text);
            ASSERT_NE(declared.type, nullptr);
            EXPECT_EQ(static_cast<std::uint32_t>(declared.type->getDataTypeKind()), row.kind);
            EXPECT_EQ(declared.type->getName(), row.name);
            EXPECT_EQ(declared.type->getKind(), ObjectBase::Type::DataType);
        }
}

TEST(DataTypeTest, EachKindIsOfItsClass) {
    for (const auto form : BothForms) {
        Declared(form, "REAL;").as<DataType<0>>();
        Declared(form, "BOOLEAN;").as<DataType<1>>();
        Declared(form, "INTEGER;").as<DataType<2>>();
        Declared(form, "NUMBER;").as<DataType<3>>();
        Declared(form, "STRING;").as<DataTypeString>();
        Declared(form, "LOGICAL;").as<DataType<5>>();
        Declared(form, "BINARY;").as<DataTypeBinary>();
        Declared(form, "ENUMERATION OF (A);").as<DataTypeEnum>();
        Declared(form, "SELECT (Ent);").as<DataTypeSelect>();
        Declared(form, "ARRAY OF REAL;").as<DataTypeArray>();
        Declared(form, "LIST OF REAL;").as<DataTypeList>();
        Declared(form, "SET OF REAL;").as<DataTypeSet>();
    }
}

TEST(DataTypeTest, KeywordsMustMatchExactly) {
    for (const auto* text : {"real;", "Real;", "REALS;", "REAL(5);", "XREAL;", "BOOLEAN(1);", "ENUM OF (A);",
                             "SELECT(Ent);", "SET[1:2] OF REAL;", "BAG OF REAL;", "string;", "binary(3);"})
        for (const auto form : BothForms)
            EXPECT_EQ(Declared(form, text).type, nullptr) << text;
}

TEST(DataTypeTest, TextAfterASimpleKeywordAndABlankIsIgnored) {
    for (const auto form : BothForms) {
        EXPECT_EQ(Declared(form, "REAL (5);").type->getDataTypeKind(), DataTypeKind::Real);
        EXPECT_EQ(Declared(form, "INTEGER x;").type->getDataTypeKind(), DataTypeKind::Integer);
    }
}

TEST(DataTypeTest, PointerOfAnotherKindIsNoDataType) {
    const auto schema = schemaFromText("ENTITY E;\n  A1 : REAL;\nEND_ENTITY;");
    EXPECT_EQ(DataTypeBase::pFrom(nullptr), nullptr);
    EXPECT_EQ(DataTypeBase::pFrom(schema->pObjectFromName("E")), nullptr);
    const auto* real = entityOf(*schema, "E").getAttributes()[0].pFirstType();
    EXPECT_EQ(DataTypeBase::pFrom(real), real);
    EXPECT_EQ(DataTypeListInterface::pFrom(nullptr), nullptr);
    EXPECT_EQ(DataTypeListInterface::pFrom(real), nullptr);
    EXPECT_EQ(DataTypeListInterface::pFrom(schema->pObjectFromName("E")), nullptr);
}

TEST(DataTypeTest, EnumerationAndSelectAreConstructedTypes) {
    for (const auto form : BothForms) {
        EXPECT_TRUE(Declared(form, "ENUMERATION OF (A);").type->isConstructed());
        EXPECT_TRUE(Declared(form, "SELECT (Ent);").type->isConstructed());
        for (const auto* text :
             {"REAL;", "STRING;", "STRING(5);", "BINARY(5);", "LIST OF REAL;", "SET OF Ent;"})
            EXPECT_FALSE(Declared(form, text).type->isConstructed()) << text;
    }
}

// ---- Shared and owned data types

TEST(DataTypeTest, PlainTypesExistOncePerSchema) {
    const auto schema = schemaFromText("ENTITY X;\n"
                                       "  A0 : REAL;\n  A1 : BOOLEAN;\n  A2 : INTEGER;\n  A3 : NUMBER;\n"
                                       "  A4 : LOGICAL;\n  A5 : STRING;\n  A6 : BINARY;\n"
                                       "END_ENTITY;\n"
                                       "TYPE T0 = REAL;\nEND_TYPE;\nTYPE T1 = BOOLEAN;\nEND_TYPE;\n"
                                       "TYPE T2 = INTEGER;\nEND_TYPE;\nTYPE T3 = NUMBER;\nEND_TYPE;\n"
                                       "TYPE T4 = LOGICAL;\nEND_TYPE;\nTYPE T5 = STRING;\nEND_TYPE;\n"
                                       "TYPE T6 = BINARY;\nEND_TYPE;\n"
                                       "ENTITY Y;\n"
                                       "  A0 : REAL;\n  A1 : BOOLEAN;\n  A2 : INTEGER;\n  A3 : NUMBER;\n"
                                       "  A4 : LOGICAL;\n  A5 : STRING;\n  A6 : LIST OF BINARY;\n"
                                       "END_ENTITY;\n");
    const auto& x = entityOf(*schema, "X").getAttributes();
    const auto& y = entityOf(*schema, "Y").getAttributes();
    for (std::size_t i = 0; i < 7; ++i) {
        const auto* shared = x[i].pFirstType();
        ASSERT_NE(shared, nullptr) << i;
        EXPECT_EQ(y[i].getResolvedTypes().back(), shared) << i;
        EXPECT_EQ(typeOf(*schema, "T" + std::to_string(i)).pDataType(), shared) << i;
    }
    // Only the list is no shared type.
    ASSERT_EQ(schema->getDataTypes().size(), 1U);
    EXPECT_EQ(schema->getDataTypes()[0]->getName(), "LIST");
}

TEST(DataTypeTest, PlainTypesOfTwoSchemasAreTwo) {
    const Declared first(InAttribute, "BOOLEAN;");
    const Declared second(InAttribute, "BOOLEAN;");
    EXPECT_NE(first.type, second.type);
}

TEST(DataTypeTest, SizedStringsAreNotShared) {
    const auto schema =
        schemaFromText("ENTITY X;\n  A0 : STRING(5);\n  A1 : STRING(5);\n  A2 : STRING;\nEND_ENTITY;");
    const auto& attributes = entityOf(*schema, "X").getAttributes();
    EXPECT_NE(attributes[0].pFirstType(), attributes[1].pFirstType());
    EXPECT_EQ(schema->getDataTypes().size(), 2U);
}

TEST(DataTypeTest, OwnedTypesAreListedInTheOrderInWhichTheyAreMade) {
    const auto schema = schemaFromText("TYPE T1 = SET OF LIST OF STRING(7);\nEND_TYPE;\n"
                                       "TYPE T2 = BINARY(8);\nEND_TYPE;\n"
                                       "TYPE T3 = ENUMERATION OF (A);\nEND_TYPE;\n"
                                       "TYPE T4 = SELECT (X);\nEND_TYPE;\n"
                                       "ENTITY X;\n  A1 : ARRAY OF STRING(9);\nEND_ENTITY;");
    Strings names;
    for (const auto& type : schema->getDataTypes())
        names.emplace_back(type->getName());
    // Elements are made when their aggregates are resolved.
    EXPECT_THAT(names, ElementsAre("SET", "BINARY(8)", "ENUMERATION", "SELECT", "LIST", "STRING(7)", "ARRAY",
                                   "STRING(9)"));
}

} // namespace
