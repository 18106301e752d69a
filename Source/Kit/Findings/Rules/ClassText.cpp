#include "Kit/Findings/Rules/ClassText.h"

#include "Kit/Text/AsciiText.h"

#include <algorithm>

namespace kiv::kit {

namespace {

bool boIsNameCharacter(char character) {
    return isLetter(character) || isDigit(character) || character == '_';
}

bool boIsName(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, boIsNameCharacter);
}

/// What follows "Class.": PredefinedType="X".
std::optional<std::string_view> attributeValueOf(std::string_view text) {
    const auto mark = text.find('=');
    if (mark == std::string_view::npos ||
        !isEqualIgnoringCase(trimmed(text.substr(0, mark)), "PredefinedType"))
        return std::nullopt;
    auto value = trimmed(text.substr(mark + 1));
    if (value.size() < 2 || value.front() != value.back() || (value.front() != '"' && value.front() != '\''))
        return std::nullopt;
    value = value.substr(1, value.size() - 2);
    return boIsName(value) ? std::optional(value) : std::nullopt;
}

} // namespace

std::optional<ClassText> classTextOf(std::string_view text) {
    const auto whole = trimmed(text);
    const auto mark = whole.find_first_of("/.");
    const auto name = trimmed(whole.substr(0, mark));
    if (!boIsName(name))
        return std::nullopt;
    if (mark == std::string_view::npos)
        return ClassText{name, {}, ClassSpelling::Current, whole};
    const auto rest = trimmed(whole.substr(mark + 1));
    if (whole[mark] == '/')
        return boIsName(rest) ? std::optional(ClassText{name, rest, ClassSpelling::Current, whole})
                              : std::nullopt;
    const auto value = attributeValueOf(rest);
    return value ? std::optional(ClassText{name, *value, ClassSpelling::WithAttribute, whole}) : std::nullopt;
}

std::vector<ClassText> typeValueOf(std::string_view text) {
    std::vector<ClassText> classes;
    for (auto rest = text;;) {
        const auto mark = rest.find_first_of("|,");
        const auto one = classTextOf(rest.substr(0, mark));
        if (!one)
            return {};
        classes.push_back(*one);
        if (mark == std::string_view::npos)
            return classes;
        rest.remove_prefix(mark + 1);
    }
}

} // namespace kiv::kit
