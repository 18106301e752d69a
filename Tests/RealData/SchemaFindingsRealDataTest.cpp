#include "RealData/RealData.h"
#include "kiv/Kit/Documents/SchemaFile.h"
#include "kiv/Kit/Findings/SchemaFindings.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::test {

namespace {

class SchemaFindingsRealData : public RealDataTest {
protected:
    /// A line for each finding, without its notes.
    static std::string sFindings(std::string_view name) {
        const auto file = kit::schemaFileRead(path(name).string());
        std::string lines;
        for (const auto& finding :
             kit::schemaFindingsOf(file.schema.get(), file.assertions, file.text, std::string(name))) {
            const auto& position = finding.place.position;
            lines += std::to_string(position.line) + ':' + std::to_string(position.column) + ' ';
            lines.append(finding.code).append(finding.severity == kit::Severity::Error ? " error: " : ": ");
            lines += finding.message + '\n';
        }
        return lines;
    }
};

// What is listed here was read in the schemas: the rules select from the result of a call, which the library
// does not understand, and two strings name entities that the schema does not have.

TEST_F(SchemaFindingsRealData, Ifc2x3HasOneRuleThatIsNotRead) {
    EXPECT_EQ(sFindings("schema/IFC2X3_TC1.exp"), "2910:2 E007: the rule \"WR4\" of \"IfcAxis2Placement3D\" "
                                                  "cannot be read, and the rule after it is lost\n");
}

TEST_F(SchemaFindingsRealData, Ifc4HasOneRuleThatIsNotReadAndTwoMisspeltNames) {
    EXPECT_EQ(
        sFindings("schema/IFC4_ADD2.exp"),
        "3549:2 E007: the rule \"AxisToRefDirPosition\" of \"IfcAxis2Placement3D\" cannot be read, and the "
        "rule "
        "after it is lost\n"
        "3696:8 E018: the name \"IFCSWEPTDISCSOLID\" is not declared in the rule \"FirstOperandType\" of "
        "\"IfcBooleanClippingResult\"\n"
        "10340:10 E018: the name \"IFCTRANFORMERTYPE\" is not declared in the rule \"CorrectTypeAssigned\" "
        "of "
        "\"IfcTransformer\"\n");
}

} // namespace

} // namespace kiv::test
