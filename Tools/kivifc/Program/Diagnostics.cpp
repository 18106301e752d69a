#include "kivifc/Program/Diagnostics.h"

#include "kivifc/Program/OneLine.h"

#include <algorithm>
#include <fmt/format.h>
#include <utility>

namespace kiv::kivifc {

Diagnostics::Diagnostics(Output& output, std::FILE* stream) : output_(output), stream_(stream) {}

void Diagnostics::vNote(std::string_view subject, std::string_view reason) {
    output_.vFlush();
    // A line that cannot be written to standard error has no other place to go.
    const auto line = fmt::format("kivifc: {}: {}\n", sOneLine(subject), sOneLine(reason));
    std::fwrite(line.data(), 1, line.size(), stream_);
}

void Diagnostics::vFail(std::string_view subject, std::string_view reason) {
    vFailureShown({std::string(subject), std::string(reason)});
    vNote(subject, reason);
}

void Diagnostics::vFailureShown() {
    status_ = ExitStatus::Failed;
}

void Diagnostics::vFailureShown(Failure failure) {
    vFailureShown();
    failures_.push_back(std::move(failure));
}

void Diagnostics::vFail(const Failure& failure) {
    vFail(failure.subject, failure.reason);
}

void Diagnostics::vFinding() {
    status_ = std::max(status_, ExitStatus::Findings);
}

} // namespace kiv::kivifc
