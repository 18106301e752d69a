/// @file
/// Findings in numbers.
///
///     FindingCounts counts;
///     counts.vAdd(finding);
///     sSummary(counts) // "3 errors, 1 warning in 2 of 408 documents"
///
/// Threads: one thread at a time while findings are added.
#pragma once

#include "kiv/Kit/Findings/Finding.h"

#include <array>
#include <cstddef>
#include <set>
#include <string>

namespace kiv::kivifc {

class FindingCounts {
public:
    /// Of a document; what is found in the schema counts by itself.
    void vAdd(const kit::Finding& finding, bool isInSchema = false);

    std::size_t getCount(kit::Severity severity) const { return counts_[static_cast<std::size_t>(severity)]; }
    /// How many documents have findings.
    std::size_t getDocuments() const { return documents_.size(); }
    bool hasSchemaFindings() const { return hasSchemaFindings_; }

    /// How many were looked at.
    std::size_t documentsChecked = 0;
    /// Of those, how many could not be read.
    std::size_t documentsUnreadable = 0;
    /// How many findings a baseline hides.
    std::size_t hidden = 0;

private:
    std::array<std::size_t, 3> counts_{};
    std::set<std::string, std::less<>> documents_;
    bool hasSchemaFindings_ = false;
};

/// One line, without its end.
std::string sSummary(const FindingCounts& counts);

} // namespace kiv::kivifc
