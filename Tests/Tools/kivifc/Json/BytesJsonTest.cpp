#include "kivifc/Json/BytesJson.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

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

TEST(BytesJson, ObjectsThatAreWrittenHaveTheSameMember) {
    for (const char* text : {"", "a b%41", "a\xFF/b c", "\xC3", "B\xC3\xBCro"}) {
        std::string written;
        JsonWriter writer([&](std::string_view block) { written += block; });
        writer.vObjectBegin();
        vBytesWrite("path", text, writer);
        writer.vObjectEnd();
        writer.vEnd();
        auto json = withBytes({{"path", text}}, "path");
        json.erase("path");
        EXPECT_EQ(Json::parse(written), json) << text;
    }
}

TEST(BytesJson, TextIsReadBackAsItWas) {
    for (const char* text : {"", "a b%41", "a\xFF/b c", "\xED\xA0\x80%", "B\xC3\xBCro"}) {
        const auto json = Json::parse(
            withBytes({{"path", text}}, "path").dump(-1, ' ', false, Json::error_handler_t::replace));
        EXPECT_EQ(sWithBytes(json, "path"), text);
    }
    EXPECT_THROW(sWithBytes(Json{{"path", 1}}, "path"), Json::exception);
    EXPECT_THROW(sWithBytes(Json{{"path", "a"}, {"pathBytes", 1}}, "path"), Json::exception);
    EXPECT_THROW(sWithBytes(Json::object(), "path"), Json::exception);
}

TEST(BytesJson, PercentWithoutTwoDigitsIsOne) {
    EXPECT_EQ(sPercentDecoded("%41%4g%4%%42%FF%"), "A%4g%4%B\xFF%");
}

} // namespace

} // namespace kiv::kivifc
