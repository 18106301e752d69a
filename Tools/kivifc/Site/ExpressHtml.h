/// @file
/// EXPRESS text as HTML: keywords as `b`, which is short, as they are there by the ten thousand; names as
/// links to what they name.
///
///     vExpressWrite(model, {.pSelf = &wall}, "EXISTS(SELF\\IfcObject.ObjectType)", html);
///
/// Ownership: nothing is kept.
/// Threads:   any number of threads, each with its own page.
/// Errors:    std::bad_alloc. A name that the schema does not know stays text.
#pragma once

#include "kivifc/Site/Html.h"
#include "kivifc/Site/SiteModel.h"

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

namespace kiv::kivifc::site {

struct ExpressScope {
    /// Whose attributes plain names and SELF.NAME are; null for none.
    const ifc::def::schema::Entity* pSelf = nullptr;
    /// What the text declares, which does not become a link to itself; null for none.
    const ifc::def::schema::ObjectBase* pDeclared = nullptr;
};

void vExpressWrite(const SiteModel& model, const ExpressScope& scope, std::string_view text, Html& html);

/// The same for a text in pieces, which end where words do: what the names of a piece mean may have been said
/// in those before it. `vBetween(index)` is called before each piece, and may write what it likes.
void vExpressPiecesWrite(const SiteModel& model, const ExpressScope& scope,
                         const std::vector<std::string_view>& pieces,
                         const std::function<void(std::size_t)>& vBetween, Html& html);

/// An object of the schema by its name, as a link in the type of code.
void vObjectLinkWrite(const SiteModel& model, const ifc::def::schema::ObjectBase& object, Html& html);

/// An attribute as a link to its row: "IfcRoot.Name".
void vAttributeLinkWrite(const SiteModel& model, const ifc::def::schema::AttributeBase& attribute,
                         Html& html);

} // namespace kiv::kivifc::site
