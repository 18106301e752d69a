#include "Robustness/Growth/GrowthRow.h"

#include "Format/Ifc/Def/Growth.h"
#include "Support/Sanitized.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace kiv::test {

namespace {

/// The least of some measurements, each at another size. What else the machine does only ever makes things look worse, and
/// so does a step between a size and its double: where a cache is full, and where memory comes from the system for each run.
/// What grows with the square does so at every size.
double growthOf(const GrowthRow& row, const std::function<void(const std::string&)>& read) {
    auto growth = std::numeric_limits<double>::max();
    for (const auto size : {row.size, row.size * 3 / 2, row.size * 2}) {
        growth = std::min(growth, growthFrom(size, [&](std::size_t count) {
                              return [text = row.text(count), &read] { read(text); };
                          }));
        if (growth <= ProportionalGrowth)
            break;
    }
    return growth;
}

} // namespace

void vGrowthExpect(const std::vector<GrowthRow>& rows, const std::function<void(const std::string&)>& read) {
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
    std::string result;
    result.reserve(text.size() * times);
    for (std::size_t i = 0; i != times; ++i)
        result += text;
    return result;
}

} // namespace kiv::test
