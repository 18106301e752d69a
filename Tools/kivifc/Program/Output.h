/// @file
/// Standard output, watched: what could not be written is known at the end.
///
///     Output output(stdout);
///     output.vWrite("hello\n");
///     if (const auto failure = output.sFinish(); !failure.empty())
///         ...
///
/// Ownership: refers to the stream, which must outlive it.
/// Threads:   one thread at a time.
/// Errors:    the first write that fails is remembered, and nothing is written after it.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace kiv::kivifc {

class Output {
public:
    explicit Output(std::FILE* stream);
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    void vWrite(std::string_view text);

    /// Hands on what is buffered, so that lines on other streams come after it.
    void vFlush();

    /// Hands on what is buffered, what others wrote to the stream included, and says why some of it could not
    /// be written; empty when all of it could.
    std::string sFinish();

    /// Whether something could not be written, so that nothing is any more.
    bool isFailed() const { return !failure_.empty(); }

    /// Whether the reader of the pipe has gone. What was written is not whole then, and nothing needs to be
    /// said: `head` had what it wanted.
    bool isPipeClosed() const { return isPipeClosed_; }

private:
    void vCheck(bool written);

    std::FILE* stream_;
    std::string failure_;
    bool isPipeClosed_ = false;
};

} // namespace kiv::kivifc
