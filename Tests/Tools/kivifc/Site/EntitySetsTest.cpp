#include "kivifc/Site/EntitySets.h"

#include "Support/CountOf.h"
#include "Tools/kivifc/Site/SetTexts.h"
#include "Tools/kivifc/Site/SiteSample.h"
#include "kivifc/Site/Addresses.h"

#include <cstddef>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace kiv::kivifc::site::test {

namespace {

using kiv::test::countOf;
using testing::HasSubstr;
using testing::Not;

std::string sProperties(int count) {
    std::string members;
    for (int number = 0; number < count; ++number)
        members += sProperty("P" + std::to_string(number), sSingle("Label"));
    return members;
}

std::string sFamily(int children) {
    std::string text = "TYPE Label = STRING;\nEND_TYPE;\nENTITY Root;\nEND_ENTITY;\n";
    for (int number = 0; number < children; ++number)
        text += "ENTITY Child" + std::to_string(number) + "\n SUBTYPE OF (Root);\nEND_ENTITY;\n";
    return text;
}

using Sets = std::vector<std::pair<std::string, std::string>>;

/// Of a set of a context that is called like it.
std::string sOwnFile(const std::string& name) {
    return "sets/" + FileNames().sTakeMarked(name, "context" + name);
}

TEST(EntitySets, WhatIsInheritedHasLessRoomThanWhatIsOwn) {
    Sets sets;
    for (const std::string name : {"Pset_A", "Pset_B", "Pset_C"})
        sets.emplace_back("context" + name, sSet(name, {"Root"}, sProperties(200)));
    const SiteSample sample(sFamily(1), sets);
    const auto own = sample.sPage("Root.html");
    const auto inherited = sample.sPage("Child0.html");
    for (const std::string name : {"Pset_A", "Pset_B", "Pset_C"})
        EXPECT_THAT(own, HasSubstr(sOwnFile(name) + "#P199\"")) << name;
    // 400 members fit into 500; the last set is named alone.
    EXPECT_THAT(inherited, HasSubstr(sOwnFile("Pset_B") + "#P199\""));
    EXPECT_THAT(inherited, Not(HasSubstr(sOwnFile("Pset_C") + "#P")));
    const auto file = sOwnFile("Pset_C");
    // The address in place is that of the page, without folder and ending.
    const auto id = "set-" + file.substr(5, file.size() - 10);
    EXPECT_THAT(inherited,
                HasSubstr("<p id=\"" + id + "\"><a href=\"" + file + "\"><code>Pset_C</code></a>"));
}

TEST(EntitySets, PredefinedTypesAreLinks) {
    const SiteSample sample("TYPE Kind = ENUMERATION OF\n (SOLID,\n HOLLOW);\nEND_TYPE;\nENTITY Wall;\n"
                            "    PredefinedType : Kind;\nEND_ENTITY;\n",
                            {{"TEST", sSet("S", {"Wall/SOLID"}, "")}});
    EXPECT_THAT(sample.sPage("Wall.html"),
                HasSubstr("<h4>Predefined type <a href=\"Kind.html#SOLID\"><code>SOLID</code></a></h4>"));
}

TEST(EntitySets, SeveralPredefinedTypesAreSeveral) {
    const SiteSample sample("TYPE Kind = ENUMERATION OF\n (SOLID,\n HOLLOW);\nEND_TYPE;\nENTITY Wall;\n"
                            "    PredefinedType : Kind;\nEND_ENTITY;\n",
                            {{"TEST", sSet("S", {"Wall/SOLID", "Wall/HOLLOW"}, "")}});
    EXPECT_THAT(sample.sPage("Wall.html"), HasSubstr("<h4>Predefined types <a href=\"Kind.html#SOLID\">"));
}

/// A set that names the entity and its supertype is there twice, and an address is there once.
TEST(EntitySets, EachHasAnAddressOnThePageOfTheEntity) {
    const SiteSample sample(sFamily(1), {{"TEST", sSet("S", {"Root", "Child0"}, sProperties(1))}});
    for (const std::string name : {"Root.html", "Child0.html"}) {
        const auto page = sample.sPage(name);
        EXPECT_EQ(countOf(page, "<details class=\"set\" id=\"set-S\"><summary>"), 1U) << name;
        EXPECT_THAT(page,
                    HasSubstr("Page of the set</a><a class=\"anchor\" href=\"#set-S\" aria-label=\"Link "
                              "to S\">#</a>"));
    }
    EXPECT_EQ(countOf(sample.sPage("Child0.html"), "<details class=\"set\"><summary>"), 1U);
}

/// Two contexts may have a set of one name.
TEST(EntitySets, SetsOfOneNameHaveTwoAddresses) {
    const SiteSample sample(sFamily(0),
                            {{"TEST", sSet("S", {"Root"}, "")}, {"office", sSet("S", {"Root"}, "")}});
    const auto page = sample.sPage("Root.html");
    EXPECT_EQ(countOf(page, "id=\"set-S\""), 1U);
    EXPECT_EQ(countOf(page, "id=\"set-S~"), 1U);
}

/// Sets of hosts are searched before the standard ones.
TEST(EntitySets, SetThatIsHiddenSaysSo) {
    const SiteSample sample(
        sFamily(0), {{"TEST", sSet("S", {"Root"}, sProperties(1))}, {"office", sSet("S", {"Root"}, "")}});
    const auto page = sample.sPage("Root.html");
    EXPECT_THAT(page, HasSubstr("<bdi>S</bdi> <span class=\"count\">1</span> <span class=\"badge\">hidden by "
                                "office</span></summary>"));
    EXPECT_THAT(page, HasSubstr("<bdi>S</bdi> <span class=\"count\">0</span> <span "
                                "class=\"badge\">office</span></summary>"));
}

/// The sum of all pages.
std::size_t sizeOf(int children) {
    const SiteSample sample(sFamily(children), {{"TEST", sSet("Pset_A", {"Root"}, sProperties(50))}});
    std::size_t size = sample.sPage("Root.html").size();
    for (int number = 0; number < children; ++number)
        size += sample.sPage("Child" + std::to_string(number) + ".html").size();
    return size;
}

/// Each child has the sets of the parent, and neither the children of it nor each other.
TEST(EntitySets, PagesOfAParentWithManyChildrenGrowInProportion) {
    const auto few = sizeOf(100);
    const auto many = sizeOf(400);
    EXPECT_LT(many, few * 5);
    EXPECT_GT(many, few * 3);
}

} // namespace

} // namespace kiv::kivifc::site::test
