#include "Robustness/Growth/GrowthRow.h"

#include "Format/Ifc/Def/Growth.h"
#include "Support/Sanitized.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace kiv::test {

namespace {

/// Four times as much is the largest text. What reads twice as much too soon to be judged is as fast as one could wish.
constexpr std::size_t SingleTextMax = std::size_t{16} << 20;

/// From here on memory that was freed is used again, however large the piece is. Otherwise large ones come from the system
/// for each run, and cost far more than those that are a little smaller.
void vMemoryKeep() {
#if defined(__GLIBC__)
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
#endif
}

double growthOf(const GrowthRow& row, const std::function<void(const std::string&)>& read) {
    const auto sizeMax = row.size * std::max<std::size_t>(1, SingleTextMax / row.text(row.size).size());
    return growthFrom(
        row.size, [&](std::size_t count) { return [text = row.text(count), &read] { read(text); }; },
        sizeMax);
}

} // namespace

void vGrowthExpect(const std::vector<GrowthRow>& rows, const std::function<void(const std::string&)>& read) {
    vMemoryKeep();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        if (isSanitized)
            read(row.text(row.size));
        else
            EXPECT_LE(growthOf(row, read), ProportionalGrowth);
    }
}

std::string sJoined(std::size_t count, const std::function<std::string(std::size_t)>& piece) {
    std::string text;
    for (std::size_t i = 0; i != count; ++i)
        text += piece(i);
    return text;
}

std::string sTimes(std::string_view text, std::size_t times) {
    const auto size = text.size() * times;
    std::string result;
    result.reserve(size);
    result = text.substr(0, size);
    while (result.size() < size)
        result.append(result, 0, size - result.size());
    return result;
}

} // namespace kiv::test
