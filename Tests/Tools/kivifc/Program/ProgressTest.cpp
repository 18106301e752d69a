#include "kivifc/Program/Progress.h"

#include <array>
#include <cstdio>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <memory>
#include <pty.h>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace kiv::kivifc {

namespace {

using namespace std::chrono_literals;

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// A terminal and what was written to it.
class Terminal {
public:
    Terminal() : stream_(nullptr, &std::fclose) {
        int slave = -1;
        if (openpty(&master_, &slave, nullptr, nullptr, nullptr) != 0)
            throw std::runtime_error("no terminal");
        fcntl(master_, F_SETFL, O_NONBLOCK);
        stream_.reset(fdopen(slave, "w"));
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal() { close(master_); }

    std::FILE* pStream() { return stream_.get(); }

    std::string sTaken() const {
        std::array<char, 1024> buffer{};
        const auto size = read(master_, buffer.data(), buffer.size());
        return size < 0 ? std::string() : std::string(buffer.data(), static_cast<std::size_t>(size));
    }

private:
    int master_ = -1;
    File stream_;
};

TEST(Progress, IsShownOnATerminalAndTakenAway) {
    Terminal terminal;
    {
        Progress progress(terminal.pStream(), 12, 0ms);
        progress.vShow(3);
        EXPECT_EQ(terminal.sTaken(), "\r\033[Kkivifc: 3 of 12 documents");
        progress.vHide();
        EXPECT_EQ(terminal.sTaken(), "\r\033[K");
        progress.vHide();
        EXPECT_EQ(terminal.sTaken(), "");
    }
    EXPECT_EQ(terminal.sTaken(), "");
}

TEST(Progress, EndLeavesACleanLine) {
    Terminal terminal;
    {
        Progress progress(terminal.pStream(), 12, 0ms);
        progress.vShow(3);
        terminal.sTaken();
    }
    EXPECT_EQ(terminal.sTaken(), "\r\033[K");
}

TEST(Progress, IsShownSeldom) {
    Terminal terminal;
    Progress progress(terminal.pStream(), 12, 0ms);
    progress.vShow(3);
    terminal.sTaken();
    progress.vShow(4); // within a tenth of a second
    EXPECT_EQ(terminal.sTaken(), "");
}

TEST(Progress, ShortJobShowsNothing) {
    Terminal terminal;
    Progress progress(terminal.pStream(), 12, 1h);
    progress.vShow(3);
    EXPECT_EQ(terminal.sTaken(), "");
}

TEST(Progress, FileSeesNothing) {
    const File file(std::tmpfile(), &std::fclose);
    Progress progress(file.get(), 12, 0ms);
    progress.vShow(3);
    progress.vHide();
    EXPECT_EQ(std::ftell(file.get()), 0);
}

} // namespace

} // namespace kiv::kivifc
