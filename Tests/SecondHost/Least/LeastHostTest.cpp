// The library, compiled for a host that has nothing but the operations which every host has, does all that
// asks for one: reads sets and a configuration, checks, reports, and writes.

#include "SecondHost/Least/LeastHost.h"
#include "kiv/Format/Ifc/Def/IfcDefErrors.h"
#include "kiv/Format/Ifc/Def/IfcDefExtraExportInfo.h"
#include "kiv/Format/Ifc/Def/PropertyNameSearcher.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/SchemaPropertySetDefinitions.h"
#include "kiv/Format/Ifc/Def/SchemaPset.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace kiv::test {

namespace {

using namespace ifc::def;
using Texts = std::vector<std::string>;

template <class Operations>
constexpr bool hasViews = requires(const Operations& node) {
    node.getNodeNameView();
};
template <class Operations>
constexpr bool hasLines = requires(const Operations& node) {
    node.getLine();
};
static_assert(!hasViews<kiv::xml::const_Node> && !hasLines<kiv::xml::const_Node>, "the least, not our own");

/// A document and, as it lives as long as its file, that file.
struct Document {
    explicit Document(const std::string& text) :
        file(nullptr, kiv::xml::VerboseLevel(4), kiv::xml::ValidateLevel(0)) {
        std::istringstream stream(text);
        root = file.parse(stream, "", nullptr);
    }

    kiv::xml::File file;
    std::optional<kiv::xml::Element> root;
};

/// A tree in a few words, by the operations of the least host: "tag[name=value](children)", texts in quotes.
std::string sTree(const kiv::xml::const_Node& node) {
    const auto element = kiv::xml::const_Element::toWrapper(node);
    if (!element)
        return "'" + node.getNodeValue() + "'";
    auto text = element->tagName();
    const auto attributes = element->AttributesGet();
    for (std::uint64_t index = 0; attributes && index < attributes->LengthGet(); ++index) {
        const auto attribute = kiv::xml::const_Attr::toWrapper(attributes->ItemGet(index));
        text += "[" + attribute->getNodeName() + "=" + attribute->getValue() + "]";
    }
    std::string children;
    for (auto child = element->FirstChildGet(); child; child = child->NextSiblingGet())
        children += (children.empty() ? "" : " ") + sTree(*child);
    return children.empty() ? text : text + "(" + children + ")";
}

std::unique_ptr<SchemaPset> pSchema() {
    std::istringstream stream("SCHEMA TEST;\nTYPE IfcLabel = STRING(255);\nEND_TYPE;\nENTITY IfcWall;\n"
                              "  Name : IfcLabel;\nEND_ENTITY;\nENTITY IfcPropertySingleValue;\nEND_ENTITY;\n"
                              "END_SCHEMA;\n");
    return SchemaPset::pStepStreamRead(stream);
}

class LeastHostTest : public testing::Test {
protected:
    LeastHostTest() { leastReports().clear(); }

    std::unique_ptr<SchemaPset> schema = pSchema();
    ifc::def::xml::XmlSetErrors errors;
};

constexpr const char* WallSet =
    "<PropertySetDef ifdguid='00112233445566778899AABBCCDDEEFF' templatetype='PSET_TYPEDRIVENONLY'>\n"
    "<Name>Pset_Wall</Name><Definition>A &amp; B</Definition>\n"
    "<ApplicableClasses><ClassName> IfcWall "
    "</ClassName><ClassName>IfcNowhere</ClassName></ApplicableClasses>\n"
    "<Odd/>\n"
    "<PropertyDefs><PropertyDef><Name>Colour</Name><NameAliases><NameAlias lang='de-AT'>Farbe</NameAlias>"
    "</NameAliases><PropertyType><TypePropertySingleValue><DataType type='IfcLabel'/>"
    "</TypePropertySingleValue></PropertyType></PropertyDef></PropertyDefs></PropertySetDef>";

TEST_F(LeastHostTest, ReadsAndChecksASetWhoseRecordsHaveNoLines) {
    const Document document(WallSet);
    ASSERT_TRUE(document.root);
    const pset::PropertySetDef set(*document.root, errors);
    EXPECT_TRUE(set.checkForErrors(*schema, errors));
    EXPECT_EQ(set.getName(), "Pset_Wall");
    EXPECT_EQ(set.getDefinition(), "A & B");
    EXPECT_EQ(set.getIfdGuid().toString(false), "00112233445566778899aabbccddeeff");
    EXPECT_EQ(set.getTemplateType(), ifc::def::xml::TemplateType::PSET_TYPEDRIVENONLY);
    EXPECT_EQ(set.getApplicableClasses().at(0).getClassName(), "IfcWall");
    EXPECT_EQ(set.getLine(), 0U);
    using ifc::def::xml::ErrorKind;
    const std::vector<ifc::def::xml::ErrorRecord> records = {
        {ErrorKind::Error, "Odd", "Unknown xml node", 0},
        {ErrorKind::Error, "IfcNowhere",
         "Applicable class in xml set is not defined in schema (contain spaces?)", 0}};
    EXPECT_EQ(errors.getRecords(), records);
    EXPECT_EQ(leastReports(), Texts());
}

TEST_F(LeastHostTest, ReportsToTheHost) {
    const Document document(
        "<PropertyDef><PropertyType><TypePropertyListValue/></PropertyType></PropertyDef>");
    const pset::PropertyDef property(nullptr, *document.root, errors);
    EXPECT_EQ(leastReports(), Texts());
    property.checkForErrors(*schema, errors);
    EXPECT_EQ(leastReports(), Texts{"Entity not found"});
}

TEST_F(LeastHostTest, WritesAPropertySet) {
    const Document document(WallSet);
    const pset::PropertySetDef set(*document.root, errors);
    Document target("<Target/>");
    ifc::def::xml::ExtraExportInfo info;
    info.schemaForBaseTypes = schema.get();
    const auto written = set.exportDef(*target.root, &info);
    EXPECT_EQ(
        sTree(written),
        "Target(Name('Pset_Wall') Definition('A & B') "
        "ApplicableClasses(ClassName('IfcWall') ClassName('IfcNowhere')) ApplicableTypeValue "
        "PropertyDefs(PropertyDef(Name('Colour') Definition nameAliases(nameAlias[lang=de-AT]('Farbe')) "
        "PropertyType(TypePropertySingleValue(DataType[type=IfcLabel][basetype=STRING(255)])))))");
}

TEST_F(LeastHostTest, WritesAQuantitySetWithNewGuids) {
    const Document document("<QtoSetDef><Name>Qto_A</Name><QtoDefs><QtoDef><Name>Area</Name>"
                            "<QtoType>Q_AREA</QtoType></QtoDef></QtoDefs></QtoSetDef>");
    const qto::QuantitySetDef set(*document.root, errors);
    Document target("<Target/>");
    ifc::def::xml::ExtraExportInfo info;
    info.generateGuids = true;
    std::string hooked;
    info.hook = [&hooked](const auto& def, auto& element) {
        hooked = def.getName() + " " + element.getNodeName();
    };
    set.exportDef(*target.root, &info);
    EXPECT_EQ(hooked, "Area QtoDef");
    const auto quantity = kiv::xml::const_Element(*target.root)
                              .FirstElementChildGet()
                              ->FirstElementChildGet()
                              ->NextElementSiblingGet()
                              ->NextElementSiblingGet()
                              ->NextElementSiblingGet()
                              ->NextElementSiblingGet()
                              ->FirstElementChildGet();
    ASSERT_TRUE(quantity);
    kiv::Guid guid;
    EXPECT_TRUE(guid.boSet(quantity->AttributeNodeGet("ifdguid")->getValue()));
    EXPECT_NE(guid, kiv::Guid());
    EXPECT_EQ(set.getQuantities().at(0).getIfdGuid(), kiv::Guid());
}

TEST_F(LeastHostTest, FindsWhatWasAdded) {
    const Document document(WallSet);
    SchemaPropertySetDefinitions sets;
    EXPECT_TRUE(
        sets.xmlSetAdd(*schema, std::make_unique<pset::PropertySetDef>(*document.root, errors), errors));
    EXPECT_EQ(sets.getXmlDefFromIfd(kiv::Guid())->getName(), "Colour");
    const auto* const wall = schema::Entity::pFrom(schema->pObjectFromName("IfcWall"));
    ASSERT_EQ(sets.getXmlSetsToEntity(*wall, false).size(), 1U);
    auto& registry = SchemaContextAndPropertySetDefinitions::instance();
    registry.addPropertySets({"TEST", true}, std::move(sets));
    EXPECT_EQ(ifc::findPropertyTypeName("pset_wall.Colour", *schema), "IfcLabel");
    const auto* const property =
        &dynamic_cast<const pset::PropertySetDef*>(schema->pXmlSetFromName("Pset_Wall", {}))
             ->getProperties()
             .at(0);
    EXPECT_EQ(property->getNameAliases().sValueFromLanguage(kiv::locale::Locale::get("de-AT", nullptr)),
              "Farbe");
    EXPECT_EQ(property->getNameAliases().sValueFromLanguage(kiv::locale::Locale::get("de", nullptr)), "");
    registry.clear();
}

TEST_F(LeastHostTest, ReadsAConfiguration) {
    std::istringstream stream("<c id='OTHER'><cnf:entity select='IfcWall'><cnf:attribute select='Name' "
                              "exp-attribute='double-tag' keep='true'/><odd/></cnf:entity>"
                              "<cnf:uosElement name='uos' odd='1'/></c>");
    schema->vXmlSchemaConfigInit(stream);
    ASSERT_EQ(schema->pXmlSchemaConfig()->getAttributes().size(), 1U);
    const auto& record = schema->pXmlSchemaConfig()->getAttributes().front();
    EXPECT_EQ(record.getRepresentation(), xmlschema::ExpAttribute::DoubleTag);
    EXPECT_EQ(schema->pXmlSchemaConfig()->getUosElement().getName(), "uos");
    EXPECT_EQ(leastReports(), (Texts{"Illegal ifc version", "Unknown element", "Unknown attribute"}));
}

TEST_F(LeastHostTest, ReportsAConfigurationThatIsNoXml) {
    std::istringstream stream("<c>");
    schema->vXmlSchemaConfigInit(stream);
    EXPECT_EQ(leastReports(), Texts{"Illegal xml document"});
}

} // namespace

} // namespace kiv::test
