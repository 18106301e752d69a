#include "Kit/Findings/Rules/Types/EnumerationItems.h"

#include "Kit/Findings/MissingChild.h"
#include "Kit/Names/LookAlikes.h"
#include "Kit/Positions/XmlChildren.h"
#include "Kit/Text/AsciiText.h"
#include "Kit/Text/Utf8.h"

#include <algorithm>
#include <cstddef>

namespace kiv::kit {

namespace {

bool boIsLost(const XmlElement& item) {
    const bool isElsewhere = item.attributeCount != 0 || item.firstChild != NoXmlElement ||
                             item.hasLaterText() || item.isTextHidden;
    return isElsewhere && trimmed(item.text).empty();
}

bool boIsWord(std::string_view text) {
    return !text.empty() && isLetter(text.front()) &&
           std::ranges::all_of(text, [](char c) { return isLetter(c) || isDigit(c) || c == '_'; });
}

/// As in "NEW,EXISTING": words with nothing but separators between them.
bool boIsSeveral(std::string_view item) {
    constexpr std::string_view Separators = ",;|";
    if (item.find_first_of(Separators) == std::string_view::npos)
        return false;
    std::size_t words = 0;
    for (; !item.empty(); ++words) {
        const auto end = std::min(item.find_first_of(Separators), item.size());
        if (!boIsWord(trimmed(item.substr(0, end))))
            return false;
        item.remove_prefix(std::min(end + 1, item.size()));
    }
    return words > 1;
}

/// Without what is found in a name as such (N005, N008), so that one mistake has one finding. Dashes, blanks
/// and words of another script are not: they tell two names apart.
std::string sClean(std::string_view item) {
    return isAsciiOnly(item) ? std::string(item) : sUnmixed(sWithoutUnseen(item));
}

std::string sKey(std::string_view item) {
    return sUpperCase(isAsciiOnly(item) ? item : std::string_view(sClean(item)));
}

} // namespace

/// Whether an item is written where readers do not see it, which is a mistake of structure, or in one with
/// others.
bool EnumerationItems::boHasLostItem(const std::vector<XmlIndex>& lists) const {
    for (const auto list : lists) {
        if (run_.boStrayText(list))
            return true;
        for (const auto child : XmlChildren(xml_, list)) {
            if (boIsLost(xml_.getElement(child)) || boIsSeveral(trimmed(xml_.getElement(child).text)))
                return true;
        }
    }
    return false;
}

/// `known` are those before it.
void EnumerationItems::vItemCheck(XmlIndex child, KnownItems& known) {
    const auto& element = xml_.getElement(child);
    const auto item = trimmed(element.text);
    if (item.empty())
        return;
    if (boIsSeveral(item))
        run_.addAtText("T027", child, "the item " + sQuoted(item) + " looks like several items")
            .vNote("each \"EnumItem\" is one item");
    const auto [first, isNew] = known.try_emplace(item, child);
    const auto& before = xml_.getElement(first->second);
    if (!isNew && before.trimmedText == item)
        run_.addAtText("T010", child, "the enumeration has the item " + sQuoted(item) + " twice")
            .vNoteAt("it is here already", xml_.textPositionOf(before));
    else if (!isNew)
        run_.addAtText("T021", child,
                       "the items " + sQuoted(before.trimmedText) + " and " + sQuoted(item) +
                           " differ in letter case only")
            .vNoteAt("the first one is here", xml_.textPositionOf(before));
    else if (item.size() != element.text.size() && !element.isTextHidden)
        run_.addAtText("T023", child, "there is white space around the item " + sQuoted(item))
            .vEdit(xml_.textBytesOf(element), item);
}

void EnumerationItems::vItemsCheck(const MemberOutline& member) {
    if (member.enumeration == NoXmlElement) {
        // What is there in its place is found as such.
        if (!run_.boElsewhere(member.kindElement) &&
            childOf(xml_, member.kindElement, "DataType") == NoXmlElement &&
            !boMissingExplained(run_, member.kindElement, "EnumList"))
            run_.add("T009", member.kindElement, "the enumeration has no items: there is no \"EnumList\"");
        return;
    }
    const auto lists = childrenOf(xml_, member.kindElement, "EnumList"); // joined
    KnownItems items(run_.pMemory());
    for (const auto list : lists) {
        for (const auto child : XmlChildren(xml_, list))
            vItemCheck(child, items);
    }
    if (items.empty() && !boHasLostItem(lists))
        run_.add("T009", member.enumeration, "the enumeration has no items");
    for (const auto list : lists) {
        for (const auto child : XmlChildren(xml_, items.empty() ? NoXmlElement : list)) {
            const auto& item = xml_.getElement(child);
            if (trimmed(item.text).empty() && !boIsLost(item))
                run_.add("T020", child, "the enumeration has an item without text, which is ignored");
        }
    }
}

void EnumerationItems::vConstantsCheck(const MemberOutline& member) {
    if (member.constants == NoXmlElement || member.enumeration == NoXmlElement)
        return;
    const auto lists = childrenOf(xml_, member.kindElement, "EnumList"); // joined
    ItemsByName items(run_.pMemory());
    std::size_t broken = 0;
    for (const auto list : lists) {
        for (const auto child : XmlChildren(xml_, list)) {
            const auto item = trimmed(xml_.getElement(child).text);
            const bool isGood = !item.empty() && items.try_emplace(sKey(item), item).second;
            broken += isGood ? 0 : 1;
        }
    }
    // One of the constants may be the item that is lost.
    if (items.empty() || boHasLostItem(lists))
        return;
    const auto strangers = strangeConstants(childrenOf(xml_, member.kindElement, "ConstantList"), items);
    // An item that is empty or repeated was to be one of them.
    if (strangers.size() <= broken)
        return;
    for (const auto name : strangers)
        vStrangerAdd(name, items);
}

/// The names of constants that are no items; says which are described twice.
std::vector<XmlIndex> EnumerationItems::strangeConstants(const std::vector<XmlIndex>& lists,
                                                         const ItemsByName& items) {
    std::vector<XmlIndex> strangers;
    NamesOfConstants known(run_.pMemory());
    for (const auto list : lists) {
        for (const auto constant : XmlChildren(xml_, list)) {
            for (const auto child : XmlChildren(xml_, constant)) {
                if (boIsStrange(child, items, known))
                    strangers.push_back(child);
            }
        }
    }
    return strangers;
}

/// Of several names of one constant, which are a mistake of structure, none is looked at.
bool EnumerationItems::boIsStrange(XmlIndex child, const ItemsByName& items, NamesOfConstants& known) {
    const auto& element = xml_.getElement(child);
    const auto name = trimmed(element.text);
    if (element.name != "Name" || name.empty() || run_.boRepeated(child))
        return false;
    const auto [first, isNew] = known.try_emplace(name, child);
    if (!isNew) {
        run_.addAtText("T022", child, "the constant " + sQuoted(name) + " is described twice")
            .vNoteAt("the first one is here", xml_.textPositionOf(xml_.getElement(first->second)));
        return false;
    }
    const auto found = items.find(sKey(name));
    return found == items.end() || (found->second != name && sClean(found->second) != sClean(name));
}

void EnumerationItems::vStrangerAdd(XmlIndex nameElement, const ItemsByName& items) {
    const auto name = trimmed(xml_.getElement(nameElement).text);
    auto& draft = run_.addAtText("T011", nameElement,
                                 "the constant " + sQuoted(name) + " is no item of the enumeration");
    if (const auto found = items.find(sKey(name)); found != items.end())
        draft.vNote("the item is written " + sQuoted(found->second));
}

} // namespace kiv::kit
