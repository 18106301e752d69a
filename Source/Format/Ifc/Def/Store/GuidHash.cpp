#include "Format/Ifc/Def/Store/GuidHash.h"

#include <array>
#include <bit>

namespace kiv::ifc::def {

std::uint64_t GuidHash::operator()(const kiv::Guid& guid) const noexcept {
    const auto words = std::bit_cast<std::array<std::uint64_t, 2>>(guid);
    return getFolded(words[0] ^ keys[0], words[1] ^ keys[1]);
}

} // namespace kiv::ifc::def
