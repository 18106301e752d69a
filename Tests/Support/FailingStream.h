/// Streams that break, as a file on a failing disk does: it is bad, not at its end.
///
///     kiv::test::FailingStream stream("SCHEMA A;\nEND_SCHEMA;\n", 5); // "SCHEM", then badbit
#pragma once

#include <algorithm>
#include <cstddef>
#include <istream>
#include <limits>
#include <new>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <string_view>

namespace kiv::test {

/// What the buffer of such a stream throws. The stream makes badbit of it, or lets it pass when badbit is
/// among its `exceptions()`.
class DeviceIsGone : public std::runtime_error {
public:
    DeviceIsGone() : std::runtime_error("the device is gone") {}
};

class FailingStream : public std::istream {
public:
    /// Delivers the first `bytes` bytes of the text, in blocks of at most `blockSize`, and then fails with
    /// badbit.
    FailingStream(std::string_view text, std::size_t bytes,
                  std::size_t blockSize = std::numeric_limits<std::size_t>::max()) :
        std::istream(nullptr), buffer_(text.substr(0, bytes), blockSize) {
        rdbuf(&buffer_);
    }

private:
    class Buffer : public std::streambuf {
    public:
        Buffer(std::string_view text, std::size_t blockSize) : text_(text), blockSize_(blockSize) {
            vBlockSet(text_.data());
        }

    protected:
        int_type underflow() override {
            vBlockSet(egptr());
            if (gptr() == egptr())
                throw DeviceIsGone();
            return traits_type::to_int_type(*gptr());
        }

    private:
        void vBlockSet(char* start) {
            const auto left = static_cast<std::size_t>(text_.data() + text_.size() - start);
            setg(text_.data(), start, start + std::min(left, blockSize_));
        }

        std::string text_;
        std::size_t blockSize_;
    };

    Buffer buffer_;
};

/// A stream whose buffer needs memory of its own and gets none.
class NoMemoryStream : public std::istream {
public:
    NoMemoryStream() : std::istream(nullptr) { rdbuf(&buffer_); }

private:
    class Buffer : public std::streambuf {
    protected:
        int_type underflow() override { throw std::bad_alloc(); }
    };

    Buffer buffer_;
};

} // namespace kiv::test
