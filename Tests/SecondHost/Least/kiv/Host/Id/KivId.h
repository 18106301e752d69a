/// @file
/// GUIDs of a host that have nothing but what the library needs of them.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

namespace kiv {

class Guid {
public:
    Guid() = default;

    static Guid generate();
    std::string toString(bool braced) const;
    bool boSet(std::string_view text);

    friend bool operator==(const Guid&, const Guid&) = default;
    friend std::strong_ordering operator<=>(const Guid&, const Guid&) = default;

private:
    std::uint32_t part1_ = 0;
    std::uint16_t part2_ = 0;
    std::uint16_t part3_ = 0;
    std::array<std::uint8_t, 8> part4_{};
};

} // namespace kiv
