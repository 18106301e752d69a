/// Set documents as JSON: the set with all its fields, the records and the assertion reports.
#pragma once

#include "kivifc/Json.h"
#include "kivifc/SetDocument.h"

namespace kiv::kivifc {

/// The document must have a set.
Json setDocumentJson(const SetDocument& document);

} // namespace kiv::kivifc
