#include "kivifc/Program/Output.h"

#include "Tools/kivifc/Program/OutputText.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <unistd.h>

namespace kiv::kivifc {

namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

TEST(Output, WritesEveryByte) {
    test::OutputText text;
    text.output.vWrite("");
    text.output.vWrite({});
    text.output.vWrite("one ");
    text.output.vWrite({"\0two", 4});
    EXPECT_EQ(text.sText(), std::string("one \0two", 8));
    EXPECT_EQ(text.output.sFinish(), "");
    EXPECT_FALSE(text.output.isFailed());
}

TEST(Output, AFullDeviceSaysSoAtTheEnd) {
    const File full(std::fopen("/dev/full", "wb"), &std::fclose);
    ASSERT_TRUE(full);
    Output output(full.get());
    output.vWrite("wall"); // in the buffer
    EXPECT_FALSE(output.isFailed());
    EXPECT_EQ(output.sFinish(), "No space left on device");
    EXPECT_TRUE(output.isFailed());
    EXPECT_FALSE(output.isPipeClosed());
}

/// Fails for another reason each time: the first time as a full device does.
ssize_t failingWrite(void* cookie, const char*, std::size_t) {
    auto& failures = *static_cast<int*>(cookie);
    errno = failures++ == 0 ? ENOSPC : EIO;
    return -1;
}

TEST(Output, TheFirstFailureIsRemembered) {
    int failures = 0;
    cookie_io_functions_t functions{};
    functions.write = &failingWrite;
    const File file(fopencookie(&failures, "w", functions), &std::fclose);
    ASSERT_TRUE(file);
    Output output(file.get());
    output.vWrite("wall");
    output.vFlush();
    output.vWrite("more");
    output.vFlush();
    EXPECT_EQ(output.sFinish(), "No space left on device");
    EXPECT_GE(failures, 1);
}

TEST(Output, AClosedPipeIsAFailureOfItsOwn) {
    const auto before = std::signal(SIGPIPE, SIG_IGN);
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]);
    const File pipe(fdopen(ends[1], "wb"), &std::fclose);
    Output output(pipe.get());
    output.vWrite("wall");
    EXPECT_EQ(output.sFinish(), "Broken pipe");
    EXPECT_TRUE(output.isPipeClosed());
    std::signal(SIGPIPE, before);
}

TEST(Output, WhatOthersCouldNotWriteIsAFailureToo) {
    const File full(std::fopen("/dev/full", "wb"), &std::fclose);
    ASSERT_TRUE(full);
    std::fputs("of another", full.get());
    std::fflush(full.get());
    Output output(full.get());
    EXPECT_NE(output.sFinish(), "");
}

} // namespace

} // namespace kiv::kivifc
