/// @file
/// The assertion service of a host that has nothing but what the library needs of one.
#pragma once

#include <cstdint>
#include <string_view>

namespace kiv::assert {

struct AssertInfo {
    std::int32_t code;
    std::string_view message;
    std::string_view function;
    std::string_view file;
    std::int32_t line;
};

class Assert {
public:
    static bool isEnabled();
    static void addAssert(const AssertInfo& info);
};

} // namespace kiv::assert
