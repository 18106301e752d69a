#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEnumeration.h"

#include "Format/Ifc/Def/Schema/DataTypeTools.h"
#include "Format/Ifc/Def/Schema/SchemaTestTools.h"
#include "Support/SchemaFromText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <span>
#include <string>
#include <string_view>

namespace {

using namespace kiv::ifc::def::schema;
using namespace kiv::test;
using testing::ElementsAre;
using testing::IsEmpty;

Strings itemsOf(std::span<const std::string_view* const> items) {
    Strings result;
    for (const auto* item : items)
        result.emplace_back(*item);
    return result;
}

TEST(EnumerationTest, EnumerationOfAnAttributeTextHasNoItems) {
    const Declared declared(InAttribute, "ENUMERATION OF (B, A);");
    EXPECT_THAT(declared.as<DataTypeEnum>().getItems(), IsEmpty());
    EXPECT_THAT(declared.as<DataTypeEnum>().getItemsOrdered(), IsEmpty());
    EXPECT_FALSE(declared.as<DataTypeEnum>().boContains("A"));
}

TEST(EnumerationTest, EnumerationOfATypeLineHasAllItems) {
    for (const auto* text : {"ENUMERATION OF (B, A,C);", "ENUMERATION OF\n\t(B\n\t,A\n\t,C);",
                             "ENUMERATION OF (B,\nA, C\n);", "ENUMERATION OF\n\n(B A C)"}) {
        const Declared declared(InType, text);
        EXPECT_THAT(declared.as<DataTypeEnum>().getItems(), ElementsAre("B", "A", "C")) << text;
        EXPECT_THAT(itemsOf(declared.as<DataTypeEnum>().getItemsOrdered()), ElementsAre("A", "B", "C"))
            << text;
    }
}

TEST(EnumerationTest, RepeatedItemOfAnEnumerationIsListedOnceInTheIndex) {
    const DataTypeEnum enumeration(Strings{"B", "A", "B", "A", "b"});
    EXPECT_THAT(enumeration.getItems(), ElementsAre("B", "A", "B", "A", "b"));
    EXPECT_THAT(itemsOf(enumeration.getItemsOrdered()), ElementsAre("A", "B", "b"));
}

TEST(EnumerationTest, IndexOfAnEnumerationIsOrderedByBytesAndPointsIntoItsItems) {
    const DataTypeEnum enumeration(Strings{"b", "\xC4", "AB", "A", "", "_"});
    EXPECT_THAT(itemsOf(enumeration.getItemsOrdered()), ElementsAre("", "A", "AB", "_", "b", "\xC4"));
    for (const auto* item : enumeration.getItemsOrdered()) {
        EXPECT_GE(item, enumeration.getItems().data());
        EXPECT_LT(item, enumeration.getItems().data() + enumeration.getItems().size());
    }
}

TEST(EnumerationTest, EnumerationContainsItsItemsExactly) {
    const DataTypeEnum enumeration(Strings{"SOLID", "HOLLOW", "SOLID"});
    EXPECT_TRUE(enumeration.boContains("SOLID"));
    EXPECT_TRUE(enumeration.boContains("HOLLOW"));
    for (const auto* item : {"solid", "Solid", "SOLI", "SOLIDS", "", "ZZZ", "AAA"})
        EXPECT_FALSE(enumeration.boContains(item)) << item;
    EXPECT_FALSE(DataTypeEnum(Strings{}).boContains(""));
}

TEST(EnumerationTest, EnumerationMadeOfATextHasNoItems) {
    EXPECT_THAT(DataTypeEnum(std::string("OF (A, B)")).getItems(), IsEmpty());
}

} // namespace
