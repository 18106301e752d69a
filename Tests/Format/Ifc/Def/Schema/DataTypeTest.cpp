#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"

#include "Format/Ifc/Def/Schema/SchemaTestTools.h"
#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace kiv::ifc::def::schema;
using namespace kiv::test;
using testing::ElementsAre;
using testing::IsEmpty;

kiv::assert::AssertRecord elementNotFound(int kind) {
    return {0, "Type not found",
            "kiv::ifc::def::schema::DataTypeListBase<" + std::to_string(kind) + ">::vUpdate",
            "Source/Format/Ifc/Def/Schema/IfcSchemaDataType", 228};
}

const kiv::assert::AssertRecord MemberNotFound{0, "Object not found",
                                               "kiv::ifc::def::schema::DataTypeSelect::vUpdate",
                                               "Source/Format/Ifc/Def/Schema/IfcSchemaDataType", 453};

constexpr std::string_view Others = "\nENTITY Ent;\nEND_ENTITY;\nTYPE Label = STRING;\nEND_TYPE;\n";

/// A schema with one data type, read behind the colon of an attribute or behind the '=' of a TYPE line.
struct Declared {
    enum class Form { Attribute, Type };

    Declared(Form form, const std::string& text) :
        schema(schemaFromText((form == Form::Attribute ? "ENTITY X;\n  Attr : " + text + "\nEND_ENTITY;"
                                                       : "TYPE X = " + text + "\nEND_TYPE;") +
                              std::string(Others))),
        type(form == Form::Attribute
                 ? DataTypeBase::pFrom(entityOf(*schema, "X").getAttributes()[0].pFirstType())
                 : typeOf(*schema, "X").pDataType()) {}

    /// The data type as this class; an error, which fails the test, when it is of another.
    template <typename Class>
    const Class& as() const {
        const auto* result = dynamic_cast<const Class*>(type);
        if (!result)
            throw std::logic_error("another data type, or none");
        return *result;
    }

    std::unique_ptr<Schema> schema;
    const DataTypeBase* type;
};

constexpr auto InAttribute = Declared::Form::Attribute;
constexpr auto InType = Declared::Form::Type;
constexpr Declared::Form BothForms[] = {InAttribute, InType};

// ---- Kinds

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

TEST(DataTypeTest, TextBehindASimpleKeywordAndABlankIsIgnored) {
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

// ---- Widths

struct WidthRow {
    std::string text;
    std::uint64_t width;
};

constexpr std::uint64_t Most = 18446744073709551615U;

TEST(DataTypeTest, WidthOfAStringIsReadOutOfItsKeyword) {
    const WidthRow rows[] = {
        {"STRING;", 0},
        {"STRING(255);", 255},
        {"STRING(1);", 1},
        {"STRING(022);", 22},
        {"STRING(255", 255},
        {"STRING(12)x;", 12},
        {"STRING(18446744073709551615);", Most},
        // A keyword of less than nine characters has no width, and a blank ends the keyword.
        {"STRING();", 0},
        {"STRING12;", 0},
        {"STRING(5", 0},
        {"STRING(;", 0},
        {"STRING (255);", 0},
        {"STRING( 255);", 0},
        // Wherever "STRING" stands in the keyword, the width begins with the eighth character.
        {"XSTRING12;", 12},
        {"MYSTRING(5);", 0},
        {"STRING255;", 55},
        // What cannot be read is as a stream leaves it: 0, or the greatest number when it is too great.
        {"STRING(abc);", 0},
        {"STRING(?);", 0},
        {"STRING(18446744073709551616);", Most},
        {"STRING(99999999999999999999999);", Most},
        {"STRING(+7);", 7},
        {"STRING(0x10);", 0},
        {"STRING(1.5);", 1},
    };
    for (const auto& row : rows)
        for (const auto form : BothForms)
            EXPECT_EQ(Declared(form, row.text).as<DataTypeString>().getWidth(), row.width) << row.text;
}

TEST(DataTypeTest, WidthOfABinaryIsReadOutOfItsKeyword) {
    const WidthRow rows[] = {
        {"BINARY;", 0},   {"BINARY(32);", 32}, {"BINARY(1);", 1},
        {"BINARY();", 0}, {"BINARY (32);", 0}, {"BINARY(x);", 0},
    };
    for (const auto& row : rows)
        for (const auto form : BothForms)
            EXPECT_EQ(Declared(form, row.text).as<DataTypeBinary>().getWidth(), row.width) << row.text;
}

TEST(DataTypeTest, KeywordThatContainsStringIsAStringAndGoesBeforeBinary) {
    EXPECT_EQ(Declared(InAttribute, "BINARYSTRING;").type->getDataTypeKind(), DataTypeKind::String);
    EXPECT_EQ(Declared(InAttribute, "MYBINARY;").type->getDataTypeKind(), DataTypeKind::Binary);
    EXPECT_EQ(Declared(InAttribute, "BINARYSTRING;").type->getName(), "BINARYSTRING");
}

TEST(DataTypeTest, FixedIsSeenInTypeLinesOnly) {
    const auto isFixed = [](Declared::Form form, const std::string& text) {
        return Declared(form, text).as<DataTypeString>().isFixed();
    };
    EXPECT_TRUE(isFixed(InType, "STRING(255) FIXED;"));
    EXPECT_TRUE(isFixed(InType, "STRING(255) xFIXEDx;"));
    EXPECT_TRUE(isFixed(InType, "STRING(255) ; -- FIXED"));
    EXPECT_FALSE(isFixed(InType, "STRING(255);"));
    EXPECT_FALSE(isFixed(InType, "STRING(255) fixed;"));
    EXPECT_FALSE(isFixed(InType, "STRING FIXED;"));
    EXPECT_FALSE(isFixed(InAttribute, "STRING(255) FIXED;"));
    EXPECT_FALSE(isFixed(InAttribute, "STRING(255);"));
}

TEST(DataTypeTest, StringOfATypeLineHasBothWidthAndFixed) {
    const Declared declared(InType, "STRING(255) FIXED;");
    EXPECT_EQ(declared.as<DataTypeString>().getWidth(), 255U);
    EXPECT_TRUE(declared.as<DataTypeString>().isFixed());
}

TEST(DataTypeTest, FixedBeforeTheKeywordOrOnAnotherLineDoesNotCount) {
    const auto schema = schemaFromText("TYPE FIXED = STRING(255);\n FIXED\nEND_TYPE;");
    const auto* string = dynamic_cast<const DataTypeString*>(typeOf(*schema, "FIXED").pDataType());
    ASSERT_NE(string, nullptr);
    EXPECT_FALSE(string->isFixed());
}

// ---- Enumerations

Strings itemsOf(std::span<const std::string_view* const> items) {
    Strings result;
    for (const auto* item : items)
        result.emplace_back(*item);
    return result;
}

TEST(DataTypeTest, EnumerationOfAnAttributeTextHasNoItems) {
    const Declared declared(InAttribute, "ENUMERATION OF (B, A);");
    EXPECT_THAT(declared.as<DataTypeEnum>().getItems(), IsEmpty());
    EXPECT_THAT(declared.as<DataTypeEnum>().getItemsOrdered(), IsEmpty());
    EXPECT_FALSE(declared.as<DataTypeEnum>().boContains("A"));
}

TEST(DataTypeTest, EnumerationOfATypeLineHasAllItems) {
    for (const auto* text : {"ENUMERATION OF (B, A,C);", "ENUMERATION OF\n\t(B\n\t,A\n\t,C);",
                             "ENUMERATION OF (B,\nA, C\n);", "ENUMERATION OF\n\n(B A C)"}) {
        const Declared declared(InType, text);
        EXPECT_THAT(declared.as<DataTypeEnum>().getItems(), ElementsAre("B", "A", "C")) << text;
        EXPECT_THAT(itemsOf(declared.as<DataTypeEnum>().getItemsOrdered()), ElementsAre("A", "B", "C"))
            << text;
    }
}

TEST(DataTypeTest, RepeatedItemOfAnEnumerationIsListedOnceInTheIndex) {
    const DataTypeEnum enumeration(Strings{"B", "A", "B", "A", "b"});
    EXPECT_THAT(enumeration.getItems(), ElementsAre("B", "A", "B", "A", "b"));
    EXPECT_THAT(itemsOf(enumeration.getItemsOrdered()), ElementsAre("A", "B", "b"));
}

TEST(DataTypeTest, IndexOfAnEnumerationIsOrderedByBytesAndPointsIntoItsItems) {
    const DataTypeEnum enumeration(Strings{"b", "\xC4", "AB", "A", "", "_"});
    EXPECT_THAT(itemsOf(enumeration.getItemsOrdered()), ElementsAre("", "A", "AB", "_", "b", "\xC4"));
    for (const auto* item : enumeration.getItemsOrdered()) {
        EXPECT_GE(item, enumeration.getItems().data());
        EXPECT_LT(item, enumeration.getItems().data() + enumeration.getItems().size());
    }
}

TEST(DataTypeTest, EnumerationContainsItsItemsExactly) {
    const DataTypeEnum enumeration(Strings{"SOLID", "HOLLOW", "SOLID"});
    EXPECT_TRUE(enumeration.boContains("SOLID"));
    EXPECT_TRUE(enumeration.boContains("HOLLOW"));
    for (const auto* item : {"solid", "Solid", "SOLI", "SOLIDS", "", "ZZZ", "AAA"})
        EXPECT_FALSE(enumeration.boContains(item)) << item;
    EXPECT_FALSE(DataTypeEnum(Strings{}).boContains(""));
}

TEST(DataTypeTest, EnumerationMadeOfATextHasNoItems) {
    EXPECT_THAT(DataTypeEnum(std::string("OF (A, B)")).getItems(), IsEmpty());
}

// ---- Selects

constexpr std::string_view Things = "ENTITY Root\n SUPERTYPE OF (ONEOF (A, B));\nEND_ENTITY;\n"
                                    "ENTITY A\n SUPERTYPE OF (ONEOF (A1)) SUBTYPE OF (Root);\nEND_ENTITY;\n"
                                    "ENTITY A1\n SUBTYPE OF (A);\nEND_ENTITY;\n"
                                    "ENTITY Unlisted\n SUBTYPE OF (A1);\nEND_ENTITY;\n"
                                    "ENTITY B\n SUBTYPE OF (Root);\nEND_ENTITY;\n"
                                    "ENTITY Other;\nEND_ENTITY;\n"
                                    "TYPE Label = STRING;\nEND_TYPE;\n"
                                    "TYPE ShortLabel = Label;\nEND_TYPE;\n"
                                    "FUNCTION Fun : REAL;\nEND_FUNCTION;\n";

/// The select of the type S, whose declaration is given.
struct Selected {
    explicit Selected(const std::string& declarations) :
        schema(schemaFromText(std::string(Things) + declarations)),
        select(dynamic_cast<const DataTypeSelect&>(*typeOf(*schema, "S").pDataType())) {}

    bool isCompatible(std::string_view name) const { return select.isCompatible(objectOf(*schema, name)); }

    std::unique_ptr<Schema> schema;
    const DataTypeSelect& select;
};

TEST(DataTypeSelectTest, OfATypeLineHasItsMembersInOrder) {
    AssertCollector reports;
    for (const auto* text : {"TYPE S = SELECT (B, label, A);\nEND_TYPE;",
                             "TYPE S = SELECT\n\t(B\n\t,label\n\t,A);\nEND_TYPE;"}) {
        const Selected selected(text);
        EXPECT_THAT(selected.select.getMemberNames(), ElementsAre("B", "label", "A")) << text;
        EXPECT_THAT(namesOf(selected.select.getMembers()), ElementsAre("B", "Label", "A")) << text;
    }
    EXPECT_THAT(reports.getRecords(), IsEmpty());
}

TEST(DataTypeSelectTest, OfTwoEntitiesIsAllEntities) {
    EXPECT_TRUE(Selected("TYPE S = SELECT (A, B);\nEND_TYPE;").select.isAllEntities());
}

TEST(DataTypeSelectTest, WithADefinedTypeAmongItsMembersIsNotAllEntities) {
    EXPECT_FALSE(Selected("TYPE S = SELECT (A, Label, B);\nEND_TYPE;").select.isAllEntities());
    EXPECT_FALSE(Selected("TYPE S = SELECT (A, Fun);\nEND_TYPE;").select.isAllEntities());
    EXPECT_FALSE(
        Selected("TYPE S = SELECT (T);\nEND_TYPE;\nTYPE T = SELECT (A);\nEND_TYPE;").select.isAllEntities());
}

TEST(DataTypeSelectTest, MemberThatIsNotFoundIsReportedAndLeftOut) {
    AssertCollector reports;
    const Selected selected("TYPE S = SELECT (Missing, A, REAL, B);\nEND_TYPE;");
    EXPECT_THAT(selected.select.getMemberNames(), ElementsAre("Missing", "A", "REAL", "B"));
    EXPECT_THAT(namesOf(selected.select.getMembers()), ElementsAre("A", "B"));
    EXPECT_TRUE(selected.select.isAllEntities());
    EXPECT_THAT(reports.getRecords(), ElementsAre(MemberNotFound, MemberNotFound));
}

TEST(DataTypeSelectTest, OfAnAttributeTextHasNoMembers) {
    AssertCollector reports;
    const Declared declared(InAttribute, "SELECT (Ent, Missing);");
    const auto& select = declared.as<DataTypeSelect>();
    EXPECT_THAT(select.getMemberNames(), IsEmpty());
    EXPECT_THAT(select.getMembers(), IsEmpty());
    EXPECT_FALSE(select.isCompatible(entityOf(*declared.schema, "Ent")));
    EXPECT_THAT(reports.getRecords(), IsEmpty());
}

TEST(DataTypeSelectTest, IsCompatibleWithItsMembers) {
    const Selected selected("TYPE S = SELECT (A, Label, Fun);\nEND_TYPE;");
    EXPECT_TRUE(selected.isCompatible("A"));
    EXPECT_TRUE(selected.isCompatible("Label"));
    EXPECT_TRUE(selected.isCompatible("Fun"));
}

TEST(DataTypeSelectTest, IsCompatibleWithSubtypesOfItsMembers) {
    const Selected selected("TYPE S = SELECT (Label, A);\nEND_TYPE;");
    EXPECT_TRUE(selected.isCompatible("A1"));
    // A subtype that no list names is a subtype.
    EXPECT_TRUE(selected.isCompatible("Unlisted"));
}

TEST(DataTypeSelectTest, MemberWithoutADataTypeStandsForItselfOnly) {
    const AssertCollector reports;
    const Selected selected("TYPE S = SELECT (T, A);\nEND_TYPE;\nTYPE T;\nEND_TYPE;");
    EXPECT_TRUE(selected.isCompatible("T"));
    EXPECT_TRUE(selected.isCompatible("A"));
    EXPECT_FALSE(selected.isCompatible("Label"));
}

TEST(DataTypeSelectTest, IsNotCompatibleWithOthers) {
    const Selected selected("TYPE S = SELECT (A, Label);\nEND_TYPE;");
    // A supertype, a sibling, another root, a type made of a member, the select's own type, a function.
    for (const auto* name : {"Root", "B", "Other", "ShortLabel", "S", "Fun"})
        EXPECT_FALSE(selected.isCompatible(name)) << name;
    EXPECT_FALSE(selected.select.isCompatible(*typeOf(*selected.schema, "Label").pDataType()));
}

TEST(DataTypeSelectTest, WithoutResolvedMembersIsCompatibleWithNothing) {
    const Selected selected("TYPE S = SELECT (Missing);\nEND_TYPE;");
    for (const auto* name : {"A", "Root", "Label", "S", "Fun"})
        EXPECT_FALSE(selected.isCompatible(name)) << name;
}

TEST(DataTypeSelectTest, IsCompatibleWithWhatASelectAmongItsMembersIsCompatibleWith) {
    const Selected selected("TYPE S = SELECT (Label, T);\nEND_TYPE;\n"
                            "TYPE T = U;\nEND_TYPE;\n"
                            "TYPE U = SELECT (B, V);\nEND_TYPE;\n"
                            "TYPE V = SELECT (A1);\nEND_TYPE;");
    for (const auto* name : {"Label", "T", "B", "V", "A1", "Unlisted"})
        EXPECT_TRUE(selected.isCompatible(name)) << name;
    // U itself is no member of anything; T, which is made of it, is.
    for (const auto* name : {"A", "Root", "U", "S", "Other"})
        EXPECT_FALSE(selected.isCompatible(name)) << name;
}

TEST(DataTypeSelectTest, OfHundredsOfEntitiesIsCompatibleWithThemAndTheirSubtypesOnly) {
    std::string others;
    std::string names;
    for (int number = 0; number < 300; ++number) {
        others += "ENTITY O" + std::to_string(number) + ";\nEND_ENTITY;\n";
        names += "O" + std::to_string(number) + ", ";
    }
    // Few before A are asked about one by one, many are looked up.
    for (const auto& members : {"A, " + names + "Label", names + "A, Label", names + "Label, T"}) {
        SCOPED_TRACE(members.substr(0, 8));
        const Selected selected("TYPE S = SELECT (" + members +
                                ");\nEND_TYPE;\nTYPE T = SELECT (A);\nEND_TYPE;\n" + others +
                                "ENTITY P\n SUBTYPE OF (O299);\nEND_ENTITY;");
        for (const auto* name : {"A", "A1", "Unlisted", "O0", "O63", "O64", "O299", "P", "Label"})
            EXPECT_TRUE(selected.isCompatible(name)) << name;
        for (const auto* name : {"Root", "B", "Other", "ShortLabel", "Fun"})
            EXPECT_FALSE(selected.isCompatible(name)) << name;
    }
}

TEST(DataTypeSelectTest, SelectsThatSelectEachOtherEnd) {
    const Selected selected("TYPE S = SELECT (S, T, B);\nEND_TYPE;\n"
                            "TYPE T = SELECT (S, U);\nEND_TYPE;\n"
                            "TYPE U = SELECT (T, A);\nEND_TYPE;");
    for (const auto* name : {"S", "T", "U", "A", "A1", "B"})
        EXPECT_TRUE(selected.isCompatible(name)) << name;
    for (const auto* name : {"Other", "Root", "Label"})
        EXPECT_FALSE(selected.isCompatible(name)) << name;
}

// ---- Aggregates

struct AggregateRow {
    std::string text;
    Bound lower;
    Bound upper;
    std::string element;
};

constexpr Bound NotGiven{};
constexpr Bound Unbounded{0, Bound::State::Unbounded};

constexpr Bound given(std::uint32_t value) {
    return {value, Bound::State::Given};
}

void vAggregatesCheck(std::initializer_list<AggregateRow> rows) {
    for (const auto& row : rows)
        for (const auto form : BothForms) {
            SCOPED_TRACE(row.text);
            const Declared declared(form, row.text);
            const auto* list = DataTypeListInterface::pFrom(declared.type);
            ASSERT_NE(list, nullptr);
            EXPECT_EQ(list->getLowerBound().value, row.lower.value);
            EXPECT_EQ(list->getLowerBound().state, row.lower.state);
            EXPECT_EQ(list->getUpperBound().value, row.upper.value);
            EXPECT_EQ(list->getUpperBound().state, row.upper.state);
            EXPECT_EQ(list->getElementText(), row.element);
        }
}

TEST(DataTypeTest, BoundStatesHaveTheirNumbers) {
    EXPECT_EQ(static_cast<std::uint32_t>(Bound::State::NotGiven), 0U);
    EXPECT_EQ(static_cast<std::uint32_t>(Bound::State::Given), 1U);
    EXPECT_EQ(static_cast<std::uint32_t>(Bound::State::Unbounded), 2U);
}

TEST(DataTypeTest, BoundsOfAnAggregateStandInBrackets) {
    vAggregatesCheck({
        {"LIST [1:?] OF Label;", given(1), Unbounded, "Label"},
        {"ARRAY [1:3] OF Label;", given(1), given(3), "Label"},
        {"SET [0:4294967295] OF Label;", given(0), given(4294967295U), "Label"},
        {"SET [?:?] OF Label;", Unbounded, Unbounded, "Label"},
        {"SET [?x:?y] OF Label;", Unbounded, Unbounded, "Label"},
        {"SET [:] OF Label;", NotGiven, NotGiven, "Label"},
        {"SET [1:] OF Label;", given(1), NotGiven, "Label"},
        {"SET [:1] OF Label;", NotGiven, given(1), "Label"},
        {"SET OF Label;", NotGiven, NotGiven, "Label"},
        {"SET [ 1: 3 ] OF Label;", given(1), given(3), "Label"},
        {"SET x [1:2] y OF Label;", given(1), given(2), "Label"},
        {"SET [1]:2] OF Label;", given(1), given(2), "Label"},
    });
}

TEST(DataTypeTest, WithoutAllOfBracketColonAndBracketBoundsAreNotGiven) {
    vAggregatesCheck({
        {"SET [1:3 OF Label;", NotGiven, NotGiven, "Label"},
        {"SET 1:3] OF Label;", NotGiven, NotGiven, "Label"},
        {"SET [1] OF Label;", NotGiven, NotGiven, "Label"},
        {"SET ]:[ OF Label;", NotGiven, NotGiven, "Label"},
        {"SET :[1] OF Label;", NotGiven, NotGiven, "Label"},
    });
}

TEST(DataTypeTest, UnreadableBoundsAreAsAStreamLeavesThem) {
    vAggregatesCheck({
        {"SET [a:b] OF Label;", given(0), given(0), "Label"},
        {"SET [1x:2y] OF Label;", given(1), given(2), "Label"},
        // Only a '?' that comes first is unbounded.
        {"SET [1: ?] OF Label;", given(1), given(0), "Label"},
        {"SET [0:4294967296] OF Label;", given(0), given(4294967295U), "Label"},
        {"SET [0:99999999999999999999] OF Label;", given(0), given(4294967295U), "Label"},
        {"SET [+1:+2] OF Label;", given(1), given(2), "Label"},
        {"SET [ : ] OF Label;", given(0), given(0), "Label"},
    });
}

TEST(DataTypeTest, ElementTextRunsFromOfToTheSemicolon) {
    vAggregatesCheck({
        {"SET [1:2] OF Label", given(1), given(2), "Label"},
        {"SET [1:2] OF Label; more", given(1), given(2), "Label"},
        {"SET [1:2] OF  Label ;", given(1), given(2), " Label "},
        {"SET [1:2] PROOF Label;", given(1), given(2), "Label"},
        {"SET [1:2] OF SET OF Label;", given(1), given(2), "SET OF Label"},
        // "OF " before the bounds is passed by when there are bounds.
        {"SET OF [1:2] OF Label;", given(1), given(2), "Label"},
        {"SET OF LIST [1:2] OF Label;", given(1), given(2), "Label"},
        {"SET [1:2] Label;", given(1), given(2), ""},
        {"SET [1:2] of Label;", given(1), given(2), ""},
        {"SET [1:2] OF;", given(1), given(2), ""},
        {"SET [1:2] OF ;", given(1), given(2), ""},
        {"SET;", NotGiven, NotGiven, ""},
        {"SET", NotGiven, NotGiven, ""},
    });
}

TEST(DataTypeTest, AggregateOfATypeLineTakesTheRestOfItsLineOnly) {
    const auto schema = schemaFromText("TYPE T = LIST\n [1:2] OF REAL;\nEND_TYPE;");
    const auto* list = DataTypeListInterface::pFrom(typeOf(*schema, "T").pDataType());
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->getElementText(), "");
    EXPECT_EQ(list->getLowerBound().state, Bound::State::NotGiven);
}

struct UniqueRow {
    std::string text;
    bool unique;
    std::string element;
};

void vUniqueCheck(std::initializer_list<UniqueRow> rows) {
    for (const auto& row : rows)
        for (const auto form : BothForms) {
            const Declared declared(form, row.text);
            EXPECT_EQ(declared.as<DataTypeList>().isUnique(), row.unique) << row.text;
            EXPECT_EQ(declared.as<DataTypeList>().getElementText(), row.element) << row.text;
        }
}

TEST(DataTypeTest, ListOfUniqueElementsIsUnique) {
    const Declared declared(InAttribute, "LIST [1:?] OF UNIQUE Label;");
    const auto& list = declared.as<DataTypeList>();
    EXPECT_EQ(list.getLowerBound().value, 1U);
    EXPECT_EQ(list.getLowerBound().state, Bound::State::Given);
    EXPECT_EQ(list.getUpperBound().state, Bound::State::Unbounded);
    EXPECT_TRUE(list.isUnique());
    EXPECT_EQ(list.getElementText(), "Label");
    EXPECT_EQ(list.pElement(), &typeOf(*declared.schema, "Label"));
    vUniqueCheck({{"LIST OF UNIQUE Label;", true, "Label"}, {"LIST OF Label;", false, "Label"}});
}

TEST(DataTypeTest, ListOfListsIsNotUniqueItself) {
    vUniqueCheck({
        {"LIST [1:?] OF LIST [2:3] OF REAL;", false, "LIST [2:3] OF REAL"},
        {"LIST [1:?] OF LIST [1:4] OF UNIQUE Label;", false, "LIST [1:4] OF UNIQUE Label"},
        {"LIST OF SET OF UNIT;", false, "SET OF UNIT"},
        {"LIST [0:?] OF ARRAY [1:2] OF UNIT;", false, "ARRAY [1:2] OF UNIT"},
        // In front of the nested aggregate it counts.
        {"LIST [3:?] OF UNIQUE LIST [3:3] OF Label;", true, "LIST [3:3] OF Label"},
    });
}

TEST(DataTypeTest, ListOfListsBuildsANestedList) {
    const Declared declared(InAttribute, "LIST [1:?] OF LIST [2:3] OF UNIQUE REAL;");
    const auto* inner = dynamic_cast<const DataTypeList*>(declared.as<DataTypeList>().pElement());
    ASSERT_NE(inner, nullptr);
    EXPECT_TRUE(inner->isUnique());
    EXPECT_EQ(inner->getLowerBound().value, 2U);
    EXPECT_EQ(inner->getUpperBound().value, 3U);
    ASSERT_NE(inner->pElement(), nullptr);
    EXPECT_EQ(inner->pElement()->getName(), "REAL");
}

TEST(DataTypeTest, AnyThreeCapitalsUniBehindOfMakeAListUnique) {
    vUniqueCheck({
        {"LIST OF UNICODETEXT;", true, "TEXT"},
        {"LIST [1:2] OF xUNIQUE Label;", true, "Label"},
        {"LIST OF Label UNIQUE x;", true, "x"},
        {"LIST OF BAG OF UNIQUE Label;", true, "Label"},
        {"LIST OF  LIST OF UNIQUE Label;", true, "Label"},
        {"LIST OF LISTS UNIQUE Label;", true, "Label"},
        // Seven characters behind the place there may be nothing left.
        {"LIST OF UNI;", true, ""},
        {"LIST OF UNIT", true, ""},
        {"LIST OF UNIQUE", true, ""},
        {"LIST OF UNIQUE;", true, ""},
        {"LIST OF UNIQUE ;", true, ""},
    });
}

TEST(DataTypeTest, UniInAnotherLetterCaseOrBeforeOfDoesNotCount) {
    vUniqueCheck({
        {"LIST OF IfcUnitAssignment;", false, "IfcUnitAssignment"},
        {"LIST OF unique Label;", false, "unique Label"},
        {"LIST UNIQUE OF Label;", false, "Label"},
        {"LIST OF UN IQUE;", false, "UN IQUE"},
    });
}

TEST(DataTypeTest, BoundsOfANestedAggregateAreTakenWhenThereAreNoOthers) {
    // The first brackets of the text are searched, and what precedes them is passed by.
    vUniqueCheck({{"LIST OF LIST [1:2] OF UNIQUE Label;", true, "Label"}});
}

TEST(DataTypeTest, TheWholeRestOfATypeLineIsSearchedForUni) {
    const Declared declared(InType, "LIST OF Label; -- UNIQUE x");
    EXPECT_TRUE(declared.as<DataTypeList>().isUnique());
    EXPECT_EQ(declared.as<DataTypeList>().getElementText(), "x");
}

TEST(DataTypeTest, SetAndArrayDoNotRecordUnique) {
    vAggregatesCheck({{"SET [1:?] OF UNIQUE Label;", given(1), Unbounded, "UNIQUE Label"},
                      {"ARRAY [1:2] OF UNIQUE Label;", given(1), given(2), "UNIQUE Label"}});
}

TEST(DataTypeTest, ElementOfASetOfUniqueIsNotFound) {
    AssertCollector reports;
    const Declared declared(InAttribute, "SET [1:?] OF UNIQUE Label;");
    EXPECT_EQ(declared.as<DataTypeSet>().pElement(), nullptr);
    EXPECT_THAT(reports.getRecords(), ElementsAre(elementNotFound(11)));
}

TEST(DataTypeTest, ElementIsAnObjectOfTheSchemaOrADataType) {
    struct {
        std::string text;
        std::string element;
    } const rows[] = {
        {"SET OF Ent;", "Ent"},
        {"SET OF ENT;", "Ent"},
        {"SET OF Label;", "Label"},
        {"SET OF REAL;", "REAL"},
        {"SET OF STRING(5);", "STRING(5)"},
        {"SET OF ARRAY OF REAL;", "ARRAY"},
    };
    for (const auto& row : rows)
        for (const auto form : BothForms) {
            AssertCollector reports;
            const Declared declared(form, row.text);
            const auto* element = declared.as<DataTypeSet>().pElement();
            ASSERT_NE(element, nullptr) << row.text;
            EXPECT_EQ(element->getName(), row.element) << row.text;
            EXPECT_THAT(reports.getRecords(), IsEmpty()) << row.text;
        }
}

TEST(DataTypeTest, ElementThatIsNotFoundIsReportedWithTheKindOfTheAggregate) {
    const std::pair<std::string, int> rows[] = {
        {"ARRAY [1:2] OF Missing;", 9}, {"LIST [1:2] OF Missing;", 10},
        {"SET [1:2] OF Missing;", 11},  {"ARRAY;", 9},
        {"LIST [1:2] OF ;", 10},        {"SET [1:2];", 11},
        {"LIST OF UNIQUE;", 10},
    };
    for (const auto& [text, kind] : rows)
        for (const auto form : BothForms) {
            AssertCollector reports;
            const Declared declared(form, text);
            EXPECT_EQ(DataTypeListInterface::pFrom(declared.type)->pElement(), nullptr) << text;
            EXPECT_THAT(reports.getRecords(), ElementsAre(elementNotFound(kind))) << text;
        }
}

TEST(DataTypeTest, OfNestedAggregatesTheInnermostReports) {
    AssertCollector reports;
    const Declared declared(InAttribute, "ARRAY [1:2] OF LIST OF SET OF Missing;");
    EXPECT_THAT(reports.getRecords(), ElementsAre(elementNotFound(11)));
    EXPECT_NE(declared.as<DataTypeArray>().pElement(), nullptr);
}

TEST(DataTypeTest, AggregateOfItsOwnTypeEnds) {
    AssertCollector reports;
    const auto schema = schemaFromText("TYPE T = LIST OF T;\nEND_TYPE;");
    const auto* list = DataTypeListInterface::pFrom(typeOf(*schema, "T").pDataType());
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->pElement(), &typeOf(*schema, "T"));
    EXPECT_THAT(reports.getRecords(), IsEmpty());
}

TEST(DataTypeTest, BaseTypeIsTheTypeOfOneValue) {
    const auto base = [](const std::string& text) {
        const Declared declared(InAttribute, text);
        const auto* type = declared.type->pBaseType();
        return std::string(type ? type->getName() : "null");
    };
    EXPECT_EQ(base("REAL;"), "REAL");
    EXPECT_EQ(base("STRING(5);"), "STRING(5)");
    EXPECT_EQ(base("ENUMERATION OF (A);"), "ENUMERATION");
    EXPECT_EQ(base("LIST OF Label;"), "Label");
    EXPECT_EQ(base("LIST OF SET OF Ent;"), "Ent");
    EXPECT_EQ(base("LIST OF SET OF REAL;"), "REAL");
    EXPECT_EQ(base("LIST OF SET OF Missing;"), "null");
}

// ---- Nesting

/// "LIST OF LIST OF ... REAL;"
std::string nestedLists(std::size_t count) {
    return repeated("LIST OF ", count) + "REAL;";
}

TEST(DataTypeTest, AggregatesNest256Levels) {
    for (const auto form : BothForms) {
        AssertCollector reports;
        const Declared declared(form, nestedLists(256));
        ASSERT_NE(declared.type, nullptr);
        ASSERT_NE(declared.type->pBaseType(), nullptr);
        EXPECT_EQ(declared.type->pBaseType()->getName(), "REAL");
        EXPECT_THAT(reports.getRecords(), IsEmpty());
    }
    EXPECT_EQ(entityOf(*Declared(InAttribute, nestedLists(256)).schema, "X")
                  .getAttributes()[0]
                  .getResolvedTypes()
                  .size(),
              257U);
}

TEST(DataTypeTest, AggregateBelow256LevelsIsNotFound) {
    for (const std::size_t levels : {257U, 1000U})
        for (const auto form : BothForms) {
            AssertCollector reports;
            const Declared declared(form, nestedLists(levels));
            ASSERT_NE(declared.type, nullptr);
            EXPECT_EQ(declared.type->pBaseType(), nullptr);
            EXPECT_THAT(reports.getRecords(), ElementsAre(elementNotFound(10))) << levels;
        }
}

TEST(DataTypeTest, NestingIsCountedAnewForEachType) {
    AssertCollector reports;
    const auto schema =
        schemaFromText("ENTITY X;\n  A1 : " + nestedLists(300) + "\n  A2 : " + nestedLists(256) +
                       "\n  A3 : " + nestedLists(256) + "\nEND_ENTITY;");
    EXPECT_THAT(reports.getRecords(), ElementsAre(elementNotFound(10)));
}

TEST(DataTypeTest, AggregateWhoseElementIsResolvedStaysAsItIs) {
    Declared declared(InType, "LIST OF SET OF REAL;");
    const auto& list = declared.as<DataTypeList>();
    const auto* const element = list.pElement();
    const auto typeCount = declared.schema->getDataTypes().size();
    const_cast<DataTypeList&>(list).vUpdate(*declared.schema);
    EXPECT_EQ(list.pElement(), element);
    EXPECT_EQ(declared.schema->getDataTypes().size(), typeCount);
}

} // namespace
