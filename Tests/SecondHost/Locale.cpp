// Locales whose country is known by a regular expression.

#include "kiv/Host/Locale/KivLocale.h"

#include <algorithm>
#include <regex>
#include <strings.h>
#include <utility>

namespace kiv::locale {

Locale::Locale(std::string language, std::string_view country) : language_(std::move(language)) {
    std::copy(country.begin(), country.end(), country_.begin());
}

Locale Locale::get(const char* language, const char* country) {
    std::string text = language ? language : "";
    if (country && *country)
        text.append("-").append(country);
    std::replace(text.begin(), text.end(), '_', '-');
    static const std::regex form("[A-Za-z]{2}|[0-9]{3}");
    const auto last = text.rfind('-');
    if (last == std::string::npos || last == 0)
        return {std::move(text), {}};
    const auto lastPart = text.substr(last + 1);
    if (lastPart.size() < 4 && std::regex_match(lastPart, form))
        return {text.substr(0, last), lastPart};
    return {std::move(text), {}};
}

const char* Locale::getLanguage() const {
    return language_.c_str();
}

const char* Locale::getCountry() const {
    return country_.data();
}

std::string Locale::getCombined() const {
    return *getCountry() ? language_ + "-" + getCountry() : language_;
}

bool operator==(const Locale& left, const Locale& right) {
    return strcasecmp(left.getLanguage(), right.getLanguage()) == 0 &&
           strcasecmp(left.getCountry(), right.getCountry()) == 0;
}

} // namespace kiv::locale
