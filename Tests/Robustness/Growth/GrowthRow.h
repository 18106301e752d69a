/// Families of hostile input, and the law that holds for them: the work to read a text is in proportion to
/// its size. Support/Growth.h says how that is judged, and what is done where it cannot be.
///
///     vGrowthExpect({{"entities", 50'000, [](std::size_t count) { return sEntities(count); }}},
///     vSchemaRead);
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

struct GrowthRow {
    std::string name;
    /// Work is judged at a tenth and at a fifth of it, which takes moments. A sanitizer sees a text of the
    /// whole size.
    std::size_t size;
    std::function<std::string(std::size_t)> text;
};

/// Has each text read at both sizes; a failure names the row whose text costs too much.
void vGrowthExpect(const std::vector<GrowthRow>& rows, const std::function<void(const std::string&)>& read);

/// The same where more than in proportion to a text must be written: work may grow with what is written,
/// memory may not. What is written is counted by a `CountedOutput`.
void vGrowthForOutputExpect(const std::vector<GrowthRow>& rows,
                            const std::function<void(const std::string&)>& write);

/// A piece of text for each number below `count`, one after the other.
std::string sJoined(std::size_t count, const std::function<std::string(std::size_t)>& piece);

/// The text again and again.
std::string sTimes(std::string_view text, std::size_t times);

} // namespace kiv::test
