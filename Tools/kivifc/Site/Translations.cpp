#include "kivifc/Site/Translations.h"

#include "kivifc/Program/AsciiText.h"
#include "kivifc/Site/Elements.h"

#include <algorithm>
#include <cstddef>

namespace kiv::kivifc::site {

namespace {

using ifc::def::xml::Aliases;

bool isLetters(std::string_view text) {
    return std::ranges::all_of(text, ascii::isLetter);
}

bool isLanguage(std::string_view part) {
    return (part.size() == 2 || part.size() == 3) && isLetters(part);
}

bool isScript(std::string_view part) {
    return part.size() == 4 && isLetters(part);
}

bool isCountry(std::string_view part) {
    return (part.size() == 2 && isLetters(part)) ||
           (part.size() == 3 && std::ranges::all_of(part, ascii::isDigit));
}

/// What comes before the next hyphen, which is taken off the text.
std::string_view partTake(std::string_view& text) {
    const auto end = std::min(text.find('-'), text.size());
    const auto part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

/// What is no tag is nothing that browsers understand, but a language to choose all the same.
void vLanguageAttributeWrite(const std::string& language, Html& html) {
    if (const auto tag = sLanguageTag(language); !tag.empty())
        html << attribute("lang", tag);
    else
        html << attribute("data-l", sShort(language));
}

void vVariantsWrite(const Aliases& aliases, Html& html) {
    for (const auto& entry : aliases.getEntries()) {
        html << "<span class=\"t\"";
        vLanguageAttributeWrite(entry.locale.getCombined(), html);
        html << ">" << escaped(entry.text) << "</span>";
    }
}

} // namespace

std::string sLanguageTag(std::string_view language) {
    auto rest = language;
    if (!isLanguage(partTake(rest)))
        return {};
    auto part = partTake(rest);
    if (isScript(part))
        part = partTake(rest);
    if (isCountry(part))
        part = partTake(rest);
    const bool isTag = part.empty() && rest.empty() && !language.ends_with('-');
    return isTag ? std::string(language) : std::string();
}

void vTranslatedWrite(std::string_view text, const Aliases& aliases, Html& html) {
    if (aliases.getEntries().empty()) {
        html << escaped(text);
        return;
    }
    html << "<span class=\"t\" data-l=\"\">" << escaped(text) << "</span>";
    vVariantsWrite(aliases, html);
}

void vNameTranslationsWrite(const Aliases& aliases, Html& html) {
    if (aliases.getEntries().empty())
        return;
    // Nothing in the document's own language, which is that of the name beside it.
    html << " <span class=\"note\"><span class=\"t\" data-l=\"\"></span>";
    vVariantsWrite(aliases, html);
    html << "</span>";
}

} // namespace kiv::kivifc::site
