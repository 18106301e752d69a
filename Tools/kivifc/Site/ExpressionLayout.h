/// @file
/// Which lines an expression is shown on: one for each operand of AND, wherever it is in the expression, and
/// of an OR that is long or has an operand of several lines.
///
///     const auto joined = kit::joinedExpressionAs(expression, {.groupsAnd = true});
///     for (const auto& step : layoutOf(joined))
///         write(step.kind, joined.text.substr(step.at));
///
/// Ownership: values.
/// Threads:   any number of threads.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Kit/Express/ExpressionText.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kiv::kivifc::site {

/// Lists are in one another; each item of one begins a line.
struct LayoutStep {
    enum class Kind : std::uint8_t {
        /// Of a list and its first item.
        ListBegin,
        /// The next item, which begins with AND or OR.
        Item,
        ListEnd,
    };

    Kind kind;
    /// Of what comes after it, in the text.
    std::size_t at;
};

/// In the order of the text. The whole is a list, of one item where nothing joins all of it.
std::vector<LayoutStep> layoutOf(const kit::JoinedExpression& joined);

} // namespace kiv::kivifc::site
