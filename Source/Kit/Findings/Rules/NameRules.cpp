#include "Kit/Findings/LegalNames.h"
#include "Kit/Findings/MissingChild.h"
#include "Kit/Findings/RuleRun.h"
#include "Kit/Findings/Rules/ExampleDocuments.h"
#include "Kit/Findings/Rules/RuleNames.h"
#include "Kit/Findings/Rules/Rules.h"
#include "Kit/Names/LookAlikes.h"
#include "Kit/Positions/XmlChildren.h"
#include "Kit/Text/AsciiText.h"
#include "Kit/Text/PositionAfter.h"
#include "Kit/Text/Utf8.h"
#include "kiv/Kit/Text/InvisibleCharacters.h"

#include <algorithm>
#include <cstddef>
#include <memory_resource>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace kiv::kit {

namespace {

constexpr std::string_view EnumerationPrefix = "PEnum_";

std::string_view memberWord(const SetOutline& outline) {
    return outline.kind == SetKind::QuantitySet ? "quantity" : "property";
}

/// What its name is, for messages.
std::string_view memberNameWords(const SetOutline& outline) {
    return outline.kind == SetKind::QuantitySet ? "name of the quantity" : "name of the property";
}

/// What does not belong inside a name.
struct Stray {
    std::size_t offset = std::string_view::npos;
    std::size_t size = 0;
    bool isBlank = false;
    /// "U+202E" for what cannot be seen, and for blanks that look like spaces; empty for other blanks.
    std::string code;
};

std::string sContains(const Stray& stray) {
    if (stray.code.empty())
        return " contains blanks that do not belong there";
    return (stray.isBlank ? " contains the blank " : " contains the invisible character ") + stray.code;
}

/// Line ends and tabs, several blanks in a row, and blanks that are no space.
Stray strayBlanksIn(std::string_view name) {
    constexpr std::string_view Blanks[] = {"\t",       "\r",           "\n",          "  ",
                                           "\xC2\xA0", "\xE2\x80\xAF", "\xE3\x80\x80"};
    Stray first;
    // One word, as most names are, has none.
    const auto isPlain = [](char byte) { return isLetter(byte) || isDigit(byte) || byte == '_'; };
    if (std::ranges::all_of(name, isPlain))
        return first;
    for (const auto blank : Blanks) {
        if (const auto offset = name.find(blank); offset < first.offset)
            first = {offset, blank.size(), true,
                     isAsciiOnly(blank) ? std::string() : sCodeOf(codePointAt(blank, 0).value)};
    }
    return first;
}

/// The first thing that does not belong inside the name; its offset is npos when all does.
Stray strayIn(std::string_view name, bool areBlanksFound) {
    auto first = areBlanksFound ? strayBlanksIn(name) : Stray();
    // In ASCII, which most names are, there is no invisible character.
    if (isAsciiOnly(name))
        return first;
    char32_t before = 0;
    for (std::size_t offset = 0; offset < std::min(first.offset, name.size());) {
        const auto [character, size] = codePointAt(name, offset);
        if (isInvisible(character, before))
            return {offset, size, false, sCodeOf(character)};
        before = isTag(character) ? before : character;
        offset += size;
    }
    return first;
}

/// Moves a finding from the beginning of a text to a part of it, as far as that is on one line. Line ends
/// before the text are no place that can be shown.
void vPartPlace(FindingDraft& draft, const XmlText& text, std::string_view whole, std::string_view part) {
    const auto begin = whole.find(text.value);
    // With references in the text, its columns are not those of the value.
    if (!text.isAsWritten || begin == std::string_view::npos)
        return;
    const auto offset = static_cast<std::size_t>(part.data() - whole.data());
    auto& position = draft.finding.place.position;
    const auto onLine = part.substr(0, part.find('\n'));
    if (offset < begin) {
        const auto between = whole.substr(offset, begin - offset);
        if (between.find('\n') != std::string_view::npos)
            return;
        position.column = text.position.column - codePointsIn(between);
    } else {
        position = positionAfter(text.position, whole.substr(begin, offset - begin));
    }
    // The end of a line is no letter of it.
    position.length = codePointsIn(onLine);
}

/// At the value of an attribute, or the text of an element where there is none.
FindingDraft& addAtName(RuleRun& run, std::string_view code, XmlIndex element, const XmlAttribute* attribute,
                        std::string message) {
    return attribute ? run.addAtValue(code, element, *attribute, std::move(message))
                     : run.addAtText(code, element, std::move(message));
}

/// What does not belong inside a name that has no white space around it; `what` says of what the name is.
/// Items of enumerations may be texts with several blanks.
void vCharactersCheck(RuleRun& run, XmlIndex element, const XmlAttribute* attribute, std::string_view name,
                      std::string_view what, bool areBlanksFound = true) {
    const auto stray = strayIn(name, areBlanksFound);
    const auto mixed = mixedLetterIn(name);
    if (stray.offset == std::string_view::npos && !mixed)
        return;
    const auto text = attribute ? run.xml.valueOf(*attribute) : run.xml.textOf(run.xml.getElement(element));
    const auto whole = attribute ? name : run.xml.getElement(element).text;
    const auto named = "the " + std::string(what) + " " + sQuoted(name);
    if (stray.offset != std::string_view::npos) {
        auto& draft = addAtName(run, "N005", element, attribute, named + sContains(stray));
        vPartPlace(draft, text, whole, name.substr(stray.offset, stray.size));
        return;
    }
    auto& draft = addAtName(run, "N008", element, attribute,
                            named + " contains " + sCodeOf(mixed->character) + ", " + sKindOf(*mixed))
                      .vNote("did you mean " + sQuoted(sUnmixed(name)) + "?");
    vPartPlace(draft, text, whole, name.substr(mixed->offset, mixed->size));
}

/// What the white space around a name is; which character, where it does not look like what it is.
std::string sWhiteSpace(std::string_view blanks) {
    const auto isNotAscii = [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; };
    const auto odd = std::ranges::find_if(blanks, isNotAscii);
    if (odd == blanks.end())
        return "white space";
    return "the character " +
           sCodeOf(codePointAt(blanks, static_cast<std::size_t>(odd - blanks.begin())).value);
}

/// A name with white space around it; `what` says of what it is.
void vBlanksAroundAdd(RuleRun& run, XmlIndex name, std::string_view what) {
    const auto& element = run.xml.getElement(name);
    const auto whole = element.text;
    const auto trimmed = trimmedBlanks(whole);
    const auto begin = static_cast<std::size_t>(trimmed.data() - whole.data());
    const bool isAtEnd = begin == 0;
    const auto around = isAtEnd ? whole.substr(trimmed.size()) : whole.substr(0, begin);
    auto& draft = run.addAtText("N004", name,
                                "the " + std::string(what) + " " + sQuoted(trimmed) + " " +
                                    (isAtEnd ? "ends" : "begins") + " with " + sWhiteSpace(around))
                      .vEdit(run.xml.textBytesOf(element), trimmed);
    vPartPlace(draft, run.xml.textOf(element), whole, around);
}

void vBlanksCheck(RuleRun& run, XmlIndex name, std::string_view what) {
    const auto& element = run.xml.getElement(name);
    const auto trimmed = trimmedBlanks(element.text);
    // A comment in place of the text is another mistake.
    if (trimmed.empty() || element.isTextHidden)
        return;
    if (trimmed.size() != element.text.size())
        return vBlanksAroundAdd(run, name, what);
    vCharactersCheck(run, name, nullptr, trimmed, what);
}

/// Whether the empty name is the same mistake as one of structure.
bool boIsOtherwiseFound(const RuleRun& run, XmlIndex name) {
    return run.boMisplaced(name) || run.boRepeated(name);
}

void vSetNameCheck(RuleRun& run) {
    const auto name = run.outline.name;
    if (name != NoXmlElement && !trimmedBlanks(run.outline.textOf(name)).empty()) {
        vBlanksCheck(run, name, "name of the set");
        return;
    }
    if (name == NoXmlElement ? boMissingExplained(run, 0, "Name") : boIsOtherwiseFound(run, name))
        return;
    if (name == NoXmlElement)
        run.add("N001", 0, "the set has no name: there is no \"Name\"");
    else
        run.add("N001", name, "the name of the set is empty");
}

void vMemberNameCheck(RuleRun& run, const MemberOutline& member) {
    const auto name = member.name;
    if (name != NoXmlElement && !trimmedBlanks(run.outline.textOf(name)).empty()) {
        vBlanksCheck(run, name, memberNameWords(run.outline));
        return;
    }
    if (name == NoXmlElement ? boMissingExplained(run, member.element, "Name")
                             : boIsOtherwiseFound(run, name))
        return;
    const std::string word(memberWord(run.outline));
    if (name == NoXmlElement)
        run.add("N002", member.element, "the " + word + " has no name: there is no \"Name\"");
    else
        run.add("N002", name, "the name of the " + word + " is empty");
}

void vEnumerationNameCheck(RuleRun& run, XmlIndex enumeration) {
    if (enumeration == NoXmlElement)
        return;
    const auto* attribute = run.xml.pAttribute(run.xml.getElement(enumeration), "name");
    if (!attribute)
        return;
    const auto name = attribute->value;
    const auto trimmed = trimmedBlanks(name);
    if (trimmed.empty() || trimmed == EnumerationPrefix)
        run.addAtValue("N003", enumeration, *attribute, "the name of the enumeration is empty");
    else if (trimmed.size() != name.size())
        run.addAtValue("N004", enumeration, *attribute,
                       "the name of the enumeration " + sQuoted(trimmed) + " has white space around it")
            .vEdit(run.xml.valueOf(*attribute).bytes, trimmed);
    else
        vCharactersCheck(run, enumeration, attribute, name, "name of the enumeration");
}

/// Readers leave out the white space around an item, and keep that around the name of its constant.
void vConstantBlanksCheck(RuleRun& run, XmlIndex name) {
    if (name == NoXmlElement || run.boRepeated(name) || run.xml.getElement(name).isTextHidden)
        return;
    const auto text = run.outline.textOf(name);
    const auto trimmed = trimmedBlanks(text);
    if (!trimmed.empty() && trimmed.size() != text.size())
        vBlanksAroundAdd(run, name, "name of the constant");
    else
        vCharactersCheck(run, name, nullptr, trimmed, "name of the constant", false);
}

void vItemsCheck(RuleRun& run, XmlIndex list) {
    for (const auto item : XmlChildren(run.xml, list)) {
        const auto text = run.outline.textOf(item);
        if (!std::ranges::all_of(text, isAscii))
            vCharactersCheck(run, item, nullptr, trimmedBlanks(text), "item", false);
    }
}

void vComplexNameCheck(RuleRun& run, const MemberOutline& member) {
    if (member.kind != PropertyKind::Complex)
        return;
    const auto* attribute = run.xml.pAttribute(run.xml.getElement(member.kindElement), "name");
    if (!attribute)
        return;
    const auto name = attribute->value;
    const auto trimmed = trimmedBlanks(name);
    if (trimmed.empty())
        run.addAtValue("S005", member.kindElement, *attribute,
                       "the name of the complex property is empty, so nothing says what it is used for")
            .vSeverity(Severity::Warning);
    else if (trimmed.size() != name.size())
        run.addAtValue("N004", member.kindElement, *attribute,
                       "the name of the complex property " + sQuoted(trimmed) + " has white space around it")
            .vEdit(run.xml.valueOf(*attribute).bytes, trimmed);
    else
        vCharactersCheck(run, member.kindElement, attribute, name, "name of the complex property");
}

/// An element of another name is read as a constant too, but that is the mistake then.
void vConstantNamesCheck(RuleRun& run, XmlIndex constants) {
    for (const auto constant : XmlChildren(run.xml, constants)) {
        if (run.xml.getElement(constant).name != "ConstantDef")
            continue;
        auto name = NoXmlElement;
        for (const auto child : XmlChildren(run.xml, constant)) {
            const auto& element = run.xml.getElement(child);
            if (element.name == "Name" && (name == NoXmlElement || boHasText(element)))
                name = child;
        }
        vConstantBlanksCheck(run, name);
        if (name == NoXmlElement
                ? boMissingExplained(run, constant, "Name")
                : !trimmedBlanks(run.outline.textOf(name)).empty() || boIsOtherwiseFound(run, name))
            continue;
        if (name == NoXmlElement)
            run.add("N007", constant, "the constant has no name: there is no \"Name\"");
        else
            run.add("N007", name, "the name of the constant is empty");
    }
}

/// The members of one owner, by name.
using MembersByName = std::pmr::unordered_map<std::string_view, const MemberOutline*>;

void vRepeatedCheck(RuleRun& run, const MemberOutline& member, MembersByName& known) {
    const auto name = trimmedBlanks(run.outline.memberName(member));
    if (name.empty())
        return;
    const auto [first, isNew] = known.emplace(name, &member);
    if (isNew)
        return;
    const auto place = run.xml.textPositionOf(run.xml.getElement(first->second->name));
    run.addAtText("N006", member.name,
                  std::string(member.owner < 0 ? "the set" : "the complex property") + " has another " +
                      std::string(memberWord(run.outline)) + " of the name " + sQuoted(name))
        .vNoteAt("the first one is here", place);
}

} // namespace

std::span<const Rule> getNameRules() {
    static const Rule rules[] = {
        {"N001", "set-without-name", Severity::Error, "A set has no name.",
         "Sets are found by their names. One without a name is read, and nobody can ask for it.\n\n"
         "Give the set a \"Name\" with text, as the first element of the document.",
         changed(WallSet,
                 {{"<PropertySetDef>", R"(<PropertySetDef ifdguid="aa3b8880d21511e1800000215ad4efdf">)"},
                  {"<Name>Pset_WallCommon</Name>", "<Name/>"}}),
         changed(WallSet,
                 {{"<PropertySetDef>", R"(<PropertySetDef ifdguid="aa3b8880d21511e1800000215ad4efdf">)"}})},
        {"N002", "member-without-name", Severity::Error, "A property or quantity has no name.",
         "A value in a model is matched with its definition by name. A property or quantity without a name "
         "describes no value.\n\nGive it a \"Name\" with text.",
         changed(WallSet, {{"      <Name>IsExternal</Name>\n", ""}}), WallSet},
        {"N003",
         "enumeration-without-name",
         Severity::Warning,
         "An enumeration has an empty name.",
         "Models refer to an enumeration by its name, which documents write with \"PEnum_\" before it. An "
         "\"EnumList\" whose name is empty, or \"PEnum_\" alone, makes an enumeration that nothing can "
         "refer to.\n\nName it after what its items say, for example \"PEnum_Status\".",
         {R"xml(<PropertySetDef>
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>Status</Name>
      <Definition>How far it is built.</Definition>
      <PropertyType><TypePropertyEnumeratedValue>
        <EnumList name="PEnum_"><EnumItem>NEW</EnumItem><EnumItem>EXISTING</EnumItem></EnumList>
      </TypePropertyEnumeratedValue></PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"},
         {R"xml(<PropertySetDef>
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>Status</Name>
      <Definition>How far it is built.</Definition>
      <PropertyType><TypePropertyEnumeratedValue>
        <EnumList name="PEnum_Status"><EnumItem>NEW</EnumItem><EnumItem>EXISTING</EnumItem></EnumList>
      </TypePropertyEnumeratedValue></PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"}},
        {"N004", "blanks-around-name", Severity::Warning, "A name begins or ends with white space.",
         "White space around a name is part of the name: \"IsExternal \" is not found by those who look for "
         "\"IsExternal\".\n\nRemove the white space. It may be a line break between the tag and the text.",
         changed(WallSet, {{"<Name>Pset_WallCommon</Name>", "<Name>Pset_WallCommon </Name>"}}), WallSet},
        {"N005", "stray-blanks-in-name", Severity::Warning,
         "A name contains a line break, a tab, several blanks in a row, or a character that cannot be seen.",
         "Such characters come from typing or pasting. They look like one blank or like nothing and make "
         "another name of it, which nobody finds. Those that turn the direction of writing make a name look "
         "like another one.\n\nWrite the name without them.",
         changed(WallSet, {{"<Name>Pset_WallCommon</Name>", "<Name>Pset_Wall  Common</Name>"}}), WallSet},
        {"N006", "repeated-member", Severity::Error,
         "Two properties or quantities of one set have the same name.",
         "Within a set a name identifies a property or quantity: a look-up finds one of the two only, and a "
         "value in a model can mean either.\n\nRemove one of them, or rename it.",
         changed(WallQuantities, {{"</QtoDefs>", "  <QtoDef><Name>Width</Name><Definition>How "
                                                 "high.</Definition><QtoType>Q_LENGTH</QtoType></QtoDef>\n"
                                                 "  </QtoDefs>"}}),
         changed(WallQuantities, {{"</QtoDefs>", "  <QtoDef><Name>Height</Name><Definition>How "
                                                 "high.</Definition><QtoType>Q_LENGTH</QtoType></QtoDef>\n"
                                                 "  </QtoDefs>"}})},
        {"N007", "unnamed-constant", Severity::Warning, "A constant of an enumeration has no name.",
         "A \"ConstantDef\" describes and translates the item that it names. Without a name it belongs to no "
         "item, and nobody sees what it says.\n\nWrite the item as \"Name\".",
         changed(StatusSet,
                 {{"</TypePropertyEnumeratedValue>",
                   "  <ConstantList>\n"
                   "            <ConstantDef><Definition>Not built yet.</Definition></ConstantDef>\n"
                   "          </ConstantList>\n"
                   "        </TypePropertyEnumeratedValue>"}}),
         changed(StatusSet, {{"</TypePropertyEnumeratedValue>", R"xml(  <ConstantList>
            <ConstantDef><Name>NEW</Name><Definition>Not built yet.</Definition></ConstantDef>
          </ConstantList>
        </TypePropertyEnumeratedValue>)xml"}})},
        {"N008", "mixed-letters-in-name", Severity::Warning,
         "A name has a letter of another script that looks like a Latin one.",
         "Some letters of Cyrillic and Greek look like those of Latin. Within a word they come from another "
         "keyboard or from pasting, and make another name, which nobody finds who types it. Names of any "
         "script are right, and names that have a word of each.\n\nType the word again.",
         changed(WallSet, {{"<Name>Pset_WallCommon</Name>", "<Name>Pset_W\u0430llCommon</Name>"}}), WallSet},
    };
    return rules;
}

void vNamesCheck(RuleRun& run) {
    if (run.outline.kind == SetKind::None)
        return;
    vSetNameCheck(run);
    std::pmr::unordered_map<std::int32_t, MembersByName> known(run.pMemory());
    for (const auto& member : run.outline.members) {
        vMemberNameCheck(run, member);
        vRepeatedCheck(run, member, known[member.owner]);
        vEnumerationNameCheck(run, member.enumeration);
        vComplexNameCheck(run, member);
        if (member.enumeration != NoXmlElement) {
            for (const auto list : childrenOf(run.xml, member.kindElement, "EnumList"))
                vItemsCheck(run, list);
        }
        if (member.constants == NoXmlElement)
            continue;
        for (const auto list : childrenOf(run.xml, member.kindElement, "ConstantList"))
            vConstantNamesCheck(run, list);
    }
}

} // namespace kiv::kit
