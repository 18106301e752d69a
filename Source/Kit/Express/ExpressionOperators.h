/// @file
/// How EXPRESS writes operators and constants.
///
///     sOf(BinaryOperators, node.getOperator()) // "<>"
///
/// Ownership: the tables live as long as the process.
/// Threads:   any number of threads.
/// Errors:    std::out_of_range for a value that is no enumerator.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace kiv::kit {

// Each by the number of its enumerator.
inline constexpr std::array<std::string_view, 3> UnaryOperators{"+", "-", "NOT"};
inline constexpr std::array<std::string_view, 18> BinaryOperators{
    "+", "-",  "*",   "/",    "AND", "OR", "XOR", "MOD", "**",
    "=", "<>", ":=:", ":<>:", "<",   ">",  "<=",  ">=",  "IN"};
inline constexpr std::array<std::string_view, 2> IntervalOperators{"<", "<="};
inline constexpr std::array<std::string_view, 2> Constants{"SELF", "?"};
inline constexpr std::array<std::string_view, 3> Logicals{"TRUE", "FALSE", "UNKNOWN"};

/// The text of an enumerator.
template <std::size_t Size, typename Enumerator>
constexpr std::string_view sOf(const std::array<std::string_view, Size>& texts, Enumerator value) {
    return texts.at(static_cast<std::size_t>(value));
}

} // namespace kiv::kit
