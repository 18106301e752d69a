#include "kivifc/Site/StartPage.h"

#include "Tools/kivifc/Site/SetTexts.h"
#include "Tools/kivifc/Site/SiteSample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

namespace kiv::kivifc::site::test {

namespace {

using testing::HasSubstr;
using testing::Not;

constexpr const char* StartPageDeclarations =
    "TYPE Label = STRING;\nEND_TYPE;\n"
    "ENTITY Wall;\n    Name : OPTIONAL Label;\n    Size : REAL;\nEND_ENTITY;\n"
    "ENTITY Thick\n SUBTYPE OF (Wall);\nEND_ENTITY;\n";

TEST(StartPage, HasFiguresAndEntryPoints) {
    const SiteSample sample(
        StartPageDeclarations,
        {{"TEST", sSet("S", {}, sProperty("A", sSingle("Label")) + sProperty("B", sSingle("Label")))}});
    const auto page = sample.sPage("index.html");
    EXPECT_THAT(page, HasSubstr("<li><a href=\"entities.html\"><strong>2</strong> entities</a></li>"));
    EXPECT_THAT(page, HasSubstr("<li><a href=\"types.html\"><strong>1</strong> type</a></li>"));
    EXPECT_THAT(page, HasSubstr("<li><a href=\"sets.html\"><strong>1</strong> set</a></li>"));
    EXPECT_THAT(page,
                HasSubstr("<li><a href=\"properties.html\"><strong>2</strong> properties and quantities"));
    EXPECT_THAT(page, HasSubstr("<dt>of which optional</dt><dd>1</dd>"));
    EXPECT_THAT(page, HasSubstr("<dt>Deepest inheritance</dt><dd>2</dd>"));
    for (const auto* name : {"entities", "entities-by-letter", "types", "functions", "rules", "sets",
                             "properties", "languages", "guids"})
        EXPECT_THAT(page, HasSubstr("<li><a href=\"" + std::string(name) + ".html\"><strong>"));
}

/// Beside the other cards a short title is enough; the search shows it among names of all kinds.
TEST(StartPage, HasTheIndexPagesOfTheSearch) {
    const SiteSample sample(StartPageDeclarations, {{"TEST", sSet("S", {}, "")}});
    EXPECT_THAT(sample.sPage("index.html"),
                HasSubstr("<strong>Sets</strong><span>Property and quantity sets by class and by prefix<"));
    const auto search = sample.sPage("assets/search-index.js");
    for (const auto* title : {"Entities as a tree", "Entities by letter", "Types", "Functions", "Rules",
                              "Sets by class and by prefix", "Properties by name", "Languages", "GUIDs"})
        EXPECT_THAT(search, HasSubstr(",\"" + std::string(title) + "\",\""));
}

/// An index of what is not there would be a page that says nothing.
TEST(StartPage, WithoutSetsHasNeitherFiguresNorIndexesOfThem) {
    const SiteSample sample(StartPageDeclarations);
    EXPECT_THAT(sample.sPage("index.html"), Not(HasSubstr("<strong>0</strong> sets")));
    EXPECT_THAT(sample.sPage("index.html"), HasSubstr("<a href=\"functions.html\"><strong>Functions"));
    for (const std::string name : {"sets", "properties", "languages", "guids"}) {
        EXPECT_THAT(sample.sPage("index.html"), Not(HasSubstr("\"" + name + ".html")));
        EXPECT_THAT(sample.sPage("assets/search-index.js"), Not(HasSubstr("\"" + name + ".html")));
        EXPECT_THROW(sample.sPage(name + ".html"), std::runtime_error);
    }
}

} // namespace

} // namespace kiv::kivifc::site::test
