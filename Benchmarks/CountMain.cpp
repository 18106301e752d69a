/// kiv_bench_count: does the jobs whose instructions callgrind counts, and compares the counts. `./dev bench
/// --check` calls it.
#include "CountedJobs.h"
#include "InstructionCounts.h"
#include "Require.h"

#include <algorithm>
#include <iostream>
#include <string_view>

/// What callgrind counts: everything between its call and its return. It finds the function by this name.
extern "C" [[gnu::noinline, gnu::visibility("default")]] void kivMeasured(const std::function<void()>& work) {
    work();
}

namespace kiv::bench {

namespace {

constexpr const char* Help =
    "kiv_bench_count jobs                        the names of the jobs\n"
    "kiv_bench_count JOB                         does the job\n"
    "kiv_bench_count compare KEPT FOLDER         compares KEPT with callgrind's in FOLDER\n"
    "kiv_bench_count accept KEPT FOLDER          keeps callgrind's in KEPT\n";

int jobsList() {
    for (const auto& job : countedJobs())
        std::cout << job.name << '\n';
    return 0;
}

int jobRun(std::string_view name) {
    const auto& jobs = countedJobs();
    const auto job =
        std::find_if(jobs.begin(), jobs.end(), [&](const auto& each) { return each.name == name; });
    vRequire(job != jobs.end(), Help);
    job->run(&kivMeasured);
    return 0;
}

int filesUse(std::string_view command, const char* kept, const char* folder) {
    const auto counted = countsOfCallgrind(folder);
    if (command == "compare")
        return boHolds(countsKept(kept), counted, std::cout) ? 0 : 1;
    vRequire(command == "accept", Help);
    vCountsKeep(counted, kept);
    return 0;
}

} // namespace

} // namespace kiv::bench

int main(int count, char** arguments) {
    using namespace kiv::bench;
    if (count == 4)
        return filesUse(arguments[1], arguments[2], arguments[3]);
    vRequire(count == 2, Help);
    return arguments[1] == std::string_view("jobs") ? jobsList() : jobRun(arguments[1]);
}
