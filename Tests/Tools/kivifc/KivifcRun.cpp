#include "Tools/kivifc/KivifcRun.h"

#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/ChildProcess.h"
#include "Tools/kivifc/KivifcInterrupt.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

extern char** environ;

namespace kiv::kivifc::test {

namespace {

using kiv::test::sFileText;
using kiv::test::TemporaryFolder;

void vCheck(bool holds, const char* what) {
    if (!holds)
        throw std::runtime_error(what);
}

/// What a program that is to be started makes of signals.
class DefaultSignals {
public:
    DefaultSignals() {
        sigset_t signals{};
        sigemptyset(&signals);
        for (const int number : EndSignals)
            sigaddset(&signals, number);
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF);
    }
    DefaultSignals(const DefaultSignals&) = delete;
    DefaultSignals& operator=(const DefaultSignals&) = delete;
    ~DefaultSignals() { posix_spawnattr_destroy(&attributes_); }

    const posix_spawnattr_t* pAttributes() const { return &attributes_; }

private:
    posix_spawnattr_t attributes_{};
};

/// Standard input, output and error of a program that is to be started.
class FileActions {
public:
    FileActions() { posix_spawn_file_actions_init(&actions_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;
    ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }

    void vFolder(const char* path) { posix_spawn_file_actions_addchdir_np(&actions_, path); }

    void vOpen(int descriptor, const std::string& path, int flags) {
        posix_spawn_file_actions_addopen(&actions_, descriptor, path.c_str(), flags, 0600);
    }

    /// The writing end of a pipe whose reading end is closed already.
    void vClosedPipe(int descriptor) {
        std::array<int, 2> ends{};
        vCheck(pipe(ends.data()) == 0, "no pipe");
        close(ends[0]);
        writingEnd_ = ends[1];
        posix_spawn_file_actions_adddup2(&actions_, writingEnd_, descriptor);
    }

    pid_t start(const std::string& program, const std::vector<std::string>& arguments) {
        std::vector<char*> words;
        for (const auto& argument : arguments)
            words.push_back(const_cast<char*>(argument.c_str()));
        words.push_back(nullptr);
        pid_t process = 0;
        const DefaultSignals signals;
        const auto failure =
            posix_spawn(&process, program.c_str(), &actions_, signals.pAttributes(), words.data(), environ);
        if (writingEnd_ >= 0)
            close(writingEnd_);
        vCheck(failure == 0, "the program cannot be started");
        return process;
    }

private:
    posix_spawn_file_actions_t actions_{};
    int writingEnd_ = -1;
};

int exitStatusOf(pid_t process) {
    int status = 0;
    vCheck(waitpid(process, &status, 0) == process, "the program is lost");
    vCheck(WIFEXITED(status), "a signal ended the program");
    return WEXITSTATUS(status);
}

} // namespace

Run kivifcRun(const std::vector<std::string>& arguments, const RunOptions& options) {
    const TemporaryFolder folder;
    const auto outputPath = options.outputPath.empty() ? folder.sPath("out") : options.outputPath;
    FileActions actions;
    actions.vFolder(KIVIFC_SAMPLES);
    actions.vOpen(0, folder.sWrite("in", options.input), O_RDONLY);
    if (options.isOutputClosed)
        actions.vClosedPipe(1);
    else
        actions.vOpen(1, outputPath, O_WRONLY | O_CREAT);
    actions.vOpen(2, folder.sPath("err"), O_WRONLY | O_CREAT);

    std::string program = options.program.empty() ? KIVIFC_PROGRAM : options.program;
    std::vector<std::string> words{"kivifc"};
    if (!options.folder.empty() || !options.environment.empty()) {
        words.insert(words.end(), {"-C", options.folder.empty() ? "." : options.folder});
        words.insert(words.end(), options.environment.begin(), options.environment.end());
        words.push_back(std::exchange(program, "/usr/bin/env"));
    }
    words.insert(words.end(), arguments.begin(), arguments.end());
    Run run;
    run.status = exitStatusOf(actions.start(program, words));
    if (options.outputPath.empty() && !options.isOutputClosed)
        run.out = sFileText(outputPath);
    run.err = sFileText(folder.sPath("err"));
    return run;
}

int kivifcInterrupt(const std::vector<std::string>& arguments, int signal,
                    const std::function<bool()>& isReady) {
    FileActions actions;
    actions.vFolder(KIVIFC_SAMPLES);
    for (const int descriptor : {0, 1, 2})
        actions.vOpen(descriptor, "/dev/null", O_RDWR);
    std::vector<std::string> words{"kivifc"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    const auto process = actions.start(KIVIFC_PROGRAM, words);
    int status = 0;
    while (waitpid(process, &status, WNOHANG) == 0) {
        if (!isReady())
            continue;
        kill(process, signal);
        vCheck(waitpid(process, &status, 0) == process, "the program is lost");
        break;
    }
    return status;
}

void PrintTo(const Run& run, std::ostream* stream) {
    *stream << "status " << run.status << "\n--- standard output\n"
            << run.out << "--- standard error\n"
            << run.err;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

} // namespace kiv::kivifc::test
