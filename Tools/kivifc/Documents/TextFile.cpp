#include "kivifc/Documents/TextFile.h"

#include "kivifc/Documents/ReadingLimits.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <system_error>
#include <unistd.h>

namespace kiv::kivifc {

namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// Enough for most set documents; each further block is as large as all before it.
constexpr std::size_t FirstBlockSize = std::size_t{1} << 15U;

std::string sSystemReason() {
    return errno == 0 ? "it could not be read" : std::generic_category().message(errno);
}

TextFile streamRead(std::FILE* stream) {
    TextFile file;
    std::size_t size = 0;
    errno = 0;
    const auto limit = readingBudget().maxInput;
    while (size == file.text.size()) {
        // The file may be a device without an end.
        if (size > limit)
            return {{}, sLimitFailure({ifc::def::BudgetLimit::Input, limit})};
        file.text.resize(std::max(FirstBlockSize, 2 * size));
        size += std::fread(file.text.data() + size, 1, file.text.size() - size, stream);
    }
    file.text.resize(size);
    if (std::ferror(stream) != 0)
        return {{}, sSystemReason()};
    return file;
}

} // namespace

TextFile textFileRead(const std::string& path) {
    errno = 0;
    const File stream(std::fopen(path.c_str(), "rb"), &std::fclose);
    return stream ? streamRead(stream.get()) : TextFile{{}, sSystemReason()};
}

TextFile descriptorRead(int descriptor) {
    errno = 0;
    const File stream(fdopen(descriptor, "rb"), &std::fclose);
    if (stream)
        return streamRead(stream.get());
    close(descriptor);
    return {{}, sSystemReason()};
}

TextFile standardInputRead() {
    return streamRead(stdin);
}

} // namespace kiv::kivifc
