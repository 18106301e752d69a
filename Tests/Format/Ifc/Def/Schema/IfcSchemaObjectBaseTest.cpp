#include "kiv/Format/Ifc/Def/Schema/IfcSchemaObjectBase.h"

#include "Format/Ifc/Def/Schema/SchemaTestTools.h"
#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace {

using namespace kiv::ifc::def::schema;
using namespace kiv::test;

constexpr auto NoEnd = std::string::npos;

TEST(ObjectBaseTest, KindsHaveTheirNumbers) {
    EXPECT_EQ(static_cast<std::uint32_t>(ObjectBase::Type::DataType), 0U);
    EXPECT_EQ(static_cast<std::uint32_t>(ObjectBase::Type::Type), 1U);
    EXPECT_EQ(static_cast<std::uint32_t>(ObjectBase::Type::Entity), 2U);
    EXPECT_EQ(static_cast<std::uint32_t>(ObjectBase::Type::Function), 3U);
    EXPECT_EQ(static_cast<std::uint32_t>(ObjectBase::Type::Rule), 4U);
    static_assert(std::is_same_v<std::underlying_type_t<ObjectBase::Type>, std::uint32_t>);
}

TEST(ObjectBaseTest, MadeFromAKindAloneHasEmptyNames) {
    const ObjectBase object(ObjectBase::Type::Rule);
    EXPECT_EQ(object.getKind(), ObjectBase::Type::Rule);
    EXPECT_EQ(object.getName(), "");
    EXPECT_EQ(object.getNameUpper(), "");
    EXPECT_EQ(object.getNameHash(), 0x811C9DC5U);
    EXPECT_EQ(object.getNameUpperHash(), 0x811C9DC5U);
}

TEST(ObjectBaseTest, KeepsTheNameAsWrittenAndUpperCasedWithBothHashes) {
    LineAndStream text("ENTITY IfcWall;");
    std::size_t nameEnd = 0;
    const ObjectBase object(ObjectBase::Type::Entity, text.line, 6, nameEnd);
    EXPECT_EQ(object.getKind(), ObjectBase::Type::Entity);
    EXPECT_EQ(object.getName(), "IfcWall");
    EXPECT_EQ(object.getNameUpper(), "IFCWALL");
    EXPECT_EQ(object.getNameHash(), 0x99ECC1DBU);
    EXPECT_EQ(object.getNameUpperHash(), 0x7BD1647BU);
}

TEST(ObjectBaseTest, UpperCasesAsciiLettersOnly) {
    LineAndStream text("ENTITY gr\xFCn;");
    std::size_t nameEnd = 0;
    const ObjectBase object(ObjectBase::Type::Entity, text.line, 6, nameEnd);
    EXPECT_EQ(object.getNameUpper(), "GR\xFCN");
    EXPECT_EQ(object.getNameUpperHash(), 0x3BAA7CAAU);
}

struct NameRow {
    std::string_view line;
    std::size_t namePos;
    std::string_view name;
    std::size_t nameEnd;
};

constexpr NameRow Names[] = {
    {"ENTITY IfcRoot", 6, "IfcRoot", NoEnd},
    {"ENTITY IfcRoot;", 6, "IfcRoot", 14},
    {"TYPE IfcLabel = STRING;", 4, "IfcLabel", 13},
    {"ENTITY    IfcRoot;", 6, "IfcRoot", 17},
    {"ENTITYIfcRoot;", 6, "IfcRoot", 13},
    {"ENTITY IfcRoot ;", 6, "IfcRoot", 14},
    // Only a blank ends the name before ';' does, and only blanks are skipped before it.
    {"ENTITY\tIfcRoot;", 6, "\tIfcRoot", 14},
    {"TYPE A\t= REAL;", 4, "A\t=", 8},
    {"ENTITY A; x : REAL;", 6, "A;", 9},
    {"TYPE A=REAL;", 4, "A=REAL", 11},
    {"ENTITY ;", 6, "", 7},
    {"ENTITY", 6, "", NoEnd},
    {"ENTITY   ", 6, "", NoEnd},
    {"FUNCTION F (a : REAL) : REAL;", 8, "F", 10},
    {"FUNCTION F(a : REAL) : REAL;", 8, "F(a", 12},
};

TEST(ObjectBaseTest, TakesTheNameFromTheLine) {
    for (const auto& row : Names) {
        SCOPED_TRACE(row.line);
        LineAndStream text(row.line);
        std::size_t nameEnd = 4711;
        const ObjectBase object(ObjectBase::Type::Type, text.line, row.namePos, nameEnd);
        EXPECT_EQ(object.getName(), row.name);
        EXPECT_EQ(nameEnd, row.nameEnd);
    }
}

TEST(ObjectNameTest, OfAnEntityIsItsUpperCasedNameAndThatNamesHash) {
    const auto schema = schemaFromText("ENTITY IfcWall;\nEND_ENTITY;");
    const ObjectName key(entityOf(*schema, "IfcWall"));
    EXPECT_EQ(key.getView(), "IFCWALL");
    EXPECT_EQ(key.getHash(), 0x7BD1647BU);
}

TEST(ObjectNameTest, OfATextIsThatTextAndItsHash) {
    const ObjectName key("IFCWALL");
    EXPECT_EQ(key.getView(), "IFCWALL");
    EXPECT_EQ(key.getHash(), 0x7BD1647BU);
    EXPECT_EQ(ObjectName("").getHash(), 0x811C9DC5U);
}

} // namespace
