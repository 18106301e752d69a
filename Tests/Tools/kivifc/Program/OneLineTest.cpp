#include "kivifc/Program/OneLine.h"

#include <gtest/gtest.h>
#include <string_view>

namespace kiv::kivifc {

namespace {

using namespace std::string_view_literals;

struct OneLineRow {
    std::string_view text;
    std::string_view line;
};

TEST(OneLine, SpellsOutControlCharactersOnly) {
    const OneLineRow rows[] = {
        {"", ""},
        {"BldWall", "BldWall"},
        {"a\nb", "a\\nb"},
        {"\r\n\t", "\\r\\n\\t"},
        {"\0x"sv, "\\x00x"},
        {"\x1B[31m", "\\x1B[31m"},
        {"\x7F", "\\x7F"},
        {"SELF\\BldRoot.Name", "SELF\\BldRoot.Name"},
        {"W\xC3\xA4nde", "W\xC3\xA4nde"},
        // U+0080 to U+009F are control characters, U+00A0 is none.
        {"\xC2\x80\xC2\x9B\xC2\x9F", "\\xC2\\x80\\xC2\\x9B\\xC2\\x9F"},
        {"\xC2\xA0", "\xC2\xA0"},
        // Bytes that are not UTF-8 stay.
        {"\xC2", "\xC2"},
        {"\xFF\xC2z", "\xFF\xC2z"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sOneLine(row.text), row.line);
}

TEST(OneLine, SpellsOutWhatCannotBeSeen) {
    const OneLineRow rows[] = {
        {"Wall\u200BCommon", "Wall\\u{200B}Common"},
        {"\uFEFFWall", "\\u{FEFF}Wall"},
        {"Wa\u00ADll", "Wa\\u{00AD}ll"},
        {"Wa\u2060ll", "Wa\\u{2060}ll"},
        {"Wa\u200Dll\u200C", "Wa\\u{200D}ll\\u{200C}"},
        {"Wall\U000E0041", "Wall\\u{E0041}"},
        {"Wall\U000E0041\U000E0042", "Wall\\u{E0041}\\u{E0042}"},
        // What Persian, Devanagari and pictures are written with stays.
        {"\u0645\u06CC\u200C\u062E", "\u0645\u06CC\u200C\u062E"},
        {"\u0915\u094D\u200D", "\u0915\u094D\u200D"},
        {"\u2764\uFE0F\u200D\U0001F525", "\u2764\uFE0F\u200D\U0001F525"},
        // The flag of Scotland, shortened, and what is after it.
        {"\U0001F3F4\U000E0067\U000E0062\U000E007F", "\U0001F3F4\U000E0067\U000E0062\U000E007F"},
        {"\U0001F3F4a\U000E0067", "\U0001F3F4a\\u{E0067}"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sOneLine(row.text), row.line);
}

} // namespace

} // namespace kiv::kivifc
