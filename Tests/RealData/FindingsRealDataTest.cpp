#include "RealData/RealData.h"
#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Kit/Documents/SetDocument.h"
#include "kiv/Kit/Findings/Findings.h"

#include <gmock/gmock.h>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

namespace {

using ifc::def::schema::Schema;
using testing::ElementsAre;
using testing::Pair;

class FindingsRealDataTest : public RealDataTest {
protected:
    static std::unique_ptr<Schema> schema(std::string_view name) {
        return schemaFromWholeText(sText(path("schema") / name));
    }

    /// The findings in all documents of a folder, of the families with these letters.
    static std::vector<kit::Finding> findings(std::string_view folder, const Schema& schema,
                                              std::string_view families) {
        std::vector<kit::Finding> all;
        for (const auto& file : setPaths(folder)) {
            const auto document = kit::setDocumentCheck(file.string(), schema);
            EXPECT_FALSE(document.failure) << file;
            for (auto& finding : kit::findingsOf(document, {schema, {}, {}, false})) {
                if (families.find(finding.code[0]) != std::string_view::npos)
                    all.push_back(std::move(finding));
            }
        }
        return all;
    }

    static std::map<std::string, std::size_t> counts(const std::vector<kit::Finding>& findings) {
        std::map<std::string, std::size_t> codes;
        for (const auto& finding : findings)
            ++codes[std::string(finding.code)];
        return codes;
    }

    static std::vector<std::string> lines(const std::vector<kit::Finding>& findings, std::string_view code) {
        std::vector<std::string> found;
        for (const auto& finding : findings) {
            const auto file = finding.place.path.substr(finding.place.path.rfind('/') + 1);
            if (finding.code == code)
                found.push_back(file + ":" + std::to_string(finding.place.position.line) + ":" +
                                std::to_string(finding.place.position.column) + " " + finding.subject);
        }
        return found;
    }
};

constexpr std::string_view Structure = "SNGL";

} // namespace

/// Six properties whose "PropertyType" is an empty tag, so that they have no type, and 20 empty translations:
/// these are all mistakes of their structure.
TEST_F(FindingsRealDataTest, PropertySetsOfIfc4) {
    const auto found = findings("IFC4", *schema("IFC4_ADD2.exp"), Structure);
    EXPECT_THAT(counts(found), ElementsAre(Pair("L004", 20), Pair("S004", 6)));
    EXPECT_THAT(
        lines(found, "S004"),
        ElementsAre("Pset_MaterialWoodBasedBeam.xml:32:5 Pset_MaterialWoodBasedBeam.InPlane",
                    "Pset_MaterialWoodBasedBeam.xml:39:5 Pset_MaterialWoodBasedBeam.InPlaneNegative",
                    "Pset_MaterialWoodBasedBeam.xml:46:5 Pset_MaterialWoodBasedBeam.OutOfPlane",
                    "Pset_MaterialWoodBasedPanel.xml:25:5 Pset_MaterialWoodBasedPanel.InPlane",
                    "Pset_MaterialWoodBasedPanel.xml:32:5 Pset_MaterialWoodBasedPanel.OutOfPlane",
                    "Pset_MaterialWoodBasedPanel.xml:39:5 Pset_MaterialWoodBasedPanel.OutOfPlaneNegative"));
}

/// For English, of which the other texts are, nearly all translations of definitions are empty tags.
TEST_F(FindingsRealDataTest, QuantitySetsOfIfc4) {
    EXPECT_THAT(counts(findings("IFC4_QTO", *schema("IFC4_ADD2.exp"), Structure)),
                ElementsAre(Pair("L004", 343)));
}

/// Two units are written with a blank at their end, nine are empty. Simple properties of time series name the
/// measure of the values, such as IFCPOWERMEASURE, where the type of a unit belongs.
TEST_F(FindingsRealDataTest, PropertySetsOfIfc2x3) {
    const auto found = findings("IFC2X3", *schema("IFC2X3_TC1.exp"), Structure);
    EXPECT_THAT(counts(found), ElementsAre(Pair("S008", 60), Pair("S019", 2), Pair("S022", 9)));
    EXPECT_THAT(lines(found, "S019"),
                ElementsAre("Pset_SpaceThermalDesign.xml:3:4475 Pset_SpaceThermalDesign.BoundaryAreaHeatLoss",
                            "Pset_SystemFurnitureElementTypePanel.xml:3:1593 "
                            "Pset_SystemFurnitureElementTypePanel.NominalThickness"));
}

} // namespace kiv::test
