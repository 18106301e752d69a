#include "kivifc/Manual/Completions.h"

#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/KivifcRun.h"
#include "Tools/kivifc/Manual/ShellRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv::kivifc::test {

namespace {

using kiv::test::TemporaryFolder;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

/// What belongs to a command, from the line that begins with its name to the next command's.
std::string sPart(const std::string& text, const std::string& begin, const std::string& end) {
    const auto at = text.find(begin);
    return at == std::string::npos ? "" : text.substr(at, text.find(end, at) - at);
}

TEST(BashCompletion, HasEachOptionOfEachCommand) {
    const auto texts = programTexts();
    const auto script = sBashCompletion(texts);
    for (const auto& command : texts.commands) {
        const auto part = sPart(script, "    " + command.name + ")\n", "fi ;;\n");
        for (const auto& option : command.options) {
            for (const auto& name : option.names)
                EXPECT_THAT(part, testing::ContainsRegex("[ ']" + name + "[ ']")) << command.name;
        }
    }
}

TEST(ZshCompletion, HasEachOptionOfEachCommand) {
    const auto texts = programTexts();
    const auto script = sZshCompletion(texts);
    for (const auto& command : texts.commands) {
        const auto part = sPart(script, "        " + command.name + ")\n", " ;;\n");
        for (const auto& option : command.options) {
            for (const auto& name : option.names)
                EXPECT_THAT(part, HasSubstr("'" + name + "[")) << command.name;
        }
    }
}

TEST(FishCompletion, HasEachOptionOfEachCommand) {
    const auto texts = programTexts();
    const auto script = sFishCompletion(texts);
    for (const auto& command : texts.commands) {
        for (const auto& option : command.options) {
            std::string line = "complete -c kivifc -n '__fish_seen_subcommand_from " + command.name + "'";
            for (const auto& name : option.names)
                line += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
            EXPECT_THAT(script, HasSubstr(line + " ")) << command.name;
        }
    }
}

/// Options are separate from files and folders by what their values are called.
TEST(Completions, ValuesAreCompletedByTheirKind) {
    const auto texts = programTexts();
    std::vector<std::string> folders;
    std::vector<std::string> files;
    std::vector<std::vector<std::string>> choices;
    for (const auto& command : texts.commands) {
        for (const auto& option : command.options) {
            if (option.completion == Completion::Folders)
                folders.push_back(option.names.back());
            if (option.completion == Completion::Files)
                files.push_back(option.names.back());
            if (option.completion == Completion::Choices)
                choices.push_back(option.choices);
        }
        // The argument of explain is a code.
        const bool isFile = command.name != "explain";
        EXPECT_EQ(command.positionals.front().completion, isFile ? Completion::Files : Completion::None)
            << command.name;
    }
    EXPECT_THAT(folders, ElementsAre("--out", "--out"));
    EXPECT_THAT(files, ElementsAre("--also", "--config-file", "--report", "--baseline", "--write-baseline",
                                   "--config", "--config-file"));
    EXPECT_THAT(choices,
                ElementsAre(UnorderedElementsAre("text", "report", "json", "sarif", "github", "junit"),
                            UnorderedElementsAre("auto", "always", "never"),
                            UnorderedElementsAre("error", "warning", "note", "never")));
}

/// What bash offers for the words, the last of which is being typed, in a folder with files of known names.
class BashCompletionRun : public testing::Test {
protected:
    BashCompletionRun() : script_(folder_.sWrite("kivifc", sBashCompletion(programTexts()))) {
        folder_.sWrite("work/walls.exp", "");
        folder_.sWrite("work/walls sets/a.xml", "");
    }

    std::vector<std::string> completions(const std::vector<std::string>& words) {
        std::string line = "cd '" + folder_.sPath("work") + "' && . '" + script_ + "' && COMP_WORDS=(kivifc";
        for (const auto& word : words)
            line += " \"" + word + '"';
        line += ") && COMP_CWORD=" + std::to_string(words.size()) +
                R"( && _kivifc && [ ${#COMPREPLY[@]} -eq 0 ] || printf "%s\n" "${COMPREPLY[@]}")";
        const auto path = folder_.sWrite("run.bash", line + '\n');
        return linesOf(shellRun("bash '" + path + "' 2>&1").out);
    }

    const TemporaryFolder folder_;
    const std::string script_;
};

TEST_F(BashCompletionRun, ScriptIsParsed) {
    const auto run = shellRun("bash -n '" + script_ + "' 2>&1");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "");
}

TEST_F(BashCompletionRun, OffersWhatMayComeNext) {
    struct Row {
        std::vector<std::string> words;
        std::vector<std::string> offers;
    };
    const Row rows[] = {{{"ch"}, {"check"}},
                        {{"--v"}, {"--version"}},
                        {{"s"}, {"schema", "sets", "site"}},
                        {{"check", "--wa"}, {"--warnings"}},
                        {{"check", "walls.exp", "--js"}, {"--json"}},
                        {{"check", "--format", ""}, {"text", "report", "json", "sarif", "github", "junit"}},
                        {{"check", "--format", "=", "re"}, {"report"}},
                        {{"check", "--format", "="}, {"text", "report", "json", "sarif", "github", "junit"}},
                        {{"check", "--own"}, {}},
                        {{"sets", "--own"}, {"--own"}},
                        {{"schema", "walls"}, {"walls.exp", "walls sets"}},
                        {{"check", "walls.exp", "office", "=", "walls.e"}, {"walls.exp"}},
                        {{"export", "walls.exp", "--out", "wa"}, {"walls sets"}},
                        {{"check", "walls.exp", "--report", "walls.e"}, {"walls.exp"}},
                        {{"sets", "--entity", "wa"}, {}},
                        {{"frobnicate", ""}, {}}};
    for (const auto& row : rows)
        EXPECT_THAT(completions(row.words), testing::UnorderedElementsAreArray(row.offers))
            << testing::PrintToString(row.words);
}

TEST(ZshCompletion, ScriptIsParsed) {
    if (shellRun("command -v zsh").status != 0)
        GTEST_SKIP() << "zsh is not installed";
    const TemporaryFolder folder;
    EXPECT_EQ(shellRun("zsh -n '" + folder.sWrite("_kivifc", sZshCompletion(programTexts())) + "'").status,
              0);
}

TEST(FishCompletion, ScriptIsParsed) {
    if (shellRun("command -v fish").status != 0)
        GTEST_SKIP() << "fish is not installed";
    const TemporaryFolder folder;
    EXPECT_EQ(
        shellRun("fish -n '" + folder.sWrite("kivifc.fish", sFishCompletion(programTexts())) + "'").status,
        0);
}

} // namespace

} // namespace kiv::kivifc::test
