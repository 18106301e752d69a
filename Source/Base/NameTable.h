/// A table from names to what bears them, which only grows: the objects of a schema, the sets of a collection.
///
///     NameTable<ObjectBase> objects;
///     objects.vReserve(1);                   // all that can fail
///     objects.vAdd("IFCWALL", *wall);        // cannot
///     auto* found = objects.pFindUpper("IfcWall");
///
/// The bytes of most names lie in the table itself, each name in a cache line of its own: in a large collection a question
/// waits for one place in memory. A name is compared by a few words that are always looked at, without a branch for its length.
///
/// Ownership: refers to what bears the names and to their texts, which must outlive it.
/// Threads:   one thread while it is filled; then readable from any number of threads.
/// Errors:    a name that is not there is null.
#pragma once

#include "Base/HashKeys.h"
#include "Base/Words8.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv {

/// The words of a name: its bytes 0 to 31 and its last eight. Where it is shorter a word is that of the last eight bytes, or of
/// all; so names of one length that have the same words are the same, up to `WholeMax` bytes.
class NameWords {
public:
    static constexpr std::size_t Count = 5;
    static constexpr std::size_t WholeMax = Count * LongText;
    using Words = std::array<std::uint64_t, Count>;

    /// `change` is made to each eight bytes, such as `getUpper8`.
    template <class Change>
    NameWords(std::string_view name, Change change) : size_(name.size()) {
        if (name.size() < LongText) {
            words_.fill(change(getShortText(name)));
            return;
        }
        const auto last = name.size() - LongText;
        for (std::size_t index = 0; index + 1 < Count; ++index)
            words_[index] = change(getBytes8(name.data() + std::min(index * LongText, last)));
        words_.back() = change(getBytes8(name.data() + last));
        if (name.size() > WholeMax) [[unlikely]]
            rest_ = getRestHash(name, change);
    }

    const Words& getWords() const { return words_; }
    std::size_t getSize() const { return size_; }

    std::uint64_t getHash(const HashKeys& keys) const {
        return getFolded(words_[0] ^ keys[0], words_[1] ^ keys[1]) ^
               getFolded(words_[2] ^ keys[2], words_[3] ^ keys[3]) ^
               getFolded(words_[4] ^ keys[4], (size_ + rest_) ^ keys[5]);
    }

private:
    /// Apart, so that the way of all other names stays short.
    template <class Change>
    [[gnu::noinline]] static std::uint64_t getRestHash(std::string_view name, Change change) {
        const auto& keys = hashKeys();
        std::uint64_t hash = 0;
        for (auto pos = WholeMax - LongText; pos + LongText < name.size(); pos += LongText)
            hash = getFolded(hash ^ keys[0], change(getBytes8(name.data() + pos)) ^ keys[1]);
        return hash;
    }

    Words words_{};
    std::size_t size_;
    // Of what lies between the words of a longer name.
    std::uint64_t rest_ = 0;
};

template <class Value>
class NameTable {
public:
    NameTable() : keys_(hashKeys()) {}
    NameTable(NameTable&& other) noexcept :
        keys_(other.keys_),
        slots_(std::exchange(other.slots_, {})),
        size_(std::exchange(other.size_, 0)),
        lengths_(std::exchange(other.lengths_, {})) {}
    NameTable& operator=(NameTable&& other) noexcept {
        slots_ = std::exchange(other.slots_, {});
        size_ = std::exchange(other.size_, 0);
        lengths_ = std::exchange(other.lengths_, {});
        return *this;
    }
    ~NameTable() = default;

    /// Makes place for so many more names. When it throws, nothing has changed.
    void vReserve(std::size_t count) {
        const auto slotCount = slotCountFor(size_ + count);
        if (slotCount <= slots_.size())
            return;
        std::vector<Slot> former(slotCount);
        former.swap(slots_);
        size_ = 0;
        for (const auto& slot : former) {
            if (slot.value)
                vAdd(slot.name, *slot.value);
        }
    }

    /// Adds what bears a name, for which there must be place; the first of a name stays.
    void vAdd(std::string_view name, Value& value) noexcept {
        const NameWords words(name, unchanged);
        auto& slot = slots_[indexOf(words, [&](std::string_view other) { return isSameText(name, other); })];
        if (slot.value)
            return;
        slot = {words.getWords(), name, &value};
        lengths_[firstOf(name)] |= lengthBit(name);
        ++size_;
    }

    /// What bears exactly this name; null when nothing does.
    Value* pFind(std::string_view name) const {
        return pFind(NameWords(name, unchanged),
                     [&](std::string_view other) { return isSameText(name, other); });
    }

    /// What bears this name made upper-case; null when nothing does, which most texts that are no name show by their first letter
    /// and their length.
    Value* pFindUpper(std::string_view name) const {
        if ((lengths_[firstOf(name)] & lengthBit(name)) == 0)
            return nullptr;
        return pFind(NameWords(name, getUpper8),
                     [&](std::string_view other) { return isUpperOf(name, other); });
    }

private:
    struct alignas(64) Slot {
        NameWords::Words words{};
        std::string_view name;
        // Null in an empty slot.
        Value* value = nullptr;
    };

    static constexpr std::uint64_t unchanged(std::uint64_t bytes) { return bytes; }

    /// Of the first byte of a name what is the same for both cases of a letter and different for most letters.
    static std::size_t firstOf(std::string_view name) {
        return name.empty() ? 0 : static_cast<unsigned char>(name.front()) & 0x1FU;
    }
    static std::uint64_t lengthBit(std::string_view name) { return std::uint64_t{1} << (name.size() % 64); }

    template <class IsName>
    Value* pFind(const NameWords& words, IsName isName) const {
        return slots_.empty() ? nullptr : slots_[indexOf(words, isName)].value;
    }

    /// The slot of the name, or the empty one where it belongs.
    template <class IsName>
    std::size_t indexOf(const NameWords& words, IsName isName) const {
        auto index = static_cast<std::size_t>(words.getHash(keys_) >> (64 - std::countr_zero(slots_.size())));
        while (slots_[index].value && !boHas(slots_[index], words, isName))
            index = (index + 1) & (slots_.size() - 1);
        return index;
    }

    template <class IsName>
    static bool boHas(const Slot& slot, const NameWords& words, IsName isName) {
        std::uint64_t different = slot.name.size() ^ words.getSize();
        for (std::size_t index = 0; index < NameWords::Count; ++index)
            different |= slot.words[index] ^ words.getWords()[index];
        return different == 0 && (words.getSize() <= NameWords::WholeMax || isName(slot.name));
    }

    HashKeys keys_;
    // None, or a power of two.
    std::vector<Slot> slots_;
    std::size_t size_ = 0;
    // For each first byte, the lengths of names that begin so.
    std::array<std::uint64_t, 32> lengths_{};
};

} // namespace kiv
