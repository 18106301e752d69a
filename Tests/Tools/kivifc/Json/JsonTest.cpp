#include "kivifc/Json/Json.h"

#include "Support/TemporaryFolder.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc {

namespace {

std::string sWritten(const Json& json) {
    const kiv::test::TemporaryFolder folder;
    const auto path = folder.sPath("json");
    std::FILE* file = std::fopen(path.c_str(), "w");
    Output output(file);
    vJsonWrite(json, output);
    std::fclose(file);
    return kiv::test::sFileText(path);
}

TEST(Json, WhatFitsOnALineIsOnOne) {
    struct Row {
        const char* json;
        const char* text;
    };
    const Row rows[] = {
        {"null", "null\n"},
        {"{}", "{}\n"},
        {"[]", "[]\n"},
        {"[[], {}]", "[[], {}]\n"},
        {R"({"b": 1, "a": [true, -2, 0.5, "x"]})", R"({"b": 1, "a": [true, -2, 0.5, "x"]})"
                                                   "\n"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sWritten(Json::parse(row.json)), row.text);
}

TEST(Json, WhatDoesNotFitIsSpreadOverLines) {
    const std::string text(150, 'x');
    EXPECT_EQ(sWritten(Json{{"short", {1, 2}}, {"long", {text, 3}}}), "{\n"
                                                                      "  \"short\": [1, 2],\n"
                                                                      "  \"long\": [\n"
                                                                      "    \"" +
                                                                          text +
                                                                          "\",\n"
                                                                          "    3\n"
                                                                          "  ]\n"
                                                                          "}\n");
}

TEST(Json, ReadsBackEqual) {
    Json json = Json::array();
    for (int i = 0; i < 5000; ++i)
        json.push_back({{"number", i}, {"text", std::string(static_cast<std::size_t>(i % 200), 'y')}});
    EXPECT_EQ(Json::parse(sWritten(json)), json);
}

TEST(Json, BytesThatAreNotUtf8AreReplaced) {
    EXPECT_EQ(sWritten(Json{{"name\xFF", "W\xE4nde"}}), "{\"name\xEF\xBF\xBD\": \"W\xEF\xBF\xBDnde\"}\n");
}

TEST(Json, DeepNestingIsWrittenInTime) {
    Json json = 1;
    for (int i = 0; i < 2000; ++i)
        json = Json::array({std::move(json)});
    EXPECT_EQ(Json::parse(sWritten(json)), json);
}

} // namespace

} // namespace kiv::kivifc
