#include "Base/NameDirectory.h"
#include "Base/UpperCase.h"

#include "Base/UpperCase.h"
#include "Format/Ifc/Def/Schema/SchemaTestTools.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace kiv;
using namespace kiv::test;

/// The owner of a name.
class Thing {
public:
    explicit Thing(std::string_view name) : name_(name), upper_(sUpper(name)) {}
    std::string_view getName() const { return name_; }
    std::string_view getNameUpper() const { return upper_; }

private:
    std::string name_;
    std::string upper_;
};

using Directory = NameDirectory<const Thing>;

struct Things {
    explicit Things(const Strings& names) : all(names.begin(), names.end()) {
        for (const auto& thing : all)
            directory.vAdd(&thing);
        directory.vBuild();
    }

    /// The places of all things of this name, in the order of the answer.
    std::vector<std::ptrdiff_t> placesOf(std::string_view name) const {
        std::vector<std::ptrdiff_t> places;
        for (const auto& entry : directory.find(name))
            places.push_back(entry.value - all.data());
        return places;
    }

    std::vector<Thing> all;
    Directory directory;
};

using Places = std::vector<std::ptrdiff_t>;

TEST(NameDirectoryTest, NothingIsFoundBeforeItIsBuilt) {
    const Thing thing("a");
    Directory directory;
    directory.vAdd(&thing);
    EXPECT_TRUE(directory.find("a").empty());
}

TEST(NameDirectoryTest, WithoutEntriesNothingIsFound) {
    const Things things(Strings{});
    EXPECT_EQ(things.placesOf("a"), Places());
    EXPECT_EQ(things.placesOf(""), Places());
}

TEST(NameDirectoryTest, FindsAllOfANameInTheOrderInWhichTheyWereAdded) {
    const Things things({"b", "A", "a", "c", "B", "a", ""});
    EXPECT_EQ(things.placesOf("a"), (Places{1, 2, 5}));
    EXPECT_EQ(things.placesOf("B"), (Places{0, 4}));
    EXPECT_EQ(things.placesOf("c"), (Places{3}));
    EXPECT_EQ(things.placesOf(""), (Places{6}));
    EXPECT_EQ(things.placesOf("d"), Places());
}

/// The hash does not see the bit in which lower-case letters differ from upper-case ones, in no byte; so
/// names that differ in it between other bytes than letters have one hash.
TEST(NameDirectoryTest, ListsAllEntriesThoseOfANameSideBySide) {
    const Things things({"b", "A", "a", "c", "B", "a"});
    std::vector<std::ptrdiff_t> ofA;
    std::vector<std::size_t> positions;
    const auto entries = things.directory.getEntries();
    for (std::size_t position = 0; position < entries.size(); ++position) {
        if (entries[position].getNameUpper() != "A")
            continue;
        ofA.push_back(entries[position].value - things.all.data());
        positions.push_back(position);
    }
    EXPECT_EQ(entries.size(), 6U);
    EXPECT_EQ(ofA, (Places{1, 2, 5}));
    EXPECT_EQ(positions.back() - positions.front(), 2U);
}

TEST(NameDirectoryTest, FindsAllOfANameThatManyHave) {
    for (const std::size_t count : {15U, 16U, 17U, 18U, 100U}) {
        Strings names;
        for (std::size_t index = 0; index != count; ++index)
            names.insert(names.end(), {"Name", "Other" + std::to_string(index)});
        const Things things(names);
        std::vector<std::ptrdiff_t> places;
        for (std::size_t index = 0; index != count; ++index)
            places.push_back(static_cast<std::ptrdiff_t>(2 * index));
        EXPECT_EQ(things.placesOf("nAME"), places);
        EXPECT_EQ(things.placesOf("Other7"), std::vector<std::ptrdiff_t>{15});
    }
}

TEST(NameDirectoryTest, NamesOfOneHashAreDistinguished) {
    const Things things({"x{", "X[", "x{", "X[", "x["});
    ASSERT_EQ(upperHash("x{"), upperHash("X["));
    ASSERT_EQ(upperHash("X|"), upperHash("X\\"));
    EXPECT_EQ(things.placesOf("X{"), (Places{0, 2}));
    EXPECT_EQ(things.placesOf("x["), (Places{1, 3, 4}));
    EXPECT_EQ(Things({"X\\"}).placesOf("X|"), Places());
    EXPECT_EQ(Things({"X|"}).placesOf("X\\"), Places());
}

/// More names of one hash than are put in order one by one.
TEST(NameDirectoryTest, ManyNamesOfOneHashAreDistinguished) {
    Strings names;
    for (std::size_t number = 0; number < 64; ++number) {
        std::string name;
        for (std::size_t bit = 0; bit < 6; ++bit)
            name += (number >> bit & 1U) != 0 ? '{' : '[';
        names.push_back(name);
    }
    names.insert(names.end(), {names[7], names[63]});
    const Things things(names);
    for (std::ptrdiff_t place = 0; place < 64; ++place) {
        const auto& name = names[static_cast<std::size_t>(place)];
        const Places expected = place == 7 ? Places{7, 64} : place == 63 ? Places{63, 65} : Places{place};
        EXPECT_EQ(things.placesOf(name), expected) << name;
    }
}

} // namespace
