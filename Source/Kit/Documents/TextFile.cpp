#include "kiv/Kit/Documents/TextFile.h"

#include "kiv/Format/Ifc/Def/IfcBudget.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <istream>
#include <memory>
#include <system_error>

namespace kiv::kit {

namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// Enough for most set documents; each further block is as large as all before it.
constexpr std::size_t FirstBlockSize = std::size_t{1} << 15U;

constexpr const char* UnknownReason = "it could not be read";

std::string sSystemReason() {
    return errno == 0 ? UnknownReason : std::generic_category().message(errno);
}

/// `read` takes up to a number of bytes to a place and gives how many there were; fewer only at the end.
template <class Read>
std::string blocksRead(std::uint64_t maxSize, Read read) {
    std::string text;
    std::size_t size = 0;
    while (size == text.size()) {
        // The file may be a device without an end.
        if (size > maxSize)
            throw ifc::def::BudgetExceeded(ifc::def::BudgetLimit::Input, maxSize);
        text.resize(std::max(FirstBlockSize, 2 * size));
        size += read(text.data() + size, text.size() - size);
    }
    text.resize(size);
    return text;
}

} // namespace

TextFile textFileRead(std::FILE* stream, std::uint64_t maxSize) {
    errno = 0;
    TextFile file{
        blocksRead(maxSize,
                   [stream](char* place, std::size_t count) { return std::fread(place, 1, count, stream); }),
        {}};
    if (std::ferror(stream) != 0)
        return {{}, sSystemReason()};
    return file;
}

TextFile textFileRead(std::istream& stream, std::uint64_t maxSize) {
    TextFile file{blocksRead(maxSize,
                             [&stream](char* place, std::size_t count) {
                                 stream.read(place, static_cast<std::streamsize>(count));
                                 return static_cast<std::size_t>(stream.gcount());
                             }),
                  {}};
    if (stream.bad() || !stream.eof())
        return {{}, UnknownReason};
    return file;
}

TextFile textFileRead(const std::string& path, std::uint64_t maxSize) {
    errno = 0;
    const File stream(std::fopen(path.c_str(), "rb"), &std::fclose);
    return stream ? textFileRead(stream.get(), maxSize) : TextFile{{}, sSystemReason()};
}

} // namespace kiv::kit
