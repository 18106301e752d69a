#include "kiv/Kit/Names/NearestName.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kit {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Names = std::vector<std::string_view>;

std::string sNearest(std::string_view name, const Names& candidates) {
    const auto match = nearestName(name, candidates);
    return match ? std::string(match->name) : std::string();
}

TEST(NearestName, FindsTheNameWithTheFewestChanges) {
    const Names names{"BldDoor", "BldWall", "BldSlab", "IfcWall", "BldStandardWall"};
    EXPECT_EQ(sNearest("BldWal", names), "BldWall");   // one left out
    EXPECT_EQ(sNearest("BldWaall", names), "BldWall"); // one too many
    EXPECT_EQ(sNearest("BldFoor", names), "BldDoor");  // one replaced
    EXPECT_EQ(sNearest("BldWlal", names), "BldWall");  // two swapped
    EXPECT_EQ(sNearest("IfcWlal", names), "IfcWall");
    EXPECT_EQ(sNearest("bldwAL", names), "BldWall"); // case counts for nothing
    EXPECT_EQ(sNearest("Wall", names), "IfcWall");   // nor does that prefix
    EXPECT_EQ(sNearest("Quantity", names), "");
    EXPECT_EQ(sNearest("", names), "");
}

TEST(NearestName, FirstOfEquallyNearNamesIsTaken) {
    EXPECT_EQ(sNearest("BldXall", {"BldHall", "BldWall"}), "BldHall");
}

TEST(NearestName, ChangesUpToAThirdOfAShortNameAreNear) {
    struct Row {
        std::string_view name;
        /// As many letters replaced as a third of the name allows, and one more.
        std::string_view near;
        std::string_view far;
    };
    // A third is rounded down: it is the same for three lengths in a row.
    const Row rows[] = {
        {"ab", "ab", "ax"},
        {"abc", "abx", "axx"},
        {"abcd", "abcx", "abxx"},
        {"abcde", "abcdx", "abcxx"},
        {"abcdef", "abcdxx", "abcxxx"},
        {"abcdefg", "abcdexx", "abcdxxx"},
        {"abcdefgh", "abcdefxx", "abcdexxx"},
        {"abcdefghi", "abcdefxxx", "abcdexxxx"},
        // From there on each six letters allow one more.
        {"abcdefghijklmn", "abcdefghijkxxx", "abcdefghijxxxx"},
        {"abcdefghijklmno", "abcdefghijkxxxx", "abcdefghijxxxxx"},
        {"abcdefghijklmnopqrstu", "abcdefghijklmnopxxxxx", "abcdefghijklmnoxxxxxx"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(sNearest(row.name, {row.near}), row.near);
        EXPECT_EQ(sNearest(row.name, {row.far}), "") << row.name;
    }
}

TEST(NearestName, PrefixesAreNoLikeness) {
    struct Row {
        std::string_view name;
        std::string_view candidate;
    };
    const Row far[] = {
        {"IfcFoo", "IfcDoor"},          {"IfcRoof", "IfcDoor"}, {"Pset_Foo", "Pset_Bar"},
        {"Qto_Wall", "Qto_SlabCommon"}, {"Ifc", "IfcWall"},     {"Pset_", "Pset_WallCommon"},
    };
    for (const auto& row : far)
        EXPECT_EQ(sNearest(row.name, {row.candidate}), "") << row.name;
    const Row near[] = {
        {"IfcDor", "IfcDoor"},
        {"Door", "IfcDoor"},
        {"WallCommon", "Pset_WallCommon"},
        {"IfWall", "IfcWall"},
        {"Pest_WallCommon", "Pset_WallCommon"},
        {"ifcwall", "IfcWall"},
    };
    for (const auto& row : near)
        EXPECT_EQ(sNearest(row.name, {row.candidate}), row.candidate) << row.name;
}

TEST(NearestName, BeginningsWordsAndAbbreviationsAreNear) {
    const Names names{"IfcBuildingElementProxyTypeEnum",
                      "IfcThermalAdmittanceMeasure",
                      "IfcThermalConductivityMeasure",
                      "IfcThermalTransmittanceMeasure",
                      "IfcWall",
                      "IfcWallStandardCase",
                      "IfcWallType",
                      "IfcWallTypeEnum",
                      "Pset_WallCommon",
                      "wall_thickness"};
    EXPECT_EQ(sNearest("Thermaltransmitance", names), "IfcThermalTransmittanceMeasure");
    EXPECT_EQ(sNearest("IfcThermalTransmittance", names), "IfcThermalTransmittanceMeasure");
    EXPECT_EQ(sNearest("Transmittance", names), "IfcThermalTransmittanceMeasure");
    EXPECT_EQ(sNearest("IfcWallStd", names), "IfcWallStandardCase");
    EXPECT_EQ(sNearest("IfcThermalTrMeas", names), "IfcThermalTransmittanceMeasure");
    EXPECT_EQ(sNearest("IfcWallStandard", names), "IfcWallStandardCase");
    EXPECT_EQ(sNearest("ElementProxy", names), "IfcBuildingElementProxyTypeEnum");
    EXPECT_EQ(sNearest("thickness", names), "wall_thickness");
    // The other way round: a name with a word too many.
    EXPECT_EQ(sNearest("IfcWallTypeEnumFoo", names), "IfcWallTypeEnum");
    // No word begins in the middle of another, and three letters are no word.
    EXPECT_EQ(sNearest("mittance", names), "");
    EXPECT_EQ(sNearest("Std", names), "");
}

TEST(NearestName, SpellingComesBeforeParts) {
    const auto match = nearestName("IfcWallTyp", Names{"IfcWallTypeEnum", "IfcWallType", "IfcWall"});
    ASSERT_TRUE(match);
    EXPECT_EQ(match->name, "IfcWallType");
    EXPECT_EQ(match->changes, 1U);
    EXPECT_FALSE(match->isPart);
    EXPECT_TRUE(nearestName("Transmittance", Names{"IfcThermalTransmittanceMeasure"})->isPart);
    EXPECT_EQ(nearestName("IFCWALL", Names{"IfcWall"})->changes, 0U);
}

TEST(NearestName, FirstWordsOfANameAreNearerThanAnotherSpelling) {
    const Names names{"IfcPile", "IfcPipeSegment", "IfcTable", "IfcCableCarrierFitting", "IfcCableSegment"};
    EXPECT_EQ(sNearest("IfcPipe", names), "IfcPipeSegment");
    EXPECT_EQ(sNearest("IfcCable", names), "IfcCableSegment");
    // A part of a word is not.
    EXPECT_EQ(sNearest("IfcPil", Names{"IfcPile", "IfcPilotLight"}), "IfcPile");
    // Nor are words of which very much is left.
    EXPECT_EQ(sNearest("IfcPipe", Names{"IfcPile", "IfcPipeSegmentOfAnother"}), "IfcPile");
}

TEST(NearestName, ShortListBeginsWithTheNearest) {
    const Names names{"IfcWallElementedCase", "IfcWallType", "IfcDoor", "IfcWall", "IfcWaal"};
    std::vector<std::string_view> found;
    for (const auto& match : nearestNames("IfcWall", names))
        found.push_back(match.name);
    EXPECT_THAT(found, ElementsAre("IfcWall", "IfcWallType", "IfcWaal"));
    EXPECT_THAT(nearestNames("IfcWall", names, 1), testing::SizeIs(1));
    EXPECT_THAT(nearestNames("IfcWall", names, 0), IsEmpty());
    EXPECT_THAT(nearestNames("Quantity", names), IsEmpty());
}

/// The changes by their definition: a letter is inserted, left out, replaced or swapped with its neighbour.
std::size_t distance(std::string_view left, std::string_view right) {
    std::vector<std::vector<std::size_t>> table(left.size() + 1, std::vector<std::size_t>(right.size() + 1));
    for (std::size_t i = 0; i <= left.size(); ++i) {
        for (std::size_t j = 0; j <= right.size(); ++j) {
            if (i == 0 || j == 0) {
                table[i][j] = i + j;
                continue;
            }
            table[i][j] = std::min({table[i - 1][j - 1] + (left[i - 1] == right[j - 1] ? 0U : 1U),
                                    table[i - 1][j] + 1, table[i][j - 1] + 1});
            if (i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1])
                table[i][j] = std::min(table[i][j], table[i - 2][j - 2] + 1);
        }
    }
    return table.back().back();
}

TEST(NearestName, ChangesAreTheFewestThatDo) {
    std::mt19937 random(7);
    std::size_t near = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string left(3 + random() % 20, 'a');
        for (char& letter : left)
            letter = static_cast<char>('a' + random() % 3);
        // A few edits of it, or something else.
        std::string right = left;
        for (auto edits = random() % 7; edits > 0; --edits) {
            const auto place = random() % (right.size() + 1);
            if (random() % 2 == 0)
                right.insert(place, 1, static_cast<char>('a' + random() % 3));
            else if (place < right.size())
                right.erase(place, 1);
        }
        if (right.empty())
            continue;
        const auto changes = distance(left, right);
        const auto allowed = left.size() <= 9 ? left.size() / 3 : 3 + (left.size() - 9) / 6;
        const auto match = nearestName(left, Names{right});
        const bool isSpelling = match && !match->isPart;
        ASSERT_EQ(isSpelling, changes <= allowed) << left << ' ' << right;
        if (isSpelling) {
            EXPECT_EQ(match->changes, changes) << left << ' ' << right;
            ++near;
        }
    }
    EXPECT_GT(near, 5000U);
}

TEST(NearestName, NamesOfAbsurdLengthAreNotCompared) {
    const std::string longest(maxNameLength, 'a');
    EXPECT_EQ(sNearest(longest, {longest}), longest);
    const std::string name(maxNameLength + 1, 'a');
    EXPECT_EQ(sNearest(name, {name}), "");
    EXPECT_EQ(sNearest("aaaa", {name}), "");
}

} // namespace

} // namespace kiv::kit
