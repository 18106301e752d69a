/// @file
/// How much memory a property type holds, as a meter heard of it while the type was read: of several types of
/// one property the last one counts, and the others are given back.
///
///     meter.vMemoryGiveBack(heldBy(*replaced));
///
/// Ownership: none.
/// Threads:   a free function without state.
/// Errors:    none.
#pragma once

#include "kiv/Format/Ifc/Def/Pset/IfcPropertyType.h"

#include <cstddef>

namespace kiv::ifc::def::pset {

/// The bytes of the type and of all that it owns. Never more than was taken; less by a few bytes where a
/// language is long and names a country, as that is kept apart. As deep as the document, and no deeper.
std::size_t heldBy(const PropertyType& type);

} // namespace kiv::ifc::def::pset
