#include "kivifc/Site/Addresses.h"

#include "Tools/kivifc/Site/SiteSample.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <utility>

namespace kiv::kivifc::site::test {

namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

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

TEST(FileNames, NameThatDiffersInLetterCaseAloneHasASuffix) {
    FileNames names;
    EXPECT_EQ(names.sTake("Pset_Wall", ""), "Pset_Wall.html");
    EXPECT_THAT(names.sTake("PSET_WALL", ""), StartsWith("PSET_WALL~"));
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
