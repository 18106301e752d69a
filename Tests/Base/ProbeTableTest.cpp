#include "Base/ProbeTable.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace kiv {
namespace {

struct TextSlot;

/// Puts every key into the last slot, so that all of them collide and searches go round the end of the table.
class TextKey {
public:
    explicit TextKey(std::string_view text) : text_(text) {}

    std::uint64_t getHash() const { return std::numeric_limits<std::uint64_t>::max(); }
    std::string_view getText() const { return text_; }
    bool isOf(const TextSlot& slot) const;

private:
    std::string_view text_;
};

struct TextSlot {
    TextSlot() = default;
    TextSlot(const TextKey& key, const int* owner) : text(key.getText()), value(owner) {}

    TextKey getKey() const { return TextKey(text); }

    std::string_view text;
    const int* value = nullptr;
};

bool TextKey::isOf(const TextSlot& slot) const {
    return text_ == slot.text;
}

/// Another key for the same slots: the text that has this length.
struct LengthKey {
    std::uint64_t getHash() const { return std::numeric_limits<std::uint64_t>::max(); }
    bool isOf(const TextSlot& slot) const { return slot.text.size() == length; }

    std::size_t length;
};

class Table {
public:
    void vReserve(std::size_t count) { table_.vReserve(count); }
    bool boAdd(std::string_view text, const int& owner) { return table_.boAdd(TextKey(text), &owner); }
    const int* pFind(std::string_view text) const { return table_.pFind(TextKey(text)); }
    const int* pFindLength(std::size_t length) const { return table_.pFind(LengthKey{length}); }

private:
    ProbeTable<TextSlot> table_;
};

static_assert(std::is_nothrow_move_constructible_v<ProbeTable<TextSlot>>);
static_assert(std::is_nothrow_move_assignable_v<ProbeTable<TextSlot>>);

TEST(ProbeTableTest, EmptyTableFindsNothing) {
    const Table table;
    EXPECT_EQ(table.pFind("A"), nullptr);
    EXPECT_EQ(table.pFind(""), nullptr);
}

TEST(ProbeTableTest, KeysOfOneHashAreDistinguished) {
    const std::array<std::string, 5> keys{"A", "B", "", "AB", "a"};
    std::array<int, 5> owners{};
    Table table;
    table.vReserve(keys.size());
    for (std::size_t index = 0; index < keys.size(); ++index)
        EXPECT_TRUE(table.boAdd(keys[index], owners[index])) << keys[index];
    for (std::size_t index = 0; index < keys.size(); ++index)
        EXPECT_EQ(table.pFind(keys[index]), &owners[index]) << keys[index];
    EXPECT_EQ(table.pFind("C"), nullptr);
}

TEST(ProbeTableTest, FirstOwnerOfAKeyStays) {
    int first = 0;
    int second = 0;
    Table table;
    table.vReserve(2);
    EXPECT_TRUE(table.boAdd("A", first));
    EXPECT_FALSE(table.boAdd("A", second));
    EXPECT_EQ(table.pFind("A"), &first);
}

TEST(ProbeTableTest, KeysAreKeptWhenTheTableGrows) {
    constexpr int count = 300;
    std::array<std::string, count> keys;
    std::array<int, count> owners{};
    Table table;
    for (std::size_t index = 0; index < keys.size(); ++index) {
        keys[index] = std::to_string(index);
        table.vReserve(1);
        EXPECT_TRUE(table.boAdd(keys[index], owners[index])) << keys[index];
    }
    for (std::size_t index = 0; index < keys.size(); ++index)
        EXPECT_EQ(table.pFind(keys[index]), &owners[index]) << index;
    EXPECT_EQ(table.pFind("300"), nullptr);
}

TEST(ProbeTableTest, MovedTableTakesItsKeysAlongAndLeavesAnEmptyOne) {
    int owner = 0;
    Table from;
    from.vReserve(1);
    from.boAdd("A", owner);
    Table to(std::move(from));
    EXPECT_EQ(to.pFind("A"), &owner);
    EXPECT_EQ(from.pFind("A"),
              nullptr); // NOLINT(bugprone-use-after-move): that it may be used is what is tested
    from.vReserve(1);
    from.boAdd("B", owner);
    to = std::move(from);
    EXPECT_EQ(to.pFind("A"), nullptr);
    EXPECT_EQ(to.pFind("B"), &owner);
}

TEST(ProbeTableTest, KeysOfAnotherTypeAskTheSameSlots) {
    const int first = 0;
    const int second = 0;
    Table table;
    table.vReserve(2);
    table.boAdd("A", first);
    table.boAdd("BC", second);
    EXPECT_EQ(table.pFindLength(1), &first);
    EXPECT_EQ(table.pFindLength(2), &second);
    EXPECT_EQ(table.pFindLength(3), nullptr);
}

/// However full a table is by what place was made for, searches for what is not there end.
TEST(ProbeTableTest, SearchesEndInATableOfEachSize) {
    const int owner = 0;
    for (std::size_t count = 1; count <= 40; ++count) {
        const std::string texts(count, 'x');
        Table table;
        table.vReserve(count);
        for (std::size_t length = 1; length <= count; ++length)
            EXPECT_TRUE(table.boAdd(std::string_view(texts).substr(0, length), owner));
        EXPECT_EQ(table.pFindLength(count), &owner) << count;
        EXPECT_EQ(table.pFindLength(count + 1), nullptr) << count;
    }
}

} // namespace
} // namespace kiv
