/// @file
/// Set documents as JSON: the set with all its fields, the records and the assertion reports.
///
/// Sets are written as it goes: what is written names the set beside each record, so that it may be much
/// longer than the document.
///
/// Threads:   free functions without state.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Format/Ifc/Def/SchemaPset.h"
#include "kivifc/Documents/SetDocument.h"
#include "kivifc/Json/Json.h"

namespace kiv::kivifc {

/// A set with all its fields and members.
void vSetWrite(const ifc::def::xml::SetDef& set, JsonWriter& writer);

/// A property or a quantity.
void vDefWrite(const ifc::def::xml::Def& def, JsonWriter& writer);

/// The document must have a set.
void vSetDocumentWrite(const SetDocument& document, JsonWriter& writer);

/// Name, and whether it is standard; the bytes of a name that is not UTF-8 beside it.
Json contextJson(const ifc::def::SchemaPset::Context& context);

} // namespace kiv::kivifc
