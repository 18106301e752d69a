#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"

#include "Support/AssertCollector.h"
#include "Support/ErrorRecords.h"
#include "Support/SchemaFromText.h"
#include "Support/XmlFromText.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::test {

namespace {

using kiv::assert::AssertRecord;
using namespace ifc::def::pset;
using ifc::def::xml::Def;
using ifc::def::xml::ExtraExportInfo;
using ifc::def::xml::XmlSetErrors;

/// A property with the records of its reading.
struct ReadProperty {
    explicit ReadProperty(std::string_view xml) : property(nullptr, XmlFromText(xml).root(), errors) {}

    XmlSetErrors errors;
    PropertyDef property;
};

std::string sExport(const PropertyDef& property, const ExtraExportInfo* info = nullptr) {
    XmlTarget target("PropertyDefs");
    property.vExport(target.root(), info);
    return target.sText();
}

/// A type whose check finds something wrong.
class FaultyType final : public PropertyType {
public:
    explicit FaultyType(bool passes) : passes_(passes) {}

    std::string sEntityName() const override { return "IfcFaulty"; }
    bool checkForErrors(const ifc::def::schema::Schema&, XmlSetErrors& errors) const override {
        errors.vErrorAdd(ifc::def::xml::ErrorKind::Error, "type", "Faulty", 7);
        return passes_;
    }
    void vExport(kiv::xml::Element&, const ExtraExportInfo*) const override {}

private:
    bool passes_;
};

constexpr std::string_view SingleValue = "<PropertyType><TypePropertySingleValue><DataType "
                                         "type='IfcLabel'/></TypePropertySingleValue></PropertyType>";
constexpr std::string_view ListValue = "<PropertyType><TypePropertyListValue/></PropertyType>";

std::string sPropertyWith(std::string_view content) {
    return "<PropertyDef>" + std::string(content) + "</PropertyDef>";
}

TEST(PropertyDef, ReadsTextsGuidAndAliases) {
    const ReadProperty read(
        "\n\n<PropertyDef ifdguid='e098e980d1bc11e1800000215ad4efdf'><Name>N</Name>"
        "<Definition>D</Definition><NameAliases><NameAlias lang='de'>n</NameAlias></NameAliases>"
        "<DefinitionAliases><DefinitionAlias lang='fr'>d</DefinitionAlias></DefinitionAliases>"
        "</PropertyDef>");
    EXPECT_EQ(read.property.getName(), "N");
    EXPECT_EQ(read.property.getDefinition(), "D");
    EXPECT_EQ(read.property.getIfdGuid().toString(false), "e098e980d1bc11e1800000215ad4efdf");
    ASSERT_EQ(read.property.getNameAliases().getEntries().size(), 1U);
    EXPECT_EQ(read.property.getNameAliases().getEntries()[0].text, "n");
    ASSERT_EQ(read.property.getDefinitionAliases().getEntries().size(), 1U);
    EXPECT_EQ(read.property.getDefinitionAliases().getEntries()[0].text, "d");
    EXPECT_EQ(read.property.getLine(), 3U);
    EXPECT_EQ(read.property.pOwner(), nullptr);
    EXPECT_EQ(read.errors.getRecords(), Records());
}

TEST(PropertyDef, IllegalGuidIsRecordedOnTheLineOfTheProperty) {
    const ReadProperty read("\n<PropertyDef ifdguid='?'/>");
    EXPECT_EQ(read.errors.getRecords(), (Records{error("?", "Illegal ifdguid in xml file", 2)}));
}

TEST(PropertyDef, KeepsTheSecondOfTwoTypes) {
    const ReadProperty read(sPropertyWith(std::string(SingleValue) + std::string(ListValue)));
    EXPECT_EQ(read.property.getEntityName(), "IfcPropertyListValue");
}

TEST(PropertyDef, SecondTypeThatMakesNoneLeavesNone) {
    const ReadProperty read(sPropertyWith(std::string(SingleValue) + "<PropertyType/>"));
    EXPECT_EQ(read.property.pType(), nullptr);
}

TEST(PropertyDef, WithoutTypeHasNoEntityNameAndPassesWithoutALookUp) {
    const auto schema = schemaFromText("");
    ReadProperty read("<PropertyDef/>");
    AssertCollector reports;
    EXPECT_EQ(read.property.pType(), nullptr);
    EXPECT_EQ(read.property.getEntityName(), "");
    EXPECT_TRUE(read.property.checkForErrors(*schema, read.errors));
    EXPECT_EQ(reports.getRecords(), std::vector<AssertRecord>());
    EXPECT_EQ(read.errors.getRecords(), Records());
}

TEST(PropertyDef, ValueDefIsIgnored) {
    const ReadProperty read("<PropertyDef><ValueDef><Odd/></ValueDef></PropertyDef>");
    EXPECT_EQ(read.errors.getRecords(), Records());
    EXPECT_EQ(sExport(read.property),
              "<PropertyDefs><PropertyDef><Name/><Definition/><PropertyType/></PropertyDef>"
              "</PropertyDefs>");
}

TEST(PropertyDef, UnknownChildrenAreRecordedAndTheRestIsRead) {
    const ReadProperty read("<PropertyDef>\n<propertyType/>\n<Odd/>\n<Name>N</Name></PropertyDef>");
    EXPECT_EQ(read.property.getName(), "N");
    EXPECT_EQ(read.errors.getRecords(),
              (Records{error("propertyType", "Unknown xml node", 2), error("Odd", "Unknown xml node", 3)}));
}

TEST(PropertyDef, MadeInCodeTakesTheTypeAndTellsItsConcept) {
    XmlSetErrors errors;
    const PropertySetDef set(XmlFromText("<s><Name>Pset_WallCommon</Name></s>").root(), errors);
    std::unique_ptr<PropertyType> type =
        std::make_unique<TypePropertyListValue>(XmlFromText("<TypePropertyListValue/>").root(), errors);
    const auto* given = type.get();
    const PropertyDef property(set, "IsExternal", std::move(type));
    EXPECT_EQ(type, nullptr); // NOLINT(bugprone-use-after-move): that it is left empty is promised
    EXPECT_EQ(property.pType(), given);
    EXPECT_EQ(property.getEntityName(), "IfcPropertyListValue");
    EXPECT_EQ(property.pOwner(), &set);
    EXPECT_EQ(property.getConcept(), "Pset_WallCommon.IsExternal");
    EXPECT_TRUE(set.getProperties().empty());
}

TEST(PropertyDef, IsWrittenInFixedOrder) {
    const ReadProperty read("<PropertyDef ifdguid='e098e980d1bc11e1800000215ad4efdf'><DefinitionAliases>"
                            "<DefinitionAlias lang='fr'>d</DefinitionAlias></DefinitionAliases>" +
                            std::string(SingleValue) +
                            "<Definition>D</Definition><Name>N</Name></PropertyDef>");
    EXPECT_EQ(sExport(read.property),
              "<PropertyDefs><PropertyDef ifdguid=\"e098e980d1bc11e1800000215ad4efdf\"><Name>N</Name>"
              "<Definition>D</Definition><DefinitionAliases><DefinitionAlias lang=\"fr\">d</DefinitionAlias>"
              "</DefinitionAliases><PropertyType><TypePropertySingleValue><DataType type=\"IfcLabel\"/>"
              "</TypePropertySingleValue></PropertyType></PropertyDef></PropertyDefs>");
}

TEST(PropertyDef, NameAliasesAreWrittenUnderSmallInitials) {
    const ReadProperty read(
        "<PropertyDef><NameAliases><NameAlias lang='de'>n</NameAlias></NameAliases></PropertyDef>");
    EXPECT_EQ(sExport(read.property), "<PropertyDefs><PropertyDef><Name/><Definition/><nameAliases>"
                                      "<nameAlias lang=\"de\">n</nameAlias></nameAliases><PropertyType/>"
                                      "</PropertyDef></PropertyDefs>");
}

TEST(PropertyDef, HookSeesTheEmptyElementAndMayWriteIntoIt) {
    const ReadProperty read(
        "<PropertyDef ifdguid='e098e980d1bc11e1800000215ad4efdf'><Name>N</Name></PropertyDef>");
    ExtraExportInfo info;
    info.hook = [&](const Def& def, kiv::xml::Element& element) {
        EXPECT_EQ(&def, &read.property);
        EXPECT_EQ(sXmlText(element), "<PropertyDef/>");
        element.ElementNodeAppend("Extra");
    };
    EXPECT_EQ(sExport(read.property, &info),
              "<PropertyDefs><PropertyDef ifdguid=\"e098e980d1bc11e1800000215ad4efdf\"><Extra/><Name>N</Name>"
              "<Definition/><PropertyType/></PropertyDef></PropertyDefs>");
}

TEST(PropertyDef, BaseTypeOfTheTypeIsWritten) {
    const auto schema = schemaFromText("TYPE IfcLabel = STRING;\nEND_TYPE;\n");
    ExtraExportInfo info;
    info.schemaForBaseTypes = schema.get();
    EXPECT_EQ(sExport(ReadProperty(sPropertyWith(SingleValue)).property, &info),
              "<PropertyDefs><PropertyDef><Name/><Definition/><PropertyType><TypePropertySingleValue>"
              "<DataType type=\"IfcLabel\" basetype=\"STRING\"/></TypePropertySingleValue></PropertyType>"
              "</PropertyDef></PropertyDefs>");
}

const AssertRecord EntityNotFound{0, "Entity not found", "kiv::ifc::def::pset::PropertyDef::checkForErrors",
                                  "Source/Format/Ifc/Def/Pset/IfcPropertyDef", 83};

TEST(PropertyDef, CheckReportsATypeWhoseEntityTheSchemaLacks) {
    const auto schema = schemaFromText("TYPE IfcLabel = STRING;\nEND_TYPE;");
    ReadProperty read(sPropertyWith(SingleValue));
    AssertCollector reports;
    EXPECT_TRUE(read.property.checkForErrors(*schema, read.errors));
    EXPECT_EQ(reports.getRecords(), std::vector<AssertRecord>{EntityNotFound});
    EXPECT_EQ(read.errors.getRecords(), Records());
}

TEST(PropertyDef, CheckTakesNothingButAnEntityForTheEntityOfAType) {
    const auto schema = schemaFromText("TYPE IfcLabel = STRING;\nEND_TYPE;\n"
                                       "TYPE IfcPropertySingleValue = STRING;\nEND_TYPE;");
    ReadProperty read(sPropertyWith(SingleValue));
    AssertCollector reports;
    EXPECT_TRUE(read.property.checkForErrors(*schema, read.errors));
    EXPECT_EQ(reports.getRecords(), std::vector<AssertRecord>{EntityNotFound});
}

TEST(PropertyDef, CheckIsSilentWhenTheSchemaHasEverything) {
    const auto schema = schemaFromText("TYPE IfcLabel = STRING;\nEND_TYPE;\n"
                                       "ENTITY IfcPropertySingleValue;\nEND_ENTITY;");
    ReadProperty read(sPropertyWith(SingleValue));
    AssertCollector reports;
    EXPECT_TRUE(read.property.checkForErrors(*schema, read.errors));
    EXPECT_EQ(reports.getRecords(), std::vector<AssertRecord>());
}

TEST(PropertyDef, CheckPassesWhateverTheTypeFinds) {
    const auto schema = schemaFromText("ENTITY IfcFaulty;\nEND_ENTITY;\n");
    XmlSetErrors none;
    const PropertySetDef set(XmlFromText("<s/>").root(), none);
    for (const bool typePasses : {false, true}) {
        SCOPED_TRACE(typePasses);
        const PropertyDef property(set, "P", std::make_unique<FaultyType>(typePasses));
        XmlSetErrors errors;
        EXPECT_TRUE(property.checkForErrors(*schema, errors));
        EXPECT_EQ(errors.getRecords(), (Records{error("type", "Faulty", 7)}));
    }
}

TEST(PropertyDef, CheckGoesOnToTheTypeBehindAMissingEntity) {
    const auto schema = schemaFromText("");
    ReadProperty read(sPropertyWith(SingleValue));
    AssertCollector reports;
    EXPECT_TRUE(read.property.checkForErrors(*schema, read.errors));
    EXPECT_EQ(reports.getMessages(),
              (std::vector<std::string>{"Entity not found", "Excpeted name to exist in schema"}));
}

} // namespace

} // namespace kiv::test
