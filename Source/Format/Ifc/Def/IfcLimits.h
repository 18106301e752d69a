/// @file
/// Every limit that the library sets to what it reads, in one place, each with its reason.
///
///     if (depth > kiv::ifc::def::limits::maxElementDepth) ...
///
/// What is not here has no limit but memory: the length of a line or a text, the number of statements and of
/// records, the links of an operator chain, of defined types and of supertypes. All of
/// these are read, walked and destroyed in loops, on any stack, in a time proportional to their length. A
/// single name, type text, literal or list of a schema is shorter than 4 GiB; a longer one throws
/// std::length_error.
///
/// Ownership: constants.
/// Threads:   may be used from any number of threads.
/// Errors:    what is beyond a limit is skipped or refused as described there; what is beside it is still
///            read.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kiv::ifc::def::limits {

// ---- Schema texts

/// A rule that nests deeper is reported as a syntax error and left out, with those after it in its clause.
/// Counted are parentheses, unary operators, aggregate initialisers, calls, queries and indices together.
inline constexpr std::size_t ExpressionNestingMax = 256;

/// An aggregate inside more aggregates than this is kept without its element, which is reported as not found.
inline constexpr std::size_t AggregateNestingMax = 256;

/// The highest pre-order number of an entity; the next entity has 0 again. The numbers have 16 bits because
/// hosts store them so. Nothing in the library relies on them: it follows the supertypes themselves, however
/// many entities there are.
inline constexpr std::uint64_t EntityNumberMax = 0xFFFF;

/// The largest bound of an aggregate, which has 32 bits; larger ones are read as this one.
inline constexpr std::uint64_t BoundMax = 0xFFFF'FFFF;

/// The largest width of STRING and BINARY, which has 64 bits; larger ones are read as this one.
inline constexpr std::uint64_t WidthMax = 0xFFFF'FFFF'FFFF'FFFF;

/// The largest number without a point that a rule can hold, which has 32 bits with a sign. A rule with a
/// larger one, or with one with a point that is too large for a double, ends the reading of its schema with
/// std::out_of_range.
inline constexpr std::uint64_t IntegerLiteralMax = 0x7FFF'FFFF;

// ---- XML documents

/// A document that nests deeper is refused, and so is an element that a program appends there. Reading,
/// writing and destroying what is read from elements takes a few calls for each level.
inline constexpr std::size_t maxElementDepth = 256;

/// A document that declares more attributes is refused.
inline constexpr std::size_t maxDeclaredAttributes = 1000;

/// A document whose default attribute values add more bytes is refused.
inline constexpr std::size_t maxDefaultAttributeSize = std::size_t{16} << 20;

/// A document with a piece of markup of more bytes is refused.
inline constexpr std::size_t maxTokenSize = std::size_t{256} << 20;

/// How deep the complex properties of a set can nest: the set and its list are above them, and each level
/// takes three elements. A lower limit of its own is not needed.
inline constexpr std::size_t ComplexPropertyNestingMax = (maxElementDepth - 2) / 3;

// ---- Budgets

// What a `Budget` allows unless the host says otherwise: some hundred times what the largest IFC schema or
// set document needs, and little enough for a machine to survive. Readings without a budget know none of
// these.

/// Bytes of input. IFC4 ADD2 has 0.4 MB.
inline constexpr std::uint64_t BudgetInputMax = std::uint64_t{256} << 20;

/// Bytes of memory held at the same time. IFC4 ADD2 takes 1.4 MB.
inline constexpr std::uint64_t BudgetMemoryMax = std::uint64_t{1} << 30;

/// Bytes of one statement of a schema text, or of one tag, comment or the like of a document. The longest
/// statement of IFC4 ADD2 has 6 kB. It also bounds the work between two looks at the stop token, but for
/// texts of documents, which `BudgetInputMax` and `BudgetMemoryMax` bound.
inline constexpr std::uint64_t BudgetPieceMax = std::uint64_t{1} << 20;

/// Objects, as `Budget` says. IFC4 ADD2 has 3,600.
inline constexpr std::uint64_t BudgetObjectsMax = 4'000'000;

/// Nodes of expression trees. IFC4 ADD2 has 7,800.
inline constexpr std::uint64_t BudgetRuleNodesMax = 4'000'000;

/// Assertion reports and error records.
inline constexpr std::uint64_t BudgetReportsMax = 100'000;

} // namespace kiv::ifc::def::limits
