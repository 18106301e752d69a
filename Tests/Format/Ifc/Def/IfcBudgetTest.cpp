// Each limit of a budget at both sides while documents, sets and configurations are read, and what is left
// then.

#include "kiv/Format/Ifc/Def/IfcBudget.h"
#include "Support/AssertCollector.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAttribute.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/SchemaPset.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"
#include "kiv/Host/Xml/KivXml.h"

#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <sstream>
#include <stop_token>
#include <string>

namespace kiv::test {

namespace {

using ifc::def::Budget;
using ifc::def::BudgetExceeded;
using ifc::def::BudgetLimit;
using ifc::def::BudgetMeter;
using ifc::def::xml::ErrorKind;
using ifc::def::xml::ErrorRecord;
using ifc::def::xml::XmlSetErrors;

/// What ended a reading within the budget, if anything did.
std::optional<BudgetExceeded> exceededBy(const Budget& budget,
                                         const std::function<void(BudgetMeter&)>& vRead) {
    BudgetMeter meter(budget);
    try {
        vRead(meter);
        return std::nullopt;
    } catch (const BudgetExceeded& exceeded) {
        EXPECT_EQ(meter.getUsed(WorkMeter::Unit::HeldBytes), 0U);
        return exceeded;
    }
}

/// Expects that `needed` is enough, and one less is not.
void vExpectLimit(std::uint64_t Budget::*limit, BudgetLimit name, std::uint64_t needed,
                  const std::function<void(BudgetMeter&)>& vRead) {
    Budget budget;
    budget.*limit = needed;
    EXPECT_FALSE(exceededBy(budget, vRead));
    budget.*limit = needed - 1;
    const auto exceeded = exceededBy(budget, vRead);
    ASSERT_TRUE(exceeded);
    EXPECT_EQ(exceeded->getLimit(), name);
    EXPECT_EQ(exceeded->getValue(), needed - 1);
}

/// Something stops at once.
void vExpectStop(const std::function<void(BudgetMeter&)>& vRead) {
    std::stop_source source;
    source.request_stop();
    Budget budget;
    budget.stop = source.get_token();
    const auto exceeded = exceededBy(budget, vRead);
    ASSERT_TRUE(exceeded);
    EXPECT_EQ(exceeded->getLimit(), BudgetLimit::Stop);
}

xml::File newFile() {
    return {nullptr, xml::VerboseLevel::Quiet, xml::ValidateLevel::None};
}

// ---- Documents

/// 44 bytes, of which the longest piece is the comment; two elements, an attribute, a text and a comment.
constexpr const char* Document = "<a b=\"1\"><c>text</c><!-- a long comment --></a>";

void vDocumentRead(BudgetMeter& meter) {
    std::istringstream stream(Document);
    auto file = newFile();
    ASSERT_TRUE(file.parse(stream, "", &meter));
}

TEST(BudgetOfDocuments, Input) {
    vExpectLimit(&Budget::maxInput, BudgetLimit::Input, std::string(Document).size(), vDocumentRead);
}

TEST(BudgetOfDocuments, Piece) {
    vExpectLimit(&Budget::maxPiece, BudgetLimit::Piece, std::string("<!-- a long comment -->").size(),
                 vDocumentRead);
}

TEST(BudgetOfDocuments, Objects) {
    vExpectLimit(&Budget::maxObjects, BudgetLimit::Objects, 5, vDocumentRead);
}

TEST(BudgetOfDocuments, Stop) {
    vExpectStop(vDocumentRead);
}

TEST(BudgetOfDocuments, PieceAcrossBlocks) {
    Budget budget;
    budget.maxPiece = 100'000;
    const auto exceeded = exceededBy(budget, [](BudgetMeter& meter) {
        std::istringstream stream("<a><!--" + std::string(1'000'000, 'x') + "--></a>");
        auto file = newFile();
        file.parse(stream, "", &meter);
    });
    ASSERT_TRUE(exceeded);
    EXPECT_EQ(exceeded->getLimit(), BudgetLimit::Piece);
}

TEST(BudgetOfDocuments, PieceThatABlockCutsCountsOnce) {
    const std::string tag = "<b c=\"" + std::string(1'000 - std::string("<b c=\"\"/>").size(), 'x') + "\"/>";
    std::string text = "<a>";
    for (int i = 0; i != 200; ++i)
        text += tag;
    text += "</a>";
    Budget budget;
    budget.maxPiece = tag.size();
    EXPECT_FALSE(exceededBy(budget, [&text](BudgetMeter& meter) {
        std::istringstream stream(text);
        auto file = newFile();
        EXPECT_TRUE(file.parse(stream, "", &meter));
    }));
}

TEST(BudgetOfDocuments, MemoryOfWhatIsNotWellFormedIsGivenBack) {
    BudgetMeter meter{Budget{}};
    std::istringstream stream("<a>");
    auto file = newFile();
    EXPECT_FALSE(file.parse(stream, "", &meter));
    EXPECT_EQ(meter.getUsed(WorkMeter::Unit::HeldBytes), 0U);
}

// ---- Sets

/// A property, two constants, an applicable class and an alias; and two nodes that nobody knows.
constexpr const char* PropertySet =
    "<PropertySetDef><Name>S</Name><ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>"
    "<Odd/><PropertyDefs><PropertyDef><Name>P</Name>"
    "<DefinitionAliases><DefinitionAlias lang=\"de\">x</DefinitionAlias></DefinitionAliases><Odder/>"
    "<PropertyType><TypePropertyEnumeratedValue><ConstantList>"
    "<ConstantDef><Name>A</Name></ConstantDef><ConstantDef><Name>B</Name></ConstantDef>"
    "</ConstantList></TypePropertyEnumeratedValue></PropertyType></PropertyDef></PropertyDefs>"
    "</PropertySetDef>";

/// Two quantities; and a node that nobody knows.
constexpr const char* QuantitySet =
    "<QtoSetDef><Name>Q</Name><Odd/><QtoDefs><QtoDef><Name>A</Name><QtoType>Q_LENGTH</QtoType></QtoDef>"
    "<QtoDef><Name>B</Name><QtoType>Q_LENGTH</QtoType></QtoDef></QtoDefs></QtoSetDef>";

template <class Set>
std::function<void(BudgetMeter&)> setReader(const char* text) {
    return [text](BudgetMeter& meter) {
        std::istringstream stream(text);
        auto file = newFile();
        const auto root = file.parse(stream, "", nullptr);
        ASSERT_TRUE(root);
        XmlSetErrors errors;
        errors.vErrorAdd(ErrorKind::Error, "item", "before", 0);
        const auto room = errors.getRecords().capacity();
        try {
            const Set set(*root, errors, meter);
            EXPECT_GT(errors.getRecords().size(), 1U);
        } catch (const BudgetExceeded&) {
            ASSERT_EQ(errors.getRecords().size(), 1U);
            EXPECT_EQ(errors.getRecords()[0], (ErrorRecord{ErrorKind::Error, "item", "before", 0}));
            EXPECT_EQ(errors.getRecords().capacity(), room);
            EXPECT_EQ(errors.getSetName(), "");
            EXPECT_EQ(errors.pMeter(), nullptr);
            throw;
        }
        EXPECT_EQ(errors.pMeter(), nullptr);
    };
}

const auto vPropertySetRead = setReader<ifc::def::pset::PropertySetDef>(PropertySet);
const auto vQuantitySetRead = setReader<ifc::def::qto::QuantitySetDef>(QuantitySet);

TEST(BudgetOfSets, ObjectsOfPropertySets) {
    vExpectLimit(&Budget::maxObjects, BudgetLimit::Objects, 5, vPropertySetRead);
}

TEST(BudgetOfSets, RecordsOfPropertySets) {
    vExpectLimit(&Budget::maxReports, BudgetLimit::Reports, 2, vPropertySetRead);
}

TEST(BudgetOfSets, StopOfPropertySets) {
    vExpectStop(vPropertySetRead);
}

TEST(BudgetOfSets, ObjectsOfQuantitySets) {
    vExpectLimit(&Budget::maxObjects, BudgetLimit::Objects, 2, vQuantitySetRead);
}

TEST(BudgetOfSets, RecordsOfQuantitySets) {
    vExpectLimit(&Budget::maxReports, BudgetLimit::Reports, 1, vQuantitySetRead);
}

TEST(BudgetOfSets, StopOfQuantitySets) {
    vExpectStop(vQuantitySetRead);
}

/// A record that is one too many is that, however long it is.
TEST(BudgetOfSets, RecordsAreCountedBeforeTheirMemory) {
    Budget budget;
    budget.maxReports = 1;
    budget.maxMemory = 10'000;
    const auto exceeded = exceededBy(budget, [](BudgetMeter& meter) {
        XmlSetErrors errors;
        const XmlSetErrors::Reading reading(errors, meter);
        errors.vErrorAdd(ErrorKind::Error, "item", "short", 0);
        errors.vErrorAdd(ErrorKind::Error, "item", std::string(20'000, 'x'), 0);
    });
    ASSERT_TRUE(exceeded);
    EXPECT_EQ(exceeded->getLimit(), BudgetLimit::Reports);
}

TEST(BudgetOfSets, ReportsCountOnlyWhileSomebodyListens) {
    constexpr const char* text =
        "<QtoSetDef><Odd/><QtoDefs><QtoDef><QtoType>Q_NONE</QtoType></QtoDef></QtoDefs></QtoSetDef>";
    const auto vRead = setReader<ifc::def::qto::QuantitySetDef>(text);
    Budget budget;
    budget.maxReports = 1;
    EXPECT_FALSE(exceededBy(budget, vRead));
    const AssertCollector reports;
    EXPECT_TRUE(exceededBy(budget, vRead));
}

// ---- Configurations

/// An element for the root, one each for the option, the entity and its two attributes; six attributes of
/// these; two records.
constexpr const char* Configuration =
    "<c id=\"S\"><cnf:option/><cnf:entity select=\"Wall\"><cnf:attribute select=\"A\" keep=\"true\"/>"
    "<cnf:attribute select=\"B\" keep=\"true\"/></cnf:entity></c>";

std::unique_ptr<ifc::def::SchemaPset> pSchema() {
    std::istringstream stream("SCHEMA S;\nENTITY Wall;\nA : REAL;\nB : REAL;\nEND_ENTITY;\nEND_SCHEMA;\n");
    return ifc::def::SchemaPset::pStepStreamRead(stream);
}

void vConfigurationRead(BudgetMeter& meter) {
    const auto schema = pSchema();
    std::istringstream stream(Configuration);
    const auto* const attribute = schema->pAttributeGet("Wall", "A");
    try {
        schema->vXmlSchemaConfigInit(stream, meter);
        EXPECT_NE(attribute->pXmlAttribute(), nullptr);
    } catch (const BudgetExceeded&) {
        EXPECT_EQ(attribute->pXmlAttribute(), nullptr);
        EXPECT_EQ(schema->pXmlSchemaConfig(), nullptr);
        throw;
    }
}

TEST(BudgetOfConfigurations, Input) {
    vExpectLimit(&Budget::maxInput, BudgetLimit::Input, std::string(Configuration).size(),
                 vConfigurationRead);
}

TEST(BudgetOfConfigurations, Objects) {
    vExpectLimit(&Budget::maxObjects, BudgetLimit::Objects, 5 + 6 + 2, vConfigurationRead);
}

TEST(BudgetOfConfigurations, Stop) {
    vExpectStop(vConfigurationRead);
}

TEST(BudgetOfConfigurations, Reports) {
    const AssertCollector reports;
    vExpectLimit(&Budget::maxReports, BudgetLimit::Reports, 2, [](BudgetMeter& meter) {
        const auto schema = pSchema();
        std::istringstream stream("<c id=\"S\"><odd/><cnf:option odd=\"\"/></c>");
        schema->vXmlSchemaConfigInit(stream, meter);
    });
}

} // namespace

} // namespace kiv::test
