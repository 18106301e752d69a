// The measure itself: what grows with the square is found wherever it hides, and what does not is let pass.

#include "Support/Growth.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

namespace {

/// Takes this many steps, which no compiler leaves out.
void vStepsTake(std::size_t steps) {
    volatile std::size_t taken = 0;
    for (std::size_t step = 0; step != steps; ++step)
        taken = step;
    static_cast<void>(taken);
}

/// A job of a size, and its name.
struct Job {
    const char* name;
    std::function<void(std::size_t size)> run;
};

double growthOf(const Job& job, std::size_t size) {
    return growthFrom(size, [&](std::size_t count) { return [&run = job.run, count] { run(count); }; });
}

class GrowthTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!isWorkCounted)
            GTEST_SKIP() << "left out: work is not counted under a sanitizer";
    }
};

TEST_F(GrowthTest, WhatGrowsWithTheSquareIsFoundWhereverItHides) {
    volatile std::size_t sink = 0;
    static_cast<void>(sink);
    const Job jobs[] = {
        {"steps", [&](std::size_t size) { vStepsTake(size * size); }},
        {"few steps among many",
         [&](std::size_t size) {
             vStepsTake(1'000 * size);
             vStepsTake(3 * size * size);
         }},
        {"search for a byte",
         [&](std::size_t size) {
             const std::string text(size, 'x');
             for (std::size_t time = 0; time != size; ++time)
                 sink = text.find('y');
         }},
        {"search for a byte, among many steps",
         [&](std::size_t size) {
             const std::string text(size, 'x');
             vStepsTake(10'000 * size);
             for (std::size_t time = 0; time != size; ++time)
                 sink = std::string_view(text).find('y');
         }},
        {"search for a text",
         [&](std::size_t size) {
             const std::string text(size, 'x');
             for (std::size_t time = 0; time != size; ++time)
                 sink = text.find("yz");
         }},
        {"comparison",
         [&](std::size_t size) {
             const std::string text(size, 'x');
             const std::string other(size, 'x');
             for (std::size_t time = 0; time != size; ++time)
                 sink = text == other ? 1 : 0;
         }},
        {"length",
         [&](std::size_t size) {
             const std::string text(size, 'x');
             for (std::size_t time = 0; time != size; ++time)
                 sink = std::string_view(text.c_str()).size();
         }},
        {"copy into memory that is there",
         [&](std::size_t size) {
             const std::string text(size, 'x');
             std::string copy(size, 'y');
             for (std::size_t time = 0; time != size; ++time)
                 copy.assign(text);
         }},
        {"removal from the front",
         [&](std::size_t size) {
             std::string text(size, 'x');
             while (!text.empty())
                 text.erase(0, 1);
         }},
        {"filling",
         [&](std::size_t size) {
             std::string text;
             for (std::size_t time = 0; time != size; ++time)
                 text.assign(size, 'x');
         }},
        {"text of a stream",
         [&](std::size_t size) {
             std::ostringstream stream;
             for (std::size_t time = 0; time != size; ++time) {
                 stream << 'x';
                 sink = stream.str().size();
             }
         }},
        {"line of a stream, read again and again",
         [&](std::size_t size) {
             std::istringstream stream(std::string(size, 'x') + '\n');
             std::string line;
             for (std::size_t time = 0; time != size; ++time) {
                 stream.seekg(0);
                 std::getline(stream, line);
             }
         }},
        {"memory that is never touched",
         [&](std::size_t size) {
             for (std::size_t time = 0; time != size; ++time)
                 sink = std::make_unique_for_overwrite<char[]>(size) ? 1 : 0;
         }},
        {"memory that grows by as much each time",
         [&](std::size_t size) {
             char* memory = nullptr;
             for (std::size_t held = 1; held <= size; ++held)
                 memory = static_cast<char*>(std::realloc(memory, held));
             std::free(memory);
         }},
        {"memory that is held",
         [](std::size_t size) { std::vector<std::string>(size, std::string(size, 'x')); }},
        {"memory that is written to a stream",
         [](std::size_t size) {
             const std::string text(size, 'x');
             CountedOutput output;
             for (std::size_t time = 0; time != size; ++time)
                 output << text;
         }},
    };
    for (const auto& job : jobs)
        EXPECT_GT(growthOf(job, 2'000), ProportionalGrowth) << job.name;
}

TEST_F(GrowthTest, WhatGrowsHardlyFasterThanItsSizeIsLetPass) {
    const Job jobs[] = {
        {"steps", [&](std::size_t size) { vStepsTake(100 * size); }},
        {"sorting",
         [&](std::size_t size) {
             std::vector<std::size_t> numbers;
             for (std::size_t number = 0; number != 10 * size; ++number)
                 numbers.push_back(number * 7919 % (10 * size));
             std::sort(numbers.begin(), numbers.end());
         }},
        {"a tree of texts",
         [&](std::size_t size) {
             std::set<std::string> texts;
             for (std::size_t number = 0; number != size; ++number)
                 texts.insert("a text that has its own memory " + std::to_string(number));
         }},
        {"a text that is appended to",
         [&](std::size_t size) {
             std::string text;
             for (std::size_t time = 0; time != 100 * size; ++time)
                 text += 'x';
         }},
        {"lines of a stream",
         [&](std::size_t size) {
             std::string text;
             for (std::size_t time = 0; time != size; ++time)
                 text += "a line of a stream that has many of them\n";
             std::istringstream stream(text);
             for (std::string line; std::getline(stream, line);)
                 vStepsTake(1);
         }},
        {"search that finds the next one at once",
         [&](std::size_t size) {
             const std::string text(100 * size, 'x');
             for (std::size_t at = 0; at < text.size(); at = text.find('x', at) + 1)
                 vStepsTake(1);
         }},
    };
    for (const auto& job : jobs) {
        const auto growth = growthOf(job, 2'000);
        EXPECT_LE(growth, 2.5) << job.name;
        EXPECT_GE(growth, 1.9) << job.name << " is counted";
    }
}

TEST_F(GrowthTest, MemoryIsJudgedByTheMostThatIsHeldAtOnce) {
    peakBegin();
    const auto before = workDone();
    for (int time = 0; time != 10; ++time)
        std::vector<char>(1'000'000, 'x');
    const auto after = workDone();
    EXPECT_GE(after.allocatedBytes - before.allocatedBytes, 10'000'000U);
    EXPECT_GE(after.peakBytes - before.peakBytes, 1'000'000U);
    EXPECT_LE(after.peakBytes - before.peakBytes, 1'100'000U);
}

// A text of the square of the size is fine to write, but not to hold.
TEST_F(GrowthTest, WorkForOutputMayGrowWithItAndMemoryMayNot) {
    const auto growth = [](const std::function<void(std::size_t size)>& run) {
        return growthForOutputFrom(2'000, [&](std::size_t size) { return [&run, size] { run(size); }; });
    };
    EXPECT_LE(growth([](std::size_t size) {
                  const std::string text(size, 'x');
                  CountedOutput output;
                  for (std::size_t time = 0; time != size; ++time)
                      output << text;
              }),
              ProportionalGrowth);
    EXPECT_GT(growth([](std::size_t size) {
                  std::string text;
                  for (std::size_t time = 0; time != size; ++time)
                      text.append(size, 'x');
                  CountedOutput() << text;
              }),
              ProportionalGrowth);
    EXPECT_GT(growth([](std::size_t size) {
                  vStepsTake(size * size);
                  CountedOutput() << std::string(size, 'x');
              }),
              ProportionalGrowth);
}

// At 2048 all of it fits, at 4096 it does not: four times the memory for twice the size.
TEST_F(GrowthTest, ATableThatDoublesBetweenTheSizesIsLetPass) {
    const Job table{"table", [&](std::size_t size) {
                        std::vector<std::array<char, 64>> rows;
                        for (std::size_t row = 0; row != size + size / 1024 - 2; ++row)
                            rows.emplace_back();
                    }};
    EXPECT_LE(growthOf(table, 2048), 2.5);
}

TEST_F(GrowthTest, WorkBelowAHundredThousandIsAsGoodAsNone) {
    EXPECT_EQ(growthBetween({0, 0, 0}, {200'000, 0, 100'000}), 2.0);
    EXPECT_EQ(growthBetween({50'000, 100'000, 1'000'000}, {100'000, 300'000, 4'000'000}), 4.0);
}

} // namespace

} // namespace kiv::test
