/// @file
/// Set documents that tests of pages are made of, in short.
///
///     sSet("Pset_Wall", {"Wall/SOLID"}, sProperty("Mark", sSingle("Label")))
#pragma once

#include <string>
#include <vector>

namespace kiv::kivifc::site::test {

inline std::string sTagged(const std::string& tag, const std::string& content) {
    return "<" + tag + ">" + content + "</" + tag + ">";
}

/// A property set; `members` are elements.
inline std::string sSet(const std::string& name, const std::vector<std::string>& classes,
                        const std::string& members, const std::string& attributes = {}) {
    std::string classNames;
    for (const auto& each : classes)
        classNames += sTagged("ClassName", each);
    return "<PropertySetDef " + attributes + ">" + sTagged("Name", name) +
           sTagged("Definition", "About " + name + ".") + sTagged("ApplicableClasses", classNames) +
           sTagged("PropertyDefs", members) + "</PropertySetDef>";
}

/// `type` is the element within PropertyType, `more` comes after it.
inline std::string sProperty(const std::string& name, const std::string& type, const std::string& more = {},
                             const std::string& attributes = {}) {
    return "<PropertyDef " + attributes + ">" + sTagged("Name", name) +
           sTagged("Definition", "What " + name + " is.") + sTagged("PropertyType", type) + more +
           "</PropertyDef>";
}

inline std::string sSingle(const std::string& dataType, const std::string& unit = {}) {
    return "<TypePropertySingleValue><DataType type=\"" + dataType + "\"/>" +
           (unit.empty() ? "" : "<UnitType type=\"" + unit + "\"/>") + "</TypePropertySingleValue>";
}

inline std::string sEnumeration(const std::string& name, const std::vector<std::string>& items,
                                const std::string& constants = {}) {
    std::string list;
    for (const auto& item : items)
        list += sTagged("EnumItem", item);
    return "<TypePropertyEnumeratedValue><EnumList name=\"" + name + "\">" + list + "</EnumList>" +
           (constants.empty() ? "" : sTagged("ConstantList", constants)) + "</TypePropertyEnumeratedValue>";
}

/// The declaration of an entity, of a root where no supertype is given.
inline std::string sEntity(const std::string& name, const std::string& supertype) {
    return "ENTITY " + name + (supertype.empty() ? "" : "\n SUBTYPE OF (" + supertype + ")") +
           ";\nEND_ENTITY;\n";
}

inline std::string sNameAlias(const std::string& language, const std::string& text) {
    return "<NameAliases><NameAlias lang=\"" + language + "\">" + text + "</NameAlias></NameAliases>";
}

} // namespace kiv::kivifc::site::test
