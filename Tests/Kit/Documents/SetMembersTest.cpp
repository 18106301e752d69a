#include "kiv/Kit/Documents/SetMembers.h"

#include "Support/SetFromText.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kit {

namespace {

using Names = std::vector<std::string>;

std::unique_ptr<ifc::def::xml::SetDef> propertySet(const std::string& parts) {
    return test::pSetFromText("<PropertySetDef><Name>Pset_A</Name>" + parts + "</PropertySetDef>");
}

std::unique_ptr<ifc::def::xml::SetDef> quantitySet(const std::string& parts) {
    return test::pSetFromText("<QtoSetDef><Name>Qto_A</Name>" + parts + "</QtoSetDef>");
}

std::string sMember(const std::string& tag, const std::string& name) {
    return "<" + tag + "><Name>" + name + "</Name></" + tag + ">";
}

Names namesOf(const ifc::def::xml::SetDef& set) {
    Names names;
    for (const auto* member : setMembers(set))
        names.emplace_back(member->getName());
    return names;
}

TEST(SetMembers, AreThePropertiesOrQuantitiesInOrder) {
    const auto properties = propertySet("<PropertyDefs>" + sMember("PropertyDef", "B") +
                                        sMember("PropertyDef", "A") + "</PropertyDefs>");
    EXPECT_EQ(namesOf(*properties), (Names{"B", "A"}));
    const auto quantities = quantitySet("<QtoDefs>" + sMember("QtoDef", "Width") + "</QtoDefs>");
    EXPECT_EQ(namesOf(*quantities), Names{"Width"});
}

TEST(SetMembers, OfAnEmptySetAreNone) {
    EXPECT_EQ(namesOf(*propertySet("")), Names());
    EXPECT_EQ(namesOf(*quantitySet("<QtoDefs/>")), Names());
}

TEST(SetMembers, BelongToTheSet) {
    const auto set = quantitySet("<QtoDefs>" + sMember("QtoDef", "A") + "</QtoDefs>");
    EXPECT_EQ(setMembers(*set), setMembers(*set));
}

TEST(SetMembers, TheKindIsNamed) {
    EXPECT_STREQ(pSetKind(*propertySet("")), "property set");
    EXPECT_STREQ(pSetKind(*quantitySet("")), "quantity set");
}

TEST(SetMembers, ClassesAreAsTheDocumentWritesThem) {
    const auto classes = [](const std::string& parts) {
        return sSetClasses(*propertySet("<ApplicableClasses>" + parts + "</ApplicableClasses>"));
    };
    EXPECT_EQ(classes("<ClassName>IfcWall</ClassName>"), "IfcWall");
    EXPECT_EQ(classes("<ClassName>IfcWall/SOLID</ClassName><ClassName>ifcSlab</ClassName>"),
              "IfcWall/SOLID, ifcSlab");
    EXPECT_EQ(classes(""), "every class");
    EXPECT_EQ(sSetClasses(*quantitySet("")), "every class");
}

} // namespace

} // namespace kiv::kit
