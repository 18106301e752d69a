#include "kivifc/Manual/ManPages.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>

namespace kiv::kivifc {

namespace {

std::string sUpper(std::string text) {
    std::ranges::transform(text, text.begin(), [](char byte) {
        return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 'a' + 'A') : byte;
    });
    return text;
}

std::string sSection(std::string_view title, const std::string& text) {
    return text.empty() ? text : fmt::format(".SH {}\n{}", title, text);
}

/// Bold; a macro would end at the line, these words go on.
std::string sBold(std::string_view text) {
    return fmt::format("\\fB{}\\fR", sRoff(text));
}

std::string sItalic(std::string_view text) {
    return fmt::format("\\fI{}\\fR", sRoff(text));
}

/// "--out DIR", "--tree [ENTITY]".
std::string sOptionHead(const OptionText& option) {
    std::vector<std::string> names;
    for (const auto& name : option.names)
        names.push_back(sBold(name));
    auto head = fmt::format("{}", fmt::join(names, ", "));
    if (option.value.empty())
        return head;
    const auto value = option.choices.empty() ? sItalic(option.value)
                                              : sBold(fmt::format("{}", fmt::join(option.choices, "|")));
    return head.append(head.empty() ? "" : " ").append(option.isValueOptional ? "[" + value + "]" : value);
}

std::string sOptions(const std::vector<OptionText>& options) {
    std::string text;
    for (const auto& option : options)
        text += fmt::format(".TP\n{}\n{}.\n", sOptionHead(option), sRoff(option.description));
    return text;
}

std::string sSynopsis(const CommandText& command) {
    auto text = fmt::format("{} {}", sBold("kivifc"), sBold(command.name));
    for (const auto& positional : command.positionals) {
        text += ' ' + sItalic(positional.value);
        // Names such as "SETS... NAME" say themselves what may be repeated.
        if (positional.isRepeated && positional.value.find(' ') == std::string::npos)
            text += "...";
    }
    for (const auto& option : command.options) {
        if (option.isRequired)
            text += ' ' + sOptionHead(option);
    }
    return text + " [" + sItalic("OPTIONS") + "]\n";
}

std::string sStatus(const CommandText& command) {
    std::string text;
    for (std::size_t number = 0; number < command.exitStatus.size(); ++number)
        text += fmt::format(".TP\n{}\n{}.\n", number, sRoff(command.exitStatus[number]));
    return text;
}

std::string sExamples(const CommandText& command) {
    if (command.examples.empty())
        return {};
    std::string text = "In the folder of the sample data, Examples/Data of the sources:\n";
    for (const auto& example : command.examples)
        text += fmt::format(".TP\n{}\n{}\n", sBold(example.command), sRoff(example.description));
    return text;
}

std::string sDescription(const CommandText& command) {
    auto text = sRoff(command.description) + (command.description.ends_with('.') ? "\n" : ".\n");
    for (const auto& note : command.notes)
        text += ".PP\n" + sRoff(note) + '\n';
    return text;
}

/// What all pages end with.
std::string sEnd(const CommandText& command, const std::string& seeAlso) {
    return sSection("EXIT STATUS", sStatus(command)) +
           sSection("ENVIRONMENT", sRoff("kivifc reads no environment variables.") + '\n') +
           sSection("EXAMPLES", sExamples(command)) + sSection("SEE ALSO", seeAlso);
}

std::string sHead(const ProgramTexts& texts, const std::string& name, std::string purpose) {
    if (purpose.ends_with('.'))
        purpose.pop_back();
    return fmt::format(".TH {} 1 \"\" \"{}\" \"User Commands\"\n.SH NAME\n{} \\- {}\n", sRoff(sUpper(name)),
                       sRoff(texts.version), sRoff(name), sRoff(purpose));
}

} // namespace

std::string sRoff(std::string_view text) {
    std::string escaped;
    for (const char byte : text) {
        // A dot or an apostrophe at the beginning of a line makes it a request.
        if (escaped.empty() && byte == '.')
            escaped = "\\&";
        switch (byte) {
        case '\\':
            escaped += "\\e";
            break;
        case '-':
            escaped += "\\-";
            break;
        case '\'':
            escaped += "\\(aq";
            break;
        case '"':
            escaped += "\\(dq";
            break;
        case '^':
            escaped += "\\(ha";
            break;
        case '~':
            escaped += "\\(ti";
            break;
        case '`':
            escaped += "\\(ga";
            break;
        default:
            escaped += byte;
        }
    }
    return escaped;
}

std::string sProgramManPage(const ProgramTexts& texts) {
    std::string commands;
    std::vector<std::string> pages;
    for (const auto& command : texts.commands) {
        commands += fmt::format(".TP\n{}\n{}.\n", sBold(command.name), sRoff(command.description));
        pages.push_back(sBold("kivifc-" + command.name) + "(1)");
    }
    return sHead(texts, "kivifc", "read IFC schemas and the property and quantity sets defined for them") +
           sSection("SYNOPSIS",
                    fmt::format("{0} {1} [{2}]\n.br\n{0} {3}\n", sBold("kivifc"), sItalic("COMMAND"),
                                sItalic("ARGUMENTS"), sBold("--help") + "|" + sBold("--version"))) +
           sSection("DESCRIPTION", sDescription(texts.program)) + sSection("COMMANDS", commands) +
           sSection("OPTIONS", sOptions(texts.program.options)) +
           sEnd(texts.program, fmt::format("{}\n", fmt::join(pages, ", ")));
}

std::string sCommandManPage(const ProgramTexts& texts, const CommandText& command) {
    return sHead(texts, "kivifc-" + command.name, command.description) +
           sSection("SYNOPSIS", sSynopsis(command)) + sSection("DESCRIPTION", sDescription(command)) +
           sSection("ARGUMENTS", sOptions(command.positionals)) +
           sSection("OPTIONS", sOptions(command.options)) + sEnd(command, sBold("kivifc") + "(1)\n");
}

} // namespace kiv::kivifc
