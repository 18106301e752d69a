/// @file
/// The exception type of the library.
///
///     try { vReadSchema(); } catch (const kiv::exception& failure) { vShow(failure.what()); }
#pragma once

#include "kiv/Base/Export.h"

#include <exception>
#include <string>

namespace kiv {

/// Thrown when a stream fails while a schema text is read (empty message) and when a schema is asked for
/// although nothing was said about how to make one. Everything else that can go wrong is an answer, a record
/// or an assertion report.
///
/// Ownership: a value; keeps its message.
/// Threads:   each thread has its own.
/// Errors:    std::bad_alloc while it is made or copied.
class KIV_EXPORT exception : public std::exception {
public:
    exception();
    explicit exception(const std::string& message);
    exception(const exception& other);
    exception& operator=(const exception& other);
    ~exception() override;

    /// The message; never null, empty when none was given. Lives as long as this object.
    const char* what() const noexcept override;

private:
    std::string message_;
};

} // namespace kiv
