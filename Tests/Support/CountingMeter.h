/// @file
/// A meter that keeps what it hears of memory and objects, and throws beyond a limit of bytes.
///
///     test::CountingMeter meter(100);
///     meter.vTake(WorkMeter::Unit::HeldBytes, 60);
///     EXPECT_EQ(meter.held, 60U);
///
/// Ownership: none.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc beyond the limit; another unit fails the test.
#pragma once

#include "kiv/Base/WorkMeter.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <new>

namespace kiv::test {

class CountingMeter final : public WorkMeter {
public:
    explicit CountingMeter(std::uint64_t limit = ~std::uint64_t{0}) : limit_(limit) {}

    void vTake(Unit unit, std::uint64_t amount) override {
        if (unit == Unit::Objects) {
            objects += amount;
            return;
        }
        EXPECT_EQ(unit, Unit::HeldBytes);
        if (held + amount > limit_)
            throw std::bad_alloc();
        held += amount;
        most = std::max(most, held);
    }
    void vMemoryGiveBack(std::uint64_t bytes) noexcept override { held -= bytes; }
    void vPieceBegin() override {}
    void vLook() override { ++looks; }

    void vLimitSet(std::uint64_t limit) { limit_ = limit; }

    std::uint64_t held = 0;
    std::uint64_t most = 0;
    std::uint64_t objects = 0;
    int looks = 0;

private:
    std::uint64_t limit_;
};

} // namespace kiv::test
