#include "Kit/Documents/ViewStream.h"

#include <gtest/gtest.h>
#include <ios>
#include <iterator>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

std::string sRest(std::istream& stream) {
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(ViewStream, HasTheBytesOfTheView) {
    constexpr std::string_view Bytes("a\0\xFF\r\n", 5);
    ViewStream stream(Bytes);
    EXPECT_EQ(sRest(stream), Bytes);
}

TEST(ViewStream, NothingIsAtItsEnd) {
    for (const std::string_view nothing : {std::string_view(), std::string_view("")}) {
        ViewStream stream(nothing);
        EXPECT_EQ(stream.tellg(), std::streampos(0));
        EXPECT_EQ(stream.get(), std::char_traits<char>::eof());
        EXPECT_TRUE(stream.eof());
    }
}

TEST(ViewStream, EndsWithTheView) {
    ViewStream stream(std::string_view("one two").substr(0, 3));
    std::string line;
    EXPECT_TRUE(std::getline(stream, line));
    EXPECT_EQ(line, "one");
    EXPECT_FALSE(std::getline(stream, line));
}

TEST(ViewStream, ItsPlaceIsKnown) {
    ViewStream stream("one\ntwo");
    EXPECT_EQ(stream.tellg(), std::streampos(0));
    std::string line;
    std::getline(stream, line);
    EXPECT_EQ(stream.tellg(), std::streampos(4));
}

TEST(ViewStream, ItsPlaceIsMovedFromTheBeginningTheEndAndItself) {
    ViewStream stream("0123456789");
    EXPECT_EQ(stream.seekg(4).get(), '4');
    EXPECT_EQ(stream.seekg(2, std::ios_base::cur).get(), '7');
    EXPECT_EQ(stream.seekg(-3, std::ios_base::cur).get(), '5');
    EXPECT_EQ(stream.seekg(-1, std::ios_base::end).get(), '9');
    EXPECT_EQ(stream.seekg(0, std::ios_base::beg).get(), '0');
    EXPECT_EQ(stream.seekg(0, std::ios_base::end).tellg(), std::streampos(10));
    EXPECT_EQ(stream.get(), std::char_traits<char>::eof());
}

TEST(ViewStream, ItIsReadAgainAfterItsEnd) {
    ViewStream stream("wall");
    EXPECT_EQ(sRest(stream), "wall");
    stream.clear();
    stream.seekg(1);
    EXPECT_EQ(sRest(stream), "all");
}

TEST(ViewStream, PlacesOutsideAreRefusedAndItStaysWhereItIs) {
    ViewBuffer buffer("wall");
    EXPECT_EQ(buffer.pubseekpos(1), std::streampos(1));
    const std::streampos refused(std::streamoff(-1));
    EXPECT_EQ(buffer.pubseekpos(5), refused);
    EXPECT_EQ(buffer.pubseekoff(-1, std::ios_base::beg), refused);
    EXPECT_EQ(buffer.pubseekoff(-2, std::ios_base::cur), refused);
    EXPECT_EQ(buffer.pubseekoff(4, std::ios_base::cur), refused);
    EXPECT_EQ(buffer.pubseekoff(1, std::ios_base::end), refused);
    EXPECT_EQ(buffer.pubseekoff(0, std::ios_base::beg, std::ios_base::out), refused);
    EXPECT_EQ(buffer.sgetc(), 'a');
}

TEST(ViewStream, ARefusedMoveFails) {
    ViewStream stream("wall");
    EXPECT_TRUE(stream.seekg(5).fail());
}

} // namespace

} // namespace kiv::kit
