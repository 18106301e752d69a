#include "InstructionCounts.h"

#include "CountedJobs.h"
#include "Require.h"

#include <expat.h>
#include <fmt/format.h>
#include <gnu/libc-version.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <optional>
#include <ostream>

namespace kiv::bench {

namespace {

/// How far counts may differ, in per cent.
constexpr double Tolerance = 5;

std::string sToolchain() {
    return fmt::format("{}, glibc {}, expat {}.{}.{}", KIV_COMPILER, gnu_get_libc_version(),
                       XML_MAJOR_VERSION, XML_MINOR_VERSION, XML_MICRO_VERSION);
}

std::uint64_t countOfCallgrind(const std::filesystem::path& path) {
    constexpr std::string_view Label = "totals: ";
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(Label))
            return std::stoull(line.substr(Label.size()));
    }
    vRequire(false, path.string() + " holds no count");
    return 0;
}

/// How much more that is, in per cent; absent when the job is not kept.
std::optional<double> percentAbove(const InstructionCounts& kept, const std::string& job,
                                   std::uint64_t count) {
    const auto found = kept.counts.find(job);
    if (found == kept.counts.end() || found->second == 0)
        return std::nullopt;
    return 100 * (static_cast<double>(count) / static_cast<double>(found->second) - 1);
}

std::string sVerdict(double percent) {
    if (percent > Tolerance)
        return fmt::format("TOO MANY: more than {} % above", Tolerance);
    if (percent < -Tolerance)
        return fmt::format("more than {} % below; keep it with ./dev bench --check --accept", Tolerance);
    return "as kept";
}

} // namespace

InstructionCounts countsKept(const std::filesystem::path& path) {
    std::ifstream file(path);
    const auto json = nlohmann::json::parse(file, nullptr, false);
    vRequire(json.is_object(), path.string() + " cannot be read");
    return {json.value("toolchain", ""), json.value("counts", std::map<std::string, std::uint64_t>())};
}

void vCountsKeep(const InstructionCounts& counts, const std::filesystem::path& path) {
    const nlohmann::ordered_json json{{"toolchain", counts.toolchain}, {"counts", counts.counts}};
    std::ofstream file(path);
    file << json.dump(2) << '\n';
    vRequire(file.good(), path.string() + " cannot be written");
}

InstructionCounts countsOfCallgrind(const std::filesystem::path& folder) {
    InstructionCounts counts{sToolchain(), {}};
    for (const auto& job : countedJobs())
        counts.counts[job.name] = countOfCallgrind(folder / job.name);
    return counts;
}

bool boHolds(const InstructionCounts& kept, const InstructionCounts& counted, std::ostream& report) {
    const bool isComparable = kept.toolchain == counted.toolchain;
    bool holds = true;
    for (const auto& [job, count] : counted.counts) {
        report << fmt::format("{:<8} {:>12} instructions", job, count);
        const auto percent = percentAbove(kept, job, count);
        if (isComparable && percent) {
            report << fmt::format(", {:+.1f} %: {}", *percent, sVerdict(*percent));
            holds = holds && *percent <= Tolerance;
        }
        report << (isComparable && !percent ? ", none is kept\n" : "\n");
    }
    if (!isComparable)
        report << fmt::format("NOT COMPARED: those that are kept are of {}, these of {}\n", kept.toolchain,
                              counted.toolchain);
    return holds;
}

} // namespace kiv::bench
