/// @file
/// A filter before a table: one bit for each number that was added, to answer most questions for others at
/// once.
///
///     BloomBits<std::array<std::uint64_t, 32>> lengths;
///     lengths.vAdd(name.size());
///     if (!lengths.isPossible(other.size())) return nullptr; // there is no name of this length
///
/// Numbers that are the same modulo the count of bits share a bit; so a number that was never added may be
/// possible, while one that was added always is.
///
/// Ownership: a value.
/// Threads:   one thread while it is filled; then readable from any number of threads.
/// Errors:    std::bad_alloc from `boReserve` alone.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace kiv {

/// `Words` is an array of words, as many as a power of two, or a vector of them, which `boReserve` makes
/// longer.
template <class Words>
class BloomBits {
public:
    /// Makes the vector hold at least that many bits. True when it has grown: then all its bits are 0, and
    /// what was added has to be added again. When it throws, nothing has changed.
    bool boReserve(std::size_t bitCount) {
        const auto wordCount = std::bit_ceil(std::max<std::size_t>(bitCount / WordBits, 1));
        if (wordCount <= words_.size())
            return false;
        words_.assign(wordCount, 0);
        return true;
    }

    /// Adds a number; of a vector place must have been made before.
    void vAdd(std::size_t number) noexcept {
        words_[wordOf(number)] |= std::uint64_t{1} << number % WordBits;
    }

    bool isPossible(std::size_t number) const {
        return !words_.empty() && (words_[wordOf(number)] >> number % WordBits & 1U) != 0;
    }

private:
    static constexpr std::size_t WordBits = 64;

    std::size_t wordOf(std::size_t number) const { return number / WordBits & (words_.size() - 1); }

    Words words_{};
};

} // namespace kiv
