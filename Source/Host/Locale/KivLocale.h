/// @file
/// Languages, with a country or without.
///
///     const auto locale = kiv::locale::Locale::get("de-AT", nullptr);
///     // locale.getLanguage() is "de", locale.getCountry() is "AT"
///
/// Ownership: a value.
/// Threads:   each thread has its own. Nothing here looks at the locale of the process.
/// Errors:    none; every text makes a locale.
#pragma once

#include "kiv/Base/Export.h"

#include <array>
#include <string>
#include <string_view>

namespace kiv::locale {

/// A language and, if it has one, a country, in the style of BCP 47.
///
/// Compared without regard to the case of ASCII letters. Law: `get(x.getCombined().c_str(), nullptr)` equals
/// x, for every locale and however odd the text it was made of.
class KIV_EXPORT Locale {
public:
    /// The locale of a text such as "de", "de-DE", "zh_Hans_CN" or "es-419".
    ///
    /// Parts are separated by "-" or "_". A last part of two letters or of three digits that has something
    /// before it is the country, and all before it the language; otherwise the whole text is the language. A
    /// country that is neither null nor empty is taken as one more part of the text, so one of another form
    /// counts to the language. A null language is an empty text.
    static Locale get(const char* language, const char* country);

    /// The language as written, its parts joined by "-"; never null. Lives until this object changes.
    const char* getLanguage() const;
    /// The country as written; empty, never null, when there is none. Lives until this object changes.
    const char* getCountry() const;
    /// Language and country, joined by "-"; the language alone when there is no country.
    std::string getCombined() const;

    KIV_EXPORT friend bool operator==(const Locale& left, const Locale& right);

private:
    /// Three characters at most, and the zero that ends them.
    using Country = std::array<char, 4>;

    Locale(std::string language, std::string_view country);

    std::string language_;
    Country country_{};
};

} // namespace kiv::locale
