/// What was measured, beside its yardstick and its goal, and the table that all of it ends in.
///
///     Figures figures;
///     figures.push_back({"jobs", "load the schema", 0.0012, "getline", 0.0002, Unit::Seconds, 5.0});
///     std::cout << sTable(figures);
#pragma once

#include <nlohmann/json_fwd.hpp>

#include <optional>
#include <string>
#include <vector>

namespace kiv::bench {

enum class Unit { Seconds, Bytes, Count, PerSecond };

/// Which side of the goal is the good one.
enum class Sense { AtMost, AtLeast };

struct Figure {
    std::string section;
    std::string job;
    double value = 0;
    /// Empty when the value is its own measure.
    std::string yardstick;
    double yardstickValue = 1;
    Unit unit = Unit::Seconds;
    /// For the ratio; absent where a figure only explains another one.
    std::optional<double> goal = {};
    Sense sense = Sense::AtMost;

    /// The value divided by the yardstick's; the value itself when there is none.
    double ratio() const { return value / yardstickValue; }
    /// True also without a goal.
    bool isMet() const;
};

using Figures = std::vector<Figure>;

/// The figures as a table in Markdown.
std::string sTable(const Figures& figures);

/// The same as an array of objects; values in seconds, bytes, counts or counts per second.
nlohmann::ordered_json figuresJson(const Figures& figures);

} // namespace kiv::bench
