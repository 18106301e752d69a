#include "kivifc/Pictures/TextTable.h"

#include <fmt/format.h>

namespace kiv::kivifc {

std::string sTableLine(std::string_view label, std::string_view text) {
    return fmt::format("{:<16} {}\n", label, text);
}

std::string sMilliseconds(std::chrono::nanoseconds time) {
    return fmt::format("{:.1f} ms", std::chrono::duration<double, std::milli>(time).count());
}

} // namespace kiv::kivifc
