#include "kivifc/Site/Translations.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::site {

namespace {

TEST(Translations, LanguageTagIsOneThatBrowsersKnow) {
    for (const std::string tag : {"de", "de-CH", "zh-Hans-CN", "es-419", "sr-Latn", "gsw", "EN-us"})
        EXPECT_EQ(sLanguageTag(tag), tag);
    for (const std::string tag : {"", "d", "german", "de-", "-de", "de--CH", "de-CHE", "de-CH-x", "d3",
                                  "de CH", "\"onclick=", "zh-CN-Hans", "12"})
        EXPECT_EQ(sLanguageTag(tag), "") << tag;
}

TEST(Translations, TextWithoutAnyIsPlain) {
    Html html("");
    vTranslatedWrite("a < b", {}, html);
    vNameTranslationsWrite({}, html);
    EXPECT_EQ(html.getText(), "a &lt; b");
}

} // namespace

} // namespace kiv::kivifc::site
