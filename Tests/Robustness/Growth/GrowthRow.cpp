#include "Robustness/Growth/GrowthRow.h"

#include "Support/Growth.h"

#include <gtest/gtest.h>

namespace kiv::test {

namespace {

void vGrowthExpect(const std::vector<GrowthRow>& rows, const std::function<void(const std::string&)>& read,
                   double (*growthOf)(std::size_t size, const Preparation& prepare)) {
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Preparation prepare = [&](std::size_t size) {
            return [text = row.text(size), &read] { read(text); };
        };
        const auto growth = growthOf(isWorkCounted ? row.size / 10 : row.size, prepare);
        EXPECT_LE(growth, ProportionalGrowth);
    }
}

} // namespace

void vGrowthExpect(const std::vector<GrowthRow>& rows, const std::function<void(const std::string&)>& read) {
    vGrowthExpect(rows, read, growthFrom);
}

void vGrowthForOutputExpect(const std::vector<GrowthRow>& rows,
                            const std::function<void(const std::string&)>& write) {
    vGrowthExpect(rows, write, growthForOutputFrom);
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
