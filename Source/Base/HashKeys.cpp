#include "Base/HashKeys.h"

#include <random>

namespace kiv {

const HashKeys& hashKeys() {
    static const HashKeys keys = [] {
        std::random_device random;
        HashKeys drawn{};
        for (auto& key : drawn)
            key = std::uint64_t{random()} << 32 | random();
        return drawn;
    }();
    return keys;
}

} // namespace kiv
