#include "kivifc/Commands/NumberText.h"

#include "kivifc/Program/AsciiText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fmt/format.h>
#include <optional>
#include <string_view>
#include <system_error>

namespace kiv::kivifc {

namespace {

constexpr auto Largest = std::numeric_limits<std::uint64_t>::max();

/// The number that the text begins with, which is taken off it; absent when there is none, or it is too
/// large.
std::optional<std::uint64_t> numberTake(std::string_view& text) {
    std::uint64_t number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (failure != std::errc())
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

/// How many bytes the unit has; absent for what is none.
std::optional<std::uint64_t> unitBytes(std::string_view unit) {
    constexpr std::string_view Letters = "KMGTPE";
    constexpr std::array<std::string_view, 4> Ends{"", "B", "I", "IB"};
    const auto upper = ascii::sUpperCase(unit);
    if (upper.empty() || upper == "B")
        return 1;
    const auto place = Letters.find(upper.front());
    if (place == std::string_view::npos || std::ranges::find(Ends, upper.substr(1)) == Ends.end())
        return std::nullopt;
    return std::uint64_t{1} << (10 * (place + 1));
}

std::optional<std::uint64_t> sizeFrom(std::string_view text) {
    const auto number = numberTake(text);
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    const auto unit = unitBytes(text);
    if (!number || !unit || *number > Largest / *unit)
        return std::nullopt;
    return *number * *unit;
}

} // namespace

TextCheck numberCheck(const NumberRange& range) {
    return [range](std::string& text) {
        std::string_view rest = text;
        const auto number = numberTake(rest);
        if (!number || !rest.empty() || *number < range.min || *number > range.max)
            return fmt::format("Value {} not in range {} to {}", text, range.min, range.max);
        text = fmt::format("{}", *number);
        return std::string();
    };
}

TextCheck sizeCheck() {
    return [](std::string& text) {
        const auto size = sizeFrom(text);
        if (!size)
            return fmt::format("Value {} is no number of bytes up to {}, such as 5000, 64K or 1G", text,
                               Largest);
        text = fmt::format("{}", *size);
        return std::string();
    };
}

} // namespace kiv::kivifc
