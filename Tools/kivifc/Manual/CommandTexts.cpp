#include "kivifc/Manual/CommandTexts.h"

#include "kivifc/Commands/CommandLine.h"
#include "kivifc/Program/Version.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace kiv::kivifc {

namespace {

constexpr std::string_view StatusStart = "Exit status: ";

std::vector<std::string> splitAt(std::string_view text, std::string_view separator) {
    std::vector<std::string> parts;
    for (auto end = text.find(separator); end != std::string_view::npos; end = text.find(separator)) {
        parts.emplace_back(text.substr(0, end));
        text.remove_prefix(end + separator.size());
    }
    parts.emplace_back(text);
    return parts;
}

/// "0 found, 1 not found" as "found" and "not found".
std::vector<std::string> statusTexts(std::string_view text) {
    std::vector<std::string> texts;
    for (char number = '0'; text.size() > 2 && text.front() == number; ++number) {
        const auto next = std::string(", ") + static_cast<char>(number + 1) + ' ';
        const auto end = std::min(text.find(next), text.size());
        texts.emplace_back(text.substr(2, end - 2));
        text.remove_prefix(std::min(end + 2, text.size()));
    }
    return texts;
}

void vFooterTake(CommandText& command, const std::string& footer) {
    for (auto paragraph : splitAt(footer, "\n\n")) {
        std::ranges::replace(paragraph, '\n', ' ');
        if (paragraph.starts_with(StatusStart)) {
            auto text = paragraph.substr(StatusStart.size());
            if (text.ends_with('.'))
                text.pop_back();
            command.exitStatus = statusTexts(text);
        } else if (!paragraph.empty()) {
            command.notes.push_back(std::move(paragraph));
        }
    }
}

Completion completionOf(const OptionText& option) {
    const std::string_view value = option.value;
    if (!option.choices.empty())
        return Completion::Choices;
    if (value == "DIR")
        return Completion::Folders;
    if (value == "FILE" || value == "PATH" || value == "CONFIG" || value.starts_with("SETS"))
        return Completion::Files;
    return Completion::None;
}

/// Types that the parser invents for values are "TEXT" and, for a choice, "TEXT:{a,b}".
void vValueTake(OptionText& text, std::string_view type) {
    const auto begin = type.find('{');
    if (begin != std::string_view::npos && type.ends_with('}')) {
        text.choices = splitAt(type.substr(begin + 1, type.size() - begin - 2), ",");
        type = type.substr(0, type.find(':'));
    }
    text.value = type;
    if (text.value.starts_with('[')) {
        text.isValueOptional = true;
        text.value = text.value.substr(1, text.value.size() - 2);
    }
}

OptionText optionText(const CLI::Option& option) {
    OptionText text;
    text.description = option.get_description();
    text.isRequired = option.get_required();
    text.isRepeated = option.get_expected_max() > 1;
    if (option.get_positional()) {
        text.value = option.get_name(true);
    } else {
        for (const auto& name : option.get_snames())
            text.names.push_back("-" + name);
        for (const auto& name : option.get_lnames())
            text.names.push_back("--" + name);
        if (option.get_items_expected_max() > 0)
            vValueTake(text, option.get_type_name());
    }
    text.completion = completionOf(text);
    return text;
}

CommandText commandText(const CLI::App& app) {
    CommandText command;
    command.name = app.get_name();
    command.description = app.get_description();
    vFooterTake(command, app.get_footer());
    for (const auto* option : app.get_options())
        (option->get_positional() ? command.positionals : command.options).push_back(optionText(*option));
    return command;
}

/// The examples of a command: those whose second word is its name.
std::vector<ExampleText> examplesOf(const std::string& name) {
    static const std::vector<ExampleText> examples{
        {"kivifc schema Building.exp", "What is in the schema, in numbers."},
        {"kivifc schema Building.exp --tree BldElement", "The entities below BldElement, as a tree."},
        {"kivifc schema Broken.exp --assertions", "What is wrong with a schema; the exit status is 1."},
        {"kivifc check Building.exp Sets",
         "Check all documents of a folder; the exit status is 1, as there are findings."},
        {"kivifc check Building.exp BrokenSets --warnings",
         "List records and assertion reports; the exit status is 2, as some files cannot be read."},
        {"kivifc explain C001", "What a rule finds, with an example."},
        {"kivifc type Building.exp Sets Pset_BldWall.Mark BldWall.Name",
         "The types of a property and of an attribute."},
        {"kivifc sets Building.exp Sets --entity BldWall", "The sets for walls and all that is above them."},
        {"kivifc sets Building.exp office=Sets --entity BldWall --own",
         "The sets of the context \"office\" that name BldWall itself."},
        {"kivifc find Building.exp Sets Pset_BldWall", "A set by its name."},
        {"kivifc config Building.exp ../../Tests/Tools/kivifc/Data/Building.config.xml",
         "What a configuration says of the attributes of the schema."},
        {"kivifc entity Building.exp Sets BldWall", "BldWall, with all that it inherits and its sets."},
        {"kivifc export Building.exp Sets --out Exported", "Write all sets to the folder Exported."},
        {"kivifc site Building.exp Sets --out Pages",
         "Write pages for a browser; Pages/index.html is the first."},
    };
    std::vector<ExampleText> own;
    std::ranges::copy_if(examples, std::back_inserter(own), [&](const auto& example) {
        return example.command.starts_with("kivifc " + name + ' ');
    });
    return own;
}

} // namespace

ProgramTexts programTexts() {
    CLI::App app;
    const auto commands = commandLineSetUp(app);
    ProgramTexts texts;
    // Commit and compiler would make the pages differ from build to build.
    texts.version = sVersion();
    texts.version.resize(std::min(texts.version.find(" ("), texts.version.size()));
    texts.program = commandText(app);
    for (const auto& entry : commands) {
        auto command = commandText(*entry.parser);
        command.examples = examplesOf(command.name);
        if (!command.examples.empty())
            texts.program.examples.push_back(command.examples.front());
        texts.commands.push_back(std::move(command));
    }
    return texts;
}

} // namespace kiv::kivifc
