// The indexes of sets, of properties, of languages and of GUIDs.
#include "Tools/kivifc/KivifcRun.h"
#include "Tools/kivifc/Site/SetTexts.h"
#include "Tools/kivifc/Site/SiteSample.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::site::test {

namespace {

using testing::HasSubstr;
using testing::Not;

constexpr const char* SetIndexDeclarations =
    "TYPE Label = STRING;\nEND_TYPE;\nTYPE Text = STRING;\nEND_TYPE;\n"
    "ENTITY Wall;\nEND_ENTITY;\nENTITY Door;\nEND_ENTITY;\n";

/// That many properties with GUIDs 1, 2, ...
std::string sPropertiesWithGuids(int count) {
    std::string members;
    for (int number = 1; number <= count; ++number)
        members += sProperty(fmt::format("{}{}", number % 2 == 0 ? 'A' : 'B', number), sSingle("Label"), {},
                             fmt::format("ifdguid=\"{:032x}\"", number));
    return members;
}

/// Of a set of one's own.
std::string sOwnFile(const std::string& name, const std::string& context) {
    return "sets/" + FileNames().sTakeMarked(name, context);
}

TEST(SetIndexPage, SetsAreByClassAndByPrefix) {
    const SiteSample sample(SetIndexDeclarations, {{"TEST", sSet("Pset_B", {"Wall", "Door/X", "Roof"}, "")},
                                                   {"office", sSet("Off_A", {"WALL"}, "")},
                                                   {"other", sSet("Every", {}, "")}});
    const auto page = sample.sPage("sets.html");
    EXPECT_THAT(page,
                HasSubstr("<tr id=\"Wall\"><th scope=\"row\"><a class=\"anchor\" href=\"#Wall\" "
                          "aria-label=\"Link to Wall\">#</a><a href=\"Wall.html\"><code>Wall</code></a></th>"
                          "<td><ul class=\"links\">\n<li><a href=\"" +
                          sOwnFile("Off_A", "office") +
                          "\"><code>Off_A</code></a> "
                          "<span class=\"badge\">office</span></li>\n<li><a href=\"sets/Pset_B.html\">"));
    EXPECT_THAT(page,
                HasSubstr("<code>Roof</code> <span class=\"badge warning\">not in the schema</span></th>"));
    EXPECT_THAT(page,
                HasSubstr("<tr id=\"every-class\"><th scope=\"row\"><a class=\"anchor\" "
                          "href=\"#every-class\" aria-label=\"Link to every class\">#</a>Every class</th>"
                          "<td><ul class=\"links\">\n<li><a href=\"" +
                          sOwnFile("Every", "other") + "\">"));
    EXPECT_THAT(page, HasSubstr("\">Without a prefix <span class=\"count\">1</span><a class=\"anchor\""));
    EXPECT_THAT(
        page,
        HasSubstr(
            "<h3 id=\"prefix-Off_\"><code>Off_</code> <span class=\"count\">1</span><a class=\"anchor\" "
            "href=\"#prefix-Off_\" aria-label=\"Link to Off_\">#</a></h3>"));
    EXPECT_THAT(
        page,
        HasSubstr(
            "<h3 id=\"prefix-Pset_\"><code>Pset_</code> <span class=\"count\">1</span><a class=\"anchor\" "
            "href=\"#prefix-Pset_\" aria-label=\"Link to Pset_\">#</a></h3>"));
}

TEST(SetIndexPage, LinkToASetWithoutANameCanBeSeen) {
    const SiteSample sample(SetIndexDeclarations,
                            {{"TEST", sSet("  ", {"Wall"}, sProperty("Mark", sSingle("Label")))}});
    EXPECT_THAT(sample.sPage("sets.html"), HasSubstr("<code>(no name)</code></a>"));
    EXPECT_THAT(sample.sPage("properties.html"), HasSubstr("#Mark\">(no name)</a>"));
}

TEST(PropertyIndexPages, OneNameInManySetsIsSideBySide) {
    const SiteSample sample(SetIndexDeclarations,
                            {{"TEST", sSet("S1", {}, sProperty("Mark", sSingle("Label")))},
                             {"TEST2", sSet("S2", {}, sProperty("Mark", sSingle("LABEL")))}});
    EXPECT_THAT(
        sample.sPage("properties.html"),
        HasSubstr("<code>Mark</code></th><td>Single value</td><td><a href=\"Label.html\"><code>Label</code>"
                  "</a></td><td><ul class=\"links\">\n<li><a href=\"" +
                  sOwnFile("S2", "TEST2") +
                  "#Mark\">S2</a> "
                  "<span class=\"badge\">TEST2</span></li>\n<li><a "
                  "href=\"sets/S1.html#Mark\">S1</a></li>\n</ul></td></tr>"));
    EXPECT_THAT(sample.sPage("properties.html"), Not(HasSubstr("differs")));
}

TEST(PropertyIndexPages, DifferingTypesStandOut) {
    const SiteSample sample(SetIndexDeclarations,
                            {{"TEST", sSet("S1", {}, sProperty("Mark", sSingle("Label")))},
                             {"TEST2", sSet("S2", {}, sProperty("Mark", sSingle("Text")))}});
    const auto page = sample.sPage("properties.html");
    EXPECT_THAT(page, HasSubstr("<tr id=\"Mark\"><th scope=\"row\" rowspan=\"2\">"));
    EXPECT_THAT(page, HasSubstr("<span class=\"badge differs\">types differ</span>"));
    EXPECT_THAT(page,
                HasSubstr("<td class=\"differs\"><a href=\"Text.html\"><code>Text</code></a></td><td><ul "
                          "class=\"links\">\n<li><a href=\"" +
                          sOwnFile("S2", "TEST2") + "#Mark\">"));
    // The second type has an address of its own.
    EXPECT_THAT(page,
                HasSubstr("<tr id=\"Mark~~2\"><td class=\"differs\"><a class=\"anchor\" href=\"#Mark~~2\" "
                          "aria-label=\"Link to Mark\">#</a>Single value</td><td class=\"differs\"><a "
                          "href=\"Label.html\">"));
}

/// An enumeration with other items is another type.
TEST(PropertyIndexPages, ItemsArePartOfTheType) {
    const SiteSample sample(SetIndexDeclarations,
                            {{"TEST", sSet("S1", {}, sProperty("Mark", sEnumeration("K", {"A", "B"})))},
                             {"TEST2", sSet("S2", {}, sProperty("Mark", sEnumeration("K", {"A"})))}});
    EXPECT_THAT(sample.sPage("properties.html"), HasSubstr("types differ"));
}

TEST(PropertyIndexPages, ManyNamesAreOnPagesByLetter) {
    const SiteSample few(SetIndexDeclarations, {{"TEST", sSet("S", {}, sPropertiesWithGuids(500))}});
    EXPECT_THAT(few.sPage("properties.html"), HasSubstr("<tr id=\"A500\">"));
}

TEST(PropertyIndexPages, MoreNamesAreOnPagesByLetter) {
    const SiteSample many(SetIndexDeclarations, {{"TEST", sSet("S", {}, sPropertiesWithGuids(501))}});
    const auto page = many.sPage("properties.html");
    EXPECT_THAT(page, Not(HasSubstr("<tr id=\"A500\">")));
    EXPECT_THAT(page, HasSubstr("<a href=\"properties-A.html\">A</a>\n<a href=\"properties-B.html\">B</a>"));
    EXPECT_THAT(many.sPage("properties-A.html"), HasSubstr("<tr id=\"A500\">"));
    EXPECT_THAT(many.sPage("properties-B.html"), HasSubstr("<tr id=\"B501\">"));
    EXPECT_THAT(many.sPage("properties-A.html"), Not(HasSubstr("B501")));
    EXPECT_THAT(many.sPage("properties-B.html"),
                HasSubstr("<a href=\"properties-A.html\">A</a>\n"
                          "<a href=\"properties-B.html\" aria-current=\"page\">B</a>\n</nav>"));
}

TEST(PropertyIndexPages, SetsOfOneNameSayTheirContext) {
    const SiteSample sample(SetIndexDeclarations,
                            {{"TEST", sSet("S", {}, sProperty("Mark", sSingle("Label")))},
                             {"office", sSet("S", {}, sProperty("Mark", sSingle("Label")))}});
    const auto page = sample.sPage("properties.html");
    EXPECT_THAT(page, HasSubstr("#Mark\">S</a> <span class=\"badge\">office</span></li>"));
    EXPECT_THAT(page, HasSubstr("<li><a href=\"sets/S.html#Mark\">S</a> <span class=\"badge\">hidden by "
                                "office</span></li>"));
    EXPECT_THAT(
        sample.sPage("sets.html"),
        HasSubstr("<a href=\"sets/S.html\"><code>S</code></a> <span class=\"badge\">hidden by office"));
}

/// Else a reader sees one name twice, and does not know which is which.
TEST(LanguageIndexPages, SetsOfOneNameSayTheirContext) {
    const auto set = sSet("S", {}, sProperty("Mark", sSingle("Label"), sNameAlias("de", "Zeichen")));
    const SiteSample sample(SetIndexDeclarations, {{"TEST", set}, {"office", set}});
    const auto page = sample.sPage("languages.html");
    EXPECT_THAT(page, HasSubstr("#Mark\">S</a> <span class=\"badge\">office</span></li>"));
    EXPECT_THAT(page, HasSubstr("<li><a href=\"sets/S.html#Mark\">S</a> <span class=\"badge\">hidden by "
                                "office</span></li>"));
}

TEST(GuidIndexPages, SetsOfOneNameSayTheirContext) {
    const auto set = sSet("S", {}, "", "ifdguid=\"00000000000000000000000000000040\"");
    const SiteSample sample(SetIndexDeclarations, {{"TEST", set}, {"office", set}});
    const auto page = sample.sPage("guids.html");
    EXPECT_THAT(page, HasSubstr("<bdi>S</bdi></a> <span class=\"badge\">office</span>"));
    EXPECT_THAT(page,
                HasSubstr("<a href=\"sets/S.html\"><bdi>S</bdi></a> <span class=\"badge\">hidden by office"));
}

/// The page of a type lists the members that have it.
TEST(Uses, MembersOfSetsOfOneNameSayTheirContext) {
    const auto set = sSet("S", {}, sProperty("Mark", sSingle("Label")));
    const SiteSample sample(SetIndexDeclarations, {{"TEST", set}, {"office", set}});
    const auto page = sample.sPage("Label.html");
    EXPECT_THAT(page, HasSubstr("<code>S.Mark</code></a> <span class=\"badge\">office</span></li>"));
    EXPECT_THAT(page, HasSubstr("<a href=\"sets/S.html#Mark\"><code>S.Mark</code></a> <span class=\"badge\">"
                                "hidden by office</span></li>"));
}

/// Two documents have one name, so that the set of the second is left out.
TEST(SetIndexPages, SetsThatAreNotUsedSaySoEverywhere) {
    const kiv::test::TemporaryFolder folder;
    const auto schema =
        folder.sWrite("Test.exp", std::string("SCHEMA TEST;\n") + SetIndexDeclarations + "END_SCHEMA;\n");
    const auto set = sSet("Pset_A", {"Wall"},
                          sProperty("Mark", sSingle("Label"), sNameAlias("de", "Zeichen"),
                                    "ifdguid=\"00000000000000000000000000000041\""));
    folder.sWrite("sets/1.xml", set);
    folder.sWrite("sets/2.xml", set);
    const auto out = folder.sPath("site");
    EXPECT_EQ(kiv::kivifc::test::kivifcRun({"site", schema, folder.sPath("sets"), "--out", out}).status, 1);
    for (const std::string page : {"sets.html", "properties.html", "languages.html", "guids.html"}) {
        const auto text = kiv::test::sFileText(out + "/" + page);
        EXPECT_THAT(text, HasSubstr("</a> <span class=\"badge error\">not used</span>")) << page;
    }
}

TEST(LanguageIndexPages, CountNamesAndDefinitions) {
    const SiteSample sample(
        SetIndexDeclarations,
        {{"TEST", sSet("S", {},
                       sProperty("Mark", sSingle("Label"),
                                 sNameAlias("de", "Zeichen") +
                                     "<DefinitionAliases><DefinitionAlias lang=\"DE\">"
                                     "Ein Zeichen.</DefinitionAlias></DefinitionAliases>"))}});
    const auto page = sample.sPage("languages.html");
    EXPECT_THAT(page, HasSubstr("1 language besides that of the documents"));
    EXPECT_THAT(page, HasSubstr("<code>de</code></a></th><td>1</td><td>1</td></tr>"));
    const auto id = sAnchor("de/Zeichen/Mark");
    EXPECT_THAT(page,
                HasSubstr("<tr id=\"" + id + "\"><th scope=\"row\" lang=\"de\"><a class=\"anchor\" href=\"#" +
                          id +
                          "\" aria-label=\"Link to Zeichen\">#</a>Zeichen</th><td><code>Mark</code></td>"
                          "<td><ul class=\"links\">\n<li><a href=\"sets/S.html#Mark\">S</a></li>\n"
                          "</ul></td></tr>"));
}

/// The address of a row is the same whatever else the index has.
TEST(LanguageIndexPages, RowIsFoundByNameAndMeaning) {
    const auto idsOf = [](const std::string& first) {
        const SiteSample sample(
            SetIndexDeclarations,
            {{"TEST", sSet("S", {},
                           sProperty(first, sSingle("Label"), sNameAlias("de", "Zeichen")) +
                               sProperty("Mark", sSingle("Label"), sNameAlias("de", "Zeichen")))}});
        return sample.sPage("languages.html");
    };
    for (const std::string first : {"A", "Z"}) {
        const auto page = idsOf(first);
        EXPECT_THAT(page, HasSubstr("<tr id=\"" + sAnchor("de/Zeichen/Mark") + "\">"));
        EXPECT_THAT(page, HasSubstr("<tr id=\"" + sAnchor("de/Zeichen/" + first) + "\">"));
    }
}

TEST(LanguageIndexPages, LanguageWithManyNamesHasAPage) {
    std::string members;
    for (int number = 0; number < 50; ++number)
        members += sProperty(fmt::format("P{}", number), sSingle("Label"),
                             sNameAlias("pt-BR", fmt::format("Nome{}", number)));
    members += sProperty("Q", sSingle("Label"), sNameAlias("fr", "Nom"));
    const SiteSample sample(SetIndexDeclarations, {{"TEST", sSet("S", {}, members)}});
    const auto page = sample.sPage("languages.html");
    EXPECT_THAT(page, HasSubstr("<a href=\"languages-pt_BR.html\"><code>pt-BR</code></a></th><td>50</td>"));
    EXPECT_THAT(page, HasSubstr("</a>Nom</th>"));
    EXPECT_THAT(page, Not(HasSubstr("Nome7")));
    EXPECT_THAT(sample.sPage("languages-pt_BR.html"),
                HasSubstr("<tr id=\"" + sAnchor("Nome7/P7") + "\"><th scope=\"row\" lang=\"pt-BR\">"));
}

TEST(GuidIndexPages, RepeatedOnesStandOut) {
    const std::string guid = "ifdguid=\"00000000000000000000000000000040\"";
    const SiteSample sample(SetIndexDeclarations,
                            {{"TEST", sSet("S", {}, sProperty("Mark", sSingle("Label"), {}, guid), guid)}});
    EXPECT_THAT(
        sample.sPage("guids.html"),
        HasSubstr(
            "<tr id=\"00000000000000000000000000000040\"><th scope=\"row\"><a class=\"anchor\" "
            "href=\"#00000000000000000000000000000040\" aria-label=\"Link to "
            "00000000000000000000000000000040\">#</a><code>0000000000000000000010</code></th><td><code>"
            "00000000-0000-0000-0000-000000000040</code></td><td class=\"differs\"><a href=\"sets/S.html\">"
            "<bdi>S</bdi></a>, <a href=\"sets/S.html#guid-Mark\"><bdi>S</bdi>.<bdi>Mark</bdi></a>"));
}

/// Letters alone could be the name of an element of ours.
TEST(GuidIndexPages, RowsWithoutAnyDigitHaveAnAddressToo) {
    const std::string letters(32, 'f');
    const SiteSample sample(SetIndexDeclarations,
                            {{"TEST", sSet("S", {}, "", "ifdguid=\"" + letters + "\"")}});
    EXPECT_THAT(sample.sPage("guids.html"),
                HasSubstr("<tr id=\"" + letters + "~\"><th scope=\"row\"><a class=\"anchor\" href=\"#" +
                          letters + "~\""));
}

TEST(SetIndexPages, WhatSetsDoNotHaveIsSaid) {
    const SiteSample sample(SetIndexDeclarations, {{"TEST", sSet("S", {}, "")}});
    EXPECT_THAT(sample.sPage("properties.html"), HasSubstr("No set has any."));
    EXPECT_THAT(sample.sPage("languages.html"), HasSubstr("No set is translated."));
    EXPECT_THAT(sample.sPage("guids.html"), HasSubstr("No set has any."));
    EXPECT_THAT(sample.sPage("guids.html"), Not(HasSubstr("<table")));
}

TEST(GuidIndexPages, ManyAreByTheirFirstDigit) {
    const SiteSample sample(SetIndexDeclarations,
                            {{"TEST", sSet("S", {}, sPropertiesWithGuids(1000),
                                           "ifdguid=\"f0000000000000000000000000000000\"")}});
    const auto page = sample.sPage("guids.html");
    EXPECT_THAT(page, HasSubstr("1001 sets, properties and quantities"));
    EXPECT_THAT(page, HasSubstr("<a href=\"guids-0.html\">0</a>\n<a href=\"guids-f.html\">f</a>\n</nav>"));
    EXPECT_THAT(sample.sPage("guids-0.html"), HasSubstr("00000000-0000-0000-0000-0000000003e8"));
    EXPECT_THAT(sample.sPage("guids-f.html"), HasSubstr("f0000000-0000-0000-0000-000000000000"));
    EXPECT_THAT(sample.sPage("guids-f.html"), Not(HasSubstr("0000-0000000003e8")));
    EXPECT_THAT(sample.sPage("guids-f.html"),
                HasSubstr("<a href=\"guids-0.html\">0</a>\n<a href=\"guids-f.html\" "
                          "aria-current=\"page\">f</a>\n</nav>"));
}

} // namespace

} // namespace kiv::kivifc::site::test
