#include "kivifc/Program/Progress.h"

#include <chrono>
#include <cstdio>
#include <functional>
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
        stream_.reset(fdopen(slave, "w"));
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal() { close(master_); }

    std::FILE* pStream() { return stream_.get(); }

    /// What was written since the last time. A terminal hands that on when it likes, so a mark is written
    /// after it and waited for.
    std::string sTaken() const {
        std::fputc(Mark, stream_.get());
        std::fflush(stream_.get());
        std::string text;
        for (char byte = 0; read(master_, &byte, 1) == 1 && byte != Mark;)
            text += byte;
        return text;
    }

private:
    static constexpr char Mark = '\a';

    int master_ = -1;
    File stream_;
};

/// A time that passes when the test says so.
class Time {
public:
    void vPass(std::chrono::milliseconds time) { *now_ += time; }

    std::function<Progress::Clock::time_point()> now() const {
        return [now = now_] { return *now; };
    }

private:
    std::shared_ptr<Progress::Clock::time_point> now_ = std::make_shared<Progress::Clock::time_point>();
};

TEST(Progress, IsShownOnATerminalAndTakenAway) {
    Terminal terminal;
    Time time;
    {
        Progress progress(terminal.pStream(), 12, time.now());
        time.vPass(500ms);
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
    Time time;
    {
        Progress progress(terminal.pStream(), 12, time.now());
        time.vPass(500ms);
        progress.vShow(3);
        terminal.sTaken();
    }
    EXPECT_EQ(terminal.sTaken(), "\r\033[K");
}

TEST(Progress, IsShownTenTimesASecondAtMost) {
    Terminal terminal;
    Time time;
    Progress progress(terminal.pStream(), 12, time.now());
    time.vPass(500ms);
    progress.vShow(3);
    terminal.sTaken();
    time.vPass(99ms);
    progress.vShow(4);
    EXPECT_EQ(terminal.sTaken(), "");
    time.vPass(1ms);
    progress.vShow(5);
    EXPECT_EQ(terminal.sTaken(), "\r\033[Kkivifc: 5 of 12 documents");
}

TEST(Progress, ShortJobShowsNothing) {
    Terminal terminal;
    Time time;
    Progress progress(terminal.pStream(), 12, time.now());
    time.vPass(499ms);
    progress.vShow(3);
    EXPECT_EQ(terminal.sTaken(), "");
}

TEST(Progress, FileSeesNothing) {
    const File file(std::tmpfile(), &std::fclose);
    Time time;
    Progress progress(file.get(), 12, time.now());
    time.vPass(500ms);
    progress.vShow(3);
    progress.vHide();
    EXPECT_EQ(std::ftell(file.get()), 0);
}

} // namespace

} // namespace kiv::kivifc
