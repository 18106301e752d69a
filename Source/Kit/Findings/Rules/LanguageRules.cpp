#include "Kit/Findings/LegalNames.h"
#include "Kit/Findings/RuleRun.h"
#include "Kit/Findings/Rules/ExampleDocuments.h"
#include "Kit/Findings/Rules/Rules.h"
#include "Kit/Names/LookAlikes.h"
#include "Kit/Text/AsciiText.h"

#include <algorithm>
#include <array>
#include <memory_resource>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace kiv::kit {

namespace {

bool isLetters(std::string_view part) {
    return std::ranges::all_of(part, isLetter);
}

bool isAlphanumeric(std::string_view part) {
    return std::ranges::all_of(part,
                               [](char character) { return isLetter(character) || isDigit(character); });
}

bool isCountry(std::string_view part) {
    return (part.size() == 2 && isLetters(part)) || (part.size() == 3 && std::ranges::all_of(part, isDigit));
}

/// variant = 5*8alphanum | digit 3alphanum
bool isVariant(std::string_view part) {
    return part.size() >= 5 || (part.size() == 4 && isDigit(part.front()));
}

std::vector<std::string_view> partsOf(std::string_view tag) {
    std::vector<std::string_view> parts;
    parts.reserve(1 + static_cast<std::size_t>(std::ranges::count(tag, '-')));
    for (auto hyphen = tag.find('-'); hyphen != std::string_view::npos; hyphen = tag.find('-')) {
        parts.push_back(tag.substr(0, hyphen));
        tag.remove_prefix(hyphen + 1);
    }
    parts.push_back(tag);
    return parts;
}

bool isPrivateUse(std::string_view part) {
    return part == "x" || part == "X";
}

/// From a part of one character on: extensions, each of which has parts of its own, and then what is for
/// private use, whose parts may be of one character.
bool isExtensions(const std::vector<std::string_view>& parts, std::size_t first) {
    bool isOpen = false;
    for (auto i = first; i != parts.size(); ++i) {
        if (parts[i].size() == 1 && isOpen)
            return false;
        if (isPrivateUse(parts[i]))
            return i + 1 != parts.size();
        isOpen = parts[i].size() == 1;
    }
    return !isOpen;
}

/// Tags that were registered before there was a form for them, and that do not have it; those that begin with
/// "i-" are recognised by it.
bool isIrregular(std::string_view tag) {
    return std::ranges::any_of(std::array{"en-GB-oed", "sgn-BE-FR", "sgn-BE-NL", "sgn-CH-DE"},
                               [&](std::string_view known) { return isEqualIgnoringCase(tag, known); });
}

/// langtag = language ["-" script] ["-" region] *("-" variant) *("-" extension) ["-" privateuse]
///
/// The form alone: whether a language is registered is not looked at. Its code has two or three letters: no
/// longer one is registered.
bool isLanguageTag(std::string_view tag) {
    // No tag in use is nearly as long.
    constexpr std::size_t longestTag = 100;
    if (tag.size() > longestTag)
        return false;
    if (isIrregular(tag))
        return true;
    const auto parts = partsOf(tag);
    const auto isPart = [](std::string_view part) {
        return !part.empty() && part.size() <= 8 && isAlphanumeric(part);
    };
    if (!std::ranges::all_of(parts, isPart))
        return false;
    if (isPrivateUse(parts[0]) || parts[0] == "i" || parts[0] == "I")
        return parts.size() > 1;
    if (parts[0].size() < 2 || parts[0].size() > 3 || !isLetters(parts[0]))
        return false;
    std::size_t next = 1;
    const auto boTake = [&](auto&& isOf) {
        const bool isThere = next != parts.size() && isOf(parts[next]);
        next += isThere ? 1 : 0;
        return isThere;
    };
    const auto isLanguageExtension = [](std::string_view part) {
        return part.size() == 3 && isLetters(part);
    };
    for (int i = 0; i != 3 && boTake(isLanguageExtension); ++i)
        ;
    boTake([](std::string_view part) { return part.size() == 4 && isLetters(part); });
    boTake(isCountry);
    while (boTake(isVariant))
        ;
    return next == parts.size() || (parts[next].size() == 1 && isExtensions(parts, next));
}

/// The tag that was probably meant; empty when it cannot be known.
std::string sMended(std::string_view value) {
    std::string tag(trimmedBlanks(sAsciiOf(trimmedBlanks(value))));
    std::ranges::replace(tag, '_', '-');
    return tag != value && isLanguageTag(tag) ? tag : std::string();
}

/// Codes of countries that are those of no language, and what is spoken there.
constexpr std::pair<std::string_view, std::string_view> Countries[] = {
    {"cn", "zh"}, {"cz", "cs"}, {"dk", "da"}, {"gr", "el"}, {"jp", "ja"}, {"ua", "uk"}};

/// The language of a tag that begins with the code of a country; empty for others.
std::string_view languageFor(std::string_view tag) {
    const auto first = sLowerCase(tag.substr(0, tag.find('-')));
    const auto* const found =
        std::ranges::find(Countries, first, &std::pair<std::string_view, std::string_view>::first);
    return found == std::end(Countries) ? std::string_view() : found->second;
}

/// Looks at the translations of one document. It names few languages and each of them many times, so that
/// what is known of a tag as it is written is kept.
class LanguageCheck {
public:
    explicit LanguageCheck(RuleRun& run) : run_(run), tags_(run.pMemory()), languages_(run.pMemory()) {}

    void vRun();

private:
    /// A language, however its tags are written.
    struct Language {
        /// The last text that has a translation into it.
        std::size_t text = 0;
        /// The first one of that text.
        const AliasOutline* first = nullptr;
    };
    /// A tag as it is written.
    struct Tag {
        Language* language = nullptr;
        bool isRight = false;
    };

    Tag& tagOf(std::string_view value);
    void vAliasCheck(const AliasOutline& alias);
    void vTagCheck(const AliasOutline& alias, const Tag& tag);
    void vRepeatedCheck(const AliasOutline& alias, const Tag& tag);
    void vNoLanguageAdd(const AliasOutline& alias);

    RuleRun& run_;
    std::pmr::unordered_map<std::string_view, Tag> tags_;
    // In lower case and with "-" for "_", as readers compare them.
    std::pmr::unordered_map<std::string, Language> languages_;
    /// The number of the text whose translations are looked at.
    std::size_t text_ = 0;
};

void LanguageCheck::vRun() {
    XmlIndex owner = NoXmlElement;
    std::string_view listName;
    for (const auto& alias : run_.outline.aliases) {
        // Several lists of one name are joined.
        const auto& list = run_.xml.getElement(alias.list);
        if (list.parent != owner || list.name != listName)
            ++text_;
        owner = list.parent;
        listName = list.name;
        vAliasCheck(alias);
    }
}

LanguageCheck::Tag& LanguageCheck::tagOf(std::string_view value) {
    const auto [place, isNew] = tags_.try_emplace(value);
    auto& tag = place->second;
    if (!isNew)
        return tag;
    auto language = sLowerCase(value);
    std::ranges::replace(language, '_', '-');
    tag.language = &languages_[std::move(language)];
    tag.isRight = isLanguageTag(value) && languageFor(value).empty();
    return tag;
}

void LanguageCheck::vTagCheck(const AliasOutline& alias, const Tag& tag) {
    if (tag.isRight)
        return;
    const auto value = alias.language->value;
    if (const auto language = languageFor(value); !language.empty() && isLanguageTag(value)) {
        run_.addAtValue("L001", alias.element, *alias.language,
                        sQuoted(value) + " begins with the code of a country, and of no language")
            .vNote("the language is " + sQuoted(language));
        return;
    }
    auto& draft =
        run_.addAtValue("L001", alias.element, *alias.language, sQuoted(value) + " is no language tag");
    if (const auto mended = sMended(value); !mended.empty())
        draft.vNote("write it as " + sQuoted(mended)).vEdit(run_.xml.valueOf(*alias.language).bytes, mended);
    else
        draft.vNote("language tags are written as in \"de\", \"de-AT\" or \"zh-Hans-CN\" (BCP 47)");
}

void LanguageCheck::vRepeatedCheck(const AliasOutline& alias, const Tag& tag) {
    auto& language = *tag.language;
    if (language.text != text_) {
        language = {text_, &alias};
        return;
    }
    const auto& first = *language.first;
    auto& draft = run_.addAtValue("L003", alias.element, *alias.language,
                                  "there is another translation into " + sQuoted(alias.language->value) +
                                      ", which hides this one")
                      .vNoteAt("the first one is here", run_.xml.valuePositionOf(*first.language));
    // Then nothing is lost.
    if (run_.outline.textOf(first.element) == run_.outline.textOf(alias.element))
        draft.vSeverity(Severity::Warning);
}

void LanguageCheck::vNoLanguageAdd(const AliasOutline& alias) {
    // An attribute of another name is the mistake then.
    if (!alias.language && run_.boMisplaced(alias.element))
        return;
    auto& draft = run_.add("L002", alias.element, "the translation says no language");
    const auto* ofXml = run_.xml.pAttribute(run_.xml.getElement(alias.element), "xml:lang");
    if (ofXml && !alias.language)
        draft.vNote("\"xml:lang\" is not read; write it as \"lang\"")
            .vEdit(run_.xml.nameBytesOf(*ofXml), "lang");
}

void LanguageCheck::vAliasCheck(const AliasOutline& alias) {
    const auto& element = run_.xml.getElement(alias.element);
    if (!alias.language || trimmedBlanks(alias.language->value).empty()) {
        vNoLanguageAdd(alias);
        return;
    }
    const bool isEmpty =
        trimmedBlanks(element.text).empty() && element.firstChild == NoXmlElement && !element.hasLaterText();
    if (isEmpty)
        run_.add("L004", alias.element,
                 "the translation into " + sQuoted(alias.language->value) + " has no text");
    const auto& tag = tagOf(alias.language->value);
    vTagCheck(alias, tag);
    // What is left out when the document is read hides nothing.
    if (!isEmpty)
        vRepeatedCheck(alias, tag);
}

} // namespace

std::span<const Rule> getLanguageRules() {
    static const RuleExample right = changed(WallSet, {{"</PropertySetDef>", R"xml(  <PsetDefinitionAliases>
    <PsetDefinitionAlias lang="de-DE">Eigenschaften aller Waende.</PsetDefinitionAlias>
    <PsetDefinitionAlias lang="fr-FR">Proprietes de tous les murs.</PsetDefinitionAlias>
  </PsetDefinitionAliases>
</PropertySetDef>)xml"}});
    static const Rule rules[] = {
        {"L001", "malformed-language", Severity::Warning, "The value of \"lang\" is no language tag.",
         "A translation is found by its language. A language tag has the form of BCP 47: the language in two "
         "or three letters, if needed the script, and the country, joined by hyphens, for example \"de\", "
         "\"de-AT\" or \"zh-Hans-CN\". With another spelling, or the name of the language, those who ask for "
         "the language do not get the translation.",
         changed(WallSet, {{"</PropertySetDef>", R"xml(  <PsetDefinitionAliases>
    <PsetDefinitionAlias lang="German (Austria)">Eigenschaften aller Waende.</PsetDefinitionAlias>
  </PsetDefinitionAliases>
</PropertySetDef>)xml"}}),
         right},
        {"L002", "alias-without-language", Severity::Error, "A translation says no language.",
         "A translation without \"lang\" is left out when the document is read: nobody could ask for it. "
         "\"xml:lang\" is another attribute, and is not read.\n\nAdd \"lang\" with the language, for example "
         "lang=\"de-DE\".",
         changed(WallSet, {{"</PropertySetDef>",
                            "  <PsetDefinitionAliases>\n"
                            "    <PsetDefinitionAlias>Eigenschaften aller Waende.</PsetDefinitionAlias>\n"
                            "  </PsetDefinitionAliases>\n"
                            "</PropertySetDef>"}}),
         right},
        {"L003", "repeated-language", Severity::Error, "A text has two translations into one language.",
         "Those who ask for the language get the first translation; the others are never seen. Languages "
         "are compared without regard to letter case, and \"_\" is as \"-\". Where both are the same text, "
         "nothing is lost, and the finding is a warning.\n\nRemove one of the translations, or correct its "
         "language.",
         changed(WallSet, {{"</PropertySetDef>", R"xml(  <PsetDefinitionAliases>
    <PsetDefinitionAlias lang="de-DE">Eigenschaften aller Waende.</PsetDefinitionAlias>
    <PsetDefinitionAlias lang="de-DE">Proprietes de tous les murs.</PsetDefinitionAlias>
  </PsetDefinitionAliases>
</PropertySetDef>)xml"}}),
         right},
        {"L004", "empty-alias", Severity::Note, "A translation has no text.",
         "An element without text is left out when the document is read, as if it were not there. Programs "
         "that write documents leave such elements for translators to fill in.",
         changed(WallSet, {{"</PropertySetDef>", R"xml(  <PsetDefinitionAliases>
    <PsetDefinitionAlias lang="de-DE"/>
  </PsetDefinitionAliases>
</PropertySetDef>)xml"}}),
         right},
    };
    return rules;
}

void vLanguagesCheck(RuleRun& run) {
    LanguageCheck(run).vRun();
}

} // namespace kiv::kit
