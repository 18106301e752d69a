/// @file
/// What is common to the tests of how accurate the memory of a budget is: inputs of many pieces, and the
/// least memory with which one is read.
///
///     const auto least = leastMemory([&](std::uint64_t memory) { return boReads(text, memory); }, real);
///
/// Ownership: none.
/// Threads:   one thread at a time.
/// Errors:    none.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>

namespace kiv::test {

/// An input and how it is read.
template <class Reader>
struct BudgetRow {
    const char* name;
    std::function<Reader()> make;

    friend std::ostream& operator<<(std::ostream& stream, const BudgetRow& row) { return stream << row.name; }
};

/// The text that many times, each time with its number from 0 in place of "#".
inline std::string sRepeated(std::string_view text, std::size_t count) {
    std::string all;
    for (std::size_t number = 0; number < count; ++number) {
        std::string piece(text);
        for (auto at = piece.find('#'); at != std::string::npos; at = piece.find('#'))
            piece.replace(at, 1, std::to_string(number));
        all += piece;
    }
    return all;
}

/// The least memory that is enough, to a hundredth of `around`, of which four times are enough.
template <class IsEnough>
std::uint64_t leastMemory(IsEnough boEnough, std::uint64_t around) {
    std::uint64_t tooLittle = 0;
    std::uint64_t enough = 4 * around;
    while (enough - tooLittle > around / 100 + 1) {
        const auto between = (tooLittle + enough) / 2;
        (boEnough(between) ? enough : tooLittle) = between;
    }
    return enough;
}

} // namespace kiv::test
