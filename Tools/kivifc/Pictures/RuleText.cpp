#include "kivifc/Pictures/RuleText.h"

#include "kivifc/Program/AsciiText.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <string_view>
#include <utility>

namespace kiv::kivifc {

namespace {

constexpr std::size_t Width = 80;

std::string_view severityName(kit::Severity severity) {
    switch (severity) {
    case kit::Severity::Error:
        return "error";
    case kit::Severity::Warning:
        return "warning";
    default:
        return "note";
    }
}

/// The family that the first letter of a code names.
constexpr std::array<std::pair<char, std::string_view>, 12> Families{{{'C', "Classes"},
                                                                      {'D', "Documentation"},
                                                                      {'E', "Schema"},
                                                                      {'G', "GUIDs"},
                                                                      {'K', "Comments"},
                                                                      {'L', "Languages"},
                                                                      {'N', "Names"},
                                                                      {'R', "Reports and files"},
                                                                      {'S', "Structure"},
                                                                      {'T', "Types"},
                                                                      {'V', "Release"},
                                                                      {'X', "Across documents"}}};

std::string_view familyOf(std::string_view code) {
    const auto found = std::ranges::find(Families, code.front(), &std::pair<char, std::string_view>::first);
    return found == Families.end() ? "Others" : found->second;
}

/// The lines of a text, without their ends.
template <typename Take>
void vEachLine(std::string_view text, Take take) {
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        take(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

std::string sIndented(std::string_view text) {
    std::string indented;
    vEachLine(text, [&](std::string_view line) {
        indented += line.empty() ? "\n" : fmt::format("    {}\n", line);
    });
    return indented;
}

/// Words of one paragraph on lines that fit a terminal.
std::string sFilled(std::string_view paragraph) {
    std::string filled;
    std::size_t column = 0;
    while (!paragraph.empty()) {
        const auto word = paragraph.substr(0, paragraph.find_first_of(" \n"));
        paragraph.remove_prefix(std::min(word.size() + 1, paragraph.size()));
        if (word.empty())
            continue;
        const bool fits = column + 1 + word.size() <= Width;
        if (column != 0)
            filled += fits ? ' ' : '\n';
        column = column != 0 && fits ? column + 1 + word.size() : word.size();
        filled += word;
    }
    return filled + '\n';
}

std::string sParagraphs(std::string_view text) {
    std::string filled;
    while (!text.empty()) {
        const auto end = std::min(text.find("\n\n"), text.size());
        if (!filled.empty())
            filled += '\n';
        filled += sFilled(text.substr(0, end));
        text.remove_prefix(std::min(end + 2, text.size()));
    }
    return filled;
}

/// Schemas are no XML.
std::string_view languageOf(const kit::Rule& rule) {
    return rule.code.starts_with('E') || rule.code == "R090" ? "text" : "xml";
}

std::string sFenced(std::string_view language, std::string_view text) {
    return fmt::format("```{}\n{}{}```\n", language, text, text.ends_with('\n') ? "" : "\n");
}

/// What looks like a tag or a comment would not be shown.
std::string sMarkdown(std::string_view text) {
    std::string escaped;
    for (const char letter : text)
        escaped += letter == '<' ? "&lt;" : std::string(1, letter);
    return escaped;
}

std::string sRuleSection(const kit::Rule& rule) {
    auto text =
        fmt::format("\n### {} {}\n\n{}: {}\n\n{}\n", rule.code, rule.name, severityName(rule.severity),
                    sMarkdown(rule.summary), sMarkdown(rule.explanation));
    if (!rule.wrong.text.empty())
        text += fmt::format("\nWrong:\n\n{}", sFenced(languageOf(rule), rule.wrong.text));
    if (!rule.right.text.empty())
        text += fmt::format("\nRight:\n\n{}", sFenced(languageOf(rule), rule.right.text));
    return text;
}

} // namespace

std::string sRuleText(const kit::Rule& rule) {
    auto text = fmt::format("{} {} ({})\n\n{}\n{}", rule.code, rule.name, severityName(rule.severity),
                            sFilled(rule.summary), sParagraphs(rule.explanation));
    if (!rule.wrong.text.empty())
        text += fmt::format("\nWrong:\n\n{}", sIndented(rule.wrong.text));
    if (!rule.right.text.empty())
        text += fmt::format("\nRight:\n\n{}", sIndented(rule.right.text));
    return text;
}

std::string sRuleList(std::span<const kit::Rule> rules) {
    std::string text;
    for (const auto& rule : rules)
        text += fmt::format("{}  {:<8} {:<30} {}\n", rule.code, severityName(rule.severity), rule.name,
                            rule.summary);
    return text;
}

std::string sRulePage(std::span<const kit::Rule> rules) {
    std::string text = "# Rules\n\nWhat `kivifc check` finds. The same texts are in `kivifc explain CODE`; "
                       "`./dev rules` writes this page.\n\n| code | severity | name | what it finds |\n"
                       "| --- | --- | --- | --- |\n";
    for (const auto& rule : rules)
        text += fmt::format("| [{0}](#{2}-{3}) | {1} | {3} | {4} |\n", rule.code, severityName(rule.severity),
                            ascii::sLowerCase(rule.code), rule.name, sMarkdown(rule.summary));
    std::string_view family;
    for (const auto& rule : rules) {
        if (familyOf(rule.code) != family)
            text += fmt::format("\n## {}\n", familyOf(rule.code));
        family = familyOf(rule.code);
        text += sRuleSection(rule);
    }
    return text;
}

} // namespace kiv::kivifc
