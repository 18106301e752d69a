/// @file
/// Locales of a host that have nothing but what the library needs of them.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace kiv::locale {

class Locale {
public:
    static Locale get(const char* language, const char* country);
    const char* getLanguage() const;
    const char* getCountry() const;
    std::string getCombined() const;

    friend bool operator==(const Locale& left, const Locale& right);

private:
    Locale(std::string language, std::string_view country);

    std::string language_;
    std::array<char, 4> country_{};
};

} // namespace kiv::locale
