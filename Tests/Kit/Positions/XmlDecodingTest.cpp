#include "kiv/Kit/Positions/XmlDecoding.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

using namespace std::string_view_literals;

TEST(XmlDecoding, EncodingIsThatOfTheMarkTheFirstCharacterOrTheDeclaration) {
    struct Row {
        std::string_view bytes;
        XmlEncoding encoding;
    };
    const Row rows[] = {
        {"", XmlEncoding::Utf8},
        {"<", XmlEncoding::Utf8},
        {"\0"sv, XmlEncoding::Utf8}, // one byte is no character of UTF-16
        {"<a/>", XmlEncoding::Utf8},
        {"\xEF\xBB\xBF<a/>", XmlEncoding::Utf8},
        {"\xFE\xFF\0<"sv, XmlEncoding::Utf16},
        {"\xFF\xFE<\0"sv, XmlEncoding::Utf16},
        {"\xFE\xFF", XmlEncoding::Utf16},
        {"\0<"sv, XmlEncoding::Utf16},
        {"<\0"sv, XmlEncoding::Utf16},
        {"<?xml version='1.0' encoding='ISO-8859-1'?><a/>", XmlEncoding::Latin1},
        {"<?xml version='1.0' encoding=\"iso-8859-1\"?><a/>", XmlEncoding::Latin1},
        {"<?xml version='1.0' encoding='ISO-8859-15'?><a/>", XmlEncoding::Utf8},
        {"<?xml version='1.0' encoding='US-ASCII'?><a/>", XmlEncoding::Utf8},
        {"<a encoding='ISO-8859-1'/>", XmlEncoding::Utf8},
    };
    for (const auto& row : rows)
        EXPECT_EQ(encodingOf(row.bytes), row.encoding) << testing::PrintToString(row.bytes);
}

TEST(XmlDecoding, DeclaredEncodingIsTheQuotedValueInTheDeclaration) {
    struct Row {
        std::string_view text, encoding;
    };
    const Row rows[] = {
        {"", ""},
        {"<?xml version='1.0' encoding='UTF-8'?>", "UTF-8"},
        {"<?xml version='1.0' encoding = \"a'b\"?>", "a'b"},
        {"<?xml version='1.0' encoding=''?>", ""},
        {"<?xml version='1.0'?>", ""},
        {"<?xml version='1.0'?><a encoding='UTF-8'/>", ""}, // no longer in the declaration
        {"<?xml version='1.0' encoding='UTF-8", ""},        // an open quote
        {"<?xml version='1.0' encoding=?>", ""},
        {" <?xml version='1.0' encoding='UTF-8'?>", ""}, // what begins later is no declaration
        {"<a encoding='UTF-8'/>", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(declaredEncoding(row.text), row.encoding) << row.text;
}

TEST(XmlDecoding, NothingBecomesNothing) {
    for (const auto encoding : {XmlEncoding::Utf8, XmlEncoding::Utf16, XmlEncoding::Latin1}) {
        EXPECT_EQ(sDecoded({}, encoding), "");
        EXPECT_EQ(sDecoded("", encoding), "");
        EXPECT_EQ(decodedSize({}, encoding), 0U);
    }
}

TEST(XmlDecoding, Utf8StaysAsItIs) {
    EXPECT_EQ(sDecoded("\xEF\xBB\xBF<a>\xC3\x28</a>", XmlEncoding::Utf8), "\xEF\xBB\xBF<a>\xC3\x28</a>");
}

TEST(XmlDecoding, Latin1BytesAreCodePoints) {
    EXPECT_EQ(sDecoded("A\x7F\x80\xE9\xFF", XmlEncoding::Latin1), "A\x7F\xC2\x80\xC3\xA9\xC3\xBF");
    EXPECT_EQ(decodedSize("A\x7F\x80\xE9\xFF", XmlEncoding::Latin1), 8U);
    EXPECT_EQ(decodedSize("A\x7F\x80\xE9\xFF", XmlEncoding::Utf8), 5U);
}

// Of one, two, three and four bytes in UTF-8, each at the limits of its length.
TEST(XmlDecoding, Utf16OfBothByteOrdersBecomesUtf8) {
    constexpr auto Big = "\xFE\xFF\x00\x41\x00\x7F\x00\x80\x07\xFF\x08\x00\xFF\xFD\xD8\x00\xDC\x00\xDB\xFF"
                         "\xDF\xFF"sv;
    constexpr auto Expected = "\xEF\xBB\xBF\x41\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBD\xF0\x90\x80\x80"
                              "\xF4\x8F\xBF\xBF"sv;
    EXPECT_EQ(sDecoded(Big, XmlEncoding::Utf16), Expected);
    EXPECT_EQ(decodedSize(Big, XmlEncoding::Utf16), Expected.size());
    std::string little(Big);
    for (std::size_t at = 0; at != little.size(); at += 2)
        std::swap(little[at], little[at + 1]);
    EXPECT_EQ(sDecoded(little, XmlEncoding::Utf16), Expected);
}

TEST(XmlDecoding, Utf16WithoutAMarkIsReadByItsFirstCharacter) {
    EXPECT_EQ(sDecoded("\0<\0a"sv, XmlEncoding::Utf16), "<a");
    EXPECT_EQ(sDecoded("<\0a\0"sv, XmlEncoding::Utf16), "<a");
}

TEST(XmlDecoding, WhatIsNoCharacterBecomesTheReplacement) {
    constexpr std::string_view Replacement = "\xEF\xBF\xBD";
    struct Row {
        std::string_view bytes;
        std::string text;
    };
    const auto r = std::string(Replacement);
    const Row rows[] = {
        {"<\0\x00\xD8"sv, '<' + r},                                      // a high surrogate at the end
        {"<\0\x00\xD8>\0"sv, '<' + r + '>'},                             // before something else
        {"<\0\x00\xDC>\0"sv, '<' + r + '>'},                             // a low one alone
        {"<\0\x00\xDC\x00\xD8"sv, '<' + r + r},                          // in the wrong order
        {"<\0\x00\xD8\x00\xD8\x00\xDC"sv, '<' + r + "\xF0\x90\x80\x80"}, // the second begins a pair
        {"<\0>"sv, '<' + r},                                             // half of a unit at the end
        {"<\0\x00\xD8\x00"sv, '<' + r + r},                              // of the second of a pair
        {"<", r},
        {"\xFE", r},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(sDecoded(row.bytes, XmlEncoding::Utf16), row.text) << testing::PrintToString(row.bytes);
        EXPECT_EQ(decodedSize(row.bytes, XmlEncoding::Utf16), row.text.size())
            << testing::PrintToString(row.bytes);
    }
}

} // namespace

} // namespace kiv::kit
