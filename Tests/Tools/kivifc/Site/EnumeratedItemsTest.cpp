#include "kivifc/Site/EnumeratedItems.h"

#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Kit/Documents/SetMembers.h"

#include "Tools/kivifc/Site/SetTexts.h"
#include "Tools/kivifc/Site/SiteSample.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::site::test {

namespace {

/// "ITEM=DEFINITION" of each.
std::string sItems(const std::vector<std::string>& items, const std::string& constants) {
    const SiteSample sample("ENTITY Wall;\nEND_ENTITY;\n",
                            {{"TEST", sSet("S", {}, sProperty("P", sEnumeration("K", items, constants)))}});
    const auto members = kit::setMembers(*sample.getModel().getSets().front().set);
    const auto* property = dynamic_cast<const ifc::def::pset::PropertyDef*>(members.at(0));
    const auto* type = dynamic_cast<const ifc::def::pset::TypePropertyEnumeratedValue*>(property->pType());
    std::string text;
    for (const auto& item : enumeratedItems(*type))
        text += std::string(item.name) + "=" + (item.constant ? item.constant->getDefinition() : "") + " ";
    return text;
}

std::string sConstant(const std::string& name, const std::string& definition) {
    return sTagged("ConstantDef", sTagged("Name", name) + sTagged("Definition", definition));
}

TEST(EnumeratedItems, HaveTheConstantsOfTheirNames) {
    EXPECT_EQ(sItems({"A", "B"}, ""), "A= B= ");
    EXPECT_EQ(sItems({"A", "B"}, sConstant("B", "2") + sConstant("A", "1")), "A=1 B=2 ");
}

/// So that nothing of a document is lost.
TEST(EnumeratedItems, ConstantsThatBelongToNoneComeLast) {
    EXPECT_EQ(sItems({"A"}, sConstant("C", "3") + sConstant("A", "1") + sConstant("A", "2")), "A=1 C=3 A=2 ");
    EXPECT_EQ(sItems({"A", "A"}, sConstant("A", "1")), "A=1 A= ");
}

} // namespace

} // namespace kiv::kivifc::site::test
