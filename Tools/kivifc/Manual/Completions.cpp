#include "kivifc/Manual/Completions.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <string_view>

namespace kiv::kivifc {

namespace {

std::string sJoined(const std::vector<std::string>& words, std::string_view separator) {
    return fmt::format("{}", fmt::join(words, separator));
}

/// The text with each of the bytes preceded by a backslash.
std::string sEscaped(std::string_view text, std::string_view bytes) {
    std::string escaped;
    for (const char byte : text) {
        if (bytes.find(byte) != std::string_view::npos)
            escaped += '\\';
        escaped += byte;
    }
    return escaped;
}

/// In single quotes, for bash and zsh.
std::string sQuoted(std::string_view text) {
    std::string quoted = "'";
    for (const char byte : text)
        quoted.append(byte == '\'' ? R"('\'')" : std::string(1, byte));
    return quoted + '\'';
}

std::vector<std::string> optionNames(const CommandText& command) {
    std::vector<std::string> names;
    for (const auto& option : command.options)
        names.insert(names.end(), option.names.begin(), option.names.end());
    return names;
}

std::vector<std::string> commandNames(const ProgramTexts& texts) {
    std::vector<std::string> names;
    for (const auto& command : texts.commands)
        names.push_back(command.name);
    return names;
}

bool areFilesTaken(const CommandText& command) {
    for (const auto& positional : command.positionals) {
        if (positional.completion == Completion::Files)
            return true;
    }
    return false;
}

/// What bash does for a value, as a command.
std::string sBashValue(const OptionText& option) {
    switch (option.completion) {
    case Completion::Files:
        return "_kivifc_paths -f";
    case Completion::Folders:
        return "_kivifc_paths -d";
    case Completion::Choices:
        return fmt::format("_kivifc_words '{}'", sJoined(option.choices, " "));
    case Completion::None:
        break;
    }
    return ":";
}

std::string sBashCommand(const CommandText& command) {
    auto text = fmt::format("    {})\n        case $previous in\n", command.name);
    for (const auto& option : command.options) {
        if (!option.value.empty() && !option.isValueOptional)
            text +=
                fmt::format("        {}) {}; return ;;\n", sJoined(option.names, " | "), sBashValue(option));
    }
    return text + fmt::format("        esac\n"
                              "        if [[ $word == -* ]]; then\n"
                              "            _kivifc_words '{}'\n"
                              "        else\n"
                              "            {}\n"
                              "        fi ;;\n",
                              sJoined(optionNames(command), " "),
                              areFilesTaken(command) ? "_kivifc_paths -f" : ":");
}

constexpr std::string_view BashHead = R"(# Completion of kivifc for bash.

_kivifc_words() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$word")
}

_kivifc_paths() {
    mapfile -t COMPREPLY < <(compgen "$1" -- "$word")
    compopt -o filenames 2>/dev/null
}

_kivifc() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command= each
    COMPREPLY=()
    # bash splits --out=DIR into three words.
    if [[ $word == = ]]; then
        word=
    elif [[ $previous == = ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    for each in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        if [[ $each != -* ]]; then
            command=$each
            break
        fi
    done
    case $command in
)";

/// In brackets of an argument of _arguments; there a colon ends the text.
std::string sZshText(std::string_view text) {
    return sEscaped(text, "[]:\\");
}

std::string sZshAction(const OptionText& option) {
    switch (option.completion) {
    case Completion::Files:
        return "_files";
    case Completion::Folders:
        return "_files -/";
    case Completion::Choices:
        return fmt::format("({})", sJoined(option.choices, " "));
    case Completion::None:
        break;
    }
    // A blank: nothing can be offered, but a value is expected.
    return " ";
}

std::vector<std::string> zshArguments(const CommandText& command) {
    std::vector<std::string> arguments;
    for (const auto& option : command.options) {
        for (const auto& name : option.names) {
            auto text = fmt::format("{}[{}]", name, sZshText(option.description));
            if (!option.value.empty())
                text += fmt::format("{}{}:{}", option.isValueOptional ? "::" : ":", sZshText(option.value),
                                    sZshAction(option));
            arguments.push_back(sQuoted(text));
        }
    }
    for (std::size_t place = 0; place < command.positionals.size(); ++place) {
        const auto& positional = command.positionals[place];
        const auto number = positional.isRepeated ? std::string("*") : fmt::format("{}", place + 1);
        arguments.push_back(
            sQuoted(fmt::format("{}:{}:{}", number, sZshText(positional.value), sZshAction(positional))));
    }
    return arguments;
}

/// In single quotes of fish, where only these two are special.
std::string sFishText(std::string_view text) {
    return '\'' + sEscaped(text, "\\'") + '\'';
}

std::string sFishOption(const OptionText& option, std::string_view condition) {
    auto text = fmt::format("complete -c kivifc -n {}", condition);
    for (const auto& name : option.names)
        text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    if (!option.value.empty() && !option.isValueOptional) {
        switch (option.completion) {
        case Completion::Files:
            text += " -r -F";
            break;
        case Completion::Folders:
            text += " -x -a '(__fish_complete_directories)'";
            break;
        case Completion::Choices:
            text += fmt::format(" -x -a '{}'", sJoined(option.choices, " "));
            break;
        case Completion::None:
            text += " -x";
            break;
        }
    }
    return text + fmt::format(" -d {}\n", sFishText(option.description));
}

} // namespace

std::string sBashCompletion(const ProgramTexts& texts) {
    std::string text(BashHead);
    auto words = commandNames(texts);
    const auto options = optionNames(texts.program);
    words.insert(words.end(), options.begin(), options.end());
    text += fmt::format("    '') _kivifc_words '{}' ;;\n", sJoined(words, " "));
    for (const auto& command : texts.commands)
        text += sBashCommand(command);
    return text + "    esac\n}\n\ncomplete -F _kivifc kivifc\n";
}

std::string sZshCompletion(const ProgramTexts& texts) {
    std::string text = "#compdef kivifc\n# Completion of kivifc for zsh.\n\n_kivifc() {\n"
                       "    local context state state_descr line\n    typeset -A opt_args\n"
                       "    local -a commands=(\n";
    for (const auto& command : texts.commands)
        text +=
            fmt::format("        {}\n", sQuoted(command.name + ':' + sEscaped(command.description, ":\\")));
    text += "    )\n    _arguments -C";
    for (const auto& argument : zshArguments(texts.program))
        text += " \\\n        " + argument;
    text += " \\\n        '1:command:->command' \\\n        '*::argument:->arguments'\n"
            "    case $state in\n"
            "    command) _describe command commands ;;\n"
            "    arguments)\n"
            "        case $words[1] in\n";
    for (const auto& command : texts.commands) {
        text += fmt::format("        {})\n            _arguments", command.name);
        for (const auto& argument : zshArguments(command))
            text += " \\\n                " + argument;
        text += " ;;\n";
    }
    return text + "        esac ;;\n    esac\n}\n\n_kivifc \"$@\"\n";
}

std::string sFishCompletion(const ProgramTexts& texts) {
    constexpr std::string_view NoCommand = "__fish_use_subcommand";
    std::string text = "# Completion of kivifc for fish.\n\ncomplete -c kivifc -f\n";
    for (const auto& option : texts.program.options)
        text += sFishOption(option, NoCommand);
    for (const auto& command : texts.commands)
        text += fmt::format("complete -c kivifc -n {} -a {} -d {}\n", NoCommand, command.name,
                            sFishText(command.description));
    for (const auto& command : texts.commands) {
        const auto condition = fmt::format("'__fish_seen_subcommand_from {}'", command.name);
        if (areFilesTaken(command))
            text += fmt::format("complete -c kivifc -n {} -F\n", condition);
        for (const auto& option : command.options)
            text += sFishOption(option, condition);
    }
    return text;
}

} // namespace kiv::kivifc
