/// @file
/// The limits that keep hostile schema text from exhausting the stack, each with its reason.
///
///     if (depth > AggregateNestingMax) ...
///
/// Ownership: none.
/// Threads:   constants.
/// Errors:    none.
#pragma once

#include <cstddef>

namespace kiv::ifc::def::schema {

/// How deep an expression may nest: parentheses, unary operators, aggregate initialisers, calls, queries and
/// indices together. Real rules stay below 20; the parser recurses once per level, and 256 levels fit any
/// thread.
inline constexpr std::size_t ExpressionNestingMax = 256;

/// How many aggregates may nest (LIST OF LIST OF ...) and find their elements. The element of one deeper is
/// not looked for and is reported as not found. Real schemas use two; each level searches the text of all
/// that it holds and is resolved inside the one around it, so that unlimited nesting would cost time by the
/// square of the text, and the stack.
inline constexpr std::size_t AggregateNestingMax = 256;

} // namespace kiv::ifc::def::schema
