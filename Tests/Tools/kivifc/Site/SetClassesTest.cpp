#include "kivifc/Site/SetClasses.h"

#include "Tools/kivifc/Site/SetTexts.h"
#include "Tools/kivifc/Site/SiteSample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace kiv::kivifc::site::test {

namespace {

using testing::HasSubstr;

/// The items are those of Kind; Renamed is made of it.
constexpr const char* SetClassesDeclarations = "TYPE Kind = ENUMERATION OF\n (SOLID,\n HOLLOW);\nEND_TYPE;\n"
                                               "TYPE Renamed = Kind;\nEND_TYPE;\n"
                                               "ENTITY Wall;\n    PredefinedType : Kind;\nEND_ENTITY;\n"
                                               "ENTITY Thick\n SUBTYPE OF (Wall);\nEND_ENTITY;\n"
                                               "ENTITY Door;\n    PredefinedType : Renamed;\nEND_ENTITY;\n";

std::string classesOf(const std::vector<std::string>& classes) {
    const SiteSample sample(SetClassesDeclarations, {{"TEST", sSet("S", classes, "")}});
    Html html("");
    vSetClassesWrite(sample.getModel(), *sample.getModel().getSets().front().set, html);
    return html.takeText();
}

TEST(SetClasses, PredefinedTypesLeadToTheirItems) {
    const auto html = classesOf({"Wall/SOLID", "Wall/HOLLOW", "Wall/SOLID"});
    EXPECT_THAT(html, HasSubstr("<a href=\"Wall.html\"><code>Wall</code></a></th><td>"
                                "<a href=\"Kind.html#SOLID\"><code>SOLID</code></a>, "
                                "<a href=\"Kind.html#HOLLOW\"><code>HOLLOW</code></a></td></tr>"));
}

TEST(SetClasses, EachHasAnAddress) {
    EXPECT_THAT(classesOf({"Wall"}), HasSubstr("<tr id=\"class-Wall\"><th scope=\"row\"><a class=\"anchor\" "
                                               "href=\"#class-Wall\" aria-label=\"Link to Wall\">#</a>"));
}

TEST(SetClasses, ItemsOfARenamedEnumerationAreWhereTheyAreDeclared) {
    EXPECT_THAT(classesOf({"Door/SOLID"}), HasSubstr("<a href=\"Kind.html#SOLID\">"));
    EXPECT_THAT(classesOf({"Thick/HOLLOW"}), HasSubstr("<a href=\"Kind.html#HOLLOW\">"));
}

TEST(SetClasses, WhatTheSchemaDoesNotHaveIsMarked) {
    const std::string badge = " <span class=\"badge warning\">not in the schema</span>";
    EXPECT_THAT(classesOf({"Wall/solid"}), HasSubstr("<td><code>solid</code>" + badge + "</td>"));
    EXPECT_THAT(classesOf({"Roof/SOLID"}),
                HasSubstr("<code>Roof</code>" + badge + "</th><td><code>SOLID</code></td>"));
}

TEST(SetClasses, AClassAloneIsAllOfIt) {
    EXPECT_THAT(classesOf({"Wall"}), HasSubstr("</th><td>all</td>"));
    EXPECT_THAT(classesOf({"Wall/SOLID", "Wall"}), HasSubstr("</th><td>all, also named: <a "));
}

TEST(SetClasses, EachIsThereOnceInTheOrderOfTheDocument) {
    const SiteSample sample(SetClassesDeclarations,
                            {{"TEST", sSet("S", {"Roof", "Wall/SOLID", "Roof/A", "Wall/SOLID"}, "")}});
    const auto classes =
        namedClasses(sample.getModel().getSchema(), *sample.getModel().getSets().front().set);
    ASSERT_EQ(classes.size(), 2U);
    EXPECT_EQ(classes[0].name, "Roof");
    EXPECT_EQ(classes[0].entity, nullptr);
    EXPECT_TRUE(classes[0].isWhole);
    EXPECT_EQ(classes[0].predefinedTypes, (std::vector<std::string_view>{"A"}));
    EXPECT_EQ(classes[1].entity, &sample.entity("Wall"));
    EXPECT_FALSE(classes[1].isWhole);
    EXPECT_EQ(classes[1].predefinedTypes, (std::vector<std::string_view>{"SOLID"}));
}

} // namespace

} // namespace kiv::kivifc::site::test
