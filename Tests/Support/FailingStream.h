/// A stream that breaks, as a file on a failing disk does: it is bad, not at its end.
///
///     kiv::test::FailingStream stream("SCHEMA A;\nEND_SCHEMA;\n", 5); // "SCHEM", then badbit
#pragma once

#include <cstddef>
#include <istream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <string_view>

namespace kiv::test {

class FailingStream : public std::istream {
public:
    /// Delivers the first `bytes` bytes of the text and then fails with badbit.
    FailingStream(std::string_view text, std::size_t bytes) :
        std::istream(nullptr), buffer_(text.substr(0, bytes)) {
        rdbuf(&buffer_);
    }

private:
    class Buffer : public std::streambuf {
    public:
        explicit Buffer(std::string_view text) : text_(text) {
            setg(text_.data(), text_.data(), text_.data() + text_.size());
        }

    protected:
        // The stream turns what its buffer throws into badbit.
        int_type underflow() override { throw std::runtime_error("the device is gone"); }

    private:
        std::string text_;
    };

    Buffer buffer_;
};

} // namespace kiv::test
