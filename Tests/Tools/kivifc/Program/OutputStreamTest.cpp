#include "kivifc/Program/OutputStream.h"

#include "Tools/kivifc/Program/OutputText.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>

namespace kiv::kivifc {

namespace {

TEST(OutputStream, WritesTextsAndSingleBytes) {
    test::OutputText text;
    OutputBuffer buffer(text.output);
    std::ostream stream(&buffer);
    stream << "wall " << 7 << '\n' << '\xFF';
    stream.put('\0');
    EXPECT_EQ(text.sText(), std::string("wall 7\n\xFF\0", 9));
    EXPECT_TRUE(stream.good());
}

TEST(OutputStream, TheEndOfAFileIsNoByte) {
    test::OutputText text;
    OutputBuffer buffer(text.output);
    EXPECT_NE(buffer.sputc('x'), std::char_traits<char>::eof());
    EXPECT_EQ(text.sText(), "x");
}

TEST(OutputStream, FailsWithTheOutput) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> full(std::fopen("/dev/full", "wb"), &std::fclose);
    ASSERT_TRUE(full);
    std::setvbuf(full.get(), nullptr, _IONBF, 0);
    Output output(full.get());
    OutputBuffer buffer(output);
    std::ostream stream(&buffer);
    stream << "wall";
    EXPECT_TRUE(stream.bad());
    std::ostream second(&buffer);
    second.put('x');
    EXPECT_TRUE(second.bad());
}

} // namespace

} // namespace kiv::kivifc
