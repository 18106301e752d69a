#include "kivifc/Program/Progress.h"

#include <fmt/format.h>
#include <unistd.h>
#include <utility>

namespace kiv::kivifc {

namespace {

constexpr std::chrono::milliseconds Delay(500);
constexpr std::chrono::milliseconds Interval(100);

} // namespace

Progress::Progress(std::FILE* stream, std::size_t total, std::function<Clock::time_point()> now) :
    stream_(stream),
    total_(total),
    isTerminal_(isatty(fileno(stream)) == 1),
    now_(std::move(now)),
    next_(now_() + Delay) {}

Progress::~Progress() {
    vHide();
}

void Progress::vShow(std::size_t done) {
    if (!isTerminal_)
        return;
    const auto now = now_();
    if (now < next_)
        return;
    next_ = now + Interval;
    fmt::print(stream_, "\r\033[Kkivifc: {} of {} documents", done, total_);
    std::fflush(stream_);
    isShown_ = true;
}

void Progress::vHide() {
    if (!isShown_)
        return;
    fmt::print(stream_, "\r\033[K");
    std::fflush(stream_);
    isShown_ = false;
}

} // namespace kiv::kivifc
