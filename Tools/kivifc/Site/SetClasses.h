/// @file
/// The classes that a set applies to, as links, with the predefined types that it names.
///
///     vSetClassesWrite(model, *set.set, html);
///
/// Ownership: nothing is kept.
/// Threads:   any number of threads, each with its own page.
/// Errors:    std::bad_alloc. What the schema does not know stays text.
#pragma once

#include "kiv/Format/Ifc/Def/IfcDefBase.h"
#include "kivifc/Site/Html.h"
#include "kivifc/Site/SiteModel.h"

#include <string_view>
#include <vector>

namespace kiv::kivifc::site {

/// A class that a set names.
struct NamedClass {
    std::string_view name;
    /// Null when the schema has no such entity.
    const ifc::def::schema::Entity* entity = nullptr;
    /// Each once, in document order.
    std::vector<std::string_view> predefinedTypes;
    /// Whether it is named without a predefined type as well.
    bool isWhole = false;
};

/// Each class once, in document order.
std::vector<NamedClass> namedClasses(const ifc::def::schema::Schema& schema,
                                     const ifc::def::xml::SetDef& set);

/// The name of a class, as a link when the schema has it.
void vClassWrite(const SiteModel& model, const NamedClass& named, Html& html);

/// A predefined type that is named with an entity, as a link to the item.
void vPredefinedTypeWrite(const SiteModel& model, const ifc::def::schema::Entity& entity,
                          std::string_view name, Html& html);

void vSetClassesWrite(const SiteModel& model, const ifc::def::xml::SetDef& set, Html& html);

} // namespace kiv::kivifc::site
