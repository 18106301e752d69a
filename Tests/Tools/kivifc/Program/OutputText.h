/// @file
/// An output that keeps its text.
///
///     OutputText text;
///     vTreeDraw(tree, root, text.output);
///     EXPECT_EQ(text.sText(), "Root\n");
///
/// Ownership: owns the stream.
/// Threads:   one.
/// Errors:    none.
#pragma once

#include "kivifc/Program/Output.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace kiv::kivifc::test {

class OutputText {
    char* text_ = nullptr;
    std::size_t size_ = 0;
    std::FILE* stream_ = open_memstream(&text_, &size_);

public:
    OutputText() = default;
    OutputText(const OutputText&) = delete;
    OutputText& operator=(const OutputText&) = delete;
    ~OutputText() {
        std::fclose(stream_);
        std::free(text_); // NOLINT(cppcoreguidelines-no-malloc): of the stream
    }

    /// What was written up to now.
    std::string sText() {
        std::fflush(stream_);
        return {text_, size_};
    }

    std::FILE* pStream() { return stream_; }

    Output output{stream_};
};

} // namespace kiv::kivifc::test
