#include "kivifc/Program/OneLine.h"

#include <cstddef>
#include <fmt/format.h>
#include <iterator>

namespace kiv::kivifc {

namespace {

/// The length in bytes of the control character that the text starts with; 0 when it starts with none.
std::size_t controlLength(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0x20 || first == 0x7F)
        return 1;
    if (first != 0xC2 || text.size() < 2)
        return 0;
    const auto second = static_cast<unsigned char>(text[1]);
    return second >= 0x80 && second <= 0x9F ? 2 : 0;
}

void vControlAppend(std::string& line, char control) {
    switch (control) {
    case '\n':
        line += "\\n";
        break;
    case '\r':
        line += "\\r";
        break;
    case '\t':
        line += "\\t";
        break;
    default:
        fmt::format_to(std::back_inserter(line), "\\x{:02X}", static_cast<unsigned char>(control));
    }
}

} // namespace

std::string sOneLine(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    while (!text.empty()) {
        const auto length = controlLength(text);
        if (length == 0)
            line += text[0];
        for (const char control : text.substr(0, length))
            vControlAppend(line, control);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return line;
}

} // namespace kiv::kivifc
