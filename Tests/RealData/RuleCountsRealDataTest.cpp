#include "RealData/RealData.h"
#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Kit/Documents/SetDocument.h"
#include "kiv/Kit/Findings/AcrossDocuments.h"
#include "kiv/Kit/Findings/Findings.h"
#include "kiv/Kit/Findings/IgnoreComments.h"
#include "kiv/Kit/Positions/XmlPositions.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <iterator>
#include <map>
#include <string>
#include <string_view>

namespace kiv::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

using Counts = std::map<std::string, std::size_t>;

/// How often the rules about types, classes, releases and definitions, and those between documents, find
/// something in the official documents, and what the library reports that no rule explains (R), what it
/// reports of correct documents too included. Comments for checks (K) are in none of them. Of each code up to
/// twenty findings were read and found to be true; the comments say what they are.
class RuleCountsRealDataTest : public RealDataTest {
protected:
    Counts within;
    Counts between;

    void vCount(std::string_view folder, std::string_view schemaName) {
        constexpr std::string_view Families = "TCVDRK";
        const auto schema = schemaFromWholeText(sText(path("schema") / schemaName));
        kit::AcrossDocuments across;
        for (const auto& file : setPaths(folder)) {
            const auto document = kit::setDocumentCheck(file.string(), *schema);
            auto findings = kit::findingsOf(document, {*schema, {}, {}, true});
            across.vAdd(document, {}, findings);
            ASSERT_TRUE(document.positions) << file;
            const kit::IgnoreComments ignores(document.path, *document.positions);
            std::ranges::move(ignores.unusedFindings(), std::back_inserter(findings));
            for (const auto& finding : findings) {
                if (Families.find(finding.code[0]) != std::string_view::npos)
                    ++within[std::string(finding.code)];
            }
        }
        for (const auto& finding : across.getFindings())
            ++between[std::string(finding.code)];
    }
};

/// Two empty class names; 26 predefined types that the schema does not have, as of "Wood" for IfcMaterial;
/// every table is without columns; items are written on a line of their own. Four enumerations were copied
/// from one set to another with other items.
TEST_F(RuleCountsRealDataTest, PropertySetsOfIfc4) {
    vCount("IFC4", "IFC4_ADD2.exp");
    EXPECT_THAT(within, ElementsAre(Pair("C006", 2), Pair("C008", 17), Pair("C009", 9), Pair("T012", 63),
                                    Pair("T023", 21)));
    EXPECT_THAT(between, ElementsAre(Pair("D003", 78), Pair("X003", 4), Pair("X004", 4)));
}

TEST_F(RuleCountsRealDataTest, QuantitySetsOfIfc4) {
    vCount("IFC4_QTO", "IFC4_ADD2.exp");
    EXPECT_THAT(within, IsEmpty());
    EXPECT_THAT(between, IsEmpty());
}

/// Blanks in names of types and line breaks in items, classes after their part of the schema, "x1" to "x3"
/// where currents belong, and 105 simple properties in 14 documents, of which nobody reads the type. Three
/// integers have the unit of IfcIntegerCountRateMeasure. One enumeration lacks an item that it has in three
/// other sets. The library looks up the bounds of 33 properties as names.
TEST_F(RuleCountsRealDataTest, PropertySetsOfIfc2x3) {
    vCount("IFC2X3", "IFC2X3_TC1.exp");
    EXPECT_THAT(within, ElementsAre(Pair("C005", 10), Pair("C011", 43), Pair("D002", 2), Pair("R016", 33),
                                    Pair("R017", 33), Pair("T007", 63), Pair("T015", 3), Pair("T023", 5),
                                    Pair("T026", 105), Pair("T028", 3)));
    EXPECT_THAT(between, ElementsAre(Pair("D003", 18), Pair("X003", 1), Pair("X004", 1)));
}

/// Read with the schema of the other release, each document says so once.
TEST_F(RuleCountsRealDataTest, ReleasesOfOtherDocuments) {
    vCount("IFC2X3", "IFC4_ADD2.exp");
    EXPECT_EQ(within["V001"], 159);
}

} // namespace

} // namespace kiv::test
