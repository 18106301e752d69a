#include "kivifc/Documents/TextFile.h"

#include "Support/TemporaryFolder.h"
#include "kivifc/Documents/ReadingLimits.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>

namespace kiv::kivifc {

namespace {

using kiv::test::TemporaryFolder;

/// Sets the limit of bytes while it lives.
class InputLimit {
public:
    explicit InputLimit(std::uint64_t limit) { readingBudget().maxInput = limit; }
    InputLimit(const InputLimit&) = delete;
    InputLimit& operator=(const InputLimit&) = delete;
    ~InputLimit() { readingBudget() = before_; }

private:
    ifc::def::Budget before_ = readingBudget();
};

TEST(TextFile, IsReadWhole) {
    const TemporaryFolder folder;
    const auto file = textFileRead(folder.sWrite("a.txt", {"a\0b\n", 4}));
    EXPECT_EQ(file.text, std::string("a\0b\n", 4));
    EXPECT_EQ(file.failure, "");
}

TEST(TextFile, WhatCannotBeReadSaysWhy) {
    const TemporaryFolder folder;
    EXPECT_EQ(textFileRead(folder.sPath("none")).failure, "No such file or directory");
    EXPECT_EQ(textFileRead(folder.sPath(".")).failure, "Is a directory");
}

TEST(TextFile, OnlyFilesAreReadAgain) {
    const TemporaryFolder folder;
    const auto file = folder.sWrite("a.txt", "wall");
    const auto pipe = folder.sPath("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_TRUE(isReadableAgain(file));
    EXPECT_EQ(sReadAgain(file), "wall");
    // To open the pipe would wait for somebody who writes to it.
    for (const auto& path : {pipe, folder.sPath("none"), folder.sPath(".")}) {
        EXPECT_FALSE(isReadableAgain(path)) << path;
        EXPECT_EQ(sReadAgain(path), "") << path;
    }
}

TEST(TextFile, ALimitNamesItsOption) {
    const TemporaryFolder folder;
    const auto path = folder.sWrite("a.txt", "walls");
    const InputLimit limit(4);
    const auto file = textFileRead(path);
    EXPECT_TRUE(file.failure.ends_with("(--max-input)")) << file.failure;
    EXPECT_EQ(file.text, "");
    EXPECT_EQ(textFileRead(folder.sWrite("b.txt", "wall")).text, "wall");
}

} // namespace

} // namespace kiv::kivifc
