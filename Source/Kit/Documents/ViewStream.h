/// @file
/// A stream of bytes that are in memory, without a copy of them.
///
///     ViewStream stream(text);
///     file.parse(stream, "walls.xml", nullptr);
///
/// Private to the kit.
///
/// Ownership: refers to the bytes, which outlive it.
/// Threads:   one thread at a time.
/// Errors:    none.
#pragma once

#include <istream>
#include <streambuf>
#include <string_view>

namespace kiv::kit {

/// Its place for reading may be moved about, as readers of schemas do.
class ViewBuffer final : public std::streambuf {
public:
    explicit ViewBuffer(std::string_view text) {
        // Buffers have pointers to bytes that could be changed; reading changes none.
        auto* const begin = const_cast<char*>(text.data()); // NOLINT(cppcoreguidelines-pro-type-const-cast)
        setg(begin, begin, begin + text.size());
    }

protected:
    pos_type seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode which) override {
        const off_type origin = from == std::ios_base::beg   ? 0
                                : from == std::ios_base::cur ? gptr() - eback()
                                                             : egptr() - eback();
        const off_type target = origin + offset;
        if (target < 0 || target > egptr() - eback() || (which & std::ios_base::in) == 0)
            return off_type(-1);
        setg(eback(), eback() + target, egptr());
        return target;
    }

    pos_type seekpos(pos_type position, std::ios_base::openmode which) override {
        return seekoff(off_type(position), std::ios_base::beg, which);
    }
};

class ViewStream final : public std::istream {
public:
    explicit ViewStream(std::string_view text) : std::istream(nullptr), buffer_(text) { rdbuf(&buffer_); }

private:
    ViewBuffer buffer_;
};

} // namespace kiv::kit
