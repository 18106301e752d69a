#include "Kit/Findings/FindingLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

using test::findingLines;
using testing::ElementsAre;
using testing::IsEmpty;

/// The aliases of the set's definition begin on line 2.
std::string setWith(std::string_view aliases) {
    return "<QtoSetDef><IfcVersion "
           "version=\"IFC4\"/><Name>A</Name><Definition>d</Definition><ApplicableClasses>"
           "<ClassName>IfcWall</ClassName></ApplicableClasses><QtoDefs><QtoDef><Name>W</Name><Definition>d</"
           "Definition><QtoType>Q_AREA</QtoType></QtoDef></QtoDefs><QtoDefinitionAliases>\n" +
           std::string(aliases) + "</QtoDefinitionAliases></QtoSetDef>";
}

std::string alias(std::string_view language, std::string_view text = "t") {
    return "<QtoDefinitionAlias lang=\"" + std::string(language) + "\">" + std::string(text) +
           "</QtoDefinitionAlias>\n";
}

TEST(LanguageRulesTest, LanguageTagsAreRight) {
    for (const std::string_view tag : {"de",
                                       "deu",
                                       "de-AT",
                                       "es-419",
                                       "zh-Hans",
                                       "zh-Hans-CN",
                                       "sl-rozaj-biske",
                                       "de-1996",
                                       "de-CH-1996",
                                       "zh-cmn-Hans-CN",
                                       "en-u-ca-gregory",
                                       "de-x-mine",
                                       "x-mine",
                                       "ja-JP",
                                       "en-GB-oed",
                                       "EN-gb-OED",
                                       "sgn-BE-FR",
                                       "i-klingon",
                                       "en-a-bbb-x-a",
                                       "de-x-a-b",
                                       "de-u-ca-gregory-t-fr-x-1"})
        EXPECT_THAT(findingLines(setWith(alias(tag))), IsEmpty()) << tag;
}

TEST(LanguageRulesTest, OtherTextsAreFound) {
    for (const std::string_view tag : {"english", "abcd", "German (Austria)", "d", "de-", "-de", "de--AT",
                                       "d\xC3\xA9", "de-A", "abcdefghi", "de-AT-DE", "1de", "de-Latn-Latn",
                                       "x", "en-a-x-b", "en-a-bbb-x", "en-a-b-ccc", "en-GB-oe"})
        EXPECT_EQ(findingLines(setWith(alias(tag))).size(), 1) << tag;
}

TEST(LanguageRulesTest, UnderscoresAreMended) {
    const auto text = setWith(alias("de_DE"));
    EXPECT_THAT(findingLines(text),
                ElementsAre("2:27+5 warning L001 \"de_DE\" is no language tag | write it as \"de-DE\""));
    EXPECT_THAT(findingLines(test::sMended(text)), IsEmpty());
}

TEST(LanguageRulesTest, UnderscoresMakeNoOtherLanguage) {
    EXPECT_THAT(
        findingLines(setWith(alias("de_DE") + alias("de-DE"))),
        ElementsAre("2:27+5 warning L001 \"de_DE\" is no language tag | write it as \"de-DE\"",
                    "3:27+5 warning L003 there is another translation into \"de-DE\", which hides this "
                    "one | the first one is here @2:27"));
}

TEST(LanguageRulesTest, AnAliasNeedsALanguage) {
    EXPECT_THAT(findingLines(setWith("<QtoDefinitionAlias>t</QtoDefinitionAlias>\n" + alias(" "))),
                ElementsAre("2:2+18 error L002 the translation says no language",
                            "3:2+18 error L002 the translation says no language"));
}

TEST(LanguageRulesTest, ARepeatedLanguageNamesTheFirst) {
    EXPECT_THAT(
        findingLines(setWith(alias("de-DE") + alias("fr") + alias("DE-de"))),
        ElementsAre(
            "4:27+5 warning L003 there is another translation into \"DE-de\", which hides this one | the "
            "first one is here @2:27"));
}

TEST(LanguageRulesTest, TextThatIsHiddenIsAnError) {
    EXPECT_THAT(
        findingLines(setWith(alias("de", "Wand") + alias("de", "Mauer") + alias("de", "Wand"))),
        ElementsAre("3:27+2 error L003 there is another translation into \"de\", which hides this one | the "
                    "first one is here @2:27",
                    "4:27+2 warning L003 there is another translation into \"de\", which hides this one | "
                    "the first one is here @2:27"));
}

TEST(LanguageRulesTest, AnEmptyAliasIsANoteAndHidesNothing) {
    EXPECT_THAT(findingLines(setWith(alias("de", "") + alias("de"))),
                ElementsAre("2:2+18 note L004 the translation into \"de\" has no text"));
}

TEST(LanguageRulesTest, TextsHaveLanguagesOfTheirOwn) {
    const std::string aliases =
        "<NameAliases><NameAlias lang=\"de\">t</NameAlias></NameAliases><DefinitionAliases>"
        "<DefinitionAlias lang=\"de\">t</DefinitionAlias></DefinitionAliases>";
    EXPECT_THAT(
        findingLines("<QtoSetDef><IfcVersion version=\"IFC4\"/><Name>A</Name><Definition>d</Definition>"
                     "<ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses><QtoDefs>"
                     "<QtoDef><Name>B</Name><Definition>d</Definition><QtoType>Q_AREA</QtoType>" +
                     aliases + "</QtoDef></QtoDefs></QtoSetDef>"),
        IsEmpty());
}

TEST(LanguageRulesTest, CodesOfCountriesAreNoLanguages) {
    EXPECT_THAT(
        findingLines(setWith(alias("jp"))),
        ElementsAre("2:27+2 warning L001 \"jp\" begins with the code of a country, and of no language | the "
                    "language is \"ja\""));
    EXPECT_THAT(
        findingLines(setWith(alias("CZ-CZ"))),
        ElementsAre(
            "2:27+5 warning L001 \"CZ-CZ\" begins with the code of a country, and of no language | the "
            "language is \"cs\""));
    for (const std::string_view tag : {"ja-JP", "se", "kr", "uk"})
        EXPECT_THAT(findingLines(setWith(alias(tag))), IsEmpty()) << tag;
}

TEST(LanguageRulesTest, DashesAreMended) {
    const auto text = setWith(alias("de\u2013AT"));
    EXPECT_THAT(
        findingLines(text),
        ElementsAre(
            "2:27+5 warning L001 \"de\u2013AT\" is no language tag | write it as \"de-AT\" | character "
            "3 is U+2013, a character that looks like \"-\""));
    EXPECT_THAT(findingLines(test::sMended(text)), IsEmpty());
}

} // namespace

} // namespace kiv::kit
