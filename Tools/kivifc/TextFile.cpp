#include "kivifc/TextFile.h"

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <system_error>

namespace kiv::kivifc {

namespace {

/// Large enough that a schema takes a handful of reads.
constexpr std::size_t BlockSize = std::size_t{1} << 18U;

std::string sSystemReason() {
    return errno == 0 ? "it could not be read" : std::generic_category().message(errno);
}

TextFile streamRead(std::FILE* stream) {
    TextFile file;
    std::size_t size = 0;
    std::size_t taken = 0;
    errno = 0;
    do {
        file.text.resize(size + BlockSize);
        taken = std::fread(file.text.data() + size, 1, BlockSize, stream);
        size += taken;
    } while (taken == BlockSize);
    file.text.resize(size);
    if (std::ferror(stream) != 0)
        return {{}, sSystemReason()};
    return file;
}

} // namespace

TextFile textFileRead(const std::string& path) {
    errno = 0;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::fopen(path.c_str(), "rb"),
                                                                 &std::fclose);
    return stream ? streamRead(stream.get()) : TextFile{{}, sSystemReason()};
}

TextFile standardInputRead() {
    return streamRead(stdin);
}

} // namespace kiv::kivifc
