#include "kivifc/Site/GuidNotations.h"

#include "kivifc/Site/Elements.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kiv::kivifc::site {

namespace {

std::string sHyphenated(std::string_view digits) {
    std::string text;
    constexpr std::array<std::size_t, 5> Sizes{8, 4, 4, 4, 12};
    for (const auto size : Sizes) {
        text.append(text.empty() ? "" : "-").append(digits.substr(0, size));
        digits.remove_prefix(size);
    }
    return text;
}

std::uint32_t valueOf(char digit) {
    return static_cast<std::uint32_t>(digit <= '9' ? digit - '0' : digit - 'a' + 10);
}

/// globalId = digit of 2 bits, 21 * digit of 6 bits: the 128 bits to the base of 64, highest digit first.
std::string sGlobalId(std::string_view digits) {
    constexpr std::string_view Base64 = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_$";
    constexpr std::uint32_t DigitMask = 0x3F;
    std::string text;
    std::uint32_t bits = 0;
    // 22 digits of 6 bits have 4 more than the GUID; these come first and are zero.
    unsigned bitCount = 4;
    for (const char digit : digits) {
        bits = bits << 4U | valueOf(digit);
        bitCount += 4;
        if (bitCount < 6)
            continue;
        bitCount -= 6;
        text += Base64[bits >> bitCount & DigitMask];
    }
    return text;
}

} // namespace

GuidNotations::GuidNotations(const Guid& guid) :
    digits(guid.toString(false)), hyphenated(sHyphenated(digits)), globalId(sGlobalId(digits)) {}

void vGuidNotationsWrite(const Guid& guid, Html& html) {
    const GuidNotations written(guid);
    html << "<dl class=\"guid\"><div><dt>GUID, 22 characters</dt><dd><code>" << escaped(written.globalId)
         << "</code></dd></div>\n<div><dt>GUID, 32 digits</dt><dd><code>" << escaped(written.digits)
         << "</code></dd></div>\n<div><dt>GUID with hyphens</dt><dd><code>" << escaped(written.hyphenated)
         << "</code></dd></div></dl>\n";
}

void vNoGuidWrite(std::string_view text, Html& html) {
    html << "<code>" << escaped(sShort(text)) << "</code> <span class=\"badge error\">not a GUID</span>";
}

void vGuidRowWrite(const Guid& guid, const std::string& id, Html& html) {
    const GuidNotations written(guid);
    html << "<p" << attribute("id", id) << "><code>" << escaped(written.globalId) << "</code> <code>"
         << escaped(written.digits) << "</code> <code>" << escaped(written.hyphenated) << "</code></p>\n";
}

} // namespace kiv::kivifc::site
