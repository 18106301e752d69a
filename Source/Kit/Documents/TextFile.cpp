#include "kiv/Kit/Documents/TextFile.h"

#include "Kit/Text/MeteredRoom.h"
#include "kiv/Format/Ifc/Def/IfcBudget.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <istream>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <system_error>

namespace kiv::kit {

namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// Enough for most set documents, where the size is not known.
constexpr std::size_t FirstBlockSize = std::size_t{1} << 15U;

constexpr const char* UnknownReason = "it could not be read";

std::string sSystemReason() {
    return errno == 0 ? UnknownReason : std::generic_category().message(errno);
}

/// How many bytes are left of a regular file; absent for anything else.
std::optional<std::uint64_t> sizeLeft(std::FILE* stream) {
    struct stat status {};
    const auto number = fileno(stream);
    if (number < 0 || fstat(number, &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    const auto place = std::ftell(stream);
    if (place < 0 || status.st_size < place)
        return std::nullopt;
    return static_cast<std::uint64_t>(status.st_size - place);
}

/// `read` takes up to a number of bytes to a place and gives how many there were; fewer only at the end.
/// Without an expected size, and where a file has more, each block is as large as all before it.
template <class Read>
std::string blocksRead(std::uint64_t maxSize, WorkMeter* meter, std::optional<std::uint64_t> expected,
                       Read read) {
    const auto vSizeCheck = [maxSize](std::uint64_t size) {
        if (size > maxSize)
            throw ifc::def::BudgetExceeded(ifc::def::BudgetLimit::Input, maxSize);
    };
    vSizeCheck(expected.value_or(0));
    // One more byte, for which there is none, shows the end.
    std::size_t room = expected ? static_cast<std::size_t>(*expected) + 1 : FirstBlockSize;
    std::string text;
    std::size_t size = 0;
    for (; size == text.size(); room = std::max(FirstBlockSize, 2 * size)) {
        // The file may be a device without an end.
        vSizeCheck(size);
        vRoomForText(text, room, meter);
        text.resize(room);
        size += read(text.data() + size, text.size() - size);
    }
    vSizeCheck(size);
    text.resize(size);
    return text;
}

} // namespace

TextFile textFileRead(std::FILE* stream, std::uint64_t maxSize, WorkMeter* meter) {
    const auto expected = sizeLeft(stream);
    // A stream that has no place says so there, which is no failure of reading.
    errno = 0;
    TextFile file{
        blocksRead(maxSize, meter, expected,
                   [stream](char* place, std::size_t count) { return std::fread(place, 1, count, stream); }),
        {}};
    if (std::ferror(stream) != 0)
        return {{}, sSystemReason()};
    return file;
}

TextFile textFileRead(std::istream& stream, std::uint64_t maxSize, WorkMeter* meter) {
    TextFile file{blocksRead(maxSize, meter, std::nullopt,
                             [&stream](char* place, std::size_t count) {
                                 stream.read(place, static_cast<std::streamsize>(count));
                                 return static_cast<std::size_t>(stream.gcount());
                             }),
                  {}};
    if (stream.bad() || !stream.eof())
        return {{}, UnknownReason};
    return file;
}

TextFile textFileRead(const std::string& path, std::uint64_t maxSize, WorkMeter* meter) {
    errno = 0;
    const File stream(std::fopen(path.c_str(), "rb"), &std::fclose);
    return stream ? textFileRead(stream.get(), maxSize, meter) : TextFile{{}, sSystemReason()};
}

} // namespace kiv::kit
