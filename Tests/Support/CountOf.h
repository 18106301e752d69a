/// @file
/// How often a text holds another one.
///
///     EXPECT_EQ(countOf("a-b-c", "-"), 2U);
///
/// Threads: any number of threads.
#pragma once

#include <cstddef>
#include <string_view>

namespace kiv::test {

/// One begins where the one before it ends, at the earliest; `part` is not empty.
inline std::size_t countOf(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string_view::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

} // namespace kiv::test
