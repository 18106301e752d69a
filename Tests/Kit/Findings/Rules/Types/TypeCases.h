/// @file
/// Rows of a property and its findings, for tests of types.
///
///     {"empty", sSingle(""), {"5:36+4 error T008 the data type is empty"}}
///
/// Ownership: values.
/// Threads:   any number of threads.
/// Errors:    none.
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

/// A set with one property, whose kind begins in line 5, column 1.
inline std::string sSetOf(std::string_view kind) {
    return "<PropertySetDef>\n"
           "<IfcVersion version=\"IFC4\"/><Name>A</Name><Definition>B</Definition>\n"
           "<ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>\n"
           "<PropertyDefs><PropertyDef><Name>P</Name><Definition>D</Definition><PropertyType>\n" +
           std::string(kind) + "\n</PropertyType></PropertyDef></PropertyDefs>\n</PropertySetDef>\n";
}

/// "<TypePropertySingleValue>" has 25 characters, so that the type begins in column 42.
inline std::string sSingle(std::string_view type, std::string_view more = {}) {
    return sSetOf("<TypePropertySingleValue><DataType type=\"" + std::string(type) + "\"/>" +
                  std::string(more) + "</TypePropertySingleValue>");
}

/// The lower bound begins in column 66, the upper bound 27 columns after its end.
inline std::string sBounded(std::string_view type, std::string_view lower, std::string_view upper) {
    return sSetOf("<TypePropertyBoundedValue><ValueRangeDef><LowerBoundValue value=\"" + std::string(lower) +
                  "\"/><UpperBoundValue value=\"" + std::string(upper) +
                  "\"/></ValueRangeDef><DataType type=\"" + std::string(type) +
                  "\"/></TypePropertyBoundedValue>");
}

struct TypeCase {
    const char* about;
    std::string document;
    std::vector<std::string> findings;
};

inline void PrintTo(const TypeCase& row, std::ostream* out) {
    *out << row.about;
}

} // namespace kiv::test
