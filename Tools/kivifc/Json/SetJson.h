/// @file
/// Set documents as JSON: the set with all its fields, the records and the assertion reports.
///
/// Ownership: values, which refer to nothing.
/// Threads:   free functions without state.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Format/Ifc/Def/SchemaPset.h"
#include "kivifc/Documents/SetDocument.h"
#include "kivifc/Json/Json.h"

namespace kiv::kivifc {

/// A set with all its fields and members.
Json setJson(const ifc::def::xml::SetDef& set);

/// A property or a quantity.
Json defJson(const ifc::def::xml::Def& def);

/// The document must have a set.
Json setDocumentJson(const SetDocument& document);

/// Name and whether it is standard.
Json contextJson(const ifc::def::SchemaPset::Context& context);

} // namespace kiv::kivifc
