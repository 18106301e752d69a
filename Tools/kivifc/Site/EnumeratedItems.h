/// @file
/// The items of an enumeration of a property, each with what its document says of it.
///
///     for (const auto& item : enumeratedItems(type))
///         write(item.name, item.constant);
///
/// Ownership: refers to the type.
/// Threads:   any number of threads.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"

#include <string_view>
#include <vector>

namespace kiv::kivifc::site {

struct EnumeratedItem {
    std::string_view name;
    /// Its definition and its names in other languages; null for none.
    const ifc::def::pset::ConstantDef* constant = nullptr;
};

/// The items, then the constants that belong to none, in the order of the document.
std::vector<EnumeratedItem> enumeratedItems(const ifc::def::pset::TypePropertyEnumeratedValue& type);

} // namespace kiv::kivifc::site
