#include "kiv/Host/Locale/KivLocale.h"

#include "Base/Ascii.h"

#include <algorithm>
#include <utility>

namespace kiv::locale {

namespace {

constexpr char separator = '-';

std::string_view getText(const char* text) {
    return text == nullptr ? std::string_view() : text;
}

/// country = letter letter | digit digit digit
bool isCountry(std::string_view part) {
    return (part.size() == 2 && std::ranges::all_of(part, ascii::isLetter)) ||
           (part.size() == 3 && std::ranges::all_of(part, ascii::isDigit));
}

/// All parts of both texts, joined by the separator.
std::string sParts(std::string_view language, std::string_view country) {
    std::string parts(language);
    if (!country.empty())
        parts.append(1, separator).append(country);
    std::ranges::replace(parts, '_', separator);
    return parts;
}

} // namespace

Locale::Locale(std::string language, std::string_view country) : language_(std::move(language)) {
    std::ranges::copy(country, country_.begin());
}

Locale Locale::get(const char* language, const char* country) {
    std::string parts = sParts(getText(language), getText(country));
    const std::size_t last = parts.rfind(separator);
    if (last == std::string::npos || last == 0)
        return {std::move(parts), {}};
    const std::string_view lastPart = std::string_view(parts).substr(last + 1);
    if (!isCountry(lastPart))
        return {std::move(parts), {}};
    return {parts.substr(0, last), lastPart};
}

const char* Locale::getLanguage() const {
    return language_.c_str();
}

const char* Locale::getCountry() const {
    return country_.data();
}

std::string Locale::getCombined() const {
    return sParts(language_, country_.data());
}

bool operator==(const Locale& left, const Locale& right) {
    return ascii::isEqualIgnoringCase(left.language_, right.language_) &&
           ascii::isEqualIgnoringCase(left.getCountry(), right.getCountry());
}

} // namespace kiv::locale
