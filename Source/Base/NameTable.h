/// @file
/// A table from names to their owners, which only grows: the objects of a schema, the sets of a collection.
///
///     NameTable<ObjectBase> objects;
///     objects.vReserve(1);                   // all that can fail
///     objects.vAdd("IFCWALL", *wall);        // cannot
///     auto* found = objects.pFindUpper("IfcWall");
///
/// The bytes of most names lie in the table itself, each name in a cache line of its own: in a large
/// collection a look-up waits for one place in memory. A name is compared by a few words that are always
/// looked at, without a branch for its length.
///
/// Ownership: refers to the owners of the names and to the texts of the names, which must outlive it.
/// Threads:   one thread while it is filled; then readable from any number of threads.
/// Errors:    std::bad_alloc from `vReserve` alone. A name that is not there is null.
#pragma once

#include "Base/BloomBits.h"
#include "Base/HashKeys.h"
#include "Base/ProbeTable.h"
#include "Base/Words8.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kiv {

/// The words of a name: its bytes 0 to 31 and its last eight. Where it is shorter a word is that of the last
/// eight bytes, or of all; so names of one length that have the same words are the same, up to `WholeMax`
/// bytes.
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
    /// A function of its own, so that the code for all other names stays short.
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
struct NameSlot;

/// The changes that a key makes to each eight bytes of its name.
struct Unchanged {
    constexpr std::uint64_t operator()(std::uint64_t bytes) const { return bytes; }
};
struct UpperCased {
    constexpr std::uint64_t operator()(std::uint64_t bytes) const { return getUpper8(bytes); }
};

/// A name to be looked for in a `ProbeTable`, changed by `Change`.
template <class Change>
class NameKey {
public:
    NameKey(std::string_view name, const HashKeys& keys) :
        words_(name, Change()), name_(name), hash_(words_.getHash(keys)) {}

    std::uint64_t getHash() const { return hash_; }
    std::string_view getName() const { return name_; }
    const NameWords::Words& getWords() const { return words_.getWords(); }

    template <class Value>
    bool isOf(const NameSlot<Value>& slot) const {
        std::uint64_t different = slot.name.size() ^ words_.getSize();
        for (std::size_t index = 0; index < NameWords::Count; ++index)
            different |= slot.words[index] ^ words_.getWords()[index];
        return different == 0 &&
               (words_.getSize() <= NameWords::WholeMax || isSameChanged(name_, slot.name, Change()));
    }

private:
    NameWords words_;
    std::string_view name_;
    std::uint64_t hash_;
};

/// The slot of a name in a `ProbeTable`: one cache line.
template <class Value>
struct alignas(64) NameSlot {
    NameSlot() = default;
    NameSlot(const NameKey<Unchanged>& key, Value* owner) :
        words(key.getWords()), name(key.getName()), value(owner) {}

    NameKey<Unchanged> getKey() const { return {name, hashKeys()}; }

    NameWords::Words words{};
    std::string_view name;
    // Null in an empty slot.
    Value* value = nullptr;
};

template <class Value>
class NameTable {
public:
    /// Makes place for that many more names. When it throws, nothing has changed.
    void vReserve(std::size_t count, WorkMeter* meter = nullptr) { table_.vReserve(count, meter); }

    /// Adds the owner of a name, for which there must be place; the first owner of a name stays.
    void vAdd(std::string_view name, Value& value) noexcept {
        table_.boAdd(NameKey<Unchanged>(name, keys_), &value);
        beginnings_.vAdd(beginningOf(name));
    }

    /// The owner of exactly this name; null when there is none.
    Value* pFind(std::string_view name) const { return table_.pFind(NameKey<Unchanged>(name, keys_)); }

    /// The owner of this name made upper-case; null when there is none, which for most texts that are no name
    /// shows in their first letter and their length.
    Value* pFindUpper(std::string_view name) const {
        return beginnings_.isPossible(beginningOf(name)) ? table_.pFind(NameKey<UpperCased>(name, keys_))
                                                         : nullptr;
    }

private:
    static constexpr std::size_t FirstBytes = 32;
    static constexpr std::size_t Lengths = 64;

    /// A number for the length of a name and for what its first byte has in common with the other case of the
    /// same letter.
    static std::size_t beginningOf(std::string_view name) {
        const auto first = name.empty() ? 0U : static_cast<unsigned char>(name.front()) % FirstBytes;
        return first * Lengths + name.size() % Lengths;
    }

    // A copy: the shared ones are only reached through a check whether they are drawn already.
    HashKeys keys_ = hashKeys();
    ProbeTable<NameSlot<Value>> table_;
    // A table that was moved from keeps them, and finds nothing all the same.
    BloomBits<std::array<std::uint64_t, FirstBytes * Lengths / 64>> beginnings_;
};

} // namespace kiv
