#include "kiv/Kit/Documents/TextFile.h"

#include "Support/TemporaryFolder.h"
#include "kiv/Format/Ifc/Def/IfcBudget.h"

#include <cstdint>
#include <cstdio>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

using ifc::def::BudgetExceeded;
using kiv::test::TemporaryFolder;

constexpr auto NoLimit = std::numeric_limits<std::uint64_t>::max();

TextFile streamRead(const std::string& text, std::uint64_t maxSize) {
    std::istringstream stream(text);
    return textFileRead(stream, maxSize);
}

TEST(TextFile, EveryByteIsRead) {
    const TemporaryFolder folder;
    // Around the sizes of the first two blocks.
    for (const std::size_t size : {0U, 1U, 32767U, 32768U, 32769U, 65535U, 65536U, 65537U, 200000U}) {
        std::string text(size, 'x');
        for (std::size_t at = 0; at < size; at += 7)
            text[at] = static_cast<char>(at % 256);
        const auto file = textFileRead(folder.sWrite("file", text), NoLimit);
        EXPECT_EQ(file.failure, "");
        EXPECT_TRUE(file.text == text) << size;
        EXPECT_TRUE(streamRead(text, NoLimit).text == text) << size;
    }
}

TEST(TextFile, TheLimitIsThatOfTheBytes) {
    const TemporaryFolder folder;
    for (const std::size_t size : {1U, 100U, 32768U, 65537U}) {
        const auto path = folder.sWrite("file", std::string(size, 'x'));
        EXPECT_EQ(textFileRead(path, size).text.size(), size);
        EXPECT_THROW(textFileRead(path, size - 1), BudgetExceeded) << size;
        EXPECT_EQ(streamRead(std::string(size, 'x'), size).text.size(), size);
        EXPECT_THROW(streamRead(std::string(size, 'x'), size - 1), BudgetExceeded) << size;
    }
    EXPECT_EQ(textFileRead(folder.sWrite("empty", ""), 0).failure, "");
}

TEST(TextFile, ADeviceWithoutAnEndIsOverTheLimit) {
    EXPECT_THROW(textFileRead("/dev/zero", 100000), BudgetExceeded);
}

TEST(TextFile, WhatCannotBeReadSaysWhy) {
    const TemporaryFolder folder;
    const auto missing = textFileRead(folder.sPath("missing"), NoLimit);
    EXPECT_EQ(missing.failure, "No such file or directory");
    EXPECT_EQ(missing.text, "");
    const auto directory = textFileRead(folder.sPath("."), NoLimit);
    EXPECT_EQ(directory.failure, "Is a directory");
    EXPECT_EQ(directory.text, "");
}

TEST(TextFile, AnOpenFileIsReadFromWhereItIsAndStaysOpen) {
    const TemporaryFolder folder;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
        std::fopen(folder.sWrite("file", "one two").c_str(), "rb"), &std::fclose);
    ASSERT_TRUE(file);
    ASSERT_EQ(std::fseek(file.get(), 4, SEEK_SET), 0);
    EXPECT_EQ(textFileRead(file.get(), NoLimit).text, "two");
    EXPECT_EQ(std::fseek(file.get(), 0, SEEK_SET), 0);
    EXPECT_EQ(textFileRead(file.get(), NoLimit).text, "one two");
}

TEST(TextFile, AStreamThatFailedIsAFailure) {
    for (const auto state : {std::ios_base::badbit, std::ios_base::failbit}) {
        std::istringstream stream("wall");
        stream.setstate(state);
        const auto file = textFileRead(stream, NoLimit);
        EXPECT_EQ(file.failure, "it could not be read");
        EXPECT_EQ(file.text, "");
    }
}

} // namespace

} // namespace kiv::kit
