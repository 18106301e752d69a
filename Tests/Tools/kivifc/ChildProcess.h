/// @file
/// Does something in a process of its own, because it ends that process.
///
///     const auto status = childStatus([] { raise(SIGTERM); });
///     EXPECT_EQ(WTERMSIG(status), SIGTERM);
#pragma once

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kiv::kivifc::test {

/// The signals by which a program is asked to end. Who runs the tests may ignore some of them, as a shell
/// does for jobs in the background; a program that is started inherits that.
inline constexpr int EndSignals[] = {SIGINT, SIGTERM, SIGHUP};

/// How the process ended, as waitpid says it; with 0 when the job returned.
template <typename Job>
int childStatus(Job job) {
    const auto child = fork();
    if (child == 0) {
        const rlimit noCore{0, 0};
        setrlimit(RLIMIT_CORE, &noCore);
        for (const int number : EndSignals)
            std::signal(number, SIG_DFL);
        job();
        _exit(0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

} // namespace kiv::kivifc::test
