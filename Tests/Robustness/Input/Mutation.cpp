#include "Robustness/Input/Mutation.h"

#include <algorithm>
#include <cstdlib>
#include <random>

namespace kiv::test {

namespace {

using Random = std::mt19937;

/// Below the limit, which is not 0. The same on every machine, which the distributions of the standard
/// library are not.
std::size_t below(std::size_t limit, Random& random) {
    return random() % limit;
}

bool isBlank(char byte) {
    return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r';
}

bool isWord(char byte) {
    return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9') ||
           byte == '_';
}

void vByteChange(std::string& text, Random& random) {
    auto& byte = text[below(text.size(), random)];
    const auto bit = static_cast<unsigned char>(1U << below(8, random));
    byte = below(2, random) == 0 ? static_cast<char>(static_cast<unsigned char>(byte) ^ bit)
                                 : static_cast<char>(below(256, random));
}

void vTokenChange(std::string& text, Random& random) {
    const auto tokens = tokensOf(text);
    if (tokens.empty())
        return;
    auto first = tokens[below(tokens.size(), random)];
    auto second = tokens[below(tokens.size(), random)];
    if (first.begin > second.begin)
        std::swap(first, second);
    const auto firstText = text.substr(first.begin, first.size);
    const auto secondText = text.substr(second.begin, second.size);
    switch (below(3, random)) {
    case 0:
        text.erase(first.begin, first.size);
        return;
    case 1:
        text.insert(first.begin, firstText + (below(2, random) == 0 ? " " : ""));
        return;
    default:
        text.replace(second.begin, second.size, firstText);
        text.replace(first.begin, first.size, secondText);
    }
}

} // namespace

std::vector<Seed> seeds(std::size_t count) {
    constexpr Seed Usual = 20240229;
    const char* const wanted = std::getenv("KIV_TEST_SEED");
    auto seed = wanted ? static_cast<Seed>(std::strtoul(wanted, nullptr, 10)) : Usual;
    std::vector<Seed> all(count);
    std::generate(all.begin(), all.end(), [&seed] { return seed++; });
    return all;
}

std::string sReplay(Seed seed) {
    return "KIV_TEST_SEED=" + std::to_string(seed);
}

std::string sMutated(std::string_view text, Seed seed) {
    Random random(seed);
    std::string mutated(text);
    for (auto changes = 1 + below(4, random); changes != 0 && !mutated.empty(); --changes) {
        if (below(2, random) == 0)
            vByteChange(mutated, random);
        else
            vTokenChange(mutated, random);
    }
    return mutated;
}

std::vector<std::size_t> placesIn(std::size_t size, std::size_t count, Seed seed) {
    Random random(seed);
    std::vector<std::size_t> places(count);
    std::generate(places.begin(), places.end(), [&] { return below(size + 1, random); });
    return places;
}

std::vector<TokenPlace> tokensOf(std::string_view text) {
    std::vector<TokenPlace> tokens;
    for (std::size_t at = 0; at != text.size();) {
        const auto begin = at++;
        if (isBlank(text[begin]))
            continue;
        while (isWord(text[begin]) && at != text.size() && isWord(text[at]))
            ++at;
        tokens.push_back({begin, at - begin});
    }
    return tokens;
}

} // namespace kiv::test
