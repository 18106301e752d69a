#include "kivifc/Documents/TextFile.h"

#include "kivifc/Documents/ReadingLimits.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>
#include <unistd.h>

namespace kiv::kivifc {

namespace {

/// `source` is what `kit::textFileRead` takes.
template <class Source>
TextFile sourceRead(const Source& source) {
    try {
        return kit::textFileRead(source, readingBudget().maxInput);
    } catch (const ifc::def::BudgetExceeded& exceeded) {
        return {{}, sLimitFailure(exceeded)};
    }
}

} // namespace

TextFile textFileRead(const std::string& path) {
    return sourceRead(path);
}

TextFile descriptorRead(int descriptor) {
    errno = 0;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(fdopen(descriptor, "rb"), &std::fclose);
    if (stream)
        return sourceRead(stream.get());
    const auto reason = std::generic_category().message(errno);
    close(descriptor);
    return {{}, reason};
}

} // namespace kiv::kivifc
