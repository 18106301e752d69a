#include "Figures.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <string_view>

namespace kiv::bench {

namespace {

constexpr std::size_t Columns = 7;
using Line = std::array<std::string, Columns>;

std::string sSeconds(double seconds) {
    if (seconds >= 1)
        return fmt::format("{:.2f} s", seconds);
    if (seconds >= 1e-3)
        return fmt::format("{:.2f} ms", seconds * 1e3);
    if (seconds >= 1e-6)
        return fmt::format("{:.2f} us", seconds * 1e6);
    return fmt::format("{:.1f} ns", seconds * 1e9);
}

std::string sValue(double value, Unit unit) {
    switch (unit) {
    case Unit::Seconds:
        return sSeconds(value);
    case Unit::Bytes:
        return fmt::format("{:.0f} kB", value / 1000);
    case Unit::PerSecond:
        return value < 1e4 ? fmt::format("{:.1f} /s", value) : fmt::format("{:.2f} M/s", value / 1e6);
    case Unit::Count:
        break;
    }
    return fmt::format("{:.0f}", value);
}

std::string sGoal(const Figure& figure) {
    if (!figure.goal)
        return "-";
    return fmt::format("{:g} or {}", *figure.goal, figure.sense == Sense::AtMost ? "less" : "more");
}

std::string sMet(const Figure& figure) {
    if (!figure.goal)
        return "-";
    return figure.isMet() ? "yes" : "NO";
}

Line lineOf(const Figure& figure) {
    const bool isAlone = figure.yardstick.empty();
    return {figure.job,
            sValue(figure.value, figure.unit),
            isAlone ? "-" : figure.yardstick,
            isAlone ? "-" : sValue(figure.yardstickValue, figure.unit),
            isAlone ? "-" : fmt::format("{:.2f}", figure.ratio()),
            sGoal(figure),
            sMet(figure)};
}

std::string sLine(const Line& line, const std::array<std::size_t, Columns>& widths) {
    std::string text = "|";
    for (std::size_t column = 0; column != Columns; ++column)
        text += fmt::format(" {:<{}} |", line[column], widths[column]);
    return text + '\n';
}

} // namespace

bool Figure::isMet() const {
    if (!goal)
        return true;
    return sense == Sense::AtMost ? ratio() <= *goal : ratio() >= *goal;
}

std::string sTable(const Figures& figures) {
    std::vector<Line> lines{{"job", "value", "yardstick", "its value", "ratio", "goal", "met"}};
    std::transform(figures.begin(), figures.end(), std::back_inserter(lines), lineOf);
    std::array<std::size_t, Columns> widths{};
    for (const auto& line : lines) {
        for (std::size_t column = 0; column != Columns; ++column)
            widths[column] = std::max(widths[column], line[column].size());
    }
    Line rule;
    for (std::size_t column = 0; column != Columns; ++column)
        rule[column] = std::string(widths[column], '-');
    lines.insert(lines.begin() + 1, rule);
    std::string table;
    for (const auto& line : lines)
        table += sLine(line, widths);
    return table;
}

nlohmann::ordered_json figuresJson(const Figures& figures) {
    constexpr std::array<const char*, 4> Units{"seconds", "bytes", "count", "per second"};
    auto list = nlohmann::ordered_json::array();
    for (const auto& figure : figures) {
        auto& entry =
            list.emplace_back(nlohmann::ordered_json{{"section", figure.section},
                                                     {"job", figure.job},
                                                     {"value", figure.value},
                                                     {"unit", Units[static_cast<std::size_t>(figure.unit)]}});
        if (!figure.yardstick.empty()) {
            entry["yardstick"] = figure.yardstick;
            entry["yardstickValue"] = figure.yardstickValue;
            entry["ratio"] = figure.ratio();
        }
        if (figure.goal) {
            entry["goal"] = *figure.goal;
            entry["goalIs"] = figure.sense == Sense::AtMost ? "at most" : "at least";
            entry["met"] = figure.isMet();
        }
    }
    return list;
}

} // namespace kiv::bench
