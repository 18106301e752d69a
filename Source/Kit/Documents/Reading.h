/// @file
/// What the readings of all kinds of files share.
///
///     try {
///         vRead(file, textTake(std::move(text), options.budget.maxInput));
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

#include "kiv/Kit/Documents/ReadFailure.h"
#include "kiv/Kit/Documents/TextFile.h"

#include <cstdint>
#include <string>

namespace kiv::kit {

/// A text that is in memory, as if it had been read; `BudgetExceeded` when it is longer than allowed.
TextFile textTake(std::string text, std::uint64_t maxSize);

/// The failure for the exception that is being handled; what is no std::exception goes on.
ReadFailure caughtFailure();

} // namespace kiv::kit
