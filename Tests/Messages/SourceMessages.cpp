#include "Messages/SourceMessages.h"

#include "Base/Ascii.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace kiv::test {

namespace {

namespace fs = std::filesystem;

constexpr auto npos = std::string_view::npos;

/// An operation through which messages go, and which of its arguments is the message and which the function, if any.
struct Reporter {
    std::string_view name;
    std::size_t message = npos;
    std::size_t function = npos;
};

constexpr std::array Reporters{Reporter{"addAssert", 0},        Reporter{"vAssertReport", 0, 1},
                               Reporter{"vConfigReport", 0, 1}, Reporter{"vErrorAdd", 2},
                               Reporter{"Finding", 1},          Reporter{"vFail", 0},
                               Reporter{"SyntaxError", 0},      Reporter{"vElementRead", npos, 1},
                               Reporter{"selectOf", npos, 1}};

std::string sText(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        throw std::runtime_error("cannot read " + path.string());
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The offset behind the literal, of a text or a character, whose quote stands at `pos`.
std::size_t literalEnd(std::string_view text, std::size_t pos) {
    const char quote = text[pos];
    for (++pos; pos < text.size() && text[pos] != quote; ++pos) {
        if (text[pos] == '\\')
            ++pos;
    }
    return pos + 1;
}

/// The text without its line comments, whose apostrophes would look like quotes.
std::string sCode(std::string_view text) {
    std::string code;
    for (std::size_t pos = 0; pos < text.size();) {
        auto end = pos + 1;
        if (text.substr(pos, 2) == "//")
            end = std::min(text.find('\n', pos), text.size());
        else if (text[pos] == '"' || text[pos] == '\'')
            end = std::min(literalEnd(text, pos), text.size());
        if (text.substr(pos, 2) != "//")
            code.append(text.substr(pos, end - pos));
        pos = end;
    }
    return code;
}

bool isNamePart(char character) {
    return ascii::isLetter(character) || ascii::isDigit(character) || character == '_';
}

/// The offset of the name as a whole word from `pos` on; npos when there is none.
std::size_t wordFind(std::string_view code, std::string_view word, std::size_t pos) {
    for (pos = code.find(word, pos); pos != npos; pos = code.find(word, pos + 1)) {
        const auto end = pos + word.size();
        if ((pos == 0 || !isNamePart(code[pos - 1])) && (end == code.size() || !isNamePart(code[end])))
            break;
    }
    return pos;
}

/// The arguments behind an opening bracket, cut at the commas outside all brackets.
std::vector<std::string> argumentsFrom(std::string_view code, std::size_t pos) {
    std::vector<std::string> arguments(1);
    for (std::size_t depth = 0; pos < code.size();) {
        const char character = code[pos];
        if (character == '"' || character == '\'') {
            const auto end = std::min(literalEnd(code, pos), code.size());
            arguments.back().append(code.substr(pos, end - pos));
            pos = end;
            continue;
        }
        if (character == ')' || character == '}') {
            if (depth-- == 0)
                break;
        }
        if (character == '(' || character == '{')
            ++depth;
        if (character == ',' && depth == 0)
            arguments.emplace_back();
        else
            arguments.back() += character;
        ++pos;
    }
    return arguments;
}

/// Without white space around it, and with one blank for each run of it, so that the layout does not matter.
std::string sTrimmed(std::string_view text) {
    std::string trimmed;
    for (const char character : text) {
        const bool isBlank = character == ' ' || character == '\n';
        if (!isBlank)
            trimmed += character;
        else if (!trimmed.empty() && trimmed.back() != ' ')
            trimmed += ' ';
    }
    if (trimmed.ends_with(' '))
        trimmed.pop_back();
    return trimmed;
}

std::string_view withoutBlanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \n"), text.size()));
    return text;
}

/// The literal that an argument begins with, perhaps in a string or a list that is made of it, with those that continue
/// it; absent when it begins with something else.
std::optional<std::string> literalOf(const std::string& argument) {
    auto text = withoutBlanks(argument);
    for (const std::string_view made : {"std::string(", "{"}) {
        if (text.starts_with(made))
            text = withoutBlanks(text.substr(made.size()));
    }
    if (!text.starts_with('"'))
        return std::nullopt;
    std::string literal;
    while (text.starts_with('"')) {
        const auto end = std::min(literalEnd(text, 0), text.size());
        for (std::size_t pos = 1; pos + 1 < end; ++pos) {
            if (text[pos] == '\\')
                ++pos;
            literal += text[pos];
        }
        text = withoutBlanks(text.substr(end));
    }
    return literal;
}

void vCallRead(const Reporter& reporter, const std::vector<std::string>& arguments, SourceMessages& found) {
    if (reporter.message < arguments.size()) {
        if (const auto text = literalOf(arguments[reporter.message]))
            found.texts.insert(*text);
        else
            found.indirect.insert(std::string(reporter.name) + ": " + sTrimmed(arguments[reporter.message]));
    }
    if (reporter.function < arguments.size()) {
        if (const auto function = literalOf(arguments[reporter.function]))
            found.functions.insert(*function);
    }
}

void vCallsRead(const Reporter& reporter, std::string_view code, SourceMessages& found) {
    for (auto pos = wordFind(code, reporter.name, 0); pos != npos;
         pos = wordFind(code, reporter.name, pos + 1)) {
        const auto open = pos + reporter.name.size();
        if (open < code.size() && (code[open] == '(' || code[open] == '{'))
            vCallRead(reporter, argumentsFrom(code, open + 1), found);
    }
}

/// Functions are often named apart from the report.
void vFunctionNamesRead(std::string_view code, SourceMessages& found) {
    for (auto pos = code.find("\"kiv::ifc::"); pos != npos; pos = code.find("\"kiv::ifc::", pos + 1))
        found.functions.insert(*literalOf(std::string(code.substr(pos, literalEnd(code, pos) - pos))));
}

} // namespace

SourceMessages messagesInSources(const fs::path& folder) {
    SourceMessages found;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.path().extension() != ".cpp")
            continue;
        const auto code = sCode(sText(entry.path()));
        for (const auto& reporter : Reporters)
            vCallsRead(reporter, code, found);
        vFunctionNamesRead(code, found);
    }
    return found;
}

} // namespace kiv::test
