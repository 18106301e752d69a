#include "Format/Ifc/Def/Pset/PropertyTypeReading.h"
#include "Support/ErrorRecords.h"

namespace kiv::test {

namespace {

using namespace ifc::def::pset;
using Read = ReadType<TypeComplexProperty>;

constexpr std::string_view Simple =
    "<PropertyDef><Name>P</Name><PropertyType><TypePropertySingleValue><DataType type='Missing'/>"
    "</TypePropertySingleValue></PropertyType></PropertyDef>";

const kiv::assert::AssertRecord EntityNotFound{0, "Entity not found",
                                               "kiv::ifc::def::pset::PropertyDef::checkForErrors",
                                               "Source/Format/Ifc/Def/Pset/IfcPropertyDef", 83};

TEST(TypeComplexProperty, ReadsNameAndPartsWithoutAnOwner) {
    const Read read("<t name='C'>" + std::string(Simple) + "<PropertyDef><Name>Q</Name></PropertyDef></t>");
    EXPECT_EQ(read.type.getName(), "C");
    ASSERT_EQ(read.type.getProperties().size(), 2U);
    EXPECT_EQ(read.type.getProperties()[0].getName(), "P");
    EXPECT_EQ(read.type.getProperties()[0].getEntityName(), "IfcPropertySingleValue");
    EXPECT_EQ(read.type.getProperties()[1].getName(), "Q");
    for (const auto& property : read.type.getProperties())
        EXPECT_EQ(property.pOwner(), nullptr);
    EXPECT_EQ(read.errors.getRecords(), Records());
    EXPECT_EQ(read.reports, Reports());
}

TEST(TypeComplexProperty, WithoutAttributeHasNoName) {
    EXPECT_EQ(Read("<t/>").type.getName(), "");
}

TEST(TypeComplexProperty, OtherChildrenAreReportedWithoutARecord) {
    const Read read("<t><Name>C</Name><PropertyDef/></t>");
    EXPECT_EQ(read.type.getProperties().size(), 1U);
    EXPECT_EQ(read.errors.getRecords(), Records());
    EXPECT_EQ(read.reports,
              (Reports{{0, "Unknown node", "kiv::ifc::def::pset::TypeComplexProperty::TypeComplexProperty",
                        "Source/Format/Ifc/Def/Pset/IfcPropertyTypeDerived", 583}}));
}

TEST(TypeComplexProperty, RecordsOfItsPartsReachTheCollector) {
    const Read read("<t>\n<PropertyDef>\n<Odd/></PropertyDef></t>");
    EXPECT_EQ(read.errors.getRecords(), (Records{error("Odd", "Unknown xml node", 3)}));
}

TEST(TypeComplexProperty, CheckReportsItsPartsAsPropertiesAreReported) {
    const auto schema = schemaFromText("TYPE IfcPropertySingleValue = STRING;\nEND_TYPE;\n");
    EXPECT_EQ(checkReportsOf(Read("<t>" + std::string(Simple) + "<PropertyDef/></t>").type, *schema),
              (Reports{EntityNotFound, nameReport("TypePropertyReferenceValue::checkForErrors", 68)}));
}

TEST(TypeComplexProperty, CheckIsSilentAboutPartsThatFit) {
    const auto schema =
        schemaFromText("ENTITY IfcPropertySingleValue;\nEND_ENTITY;\nENTITY Missing;\nEND_ENTITY;\n");
    EXPECT_EQ(checkReportsOf(Read("<t>" + std::string(Simple) + "</t>").type, *schema), Reports());
}

TEST(TypeComplexProperty, IsWrittenAsAnEmptyPropertyType) {
    EXPECT_EQ(sTypeExport(Read("<t name='C'>" + std::string(Simple) + "</t>").type), "<PropertyType/>");
}

/// The properties on the way down from this one: itself, its first part, the first part of that, ...
std::size_t depthOf(const PropertyDef& property) {
    const auto* complex = dynamic_cast<const TypeComplexProperty*>(property.pType());
    return complex && !complex->getProperties().empty() ? 1 + depthOf(complex->getProperties().front()) : 1;
}

TEST(TypeComplexProperty, NestsAsDeepAsElementsCan) {
    // The set and its list are above; each level has a property, its type and the complex property.
    constexpr std::size_t levels = (kiv::xml::maxElementDepth - 2) / 3;
    std::string opened = "<PropertySetDef><PropertyDefs>";
    std::string closed = "</PropertyDefs></PropertySetDef>";
    for (std::size_t i = 0; i != levels; ++i) {
        opened += "<PropertyDef><PropertyType><TypeComplexProperty>";
        closed.insert(0, "</TypeComplexProperty></PropertyType></PropertyDef>");
    }
    const auto schema = schemaFromText("");
    ifc::def::xml::XmlSetErrors errors;
    const PropertySetDef set(XmlFromText(opened + closed).root(), errors);
    ASSERT_EQ(set.getProperties().size(), 1U);
    EXPECT_EQ(depthOf(set.getProperties().front()), levels);
    const AssertCollector reports;
    EXPECT_TRUE(set.checkForErrors(*schema, errors));
    EXPECT_EQ(reports.getRecords(), Reports(levels, EntityNotFound));
}

} // namespace

} // namespace kiv::test
