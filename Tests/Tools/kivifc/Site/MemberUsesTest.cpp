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
using testing::Not;

constexpr const char* Declarations = "TYPE Label = STRING;\nEND_TYPE;\n"
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
        Declarations,
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
    EXPECT_THAT(sample.sPage("Unused.html"), Not(HasSubstr("id=\"uses\"")));
}

TEST(MemberUses, ManyAreCountedAndNotAllListed) {
    std::string members;
    for (int number = 0; number < 130; ++number)
        members += sProperty("P" + std::to_string(number), sSingle("Label"));
    const SiteSample sample(Declarations, {{"TEST", sSet("Pset_A", {"Wall"}, members)}});
    const auto page = sample.sPage("Label.html");
    EXPECT_THAT(page, HasSubstr("#P99\""));
    EXPECT_THAT(page, Not(HasSubstr("#P100\"")));
    EXPECT_THAT(page, HasSubstr("<a href=\"properties.html\">and 30 more</a>"));
}

} // namespace

} // namespace kiv::kivifc::site::test
