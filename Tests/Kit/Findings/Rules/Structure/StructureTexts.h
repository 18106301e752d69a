/// @file
/// Set documents with one thing to look at, for tests of their structure.
///
///     findingLines(setWithSingle("<DataType type=\"IfcReal\"/><UnitType/>"))
///
/// Ownership: values.
/// Threads:   any number of threads.
/// Errors:    none.
#pragma once

#include <string>
#include <string_view>

namespace kiv::test {

/// A property set whose 7th line on is this, inside "PropertyDefs".
inline std::string setWith(std::string_view properties, std::string_view attributes = {}) {
    return "<PropertySetDef" + std::string(attributes) +
           ">\n<IfcVersion version=\"IFC4\"/>\n<Name>Pset_A</Name>\n<Definition>d</Definition>\n"
           "<ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>\n<PropertyDefs>\n" +
           std::string(properties) + "\n</PropertyDefs>\n</PropertySetDef>\n";
}

/// One property, whose type is on line 8.
inline std::string setWithType(std::string_view type) {
    return setWith("<PropertyDef><Name>P</Name><Definition>d</Definition>\n" + std::string(type) +
                   "</PropertyDef>");
}

inline std::string setWithSingle(std::string_view value) {
    return setWithType("<PropertyType><TypePropertySingleValue>" + std::string(value) +
                       "</TypePropertySingleValue></PropertyType>");
}

/// One quantity, whose type is on line 8.
inline std::string quantitiesWithType(std::string_view type) {
    return "<QtoSetDef>\n<IfcVersion version=\"IFC4\"/>\n<Name>Qto_A</Name>\n<Definition>d</Definition>\n"
           "<ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>\n<QtoDefs>\n"
           "<QtoDef><Name>Q</Name><Definition>d</Definition>\n" +
           std::string(type) + "</QtoDef>\n</QtoDefs>\n</QtoSetDef>\n";
}

inline constexpr std::string_view Single =
    "<PropertyType><TypePropertySingleValue><DataType type=\"IfcReal\"/>"
    "</TypePropertySingleValue></PropertyType>";

inline std::string property(std::string_view more) {
    return "<PropertyDef><Name>P</Name><Definition>d</Definition>" + std::string(Single) + std::string(more) +
           "</PropertyDef>";
}

inline std::string setOf(std::string_view content) {
    return "<PropertySetDef>\n" + std::string(content) + "\n</PropertySetDef>\n";
}

inline constexpr std::string_view Head =
    "<IfcVersion version=\"IFC4\"/><Name>Pset_A</Name><Definition>d</Definition>"
    "<ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>\n";

} // namespace kiv::test
