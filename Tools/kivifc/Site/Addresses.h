/// @file
/// Where each object of a schema and each set is in a site: names that stay the same from run to run.
///
///     Addresses addresses;
///     addresses.vExpect(*wall);
///     addresses.vAdd(*wall);
///     addresses.of(*wall).getPath(); // "IfcWall.html"
///
/// An object or set has the file of its name when that is safe in every file system: letters, digits and
/// underscores, not too long, unlike the names of our own pages and unlike all others there, whatever the
/// case of their letters. Any other one has what is safe of its name, "~" and a checksum, and so has each set
/// of a context of one's own: a standard set of that name may be added to the site some day. Names that
/// differ in the case of letters alone all have a checksum, of the name alone, so that neither their order
/// nor another one changes an address: that is why all names have to be known before the first is given out.
///
/// Ownership: refers to nothing; addresses refer to it.
/// Threads:   one thread while it is filled, then any number.
/// Errors:    std::out_of_range for what was not added; std::bad_alloc.
#pragma once

#include "kiv/Format/Ifc/Def/IfcDefBase.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaObjectBase.h"
#include "kivifc/Site/Address.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace kiv::kivifc::site {

// Pages that every site has, at its top.
inline constexpr PageName StartPage("index.html");
inline constexpr PageName EntitiesPage("entities.html");
inline constexpr PageName EntitiesByLetterPage("entities-by-letter.html");
inline constexpr PageName TypesPage("types.html");
inline constexpr PageName FunctionsPage("functions.html");
inline constexpr PageName RulesPage("rules.html");
inline constexpr PageName SetsPage("sets.html");
inline constexpr PageName PropertiesPage("properties.html");
inline constexpr PageName LanguagesPage("languages.html");
inline constexpr PageName GuidsPage("guids.html");

/// The file names of one folder, each given out once.
class FileNames {
public:
    /// A name that will be asked for.
    void vExpect(std::string_view name);
    /// The name with the ending ".html". `distinction` makes the checksums of equal names differ.
    std::string sTake(std::string_view name, std::string_view distinction);
    /// The same, with a checksum even when the name could be the file's.
    std::string sTakeMarked(std::string_view name, std::string_view distinction);

private:
    // Of each name in lower case the first that is expected, and whether others are that differ from it.
    struct Expected {
        std::string first;
        bool hasOthers = false;
    };

    bool isOneOfSeveral(const std::string& folded) const;

    std::unordered_map<std::string, Expected> expected_;
    // In lower case.
    std::unordered_set<std::string> taken_;
    // How many names with this checksum there were, so that many equal ones do not each try all numbers.
    std::unordered_map<std::string, int> counts_;
};

class Addresses {
public:
    /// What will be added.
    void vExpect(const ifc::def::schema::ObjectBase& object);
    void vExpect(const ifc::def::xml::SetDef& set, bool isStandard);
    /// Of objects of one name, the first has the plain one.
    void vAdd(const ifc::def::schema::ObjectBase& object);
    /// `distinction` from sets of the same name: its context, and of a set that is not used its document.
    void vAdd(const ifc::def::xml::SetDef& set, bool isStandard, std::string_view distinction);
    /// A page of ours whose name depends on what is on it, such as the properties that begin with a letter:
    /// "properties-A.html". The key is prefix and part together.
    void vAdd(PageName prefix, std::string_view part);

    Address of(const ifc::def::schema::ObjectBase& object) const { return Address(objects_.at(&object)); }
    Address of(const ifc::def::xml::SetDef& set) const { return Address(sets_.at(&set)); }
    Address of(PageName prefix, std::string_view part) const;

private:
    FileNames topNames_;
    FileNames setNames_;
    std::unordered_map<const ifc::def::schema::ObjectBase*, std::string> objects_;
    std::unordered_map<const ifc::def::xml::SetDef*, std::string> sets_;
    std::unordered_map<std::string, std::string> parts_;
};

} // namespace kiv::kivifc::site
