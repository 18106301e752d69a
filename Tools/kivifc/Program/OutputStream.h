/// @file
/// An output as a stream, for what writes to streams.
///
///     OutputBuffer buffer(output);
///     std::ostream stream(&buffer);
///     errors.vFormattedErrorsWrite(stream);
///
/// Ownership: refers to the output, which must outlive it.
/// Threads:   one thread at a time.
/// Errors:    the stream fails with the output.
#pragma once

#include "kivifc/Program/Output.h"

#include <streambuf>
#include <string_view>

namespace kiv::kivifc {

class OutputBuffer final : public std::streambuf {
public:
    explicit OutputBuffer(Output& output) : output_(output) {}

protected:
    std::streamsize xsputn(const char* text, std::streamsize size) override {
        output_.vWrite({text, static_cast<std::size_t>(size)});
        return output_.isFailed() ? 0 : size;
    }

    int_type overflow(int_type letter) override {
        const auto byte = traits_type::to_char_type(letter);
        return traits_type::eq_int_type(letter, traits_type::eof()) || xsputn(&byte, 1) == 1
                   ? traits_type::not_eof(letter)
                   : traits_type::eof();
    }

private:
    Output& output_;
};

} // namespace kiv::kivifc
