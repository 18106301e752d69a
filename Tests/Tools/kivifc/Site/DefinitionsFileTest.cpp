#include "kivifc/Site/DefinitionsFile.h"

#include "Tools/kivifc/Site/SetTexts.h"
#include "Tools/kivifc/Site/SiteSample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::site::test {

namespace {

using testing::HasSubstr;

std::string sDefinitions(const std::string& set) {
    return SiteSample("ENTITY Wall;\nEND_ENTITY;\n", {{"TEST", set}}).sPage("assets/definitions.js");
}

std::string sAlias(const std::string& language, const std::string& text) {
    return "<DefinitionAlias lang=\"" + language + "\">" + text + "</DefinitionAlias>";
}

/// "Wand." is there twice and written once; "x-y" is no language that a page can name.
TEST(DefinitionsFile, HasEachTextOnceAndTheRowsThatItIsFor) {
    const auto members = sProperty("A", sSingle("L"), sTagged("DefinitionAliases", sAlias("fr", "Mur."))) +
                         sProperty("B", sSingle("L")) +
                         sProperty("C", sSingle("L"),
                                   sTagged("DefinitionAliases", sAlias("de", "Wand.") + sAlias("x-y", "?")));
    const auto set =
        "<PropertySetDef><Name>S</Name><PropertyDefs>" + members + "</PropertyDefs>" +
        sTagged("PsetDefinitionAliases", "<PsetDefinitionAlias lang=\"de\">Wand.</PsetDefinitionAlias>") +
        "</PropertySetDef>";
    EXPECT_EQ(sDefinitions(set),
              "window.kivDefinitions={languages:[\"de\",\n\"fr\"],texts:[\"Wand.\",\n\"Mur.\"],sets:[\n"
              "[\"sets/S.html\",[\"\",0,0],[\"A\",1,1],[\"C\",0,0]]\n]};\n");
}

/// As the definition in the row is, for which it stands.
TEST(DefinitionsFile, LongTextsAreCut) {
    const auto set =
        sSet("S", {},
             sProperty("A", sSingle("L"), sTagged("DefinitionAliases", sAlias("de", std::string(300, 'a')))));
    EXPECT_THAT(sDefinitions(set), HasSubstr("texts:[\"" + std::string(160, 'a') + "...\"]"));
}

TEST(DefinitionsFile, IsThereWhenNothingIsTranslated) {
    EXPECT_EQ(sDefinitions(sSet("S", {}, "")),
              "window.kivDefinitions={languages:[],texts:[],sets:[\n\n]};\n");
}

} // namespace

} // namespace kiv::kivifc::site::test
