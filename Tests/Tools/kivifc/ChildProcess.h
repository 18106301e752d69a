/// @file
/// Does something in a process of its own, because it ends that process.
///
///     const auto status = childStatus([] { raise(SIGTERM); });
///     EXPECT_EQ(WTERMSIG(status), SIGTERM);
#pragma once

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kiv::kivifc::test {

/// How the process ended, as waitpid says it; with 0 when the job returned.
template <typename Job>
int childStatus(Job job) {
    const auto child = fork();
    if (child == 0) {
        const rlimit noCore{0, 0};
        setrlimit(RLIMIT_CORE, &noCore);
        job();
        _exit(0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

} // namespace kiv::kivifc::test
