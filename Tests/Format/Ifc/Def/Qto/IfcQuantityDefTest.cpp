#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"

#include "Support/AssertCollector.h"
#include "Support/ErrorRecords.h"
#include "Support/SchemaFromText.h"
#include "Support/XmlFromText.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::test {

namespace {

using namespace ifc::def::qto;
using ifc::def::xml::Def;
using ifc::def::xml::ExtraExportInfo;
using ifc::def::xml::XmlSetErrors;
using kiv::assert::AssertRecord;

/// A quantity of the set Qto_A, with the records of its reading.
struct ReadQuantity {
    explicit ReadQuantity(std::string_view xml) : quantity(set, XmlFromText(xml).root(), errors) {}

    XmlSetErrors errors;
    QuantitySetDef set{XmlFromText("<QtoSetDef><Name>Qto_A</Name></QtoSetDef>").root(), errors};
    QuantityDef quantity;
};

std::string sExport(const QuantityDef& quantity, const ExtraExportInfo* info = nullptr) {
    XmlTarget target("QtoDefs");
    quantity.vExport(target.root(), info);
    return target.sText();
}

/// A type whose check finds something wrong.
class FaultyType final : public QuantityType {
public:
    explicit FaultyType(bool passes) : passes_(passes) {}

    std::string sEntityName() const override { return "IfcFaulty"; }
    bool checkForErrors(const ifc::def::schema::Schema&, XmlSetErrors& errors) const override {
        errors.vErrorAdd(ifc::def::xml::ErrorKind::Error, "type", "Faulty", 7);
        return passes_;
    }
    const char* pTypeCode() const override { return "Q_FAULTY"; }
    std::string sValueAttributeName() const override { return "FaultyValue"; }
    std::string sMeasureTypeName() const override { return "IfcFaultyMeasure"; }

private:
    bool passes_;
};

TEST(QuantityDef, ReadsTextsGuidAliasesAndType) {
    const ReadQuantity read(
        "\n<QtoDef ifdguid='e098e980d1bc11e1800000215ad4efdf'><Name>N</Name>"
        "<Definition>D</Definition><NameAliases><NameAlias lang='de'>n</NameAlias></NameAliases>"
        "<DefinitionAliases><DefinitionAlias lang='fr'>d</DefinitionAlias></DefinitionAliases>"
        "<QtoType>Q_AREA</QtoType></QtoDef>");
    EXPECT_EQ(read.quantity.getName(), "N");
    EXPECT_EQ(read.quantity.getDefinition(), "D");
    EXPECT_EQ(read.quantity.getIfdGuid().toString(false), "e098e980d1bc11e1800000215ad4efdf");
    ASSERT_EQ(read.quantity.getNameAliases().getEntries().size(), 1U);
    EXPECT_EQ(read.quantity.getNameAliases().getEntries()[0].text, "n");
    ASSERT_EQ(read.quantity.getDefinitionAliases().getEntries().size(), 1U);
    EXPECT_EQ(read.quantity.getDefinitionAliases().getEntries()[0].text, "d");
    EXPECT_EQ(read.quantity.getEntityName(), "IfcQuantityArea");
    EXPECT_EQ(read.quantity.pOwner(), &read.set);
    EXPECT_EQ(read.quantity.getConcept(), "Qto_A.N");
    EXPECT_EQ(read.quantity.getLine(), 2U);
    EXPECT_EQ(read.errors.getRecords(), Records());
}

TEST(QuantityDef, KeepsTheLastOfItsTypes) {
    EXPECT_EQ(ReadQuantity("<QtoDef><QtoType>Q_AREA</QtoType><QtoType>Q_TIME</QtoType></QtoDef>")
                  .quantity.getEntityName(),
              "IfcQuantityTime");
}

TEST(QuantityDef, LastTypeThatMakesNoneLeavesNone) {
    const ReadQuantity read("<QtoDef><QtoType>Q_AREA</QtoType><QtoType>Q_ODD</QtoType></QtoDef>");
    EXPECT_EQ(read.quantity.pType(), nullptr);
    EXPECT_EQ(read.errors.getRecords(), Records());
}

TEST(QuantityDef, ValueDefIsAnUnknownNode) {
    const ReadQuantity read("<QtoDef>\n<ValueDef/></QtoDef>");
    EXPECT_EQ(read.errors.getRecords(), (Records{error("ValueDef", "Unknown xml node", 2)}));
}

TEST(QuantityDef, UnknownChildrenAreRecordedAndTheRestIsRead) {
    const ReadQuantity read("<QtoDef>\n<qtoType/>\n<PropertyType/><Name>N</Name></QtoDef>");
    EXPECT_EQ(read.quantity.getName(), "N");
    EXPECT_EQ(read.errors.getRecords(), (Records{error("qtoType", "Unknown xml node", 2),
                                                 error("PropertyType", "Unknown xml node", 3)}));
}

TEST(QuantityDef, MadeInCodeTakesTheType) {
    const ReadQuantity read("<QtoDef/>");
    std::unique_ptr<QuantityType> type = std::make_unique<QuantityTypeCount>();
    const auto* given = type.get();
    const QuantityDef quantity(read.set, "Count", std::move(type));
    EXPECT_EQ(type, nullptr); // NOLINT(bugprone-use-after-move): that it is left empty is promised
    EXPECT_EQ(quantity.pType(), given);
    EXPECT_EQ(quantity.getConcept(), "Qto_A.Count");
}

TEST(QuantityDef, WithoutTypeHasNoEntityNameAndPassesWithoutALookUp) {
    const auto schema = schemaFromText("");
    ReadQuantity read("<QtoDef/>");
    const AssertCollector reports;
    EXPECT_EQ(read.quantity.getEntityName(), "");
    EXPECT_TRUE(read.quantity.checkForErrors(*schema, read.errors));
    EXPECT_EQ(reports.getRecords(), std::vector<AssertRecord>());
}

const AssertRecord EntityNotFound{0, "Entity not found", "kiv::ifc::def::qto::QuantityDef::checkForErrors",
                                  "Source/Format/Ifc/Def/Qto/IfcQuantityDef", 79};

TEST(QuantityDef, CheckReportsATypeWhoseEntityTheSchemaLacks) {
    for (const char* rest : {"", "TYPE IfcQuantityArea = REAL;\nEND_TYPE;\n"}) {
        SCOPED_TRACE(rest);
        const auto schema = schemaFromText("TYPE IfcAreaMeasure = REAL;\nEND_TYPE;\n" + std::string(rest));
        ReadQuantity read("<QtoDef><QtoType>Q_AREA</QtoType></QtoDef>");
        const AssertCollector reports;
        EXPECT_TRUE(read.quantity.checkForErrors(*schema, read.errors));
        EXPECT_EQ(reports.getRecords(), std::vector<AssertRecord>{EntityNotFound});
        EXPECT_EQ(read.errors.getRecords(), Records());
    }
}

TEST(QuantityDef, CheckGoesOnToTheType) {
    const auto schema = schemaFromText("ENTITY IfcQuantityArea;\nEND_ENTITY;\n");
    ReadQuantity read("<QtoDef><QtoType>Q_AREA</QtoType></QtoDef>");
    const AssertCollector reports;
    EXPECT_TRUE(read.quantity.checkForErrors(*schema, read.errors));
    ASSERT_EQ(reports.getRecords().size(), 1U);
    EXPECT_EQ(reports.getRecords()[0].function, "kiv::ifc::def::qto::QuantityTypeSimple::checkForErrors");
}

TEST(QuantityDef, CheckPassesWhateverTheTypeFinds) {
    const auto schema = schemaFromText("ENTITY IfcFaulty;\nEND_ENTITY;\n");
    const ReadQuantity read("<QtoDef/>");
    for (const bool typePasses : {false, true}) {
        SCOPED_TRACE(typePasses);
        const QuantityDef quantity(read.set, "Q", std::make_unique<FaultyType>(typePasses));
        XmlSetErrors errors;
        EXPECT_TRUE(quantity.checkForErrors(*schema, errors));
        EXPECT_EQ(errors.getRecords(), (Records{error("type", "Faulty", 7)}));
    }
}

TEST(QuantityDef, CheckIsSilentWhenTheSchemaHasEverything) {
    const auto schema =
        schemaFromText("ENTITY IfcQuantityArea;\nEND_ENTITY;\nTYPE IfcAreaMeasure = REAL;\nEND_TYPE;\n");
    ReadQuantity read("<QtoDef><QtoType>Q_AREA</QtoType></QtoDef>");
    const AssertCollector reports;
    EXPECT_TRUE(read.quantity.checkForErrors(*schema, read.errors));
    EXPECT_EQ(reports.getRecords(), std::vector<AssertRecord>());
}

TEST(QuantityDef, IsWrittenInFixedOrder) {
    const ReadQuantity read(
        "<QtoDef ifdguid='e098e980d1bc11e1800000215ad4efdf'><QtoType>Q_WEIGHT</QtoType>"
        "<DefinitionAliases><DefinitionAlias lang='fr'>d</DefinitionAlias></DefinitionAliases>"
        "<NameAliases><NameAlias lang='de'>n</NameAlias></NameAliases>"
        "<Definition>D</Definition><Name>N</Name></QtoDef>");
    EXPECT_EQ(
        sExport(read.quantity),
        "<QtoDefs><QtoDef "
        "ifdguid=\"e098e980d1bc11e1800000215ad4efdf\"><Name>N</Name><Definition>D</Definition>"
        "<nameAliases><nameAlias lang=\"de\">n</nameAlias></nameAliases><DefinitionAliases>"
        "<DefinitionAlias lang=\"fr\">d</DefinitionAlias></DefinitionAliases><QtoType>Q_WEIGHT</QtoType>"
        "</QtoDef></QtoDefs>");
}

TEST(QuantityDef, WithoutTypeIsWrittenWithAnEmptyOne) {
    EXPECT_EQ(sExport(ReadQuantity("<QtoDef/>").quantity),
              "<QtoDefs><QtoDef><Name/><Definition/><QtoType/></QtoDef></QtoDefs>");
}

TEST(QuantityDef, HookSeesTheEmptyElement) {
    const ReadQuantity read("<QtoDef><Name>N</Name></QtoDef>");
    std::string seen;
    ExtraExportInfo info;
    info.hook = [&](const Def& def, kiv::xml::Element& element) {
        seen += def.getName() + sXmlText(element);
    };
    sExport(read.quantity, &info);
    EXPECT_EQ(seen, "N<QtoDef/>");
}

} // namespace

} // namespace kiv::test
