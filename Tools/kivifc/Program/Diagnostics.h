/// @file
/// The problems of a run, one clear line each on standard error, and the exit status they lead to.
///
///     Diagnostics diagnostics(output, stderr);
///     diagnostics.vFail("walls.xml", "Is a directory"); // kivifc: walls.xml: Is a directory
///     return diagnostics.getStatus();                   // Failed
///
/// Ownership: refers to the streams, which must outlive it.
/// Threads:   one thread at a time.
#pragma once

#include "kivifc/Program/ExitStatus.h"
#include "kivifc/Program/Output.h"

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kivifc {

/// Something that could not be done.
struct Failure {
    /// What it happened to: a file, with line and column where they are known.
    std::string subject;
    std::string reason;
};

class Diagnostics {
public:
    /// `output` is flushed before each line, so that both appear in order on one terminal.
    Diagnostics(Output& output, std::FILE* stream);
    Diagnostics(const Diagnostics&) = delete;
    Diagnostics& operator=(const Diagnostics&) = delete;

    /// A remark; the status stays.
    void vNote(std::string_view subject, std::string_view reason);

    /// A part of the job that could not be done.
    void vFail(std::string_view subject, std::string_view reason);
    void vFail(const Failure& failure);

    /// Something is wrong with what was looked at; the output says what.
    void vFinding();

    /// A part of the job that could not be done; the output says which and why.
    void vFailureShown();
    /// The same, where forms for programs list it as well.
    void vFailureShown(Failure failure);

    ExitStatus getStatus() const { return status_; }

    /// Everything that failed, in order.
    const std::vector<Failure>& getFailures() const { return failures_; }

private:
    Output& output_;
    std::FILE* stream_;
    ExitStatus status_ = ExitStatus::Fine;
    std::vector<Failure> failures_;
};

} // namespace kiv::kivifc
