/// The jobs whose instructions are counted, on the sample that ships with us, because the input must be the
/// same everywhere.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace kiv::bench {

struct CountedJob {
    std::string name;
    /// Prepares the job, which is not counted, and calls `measured` with what is to be counted.
    void (*run)(const std::function<void(const std::function<void()>&)>& measured);
};

const std::vector<CountedJob>& countedJobs();

} // namespace kiv::bench
