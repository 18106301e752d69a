#include "kiv/Host/Locale/KivLocale.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace kiv::locale {

/// Shown by a test that fails.
void PrintTo(const Locale& locale, std::ostream* stream) {
    *stream << locale.getLanguage() << " / " << locale.getCountry();
}

namespace {

TEST(KivLocaleTest, CountryOfALanguageAloneIsEmptyNotNull) {
    const Locale locale = Locale::get("de", nullptr);
    ASSERT_NE(locale.getCountry(), nullptr);
    EXPECT_STREQ(locale.getCountry(), "");
    EXPECT_STREQ(locale.getLanguage(), "de");
}

TEST(KivLocaleTest, NullLanguageIsAnEmptyText) {
    const Locale locale = Locale::get(nullptr, nullptr);
    EXPECT_STREQ(locale.getLanguage(), "");
    EXPECT_STREQ(locale.getCountry(), "");
    EXPECT_EQ(locale.getCombined(), "");
    EXPECT_EQ(locale, Locale::get("", nullptr));
}

struct SplitRow {
    const char* text;
    const char* language;
    const char* country;
    const char* combined;
};

TEST(KivLocaleTest, SplitsATextIntoLanguageAndCountry) {
    const SplitRow rows[] = {
        {"de", "de", "", "de"},
        {"de-DE", "de", "DE", "de-DE"},
        {"de_DE", "de", "DE", "de-DE"},
        {"ja-JP", "ja", "JP", "ja-JP"},
        {"DE-de", "DE", "de", "DE-de"}, // written as it was, whatever the case
        {"es-419", "es", "419", "es-419"},
        {"zh-Hans", "zh-Hans", "", "zh-Hans"},
        {"zh-Hans-CN", "zh-Hans", "CN", "zh-Hans-CN"},
        {"zh_Hans_CN", "zh-Hans", "CN", "zh-Hans-CN"},
        {"sl-rozaj-biske", "sl-rozaj-biske", "", "sl-rozaj-biske"},
        {"en-GB-oed", "en-GB-oed", "", "en-GB-oed"}, // the last part alone can be a country
        {"fr-1990", "fr-1990", "", "fr-1990"},
        {"de-D1", "de-D1", "", "de-D1"},
        {"de-41", "de-41", "", "de-41"},
        {"de-DEU", "de-DEU", "", "de-DEU"},
        {"de-4a9", "de-4a9", "", "de-4a9"},
        {"de DE", "de DE", "", "de DE"},
        {"DE", "DE", "", "DE"},
        {"419", "419", "", "419"},
        {"", "", "", ""},
        {"-", "-", "", "-"},
        {"_DE", "-DE", "", "-DE"}, // nothing is before it
        {"de-", "de-", "", "de-"},
        {"de--DE", "de-", "DE", "de--DE"},
        {"--DE", "-", "DE", "--DE"},
        {"x-y-zz", "x-y", "zz", "x-y-zz"},
        {"de-\xC3\xA4", "de-\xC3\xA4", "", "de-\xC3\xA4"}, // two bytes, but no letters of ASCII
    };
    for (const SplitRow& row : rows) {
        const Locale locale = Locale::get(row.text, nullptr);
        EXPECT_STREQ(locale.getLanguage(), row.language) << row.text;
        EXPECT_STREQ(locale.getCountry(), row.country) << row.text;
        EXPECT_EQ(locale.getCombined(), row.combined) << row.text;
    }
}

struct PairRow {
    const char* language;
    const char* country;
    const char* same;
};

TEST(KivLocaleTest, CountryThatIsGivenIsOnePartMoreOfTheText) {
    const PairRow rows[] = {
        {"de", "DE", "de-DE"},       {"de", "", "de"},
        {"de-DE", "", "de-DE"},      {"zh-Hans", "CN", "zh-Hans-CN"},
        {"de-AT", "CH", "de-AT-CH"}, {"de", "DEU", "de-DEU"}, // no country by its form
        {"de", "x_DE", "de-x-DE"},   {"", "DE", "-DE"},
        {nullptr, "DE", "-DE"},
    };
    for (const PairRow& row : rows) {
        const Locale locale = Locale::get(row.language, row.country);
        EXPECT_EQ(locale, Locale::get(row.same, nullptr)) << row.same;
        EXPECT_EQ(Locale::get(locale.getCombined().c_str(), nullptr), locale) << row.same;
    }
    EXPECT_STREQ(Locale::get("de", "DE").getCountry(), "DE");
    EXPECT_STREQ(Locale::get("de", "DEU").getCountry(), "");
}

/// All texts of up to `length` of these characters.
std::vector<std::string> getTexts(std::size_t length) {
    std::vector<std::string> texts{""};
    for (std::size_t first = 0, last = 1; length != 0; --length, first = last, last = texts.size())
        for (std::size_t i = first; i != last; ++i)
            for (const char c : {'a', 'Z', '7', '-', '_', ' '})
                texts.push_back(texts[i] + c);
    return texts;
}

TEST(KivLocaleTest, CombinedTextReadsBackToAnEqualLocale) {
    for (const std::string& text : getTexts(6)) {
        const Locale locale = Locale::get(text.c_str(), nullptr);
        const Locale read = Locale::get(locale.getCombined().c_str(), nullptr);
        ASSERT_EQ(read, locale) << "\"" << text << "\"";
        ASSERT_STREQ(read.getCountry(), locale.getCountry()) << "\"" << text << "\"";
    }
}

TEST(KivLocaleTest, LanguageOfALocaleGivesTheLocaleWithoutCountry) {
    const Locale full = Locale::get("zh-Hans-CN", nullptr);
    EXPECT_EQ(Locale::get(full.getLanguage(), nullptr), Locale::get("zh-Hans", nullptr));
}

TEST(KivLocaleTest, ComparedByLanguageAndCountryWithoutRegardToCase) {
    struct Row {
        const char* left;
        const char* right;
        bool isEqual;
    };
    const Row rows[] = {
        {"de-DE", "DE-de", true},
        {"de_DE", "de-DE", true},
        {"zh_hans_cn", "ZH-Hans-CN", true},
        {"de", "de-DE", false},
        {"de-DE", "de-AT", false},
        {"de-DE", "en-DE", false},
        {"de", "den", false},
        {"", "de", false},
        {"es-419", "es-420", false},
        {"\xC3\xA4", "\xC3\x84", false}, // case is that of ASCII letters
        {"a[", "a{", false},             // and of nothing beside them
    };
    for (const Row& row : rows)
        EXPECT_EQ(Locale::get(row.left, nullptr) == Locale::get(row.right, nullptr), row.isEqual)
            << row.left << " and " << row.right;
}

TEST(KivLocaleTest, IsAValue) {
    Locale locale = Locale::get("a-very-long-language-that-needs-memory-of-its-own-DE", nullptr);
    const Locale copy = locale;
    EXPECT_EQ(copy, locale);
    const Locale moved = std::move(locale);
    EXPECT_EQ(moved, copy);
    locale = Locale::get("de", nullptr);
    EXPECT_FALSE(locale == copy);
    locale = copy;
    EXPECT_EQ(locale, moved);
}

} // namespace
} // namespace kiv::locale
