/// Counts the work that a reading does between two looks at its stop token.
///
///     LookingMeter meter(budget);
///     SchemaPset::pStepStreamRead(stream, meter);
///     EXPECT_LE(meter.getMost(), StepsForAByte * budget.maxPiece);
///
/// Link kiv_counted; with a sanitizer nothing is counted.
#pragma once

#include "Support/Growth.h"
#include "kiv/Format/Ifc/Def/IfcBudget.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

namespace kiv::test {

class LookingMeter final : public ifc::def::BudgetMeter {
public:
    explicit LookingMeter(const ifc::def::Budget& budget) : BudgetMeter(budget), before_(workDone()) {}

    void vLook() override {
        const auto now = workDone();
        most_ = std::max(most_, now.blocks - before_.blocks + (now.bytes - before_.bytes) / BytesInAStep);
        before_ = now;
        BudgetMeter::vLook();
    }

    /// The steps between the two looks that had the most between them: blocks of code, and bytes that were
    /// copied, compared or searched, each 64 of them as one.
    std::uint64_t getMost() const { return most_; }

private:
    /// What memchr, memcpy and the like do at once.
    static constexpr std::uint64_t BytesInAStep = 64;

    Work before_;
    std::uint64_t most_ = 0;
};

/// What a host can rely on, as it limits pieces.
inline constexpr std::uint64_t StepsForAByte = 40;

/// The text that many times, with its number in place of each '#'.
inline std::string sRepeated(const std::string& text, std::size_t count) {
    std::string all;
    for (std::size_t number = 0; number < count; ++number) {
        auto piece = text;
        for (auto at = piece.find('#'); at != std::string::npos; at = piece.find('#'))
            piece.replace(at, 1, std::to_string(number));
        all += piece;
    }
    return all;
}

} // namespace kiv::test
