/// @file
/// Findings for the tests of what is done with them, and what writers write of them.
///
///     const auto text = sWritten([](Output& output) { output.vWrite("hello\n"); });
///
/// Threads: any number of threads.
#pragma once

#include "kiv/Kit/Findings/Finding.h"
#include "kivifc/Findings/FindingWriter.h"
#include "kivifc/Program/Output.h"

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kivifc::test {

/// What the call writes to an output.
inline std::string sWritten(const std::function<void(Output&)>& call) {
    char* text = nullptr;
    std::size_t size = 0;
    auto* const stream = open_memstream(&text, &size);
    Output output(stream);
    call(output);
    output.vFlush();
    std::fclose(stream);
    std::string written(text, size);
    std::free(text); // NOLINT(cppcoreguidelines-no-malloc): open_memstream asks for it
    return written;
}

inline kit::Finding sampleFinding(std::string_view code, kit::Severity severity, std::string message,
                                  kit::TextPosition position, std::string path = "walls.xml") {
    kit::Finding finding;
    finding.code = code;
    finding.severity = severity;
    finding.message = std::move(message);
    finding.place = {std::move(path), position};
    finding.subject = "Pset_Wall";
    return finding;
}

/// Everything that a writer writes of a run.
template <typename MakeWriter>
std::string sWrittenBy(MakeWriter make, const std::vector<kit::Finding>& findings,
                       const CheckResult& result = {}) {
    return sWritten([&](Output& output) {
        const auto writer = make(output);
        writer->vBegin(findings, result);
        for (const auto& finding : findings)
            writer->vFindingWrite(finding);
        writer->vEnd(result);
    });
}

} // namespace kiv::kivifc::test
