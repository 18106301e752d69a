/// @file
/// The translations of a name or of a definition text.
///
///     property.getNameAliases().sValueFromLanguage(kiv::locale::Locale::get("de-AT", nullptr));
///
/// Ownership: a value.
/// Threads:   what is const may be called from any number of threads.
/// Errors:    an entry without language or text is left out silently; a missing translation is an empty text.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Base/WorkMeter.h"
#include "kiv/Host/Locale/KivLocale.h"
#include "kiv/Host/Xml/KivXml.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::xml {

class KIV_EXPORT Aliases {
public:
    struct Entry {
        kiv::locale::Locale locale;
        std::string text;
    };

    /// Appends an entry for each element child of `list` that has the tag `itemTag`, a "lang" attribute and a
    /// text.
    void vAliasAdd(const kiv::xml::const_Element& list, std::string_view itemTag, WorkMeter* meter = nullptr);

    /// The text of the first entry in that language and country, else of the first in that language without a
    /// country, else empty. One in another country of the language is never used instead. The language of
    /// an odd tag such as "de-DE-AT" is itself split again, so that the text in "de-DE" is used for it.
    std::string sValueFromLanguage(const kiv::locale::Locale& locale) const;

    /// Appends an element `listTag` with the entries as `itemTag` elements; nothing when there are no
    /// entries.
    void vExport(kiv::xml::Element& parent, std::string_view listTag, std::string_view itemTag) const;

    /// In the order read; several may have equal locales.
    const std::vector<Entry>& getEntries() const { return entries_; }

private:
    const Entry* pEntryFromLocale(const kiv::locale::Locale& locale) const;

    std::vector<Entry> entries_;
};

} // namespace kiv::ifc::def::xml
