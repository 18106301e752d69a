#include "kiv/Format/Ifc/Def/IfcDefAliases.h"

#include "Format/Ifc/Def/IfcDefXmlNodes.h"

#include <algorithm>

namespace kiv::ifc::def::xml {

namespace {

constexpr std::string_view LanguageAttribute = "lang";

} // namespace

void Aliases::vAliasAdd(const kiv::xml::const_Element& list, std::string_view itemTag, WorkMeter* meter) {
    for (const auto& child : ElementChildren(list)) {
        vLook(meter);
        if (tagOf(child) != itemTag)
            continue;
        const auto language = child.AttributeNodeGet(LanguageAttribute);
        const auto text = firstChildText(child);
        if (!language || !text)
            continue;
        vObjectTake(meter);
        vTextMemoryTake(valueOf(*language).size(), meter);
        vTextMemoryTake(text->size(), meter);
        vRoomForOne(entries_, meter);
        entries_.push_back(
            {kiv::locale::Locale::get(language->getValue().c_str(), nullptr), std::string(*text)});
    }
}

std::string Aliases::sValueFromLanguage(const kiv::locale::Locale& locale) const {
    const Entry* entry = pEntryFromLocale(locale);
    const bool hasCountry = *locale.getCountry() != '\0';
    if (!entry && hasCountry)
        entry = pEntryFromLocale(kiv::locale::Locale::get(locale.getLanguage(), nullptr));
    return entry ? entry->text : std::string();
}

void Aliases::vExport(kiv::xml::Element& parent, std::string_view listTag, std::string_view itemTag) const {
    if (entries_.empty())
        return;
    auto list = parent.ElementNodeAppend(listTag);
    for (const Entry& entry : entries_) {
        auto item = list.ElementNodeAppend(itemTag);
        item.vAttributeSet(LanguageAttribute, entry.locale.getCombined());
        item.boTextNodeAppend(entry.text);
    }
}

const Aliases::Entry* Aliases::pEntryFromLocale(const kiv::locale::Locale& locale) const {
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const Entry& entry) { return entry.locale == locale; });
    return found == entries_.end() ? nullptr : &*found;
}

} // namespace kiv::ifc::def::xml
