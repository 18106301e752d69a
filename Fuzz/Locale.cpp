// Locales: the combined text reads back equal, whatever the text was; the first line of the input is the
// language, the rest the country.
#include "FuzzTarget.h"

#include "kiv/Host/Locale/KivLocale.h"

#include <string>

void kiv::fuzz::vRun(std::string_view input) {
    using kiv::locale::Locale;
    const auto end = input.find('\n');
    const std::string language(input.substr(0, end));
    const std::string country(end == std::string_view::npos ? std::string_view() : input.substr(end + 1));
    const auto locale = Locale::get(language.c_str(), country.c_str());
    const auto again = Locale::get(locale.getCombined().c_str(), nullptr);
    vLaw(again == locale, "the combined text reads back equal");
    vLaw(again.getCombined() == locale.getCombined(), "and is written alike");
    vLaw(Locale::get(locale.getLanguage(), locale.getCountry()) == locale, "so do its parts");
}
