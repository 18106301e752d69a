/// @file
/// What kivifc may take for each file that it reads, set by options.
///
///     readingBudget().maxMemory = 64 << 20;
///     const auto failure = sLimitFailure(exceeded); // "more than 9 objects are needed (--max-objects)"
///
/// Ownership: one budget a process, which runs one command.
/// Threads:   set before anything is read; then only read.
/// Errors:    none.
#pragma once

#include "kiv/Format/Ifc/Def/IfcBudget.h"
#include "kiv/Kit/Documents/ReadOptions.h"

#include <cstdint>
#include <span>
#include <string>

namespace kiv::kivifc {

/// One limit and its option.
struct LimitOption {
    ifc::def::BudgetLimit limit;
    const char* name;
    std::uint64_t ifc::def::Budget::*value;
    /// Whether it is a number of bytes, which may be given with a unit.
    bool isSize;
    const char* description;
};

/// In the order in which help texts list them.
std::span<const LimitOption> getLimitOptions();

/// The limits of each file; those of the library until options change them.
ifc::def::Budget& readingBudget();

/// How files are read: within those limits, and without the places of elements unless they are asked for.
kit::ReadOptions readingOptions(bool withPositions = false);

/// Why a file was not read, with the option that sets the limit.
std::string sLimitFailure(const ifc::def::BudgetExceeded& exceeded);
std::string sLimitFailure(ifc::def::BudgetLimit limit, const std::string& reason);

/// All limits with their defaults, as a table.
std::string sLimits();

} // namespace kiv::kivifc
