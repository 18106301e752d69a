/// Texts that were damaged by chance, the same way each time for one seed.
///
///     for (const auto seed : seeds(300))
///         EXPECT_EQ(reading.sFault(sMutated(text, seed), true), "") << sReplay(seed);
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

using Seed = std::uint32_t;

/// That many seeds in a row. The first is the environment variable KIV_TEST_SEED, if there is
/// one.
std::vector<Seed> seeds(std::size_t count);

/// How to have what failed with this seed fail again, as the first of the run.
std::string sReplay(Seed seed);

/// The text with one to four changes: a bit flipped, a byte replaced, a token deleted, doubled or exchanged
/// with another. A token is a word, a number, or a single other character that is no blank.
std::string sMutated(std::string_view text, Seed seed);

/// Places in a text of that size, the same for one seed.
std::vector<std::size_t> placesIn(std::size_t size, std::size_t count, Seed seed);

/// A token of a text.
struct TokenPlace {
    std::size_t begin;
    std::size_t size;
};

/// The tokens, in their order.
std::vector<TokenPlace> tokensOf(std::string_view text);

} // namespace kiv::test
