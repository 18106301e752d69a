#include "kivifc/Site/MemberTable.h"

#include "Tools/kivifc/Site/SetTexts.h"
#include "Tools/kivifc/Site/SiteSample.h"
#include "kivifc/Site/Addresses.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::site::test {

namespace {

constexpr const char* MemberTableDeclarations =
    "TYPE Label = STRING;\nEND_TYPE;\nTYPE Ratio = REAL;\nEND_TYPE;\n";

TEST(MemberTable, HasEachNameOnceWithTheTypesOfIt) {
    const SiteSample sample(
        MemberTableDeclarations,
        {{"a", sSet("Pset_A", {}, sProperty("Mark", sSingle("Label")))},
         {"b",
          sSet("Pset_B", {}, sProperty("Mark", sSingle("Ratio")) + sProperty("Width", sSingle("Ratio")))},
         {"c", sSet("Pset_C", {}, sProperty("Mark", sSingle("Label")))}});
    const MemberTable table(sample.getModel());
    const auto names = table.getNames();
    ASSERT_EQ(names.size(), 2U);
    EXPECT_EQ(names[0]->name, "Mark");
    EXPECT_TRUE(names[0]->hasDifferences());
    ASSERT_EQ(names[0]->types.size(), 2U);
    EXPECT_THAT(names[0]->types[0].type.getText(), testing::HasSubstr("Label.html"));
    EXPECT_EQ(names[0]->types[0].places.size(), 2U);
    EXPECT_EQ(names[0]->types[1].places.size(), 1U);
    EXPECT_EQ(names[0]->types[1].places[0].second.getPath(),
              "sets/" + FileNames().sTakeMarked("Pset_B", "b"));
    EXPECT_EQ(names[1]->name, "Width");
    EXPECT_FALSE(names[1]->hasDifferences());
}

} // namespace

} // namespace kiv::kivifc::site::test
