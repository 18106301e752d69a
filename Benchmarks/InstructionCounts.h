/// Instruction counts of the counted jobs: read from what callgrind wrote, and compared with those that are
/// kept.
///
///     const auto kept = countsKept("InstructionCounts.json");
///     const auto counted = countsOfCallgrind("build/release/Benchmarks/counts");
///     return boHolds(kept, counted, std::cout) ? 0 : 1;
///
/// Errors: a file that cannot be read ends the program, see `vRequire`.
#pragma once

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <map>
#include <string>

namespace kiv::bench {

struct InstructionCounts {
    /// What the program was made with. Counts are only compared between programs that were made with the
    /// same.
    std::string toolchain;
    std::map<std::string, std::uint64_t> counts;
};

InstructionCounts countsKept(const std::filesystem::path& file);
void vCountsKeep(const InstructionCounts& counts, const std::filesystem::path& file);

/// The counts of all jobs, each from the file of the job's name in that folder.
InstructionCounts countsOfCallgrind(const std::filesystem::path& folder);

/// Prints how the counts compare. False when one is more than 5 % above the one that is kept, true when there
/// is nothing to compare with.
bool boHolds(const InstructionCounts& kept, const InstructionCounts& counted, std::ostream& report);

} // namespace kiv::bench
