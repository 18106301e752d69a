/// @file
/// Draws the inheritance tree of a schema with plain characters.
///
///     BldUnit
///     `-- BldBaseUnit
///
/// Ownership: refers to the tree and the output while it draws.
/// Threads:   one thread for each output.
/// Errors:    std::bad_alloc; what cannot be written is known to the output.
#pragma once

#include "kivifc/Pictures/InheritanceTree.h"
#include "kivifc/Program/Output.h"

#include <cstddef>

namespace kiv::kivifc {

/// The level down to which entities are indented. Deeper ones stay in that column and show their level,
/// because the indentation of a long line of inheritance would grow with the square of its length.
inline constexpr std::size_t TreeIndentMax = 40;

/// Draws the entity and all below it, one line each.
void vTreeDraw(const InheritanceTree& tree, const ifc::def::schema::Entity& top, Output& output);

} // namespace kiv::kivifc
