#include "kivifc/Json/JsonWriter.h"

#include "kivifc/Json/Json.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::kivifc {

namespace {

/// What is written, in one piece.
template <typename Write>
std::string sWritten(Write write) {
    std::string text;
    JsonWriter writer([&](std::string_view block) { text += block; });
    write(writer);
    writer.vEnd();
    return text;
}

/// The value in the form that the comment of the header describes, from the whole of it.
std::string sLaidOut(const Json& value, std::size_t depth) {
    const auto sKey = [&](const auto& item) {
        return value.is_object() ? Json(item.key()).dump() + ": " : "";
    };
    if (!value.is_structured() || value.empty())
        return value.dump();
    std::string line(1, value.is_object() ? '{' : '[');
    for (const auto& item : value.items())
        line += (line.size() > 1 ? ", " : "") + sKey(item) + sLaidOut(item.value(), 0);
    const std::string end(1, value.is_object() ? '}' : ']');
    if (line.size() < 150 && line.find('\n') == std::string::npos)
        return line + end;
    std::string lines(1, line.front());
    for (const auto& item : value.items())
        lines += (lines.size() > 1 ? ",\n" : "\n") + std::string(2 * depth + 2, ' ') + sKey(item) +
                 sLaidOut(item.value(), depth + 1);
    return lines + '\n' + std::string(2 * depth, ' ') + end;
}

Json randomJson(std::mt19937& random, int depth) {
    const auto choice = random() % (depth > 0 ? 5 : 3);
    if (choice == 0)
        return random() % 1000;
    if (choice == 1)
        return random() % 8 == 0 ? Json(nullptr) : Json(random() % 2 == 0);
    if (choice == 2)
        return std::string(random() % 10 == 0 ? random() % 200 : random() % 12, 'x');
    Json json = choice == 3 ? Json::array() : Json::object();
    for (auto members = random() % 6; members > 0; --members) {
        auto member = randomJson(random, depth - 1);
        if (choice == 3)
            json.push_back(std::move(member));
        else
            json["key" + std::to_string(members)] = std::move(member);
    }
    return json;
}

void vWrite(const Json& value, JsonWriter& writer) {
    if (value.is_object()) {
        writer.vObjectBegin();
        for (const auto& [key, member] : value.items()) {
            writer.vKey(key);
            vWrite(member, writer);
        }
        return writer.vObjectEnd();
    }
    if (value.is_array()) {
        writer.vArrayBegin();
        for (const auto& member : value)
            vWrite(member, writer);
        return writer.vArrayEnd();
    }
    if (value.is_string())
        return writer.vValue(value.get<std::string>());
    if (value.is_boolean())
        return writer.vValue(value.get<bool>());
    if (value.is_null())
        return writer.vValue(nullptr);
    writer.vValue(value.get<unsigned>());
}

TEST(JsonWriter, WhatFitsOnALineIsOnOneAndWhatDoesNotIsOnSeveral) {
    std::mt19937 random(4711);
    std::size_t spread = 0;
    for (int round = 0; round < 3000; ++round) {
        const auto json = randomJson(random, 1 + round % 6);
        const auto text = sWritten([&](JsonWriter& writer) { vWrite(json, writer); });
        ASSERT_EQ(text, sLaidOut(json, 0) + '\n') << json.dump();
        spread += text.find('\n') + 1 < text.size() ? 1 : 0;
    }
    EXPECT_GT(spread, 100U) << "else the rounds show little";
}

TEST(JsonWriter, ObjectsAreWrittenOneForEachValue) {
    const auto sNumbers = [](const std::vector<int>& numbers) {
        return sWritten([&](JsonWriter& writer) {
            writer.vObjectBegin();
            writer.vObjects("all", numbers, [&](int number) { writer.vMember("n", number); });
            writer.vObjectEnd();
        });
    };
    EXPECT_EQ(sNumbers({}), "{\"all\": []}\n");
    EXPECT_EQ(sNumbers({1, 2}), "{\"all\": [{\"n\": 1}, {\"n\": 2}]}\n");
}

TEST(JsonWriter, LineIsFullAt150BytesWithoutItsEnd) {
    for (std::size_t size = 140; size < 150; ++size) {
        const std::string text(size, 'x');
        const auto array = sWritten([&](JsonWriter& writer) {
            writer.vArrayBegin();
            writer.vValue(text);
            writer.vArrayEnd();
        });
        // A bracket and two quotation marks.
        const bool isOneLine = size + 3 < 150;
        EXPECT_EQ(array, isOneLine ? "[\"" + text + "\"]\n" : "[\n  \"" + text + "\"\n]\n") << size;
    }
}

TEST(JsonWriter, TextsAreEscaped) {
    using namespace std::string_view_literals;
    struct Row {
        std::string_view text;
        const char* json;
    };
    const Row rows[] = {{"", R"("")"},
                        {"SELF\\IfcWall", R"("SELF\\IfcWall")"},
                        {"\"", R"("\"")"},
                        {"a\"b\\", R"("a\"b\\")"},
                        {"\b\f\n\r\t", R"("\b\f\n\r\t")"},
                        {"\0\x01\x1F\x7F"sv, "\"\\u0000\\u0001\\u001f\x7F\""},
                        {"/", R"("/")"},
                        {"Wände\n", "\"Wände\\n\""},
                        {"\xF0\x9F\x8F\xA0", "\"\xF0\x9F\x8F\xA0\""},
                        {"W\xE4nde", "\"W\xEF\xBF\xBDnde\""},
                        {"\xC3", "\"\xEF\xBF\xBD\""}};
    for (const auto& row : rows) {
        EXPECT_EQ(sWritten([&](JsonWriter& writer) { writer.vValue(row.text); }),
                  std::string(row.json) + '\n');
        const auto object = sWritten([&](JsonWriter& writer) {
            writer.vObjectBegin();
            writer.vMember(row.text, true);
            writer.vObjectEnd();
        });
        EXPECT_EQ(object, '{' + std::string(row.json) + ": true}\n");
    }
}

TEST(JsonWriter, TextsAreEscapedWhereverTheyHaveToBe) {
    struct Row {
        char letter;
        const char* json;
    };
    const Row rows[] = {
        {'"', "\\\""}, {'\\', "\\\\"}, {'\0', "\\u0000"}, {'\x1F', "\\u001f"}, {'\x7F', "\x7F"},
        {' ', " "},    {'!', "!"},     {'#', "#"},        {'[', "["},          {'\xE4', "\xEF\xBF\xBD"}};
    for (const auto& row : rows) {
        for (std::size_t size = 1; size != 20; ++size) {
            for (std::size_t at = 0; at != size; ++at) {
                const std::string before(at, 'a');
                const std::string after(size - at - 1, 'z');
                const auto text = before + row.letter + after;
                EXPECT_EQ(sWritten([&](JsonWriter& writer) { writer.vValue(text); }),
                          '"' + before + row.json + after + "\"\n")
                    << size << ' ' << at;
            }
        }
    }
}

TEST(JsonWriter, ValuesOfEveryKindHaveTheirForm) {
    const auto text = sWritten([](JsonWriter& writer) {
        writer.vArrayBegin();
        writer.vValue(nullptr);
        writer.vValue(false);
        writer.vValue(std::numeric_limits<std::int64_t>::min());
        writer.vValue(std::numeric_limits<std::uint64_t>::max());
        writer.vValue(2.0);
        writer.vValue(1e100);
        writer.vValue("text");
        writer.vValue(std::string("text"));
        writer.vArrayEnd();
    });
    EXPECT_EQ(text,
              "[null, false, -9223372036854775808, 18446744073709551615, 2.0, 1e+100, \"text\", \"text\"]\n");
}

/// What is kept back until it is known to fit is short, however large the document is.
TEST(JsonWriter, TextIsHandedOnInBlocks) {
    std::size_t largest = 0;
    std::size_t all = 0;
    JsonWriter writer([&](std::string_view block) {
        largest = std::max(largest, block.size());
        all += block.size();
    });
    writer.vArrayBegin();
    for (int member = 0; member < 50000; ++member) {
        writer.vArrayBegin();
        for (int number = 0; number < 60; ++number)
            writer.vValue(number);
        writer.vArrayEnd();
    }
    writer.vArrayEnd();
    writer.vEnd();
    EXPECT_GT(all, std::size_t{10000000});
    EXPECT_LT(largest, std::size_t{100000});
}

TEST(JsonWriter, DeepNestingTakesNoMoreThanItsText) {
    constexpr std::size_t Depth = 3000;
    const auto text = sWritten([](JsonWriter& writer) {
        for (std::size_t level = 0; level < Depth; ++level)
            writer.vArrayBegin();
        for (std::size_t level = 0; level < Depth; ++level)
            writer.vArrayEnd();
    });
    // The innermost 75 are on one line, which has 149 brackets without its end; each other has a line for its
    // beginning and one for its end.
    EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(text, '\n')), 2 * (Depth - 75) + 1);
}

} // namespace

} // namespace kiv::kivifc
