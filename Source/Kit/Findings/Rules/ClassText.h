/// @file
/// A class as documents have written it over the years: "IfcWall", "IfcWall/SOLIDWALL", the older
/// "IFCSHAREDBLDGELEMENTS/IfcWall" and "IfcCovering.PredefinedType="CEILING"".
///
/// Private to the kit.
///
///     const auto text = classTextOf("IfcCovering.PredefinedType=\"CEILING\"");
///     text->name;           // "IfcCovering"
///     text->predefinedType; // "CEILING"
///
/// Ownership: views of the text.
/// Threads:   free functions without state.
/// Errors:    a text in no such spelling is absent.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace kiv::kit {

enum class ClassSpelling : std::uint8_t {
    /// Class, Class/PREDEFINEDTYPE.
    Current,
    /// Class.PredefinedType="X".
    WithAttribute,
};

struct ClassText {
    std::string_view name;
    /// Empty when there is none.
    std::string_view predefinedType;
    ClassSpelling spelling = ClassSpelling::Current;
    /// The whole, without white space around it.
    std::string_view text = {};
};

/// White space around the text, and around "=", does not count.
std::optional<ClassText> classTextOf(std::string_view text);

/// The classes of an applicable type value: several are separated by "|" or by commas. Empty when one of them
/// is in another spelling, as then nothing is known of the whole.
std::vector<ClassText> typeValueOf(std::string_view text);

} // namespace kiv::kit
