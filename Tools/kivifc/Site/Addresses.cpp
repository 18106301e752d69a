#include "kivifc/Site/Addresses.h"

#include "kivifc/Documents/Checksum.h"
#include "kivifc/Program/AsciiText.h"
#include "kivifc/Site/IndexPages.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <fmt/format.h>

namespace kiv::kivifc::site {

namespace {

/// File systems allow 255 bytes, which the suffix and the ending are part of.
constexpr std::size_t NameSizeMax = 100;

bool isLetterOrDigit(char byte) {
    return ascii::isLetter(byte) || (byte >= '0' && byte <= '9');
}

bool isSafe(char byte) {
    return isLetterOrDigit(byte) || byte == '_';
}

/// Some systems take such names for devices, whatever their ending is.
bool isDevice(std::string_view folded) {
    constexpr std::array<std::string_view, 4> Devices{"con", "prn", "aux", "nul"};
    if (std::ranges::find(Devices, folded) != Devices.end())
        return true;
    return folded.size() == 4 && (folded.starts_with("com") || folded.starts_with("lpt"));
}

/// Our pages have names in lower case; "-" is in names of ours only.
bool isOurs(std::string_view folded) {
    const auto isSame = [&](const PageName& page) {
        const auto name = page.getView();
        return name.substr(0, name.find('.')) == folded;
    };
    return isSame(StartPage) || std::ranges::any_of(IndexPages, isSame, &IndexPage::page);
}

bool isPlain(std::string_view name) {
    return !name.empty() && name.size() <= NameSizeMax && isLetterOrDigit(name.front()) &&
           std::ranges::all_of(name, isSafe);
}

/// File systems that do not know letters by their case take names that are folded alike for one.
std::string sFolded(std::string_view name) {
    return ascii::sLowerCase(name.substr(0, NameSizeMax + 1));
}

/// What is safe of a name, and a checksum of all of it.
std::string sMarked(std::string_view name, std::string_view distinction) {
    std::string marked;
    for (const char byte : name.substr(0, NameSizeMax)) {
        if (isSafe(byte))
            marked += byte;
    }
    return fmt::format("{}~{:016x}", marked, checksum(fmt::format("{}\n{}", name, distinction)));
}

} // namespace

/// The names of our own elements are in lower case, and any of them may come later.
std::string sAnchor(std::string_view name) {
    const bool isLower = std::ranges::none_of(
        name, [](char byte) { return (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9'); });
    if (!isPlain(name))
        return sMarked(name, "");
    return isLower ? std::string(name) + '~' : std::string(name);
}

void FileNames::vExpect(std::string_view name) {
    // Any other one has a checksum anyway.
    if (!isPlain(name))
        return;
    auto& expected = expected_.try_emplace(sFolded(name), Expected{std::string(name)}).first->second;
    expected.hasOthers = expected.hasOthers || expected.first != name;
}

bool FileNames::isOneOfSeveral(const std::string& folded) const {
    const auto found = expected_.find(folded);
    return found != expected_.end() && found->second.hasOthers;
}

std::string FileNames::sTake(std::string_view name, std::string_view distinction) {
    const auto folded = sFolded(name);
    if (!isPlain(name) || isOurs(folded) || isDevice(folded))
        return sTakeMarked(name, distinction);
    auto file = isOneOfSeveral(folded) ? sMarked(name, "") : std::string(name);
    return taken_.insert(ascii::sLowerCase(file)).second ? file + ".html" : sTakeMarked(name, distinction);
}

std::string FileNames::sTakeMarked(std::string_view name, std::string_view distinction) {
    auto marked = sMarked(name, distinction);
    if (taken_.insert(ascii::sLowerCase(marked)).second)
        return marked + ".html";
    auto& count = counts_.try_emplace(marked, 1).first->second;
    do
        marked = sMarked(name, fmt::format("{}\n{}", distinction, ++count));
    while (!taken_.insert(ascii::sLowerCase(marked)).second);
    return marked + ".html";
}

void Addresses::vExpect(const ifc::def::schema::ObjectBase& object) {
    topNames_.vExpect(object.getName());
}

void Addresses::vExpect(const ifc::def::xml::SetDef& set, bool isStandard) {
    if (isStandard)
        setNames_.vExpect(set.getName());
}

void Addresses::vAdd(const ifc::def::schema::ObjectBase& object) {
    if (!objects_.contains(&object))
        objects_.emplace(&object, topNames_.sTake(object.getName(), ""));
}

void Addresses::vAdd(const ifc::def::xml::SetDef& set, bool isStandard, std::string_view distinction) {
    const auto file = isStandard ? setNames_.sTake(set.getName(), distinction)
                                 : setNames_.sTakeMarked(set.getName(), distinction);
    sets_.emplace(&set, "sets/" + file);
}

void Addresses::vAdd(PageName prefix, std::string_view part) {
    const auto key = fmt::format("{}-{}", prefix.getView(), part);
    const auto safe = isPlain(part) ? std::string(part) : sMarked(part, "");
    parts_.emplace(key, fmt::format("{}-{}.html", prefix.getView(), safe));
}

Address Addresses::of(PageName prefix, std::string_view part) const {
    return Address(parts_.at(fmt::format("{}-{}", prefix.getView(), part)));
}

} // namespace kiv::kivifc::site
