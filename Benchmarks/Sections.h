/// The parts that the benchmarks consist of. Each checks the answers of what it measures before it measures.
#pragma once

#include "Figures.h"
#include "Input.h"

namespace kiv::bench {

/// Loading a schema and destroying it.
Figures schemaJobs(const Input& input);
/// Reading, checking and writing set documents.
Figures setJobs(const Input& input);
/// Looking things up.
Figures lookupJobs(const Input& input);

/// Loading and reading at 1, 10 and 100 times the size.
Figures readingGrowth(const Input& input);
/// Look-ups in 1, 10 and 100 times as much.
Figures lookupGrowth(const Input& input);

/// What a schema holds, what reading documents takes, and what look-ups allocate.
Figures memoryFigures(const Input& input);

/// Look-ups of eight threads on one schema.
Figures threadFigures(const Input& input);

/// Checking by the rules of the kit, on one thread and on two.
Figures checkFigures(const Input& input);

/// Writing the site of the schema and its sets.
Figures siteFigures(const Input& input);

} // namespace kiv::bench
