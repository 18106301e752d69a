/// @file
/// What the search of a site finds: a classic script, as browsers load no other data for pages that lie in a
/// folder.
///
///     SearchIndex index;
///     index.vPageAdd(SearchKind::Entity, "IfcWall", "IfcWall.html");
///     index.vRowAdd(SearchKind::Attribute, "PredefinedType", "PredefinedType");
///     write(index.sText());
///
/// The script gives `window.kivSearch` an object that Assets/search.js reads:
///
///     {format: 2, kinds: [TEXT...], languages: [TEXT...], pages: [[kind, name, file, guid, rows,
///     translations, note, above]...]}
///
/// Kinds and languages are indexes into those lists. `file` is 0 where it is NAME.html, in sets/ for sets.
/// `guid` is 32 hexadecimal digits or 0. `rows` has one array for each run of rows of one kind: [kind,
/// row...]. A row is its name alone where that is its anchor and there is nothing else, or [name, anchor or
/// 0, guid or 0, language, text...]. `translations` is [language, text...]. `note` is what has to be known of
/// all that is on the page, such as that it is hidden. `above` is the name of the supertype, whose rows are
/// found as those of the page too. What is 0 or empty at the end of an array is left out.
///
/// Ownership: keeps copies.
/// Threads:   one thread at a time.
/// Errors:    bytes that are not UTF-8 are replaced by U+FFFD; names and texts beyond 200 characters are cut.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kivifc::site {

/// In the order in which results of the same rank are listed.
enum class SearchKind {
    Entity,
    Type,
    Enumeration,
    Select,
    PropertySet,
    QuantitySet,
    Property,
    Quantity,
    Attribute,
    InverseAttribute,
    DerivedAttribute,
    EnumerationValue,
    Function,
    Rule,
    DomainRule,
    UniqueRule,
    Page
};

/// A name in another language.
struct SearchTranslation {
    std::string_view language;
    std::string_view text;
};

using SearchTranslations = std::span<const SearchTranslation>;

class SearchIndex {
public:
    /// The address is relative to the folder of the site. The GUID is empty or 32 hexadecimal digits.
    void vPageAdd(SearchKind kind, std::string_view name, std::string_view address,
                  std::string_view guid = {}, SearchTranslations translations = {},
                  std::string_view note = {}, std::string_view above = {});

    /// A row of the page that was added last.
    void vRowAdd(SearchKind kind, std::string_view name, std::string_view anchor, std::string_view guid = {},
                 SearchTranslations translations = {});

    /// The whole script.
    std::string sText() const;

private:
    /// The last page as an array; nothing where there is none.
    std::string sLastPage() const;
    std::string sTranslations(SearchTranslations translations);
    std::size_t languageNumber(std::string_view language);

    /// All pages but the last, each with a comma and a line end.
    std::string pages_;
    /// The values of the last page that come before its rows, the rows without the end of their last run, and
    /// the values that come after them.
    std::vector<std::string> page_;
    std::string rows_;
    std::string translations_;
    std::string note_;
    std::string above_;
    /// That of the last run of rows, where there is one.
    std::optional<SearchKind> rowKind_;
    std::map<std::string, std::size_t, std::less<>> languages_;
};

} // namespace kiv::kivifc::site
