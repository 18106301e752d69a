/// @file
/// What the tests of the schema reader share beside Tests/Support.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaObjectBase.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"

#include <initializer_list>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

/// A `ReadLineHelper` whose current line is the first of a text, with the stream that holds the others.
struct LineAndStream {
    explicit LineAndStream(std::string_view text) : stream(std::string(text)) { line.boNextLine(stream); }

    std::istringstream stream;
    ifc::def::schema::ReadLineHelper line;
};

/// The names of objects; "-" for null.
template <typename Objects>
std::vector<std::string> namesOf(const Objects& objects) {
    std::vector<std::string> names;
    for (const ifc::def::schema::ObjectBase* object : objects)
        names.emplace_back(object ? object->getName() : "-");
    return names;
}

/// The views as strings, which live on their own and are printed when a test fails.
inline std::vector<std::string> stringsOf(std::span<const std::string_view> views) {
    return {views.begin(), views.end()};
}

using Strings = std::vector<std::string>;

/// The text, again and again.
inline std::string repeated(std::string_view text, std::size_t times) {
    std::string result;
    result.reserve(text.size() * times);
    for (std::size_t i = 0; i < times; ++i)
        result += text;
    return result;
}

} // namespace kiv::test
