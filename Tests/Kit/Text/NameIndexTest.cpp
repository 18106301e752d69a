#include "Kit/Text/NameIndex.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <string_view>

namespace kiv::kit {

namespace {

TEST(NameIndex, TheFirstOfANameStays) {
    constexpr std::string_view Names[] = {"a", "b", "a", "c"};
    NameIndex index;
    const auto same = [&](std::string_view name) {
        return [&Names, name](std::size_t number) { return Names[number] == name; };
    };
    EXPECT_EQ(index.find(1, same("a")), NameIndex::None);
    index.vClear(4);
    // One hash for all, as some names have.
    EXPECT_EQ(index.add(7, 0, same("a")), 0U);
    EXPECT_EQ(index.add(7, 1, same("b")), 1U);
    EXPECT_EQ(index.add(7, 2, same("a")), 0U);
    EXPECT_EQ(index.add(7, 3, same("c")), 3U);
    EXPECT_EQ(index.find(7, same("b")), 1U);
    EXPECT_EQ(index.find(7, same("d")), NameIndex::None);
    index.vClear(0);
    EXPECT_EQ(index.find(7, same("a")), NameIndex::None);
}

TEST(NameIndex, ThereIsRoomForAsManyAsWereSaid) {
    for (std::size_t count = 0; count != 100; ++count) {
        NameIndex index;
        index.vClear(count);
        for (std::size_t number = 0; number != count; ++number)
            EXPECT_EQ(index.add(number * number, number, [=](std::size_t other) { return other == number; }),
                      number);
        // A search for what is not there ends too.
        EXPECT_EQ(index.find(3, [](std::size_t) { return false; }), NameIndex::None);
    }
}

} // namespace

} // namespace kiv::kit
