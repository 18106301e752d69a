/// Lets no file grow beyond a size while it lives, as on a full disk: writing more fails with "File too
/// large". It holds for this process and for those that it starts meanwhile.
///
///     const FileSizeLimit limit(1000);
#pragma once

#include <csignal>
#include <cstddef>
#include <sys/resource.h>

namespace kiv::test {

class FileSizeLimit {
public:
    explicit FileSizeLimit(std::size_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    rlimit before_{};
    void (*handler_)(int);
};

} // namespace kiv::test
