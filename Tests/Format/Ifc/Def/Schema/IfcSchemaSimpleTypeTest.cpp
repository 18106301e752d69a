#include "kiv/Format/Ifc/Def/Schema/IfcSchemaSimpleType.h"

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

struct WidthRow {
    std::string text;
    std::uint64_t width;
};

constexpr std::uint64_t Most = 18446744073709551615U;

TEST(SimpleTypeTest, WidthOfAStringIsReadOutOfItsKeyword) {
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
        // Wherever "STRING" is in the keyword, the width begins with the eighth character.
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

TEST(SimpleTypeTest, WidthOfABinaryIsReadOutOfItsKeyword) {
    const WidthRow rows[] = {
        {"BINARY;", 0},   {"BINARY(32);", 32}, {"BINARY(1);", 1},
        {"BINARY();", 0}, {"BINARY (32);", 0}, {"BINARY(x);", 0},
    };
    for (const auto& row : rows)
        for (const auto form : BothForms)
            EXPECT_EQ(Declared(form, row.text).as<DataTypeBinary>().getWidth(), row.width) << row.text;
}

TEST(SimpleTypeTest, KeywordThatContainsStringIsAStringAndGoesBeforeBinary) {
    EXPECT_EQ(Declared(InAttribute, "BINARYSTRING;").type->getDataTypeKind(), DataTypeKind::String);
    EXPECT_EQ(Declared(InAttribute, "MYBINARY;").type->getDataTypeKind(), DataTypeKind::Binary);
    EXPECT_EQ(Declared(InAttribute, "BINARYSTRING;").type->getName(), "BINARYSTRING");
}

TEST(SimpleTypeTest, FixedIsSeenInTypeLinesOnly) {
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

TEST(SimpleTypeTest, StringOfATypeLineHasBothWidthAndFixed) {
    const Declared declared(InType, "STRING(255) FIXED;");
    EXPECT_EQ(declared.as<DataTypeString>().getWidth(), 255U);
    EXPECT_TRUE(declared.as<DataTypeString>().isFixed());
}

TEST(SimpleTypeTest, FixedBeforeTheKeywordOrOnAnotherLineDoesNotCount) {
    const auto schema = schemaFromText("TYPE FIXED = STRING(255);\n FIXED\nEND_TYPE;");
    const auto* string = dynamic_cast<const DataTypeString*>(typeOf(*schema, "FIXED").pDataType());
    ASSERT_NE(string, nullptr);
    EXPECT_FALSE(string->isFixed());
}

} // namespace
