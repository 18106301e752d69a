#include "kivifc/Site/Addresses.h"

#include "Tools/kivifc/Site/SiteSample.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace kiv::kivifc::site::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;
using testing::UnorderedElementsAre;

TEST(FileNames, SafeNameIsItsOwnFile) {
    FileNames names;
    EXPECT_EQ(names.sTake("IfcWall", ""), "IfcWall.html");
    EXPECT_EQ(names.sTake("Pset_2_Door", ""), "Pset_2_Door.html");
}

struct UnsafeName {
    std::string name;
    std::string begin;
};

void PrintTo(const UnsafeName& row, std::ostream* stream) {
    *stream << row.begin;
}

class FileNamesUnsafe : public testing::TestWithParam<UnsafeName> {};

TEST_P(FileNamesUnsafe, HasASuffixThatIsTheSameEachTime) {
    FileNames names;
    FileNames others;
    const auto file = names.sTake(GetParam().name, "");
    EXPECT_THAT(file, MatchesRegex(GetParam().begin + "~[0-9a-f]+\\.html"));
    EXPECT_EQ(others.sTake(GetParam().name, ""), file);
}

INSTANTIATE_TEST_SUITE_P(Names, FileNamesUnsafe,
                         testing::Values(UnsafeName{"../etc/passwd", "etcpasswd"}, UnsafeName{"", ""},
                                         UnsafeName{"_Hidden", "_Hidden"}, UnsafeName{"a b", "ab"},
                                         UnsafeName{"CON", "CON"}, UnsafeName{"Com1", "Com1"},
                                         UnsafeName{"index", "index"}, UnsafeName{"Sets", "Sets"},
                                         UnsafeName{"\xE5\xA2\x99", ""},
                                         UnsafeName{std::string(300, 'x'), std::string(100, 'x')}));

/// The files of names, which are all expected, by name.
std::map<std::string, std::string> filesOf(const std::vector<std::string>& names) {
    FileNames files;
    for (const auto& name : names)
        files.vExpect(name);
    std::map<std::string, std::string> found;
    for (const auto& name : names)
        found.emplace(name, files.sTake(name, ""));
    return found;
}

TEST(FileNames, NamesThatDifferInLetterCaseAloneEachHaveASuffix) {
    const auto files = filesOf({"Pset_Wall", "PSET_WALL", "Pset_Door"});
    EXPECT_THAT(files.at("Pset_Wall"), MatchesRegex("Pset_Wall~[0-9a-f]+\\.html"));
    EXPECT_THAT(files.at("PSET_WALL"), MatchesRegex("PSET_WALL~[0-9a-f]+\\.html"));
    EXPECT_NE(files.at("Pset_Wall").substr(9), files.at("PSET_WALL").substr(9));
    EXPECT_EQ(files.at("Pset_Door"), "Pset_Door.html");
}

TEST(FileNames, NeitherOrderNorAThirdNameChangesASuffix) {
    const auto files = filesOf({"Pset_Wall", "PSET_WALL"});
    EXPECT_EQ(filesOf({"PSET_WALL", "Pset_Wall"}), files);
    const auto three = filesOf({"pset_wall", "Pset_Wall", "PSET_WALL"});
    for (const auto& [name, file] : files)
        EXPECT_EQ(three.at(name), file);
}

/// A name that nobody said would come takes no other one's file.
TEST(FileNames, UnexpectedNameThatDiffersInLetterCaseAloneHasASuffix) {
    FileNames names;
    EXPECT_EQ(names.sTake("Pset_Wall", ""), "Pset_Wall.html");
    EXPECT_THAT(names.sTake("PSET_WALL", ""), StartsWith("PSET_WALL~"));
}

/// The same name again is no other one.
TEST(FileNames, FirstOfEqualNamesIsItsOwnFile) {
    FileNames names;
    names.vExpect("Pset_Wall");
    names.vExpect("Pset_Wall");
    EXPECT_EQ(names.sTake("Pset_Wall", "IFC4"), "Pset_Wall.html");
    EXPECT_THAT(names.sTake("Pset_Wall", "IFC4\nOther.xml"), StartsWith("Pset_Wall~"));
}

TEST(FileNames, NameOfTwoContextsHasAFileForEach) {
    FileNames names;
    const auto standard = names.sTake("Pset_Wall", "IFC4");
    const auto office = names.sTake("Pset_Wall", "office");
    const auto again = names.sTake("Pset_Wall", "office");
    EXPECT_EQ(standard, "Pset_Wall.html");
    EXPECT_EQ((std::set<std::string>{standard, office, again}.size()), 3U);
}

/// What they cost is in Robustness/Growth.
TEST(FileNames, ManyEqualNamesHaveAFileEach) {
    constexpr int Count = 30000;
    FileNames names;
    std::set<std::string> files;
    for (int number = 0; number < Count; ++number)
        files.insert(names.sTake("Pset_Wall", "office"));
    EXPECT_EQ(files.size(), static_cast<std::size_t>(Count));
}

/// A standard set that is added later changes no address of one's own, and none leads to another set then.
TEST(Addresses, SetOfYourOwnStaysWhereItIs) {
    const auto set = [](const std::string& definition) {
        return "<PropertySetDef><Name>Pset_Wall</Name><Definition>" + definition +
               "</Definition></PropertySetDef>";
    };
    const std::pair<std::string, std::string> standard("TEST", set("Standard."));
    const std::pair<std::string, std::string> office("office", set("Ours."));
    const auto ours = "sets/" + FileNames().sTakeMarked("Pset_Wall", "office");
    EXPECT_THAT(ours, MatchesRegex("sets/Pset_Wall~[0-9a-f]+\\.html"));
    EXPECT_THAT(SiteSample("", {office}).sPage(ours), HasSubstr("Ours."));
    for (const bool isStandardFirst : {true, false}) {
        const SiteSample sample("",
                                {isStandardFirst ? standard : office, isStandardFirst ? office : standard});
        EXPECT_THAT(sample.sPage(ours), HasSubstr("Ours."));
        EXPECT_THAT(sample.sPage("sets/Pset_Wall.html"), HasSubstr("Standard."));
    }
}

/// EXPRESS takes them for one name, of which look-ups find one; both have pages.
TEST(Addresses, ObjectsWhoseNamesDifferInLetterCaseAloneEachHaveASuffix) {
    const auto pathsOf = [](const std::string& declarations) {
        const SiteSample sample(declarations);
        std::set<std::string> paths;
        for (const auto* object : sample.getModel().getSchema().getObjects())
            paths.emplace(sample.getModel().getAddresses().of(*object).getPath());
        return paths;
    };
    const std::string entity = "ENTITY Wall;\nEND_ENTITY;\n";
    const std::string type = "TYPE WALL = REAL;\nEND_TYPE;\n";
    const auto paths = pathsOf(entity + type);
    EXPECT_THAT(paths, ElementsAre(StartsWith("WALL~"), StartsWith("Wall~")));
    EXPECT_EQ(pathsOf(type + entity), paths);
}

/// One's own have suffixes of their own, and leave the standard set where it is.
TEST(Addresses, StandardSetStaysWhenASetOfYourOwnDiffersInLetterCase) {
    const auto set = [](const std::string& name) {
        return "<PropertySetDef><Name>" + name + "</Name></PropertySetDef>";
    };
    const SiteSample sample("", {{"TEST", set("Pset_Wall")}, {"office", set("PSET_WALL")}});
    std::vector<std::string> paths;
    for (const auto& each : sample.getModel().getSets())
        paths.emplace_back(sample.getModel().getAddresses().of(*each.set).getPath());
    EXPECT_THAT(paths, UnorderedElementsAre("sets/Pset_Wall.html", StartsWith("sets/PSET_WALL~")));
}

TEST(Anchor, IsTheNameUnlessOursCouldBeTheSame) {
    EXPECT_EQ(sAnchor("PredefinedType"), "PredefinedType");
    EXPECT_EQ(sAnchor("WR1"), "WR1");
    // Ids of sections are in lower case.
    EXPECT_EQ(sAnchor("attributes"), "attributes~");
    EXPECT_EQ(sAnchor("content"), "content~");
}

TEST(Anchor, OfAnyOtherNameHasSafeCharactersOnly) {
    const auto isSafe = [](char byte) {
        return std::isalnum(static_cast<unsigned char>(byte)) || byte == '~';
    };
    for (const std::string name : {"a b", "<x>", "\" onclick=", "", "\xE5\xA2\x99"}) {
        EXPECT_TRUE(std::ranges::all_of(sAnchor(name), isSafe)) << name;
        EXPECT_FALSE(sAnchor(name).empty());
    }
    EXPECT_NE(sAnchor("a b"), sAnchor("a  b"));
}

TEST(Addresses, ObjectsAreAtTheTopUnderTheirNames) {
    const SiteSample sample("ENTITY Wall;\nEND_ENTITY;\nTYPE WALLS = REAL;\nEND_TYPE;\n"
                            "TYPE Index = REAL;\nEND_TYPE;");
    const auto& schema = sample.getModel().getSchema();
    const auto& addresses = sample.getModel().getAddresses();
    EXPECT_EQ(addresses.of(*schema.pObjectFromName("Wall")).getPath(), "Wall.html");
    EXPECT_EQ(addresses.of(*schema.pObjectFromName("Walls")).getPath(), "WALLS.html");
    EXPECT_THAT(std::string(addresses.of(*schema.pObjectFromName("Index")).getPath()), StartsWith("Index~"));
}

} // namespace

} // namespace kiv::kivifc::site::test
