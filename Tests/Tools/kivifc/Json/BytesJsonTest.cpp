#include "kivifc/Json/BytesJson.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc {

namespace {

TEST(BytesJson, TextThatIsNotUtf8HasItsBytesBesideIt) {
    struct Row {
        std::string text;
        const char* bytes;
    };
    const Row rows[] = {{"a\xFF/b c", "a%FF/b%20c"},
                        {"\xC3", "%C3"},
                        {"\xED\xA0\x80.xml", "%ED%A0%80.xml"},
                        {"AZaz09-._~/%\xFF", "AZaz09-._~/%25%FF"}};
    for (const auto& row : rows) {
        const auto json = withBytes({{"path", row.text}, {"line", 1}}, "path");
        EXPECT_EQ(json.at("path"), row.text);
        EXPECT_EQ(json.at("pathBytes"), row.bytes);
        EXPECT_EQ(json.size(), 3U);
    }
    for (const char* text : {"", "a b", "B\xC3\xBCro/%", "\xF0\x9F\x8F\xA0"}) {
        const auto json = withBytes({{"path", text}, {"line", 1}}, "path");
        EXPECT_EQ(json, (Json{{"path", text}, {"line", 1}}));
    }
}

} // namespace

} // namespace kiv::kivifc
