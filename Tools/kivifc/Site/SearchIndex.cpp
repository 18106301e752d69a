#include "kivifc/Site/SearchIndex.h"

#include "kivifc/Site/ScriptText.h"

#include <array>
#include <fmt/format.h>
#include <utility>
#include <vector>

namespace kiv::kivifc::site {

namespace {

/// Nobody types more, and names may be as long as a document.
constexpr std::size_t LongestText = 200;

// In the order of SearchKind.
constexpr std::array<std::string_view, 17> KindNames{"Entity",
                                                     "Type",
                                                     "Enumeration",
                                                     "Select",
                                                     "Property set",
                                                     "Quantity set",
                                                     "Property",
                                                     "Quantity",
                                                     "Attribute",
                                                     "Inverse attribute",
                                                     "Derived attribute",
                                                     "Enumeration value",
                                                     "Function",
                                                     "Rule",
                                                     "WHERE rule",
                                                     "UNIQUE rule",
                                                     "Page"};
static_assert(KindNames.size() == static_cast<std::size_t>(SearchKind::Page) + 1);

std::string sQuoted(std::string_view text) {
    return sScriptString(text, LongestText);
}

std::string sNumber(SearchKind kind) {
    return std::to_string(static_cast<int>(kind));
}

/// What sQuoted says, or 0 for nothing.
std::string sQuotedOrZero(std::string_view text) {
    return text.empty() ? "0" : sQuoted(text);
}

/// Where the page of a name lies, as long as the name is safe to be one of a file.
std::string sExpectedAddress(SearchKind kind, std::string_view name) {
    const bool isSet = kind == SearchKind::PropertySet || kind == SearchKind::QuantitySet;
    return fmt::format("{}{}.html", isSet ? "sets/" : "", name);
}

/// The values of an array, those at its end left out that say nothing.
std::string sShortened(std::vector<std::string> values) {
    while (!values.empty() && (values.back().empty() || values.back() == "0" || values.back() == "[]"))
        values.pop_back();
    return fmt::format("{}", fmt::join(values, ","));
}

} // namespace

void SearchIndex::vPageAdd(SearchKind kind, std::string_view name, std::string_view address,
                           std::string_view guid, SearchTranslations translations, std::string_view note,
                           std::string_view above) {
    if (!page_.empty())
        pages_ += sLastPage() + ",\n";
    const bool isExpected = sExpectedAddress(kind, name) == address;
    page_ = {sNumber(kind), sQuoted(name), isExpected ? "0" : sQuoted(address), sQuotedOrZero(guid)};
    rows_.clear();
    rowKind_.reset();
    translations_ = "[" + sTranslations(translations) + "]";
    note_ = sQuotedOrZero(note);
    above_ = sQuotedOrZero(above);
}

void SearchIndex::vRowAdd(SearchKind kind, std::string_view name, std::string_view anchor,
                          std::string_view guid, SearchTranslations translations) {
    if (rowKind_ != kind)
        rows_ += (rows_.empty() ? "[" : "],[") + sNumber(kind);
    rowKind_ = kind;
    auto row = sShortened({sQuoted(name), anchor == name ? "0" : sQuoted(anchor), sQuotedOrZero(guid),
                           sTranslations(translations)});
    const bool isName = anchor == name && guid.empty() && translations.empty();
    rows_ += isName ? "," + row : ",[" + row + "]";
}

std::string SearchIndex::sText() const {
    std::vector<std::string> kinds;
    for (const auto name : KindNames)
        kinds.push_back(sQuoted(name));
    std::vector<std::string> languages(languages_.size());
    for (const auto& [name, number] : languages_)
        languages[number] = sQuoted(name);
    return fmt::format("window.kivSearch={{format:2,kinds:[{}],languages:[{}],pages:[\n{}{}\n]}};\n",
                       fmt::join(kinds, ","), fmt::join(languages, ","), pages_, sLastPage());
}

std::string SearchIndex::sLastPage() const {
    if (page_.empty())
        return {};
    auto values = page_;
    values.push_back(rows_.empty() ? "[]" : "[" + rows_ + "]]");
    values.push_back(translations_);
    values.push_back(note_);
    values.push_back(above_);
    return "[" + sShortened(std::move(values)) + "]";
}

/// Number of a language and text, in turn.
std::string SearchIndex::sTranslations(SearchTranslations translations) {
    std::vector<std::string> values;
    for (const auto& translation : translations) {
        values.push_back(std::to_string(languageNumber(translation.language)));
        values.push_back(sQuoted(translation.text));
    }
    return fmt::format("{}", fmt::join(values, ","));
}

std::size_t SearchIndex::languageNumber(std::string_view language) {
    if (const auto place = languages_.find(language); place != languages_.end())
        return place->second;
    return languages_.emplace(language, languages_.size()).first->second;
}

} // namespace kiv::kivifc::site
