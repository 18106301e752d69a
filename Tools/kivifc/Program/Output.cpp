#include "kivifc/Program/Output.h"

#include <cerrno>
#include <system_error>

namespace kiv::kivifc {

Output::Output(std::FILE* stream) : stream_(stream) {}

void Output::vWrite(std::string_view text) {
    if (text.empty() || !failure_.empty())
        return;
    errno = 0;
    vCheck(std::fwrite(text.data(), 1, text.size(), stream_) == text.size());
}

void Output::vFlush() {
    if (!failure_.empty())
        return;
    errno = 0;
    vCheck(std::fflush(stream_) == 0);
}

std::string Output::sFinish() {
    vFlush();
    vCheck(std::ferror(stream_) == 0);
    return failure_;
}

void Output::vCheck(bool written) {
    if (written || !failure_.empty())
        return;
    isPipeClosed_ = errno == EPIPE;
    failure_ = errno == 0 ? "it could not be written" : std::generic_category().message(errno);
}

} // namespace kiv::kivifc
