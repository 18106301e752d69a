#include "kivifc/Site/ObjectIndexPages.h"

#include "Support/CountOf.h"
#include "Tools/kivifc/Site/SetTexts.h"
#include "Tools/kivifc/Site/SiteSample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::site::test {

namespace {

using kiv::test::countOf;
using testing::HasSubstr;
using testing::Not;

std::string sRow(const std::string& name) {
    return "<li id=\"" + name + "\"><a href=\"" + name + ".html\"><code>" + name +
           "</code></a><a class=\"anchor\" href=\"#" + name + "\" aria-label=\"Link to " + name + "\">#</a>";
}

TEST(ObjectIndexPages, TreeHasEachEntityBelowItsSupertype) {
    const SiteSample sample(sEntity("Root", "") + sEntity("Wall", "Root") + sEntity("Door", "Root") +
                            sEntity("Thick", "Wall") + sEntity("Alone", ""));
    EXPECT_THAT(sample.sPage("entities.html"),
                HasSubstr("<ul class=\"tree\">\n" + sRow("Alone") + "</li>\n" + sRow("Root") + "\n<ul>\n" +
                          sRow("Door") + "</li>\n" + sRow("Wall") + "\n<ul>\n" + sRow("Thick") +
                          "</li>\n</ul></li>\n</ul></li>\n</ul>\n"));
}

/// Those of the first two levels are open.
TEST(ObjectIndexPages, LargeBranchesCanBeClosed) {
    std::string declarations = sEntity("Root", "") + sEntity("Top", "Root") + sEntity("Few", "Root");
    for (const std::string above : {"Middle", "Other"})
        declarations += sEntity(above, "Top");
    for (int number = 10; number < 22; ++number)
        declarations += sEntity("Low" + std::to_string(number), "Middle");
    for (int number = 10; number < 21; ++number)
        declarations += sEntity("Few" + std::to_string(number), "Few");
    const SiteSample sample(declarations);
    const auto page = sample.sPage("entities.html");
    const auto sBranch = [](const std::string& name, const std::string& below, const std::string& open) {
        return sRow(name) + " <span class=\"count\">" + below + "</span>\n<details" + open +
               "><summary><span class=\"hidden\">Below " + name + "</span></summary>\n<ul>\n";
    };
    EXPECT_THAT(page, HasSubstr(sBranch("Root", "27", " open")));
    EXPECT_THAT(page, HasSubstr(sBranch("Top", "14", " open")));
    EXPECT_THAT(page, HasSubstr(sBranch("Middle", "12", "")));
    EXPECT_THAT(page, HasSubstr(sRow("Few") + "\n<ul>\n"));
    EXPECT_EQ(countOf(page, "<details"), 3U);
    EXPECT_EQ(countOf(page, "</ul></details></li>"), 3U);
}

/// Browsers do not follow lists within lists for ever.
TEST(ObjectIndexPages, LongLineOfInheritanceEndsInAList) {
    std::string declarations = sEntity("E0", "");
    for (int number = 1; number < 300; ++number)
        declarations += sEntity("E" + std::to_string(number), "E" + std::to_string(number - 1));
    const SiteSample sample(declarations);
    const auto page = sample.sPage("entities.html");
    const auto tree = page.substr(page.find("<ul class=\"tree\">"));
    EXPECT_EQ(countOf(tree, "><a href=\"E"), 300U);
    EXPECT_EQ(countOf(tree, "<ul>"), 40U);
    EXPECT_EQ(countOf(tree, "</ul></details></li>"), 40U);
}

TEST(ObjectIndexPages, EntitiesAreUnderTheLetterAfterTheCommonWord) {
    std::string declarations;
    for (int number = 0; number < 30; ++number)
        declarations += sEntity("IfcWall" + std::to_string(number), "");
    const SiteSample sample(declarations + sEntity("IfcDoor", ""));
    const auto page = sample.sPage("entities-by-letter.html");
    EXPECT_THAT(page, HasSubstr("<a href=\"#letter-D\">D</a>\n<a href=\"#letter-W\">W</a>\n</nav>"));
    EXPECT_THAT(page,
                HasSubstr("<h2 id=\"letter-D\">D</h2>\n<ul class=\"names\">\n<li><a href=\"IfcDoor.html\">"));
    EXPECT_THAT(page, Not(HasSubstr("letter-I\"")));
}

TEST(ObjectIndexPages, TypesAreByWhatTheyAreMadeOf) {
    const SiteSample sample(
        "TYPE Kind = ENUMERATION OF\n (A,\n B);\nEND_TYPE;\nTYPE Label = STRING;\nEND_TYPE;\n"
        "TYPE Some = SELECT (Label);\nEND_TYPE;\n");
    const auto page = sample.sPage("types.html");
    const auto section = [&](const std::string& id) {
        const auto begin = page.find("<section id=\"" + id + "\">");
        return begin == std::string::npos ? "" : page.substr(begin, page.find("</section>", begin) - begin);
    };
    EXPECT_THAT(section("enumerations"), HasSubstr("Kind.html"));
    EXPECT_THAT(section("selects"), HasSubstr("Some.html"));
    EXPECT_THAT(section("simple"), HasSubstr("Label.html"));
    EXPECT_EQ(countOf(page, "<li><a href="), 4U) << "three types and the way to the start page";
}

TEST(ObjectIndexPages, WhatIsNotThereIsSaid) {
    const SiteSample sample(sEntity("Wall", ""));
    EXPECT_THAT(sample.sPage("functions.html"), HasSubstr("The schema has none."));
}

} // namespace

} // namespace kiv::kivifc::site::test
