/// @file
/// How files are read.
///
///     ReadOptions options;
///     options.budget.maxMemory = 64 << 20;
///     const auto document = setDocumentRead("Pset_Wall.xml", options);
///
/// Ownership: a value.
/// Threads:   any number of threads may read one.
/// Errors:    none.
#pragma once

#include "kiv/Format/Ifc/Def/IfcBudget.h"

namespace kiv::kit {

struct ReadOptions {
    /// How much one file may take.
    ifc::def::Budget budget;
    /// Whether the places of elements and attributes are kept.
    bool withPositions = true;
};

} // namespace kiv::kit
