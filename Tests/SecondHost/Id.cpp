// GUIDs of libuuid. No GlobalIds of IFC: they are one more form that a host may read, and need not.

#include "kiv/Host/Id/KivId.h"

#include <arpa/inet.h>
#include <uuid/uuid.h>

#include <array>
#include <bit>
#include <cstring>
#include <string>

namespace kiv {

namespace {

/// The parts of a GUID; libuuid has their bytes in the order of the text, most significant first.
struct Parts {
    std::uint32_t part1;
    std::uint16_t part2;
    std::uint16_t part3;
    std::array<std::uint8_t, 8> part4;
};

/// From this machine's order of bytes to libuuid's, or back.
Parts reordered(Parts parts) {
    parts.part1 = htonl(parts.part1);
    parts.part2 = htons(parts.part2);
    parts.part3 = htons(parts.part3);
    return parts;
}

Guid guidOf(const uuid_t& bytes) {
    Parts parts;
    std::memcpy(&parts, bytes, sizeof parts);
    return std::bit_cast<Guid>(reordered(parts));
}

void vBytesOf(const Guid& guid, uuid_t& bytes) {
    const auto parts = reordered(std::bit_cast<Parts>(guid));
    std::memcpy(bytes, &parts, sizeof parts);
}

} // namespace

Guid Guid::generate() {
    uuid_t bytes;
    uuid_generate(bytes);
    return guidOf(bytes);
}

std::string Guid::toString(bool braced) const {
    uuid_t bytes;
    vBytesOf(*this, bytes);
    char text[UUID_STR_LEN];
    uuid_unparse_lower(bytes, text);
    std::string result(text);
    if (braced)
        return "{" + result + "}";
    std::erase(result, '-');
    return result;
}

bool Guid::boSet(std::string_view text) {
    std::string hyphenated(text);
    if (hyphenated.size() > 2 && hyphenated.front() == '{' && hyphenated.back() == '}')
        hyphenated = hyphenated.substr(1, hyphenated.size() - 2);
    if (hyphenated.size() == 32) {
        for (const std::size_t place : {20, 16, 12, 8})
            hyphenated.insert(place, 1, '-');
    }
    uuid_t bytes;
    if (hyphenated.size() != UUID_STR_LEN - 1 || uuid_parse(hyphenated.c_str(), bytes) != 0)
        return false;
    *this = guidOf(bytes);
    return true;
}

} // namespace kiv
