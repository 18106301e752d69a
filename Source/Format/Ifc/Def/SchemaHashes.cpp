#include "Format/Ifc/Def/SchemaHashes.h"

#include <array>
#include <bit>
#include <random>

namespace kiv::ifc::def {

std::uint64_t hashSeed() {
    static const std::uint64_t seed = [] {
        std::random_device random;
        return std::uint64_t{random()} << 32 | random();
    }();
    return seed;
}

std::uint64_t GuidHash::operator()(const kiv::Guid& guid) const noexcept {
    const auto bytes = std::bit_cast<std::array<char, sizeof(guid)>>(guid);
    return schema::textHash({bytes.data(), bytes.size()}, ~std::uint64_t{0}, seed);
}

} // namespace kiv::ifc::def
