#include "Format/Ifc/Def/Pset/IfcPropertyTypeMemory.h"

#include "kiv/Format/Ifc/Def/IfcBudget.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "kiv/Host/Xml/KivXml.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

namespace kiv::ifc::def::test {

namespace {

/// What a meter says is held once the set was read; the document is not metered.
template <class Set>
std::uint64_t heldAfter(const std::string& document) {
    std::istringstream stream(document);
    kiv::xml::File file(nullptr, kiv::xml::VerboseLevel::Quiet, kiv::xml::ValidateLevel::None);
    const auto root = file.parse(stream, "", nullptr);
    BudgetMeter meter{Budget{}};
    xml::XmlSetErrors errors;
    const Set set(*root, errors, meter);
    EXPECT_EQ(errors.getRecords().size(), 0U);
    return meter.getUsed(WorkMeter::Unit::HeldBytes);
}

std::uint64_t heldByTypes(const std::string& types) {
    return heldAfter<pset::PropertySetDef>("<PropertySetDef><PropertyDefs><PropertyDef>" + types +
                                           "</PropertyDef></PropertyDefs></PropertySetDef>");
}

constexpr const char* LongText = "A text that no string keeps within itself";

/// An element with every text that the kind keeps, longer than what a string keeps within itself.
std::string sColumn(const std::string& tag) {
    return "<" + tag + "><DataType type='IfcThermodynamicTemperatureMeasure'/>" +
           "<UnitType type='THERMODYNAMICTEMPERATUREUNIT'/><Values>" + LongText + "</Values></" + tag + ">";
}

std::string sAliases(const std::string& tag, const std::string& item) {
    return "<" + tag + "><" + item + " lang='de'>" + LongText + "</" + item + "><" + item +
           " lang='a language with a long name'>short</" + item + "></" + tag + ">";
}

std::string sTexts() {
    return std::string("<Name>") + LongText + "</Name><Definition>" + LongText + "</Definition>" +
           sAliases("NameAliases", "NameAlias") + sAliases("DefinitionAliases", "DefinitionAlias");
}

std::string sMeasure() {
    return "<DataType type='IfcThermodynamicTemperatureMeasure'/>"
           "<UnitType type='THERMODYNAMICTEMPERATUREUNIT'/>";
}

TEST(PropertyTypeMemory, TypeThatIsReplacedHoldsNothing) {
    const std::string range = std::string("<ValueRangeDef><LowerBoundValue value='") + LongText +
                              "'/><UpperBoundValue value='" + LongText + "'/></ValueRangeDef>";
    const std::string constant = "<ConstantDef>" + sTexts() + "</ConstantDef>";
    const std::string bounded =
        "<TypePropertyBoundedValue>" + sMeasure() + range + "</TypePropertyBoundedValue>";
    const std::string rows[] = {
        "<TypePropertyReferenceValue reftype='IfcThermodynamicTemperatureMeasure'/>",
        "<TypePropertySingleValue>" + sMeasure() + "</TypePropertySingleValue>",
        bounded,
        std::string("<TypePropertyEnumeratedValue><EnumList name='") + LongText + "'><EnumItem>" + LongText +
            "</EnumItem><EnumItem>A</EnumItem><EnumItem>B</EnumItem></EnumList><ConstantList>" + constant +
            constant + constant + "</ConstantList></TypePropertyEnumeratedValue>",
        std::string("<TypePropertyTableValue><Expression>") + LongText + "</Expression>" +
            sColumn("DefiningValue") + sColumn("DefinedValue") + sColumn("DefinedValue") +
            "</TypePropertyTableValue>",
        "<TypePropertyListValue>" + sColumn("ListValue") + sColumn("ListValue") + sColumn("ListValue") +
            "</TypePropertyListValue>",
        std::string("<TypeComplexProperty name='") + LongText + "'><PropertyDef>" + sTexts() +
            "<PropertyType>" + bounded + "</PropertyType></PropertyDef><PropertyDef/></TypeComplexProperty>"};
    const auto withoutType = heldByTypes("");
    for (const auto& row : rows) {
        const auto type = "<PropertyType>" + row + "</PropertyType>";
        const auto once = heldByTypes(type);
        EXPECT_GT(once, withoutType) << row;
        EXPECT_EQ(heldByTypes(type + type + type), once) << row;
        EXPECT_EQ(heldByTypes(type + "<PropertyType/>"), withoutType) << row;
    }
}

TEST(PropertyTypeMemory, QuantityTypeThatIsReplacedHoldsNothing) {
    const auto heldByQuantity = [](const std::string& types) {
        return heldAfter<qto::QuantitySetDef>("<QtoSetDef><QtoDefs><QtoDef>" + types +
                                              "</QtoDef></QtoDefs></QtoSetDef>");
    };
    const std::string type = "<QtoType>Q_AREA</QtoType>";
    EXPECT_GT(heldByQuantity(type), heldByQuantity(""));
    EXPECT_EQ(heldByQuantity(type + type + type), heldByQuantity(type));
    EXPECT_EQ(heldByQuantity(type + "<QtoType/>"), heldByQuantity(""));
}

} // namespace

} // namespace kiv::ifc::def::test
