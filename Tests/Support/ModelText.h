/// A whole schema as text, to compare two of them.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"

#include <string>

namespace kiv::test {

/// Everything that was read and resolved, one item a line; objects in the order of the text, references by
/// name.
std::string sModelText(const ifc::def::schema::Schema& schema);

} // namespace kiv::test
