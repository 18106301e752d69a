/// Every limit that the library sets to what it reads, in one place, each with its reason.
///
///     if (depth > kiv::ifc::def::limits::maxElementDepth) ...
///
/// What is not here has no limit but memory: the length of a line, a name, a list or a text, the number of statements and
/// of records, the links of an operator chain, of defined types and of supertypes. All of these are read, walked and
/// destroyed in loops, on any stack, in a time that is in proportion to their length.
///
/// Errors: what is beyond a limit is skipped or refused as it says there, and what stands beside it is still read.
#pragma once

#include "Format/Ifc/Def/Schema/IfcSchemaLimits.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Host/Xml/KivXml.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>

namespace kiv::ifc::def::limits {

// ---- Schema texts

/// The rule that nests deeper is reported as a syntax error and left out, with those behind it in its clause.
using schema::ExpressionNestingMax;

/// The aggregate that stands deeper is kept without its element, which is reported as not found.
using schema::AggregateNestingMax;

/// The highest pre-order number of an entity; the one behind it has 0 again. The numbers have 16 bits because hosts keep
/// them so. Nothing in the library relies on them: it follows the supertypes themselves, however many entities there are.
inline constexpr std::uint64_t EntityNumberMax =
    std::numeric_limits<decltype(std::declval<const schema::Entity&>().getFirstNumber())>::max();

/// The largest bound of an aggregate, which has 32 bits; larger ones are read as this one.
inline constexpr std::uint64_t BoundMax = std::numeric_limits<decltype(schema::Bound::value)>::max();

/// The largest width of STRING and BINARY, which has 64 bits; larger ones are read as this one.
inline constexpr std::uint64_t WidthMax =
    std::numeric_limits<decltype(std::declval<const schema::DataTypeString&>().getWidth())>::max();

/// The largest number without a point that a rule can hold, which has 32 bits. A rule with a larger one, and one with a
/// point that is too large for a double, ends the reading of its schema with std::out_of_range.
inline constexpr std::uint64_t IntegerLiteralMax = std::numeric_limits<std::int32_t>::max();

// ---- XML documents

/// A document that nests deeper is refused, and so is an element that a program appends there. Reading, writing and
/// destroying what is read from elements takes a few calls for each level.
using kiv::xml::maxElementDepth;

/// A document that declares more is refused.
using kiv::xml::maxDeclaredAttributes;

/// A document whose default attribute values add more bytes is refused.
using kiv::xml::maxDefaultAttributeSize;

/// A document with a longer piece of markup is refused.
using kiv::xml::maxTokenSize;

/// How deep the complex properties of a set can nest: the set and its list stand above, each level takes three elements.
/// A limit of its own would never be met.
inline constexpr std::size_t ComplexPropertyNestingMax = (maxElementDepth - 2) / 3;

} // namespace kiv::ifc::def::limits
