#include "kivifc/Program/OneLine.h"

#include <gtest/gtest.h>
#include <string_view>

namespace kiv::kivifc {

namespace {

using namespace std::string_view_literals;

struct Row {
    std::string_view text;
    std::string_view line;
};

TEST(OneLine, SpellsOutControlCharactersOnly) {
    const Row rows[] = {
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

} // namespace

} // namespace kiv::kivifc
