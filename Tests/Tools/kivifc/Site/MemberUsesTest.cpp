#include "kivifc/Site/MemberUses.h"

#include "Tools/kivifc/Site/SetTexts.h"
#include "Tools/kivifc/Site/SiteSample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace kiv::kivifc::site::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* MemberUsesDeclarations = "TYPE Label = STRING;\nEND_TYPE;\n"
                                               "TYPE Ratio = REAL;\nEND_TYPE;\n"
                                               "TYPE Unused = REAL;\nEND_TYPE;\n"
                                               "ENTITY Wall;\nEND_ENTITY;\n";

std::vector<std::string> rowsOf(const SiteSample& sample, const std::string& name) {
    std::vector<std::string> rows;
    for (const auto& use :
         sample.getModel().memberUsesOf(*sample.getModel().getSchema().pObjectFromName(name)))
        rows.push_back(std::string(use.set->getName()) + "." + use.row.getText());
    return rows;
}

TEST(MemberUses, AreMembersOfTheTypeOrOfReferencesToIt) {
    const std::string table =
        "<TypePropertyTableValue><DefiningValue><DataType type=\"Ratio\"/></DefiningValue>"
        "<DefinedValue><DataType type=\"Ratio\"/></DefinedValue></TypePropertyTableValue>";
    const SiteSample sample(
        MemberUsesDeclarations,
        {{"TEST", sSet("Pset_A", {"Wall"},
                       sProperty("Mark", sSingle("Label")) + sProperty("Curve", table) +
                           sProperty("Owner", "<TypePropertyReferenceValue reftype=\"Wall\"/>"))},
         {"office", sSet("Office", {"Wall"}, sProperty("Title", sSingle("Label")))}});
    EXPECT_THAT(rowsOf(sample, "Label"), testing::UnorderedElementsAre("Pset_A.Mark", "Office.Title"));
    EXPECT_THAT(rowsOf(sample, "Ratio"), ElementsAre("Pset_A.Curve"));
    EXPECT_THAT(rowsOf(sample, "Wall"), ElementsAre("Pset_A.Owner"));
    EXPECT_THAT(sample.sPage("Label.html"),
                HasSubstr("Properties and quantities <span class=\"count\">2</span>"));
    EXPECT_THAT(sample.sPage("Label.html"),
                HasSubstr("<a href=\"sets/Pset_A.html#Mark\"><code>Pset_A.Mark</code></a>"));
    EXPECT_THAT(sample.sPage("Unused.html"), HasSubstr("Nothing in the schema or the sets refers to it."));
}

/// A label is that of hundreds of properties, and an index of all properties does not separate them.
TEST(MemberUses, ManyAreAllThereAndMostOfThemClosed) {
    std::string members;
    for (int number = 0; number < 130; ++number)
        members += sProperty("P" + std::to_string(number), sSingle("Label"));
    const SiteSample sample(MemberUsesDeclarations, {{"TEST", sSet("Pset_A", {"Wall"}, members)}});
    const auto page = sample.sPage("Label.html");
    const auto rest = page.find("<details class=\"rest\"><summary>and 30 more</summary>\n");
    ASSERT_NE(rest, std::string::npos);
    EXPECT_LT(page.find("#P99\""), rest);
    EXPECT_GT(page.find("#P100\""), rest);
    EXPECT_LT(page.find("#P129\""), page.find("</details>", rest));
}

} // namespace

} // namespace kiv::kivifc::site::test
