/// @file
/// What the readings of all kinds of files share.
///
///     try {
///         vRead(file, textTake(std::move(text), meter));
///     } catch (const std::bad_alloc&) {
///         file.failure = caughtFailure();
///     }
///
/// Private to the kit.
///
/// Ownership: values.
/// Threads:   any number of threads.
/// Errors:    see each function.
#pragma once

#include "kiv/Format/Ifc/Def/IfcBudget.h"
#include "kiv/Kit/Documents/ReadFailure.h"
#include "kiv/Kit/Documents/TextFile.h"

#include <string>

namespace kiv::kit {

/// A text that is in memory, as if it had been read; `BudgetExceeded` when it is longer than the budget
/// allows.
TextFile textTake(std::string text, ifc::def::BudgetMeter& meter);

/// The failure for the exception that is being handled; what is no std::exception goes on.
ReadFailure caughtFailure();

} // namespace kiv::kit
