#include "kivifc/Manual/ManPages.h"

#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/KivifcRun.h"
#include "Tools/kivifc/Manual/ShellRun.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace kiv::kivifc::test {

namespace {

using kiv::test::TemporaryFolder;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

struct Page {
    CommandText command;
    std::string text;
};

std::vector<Page> allPages() {
    const auto texts = programTexts();
    std::vector<Page> pages{{texts.program, sProgramManPage(texts)}};
    for (const auto& command : texts.commands)
        pages.push_back({command, sCommandManPage(texts, command)});
    return pages;
}

TEST(ManPages, EachCommandOfTheHelpHasAPage) {
    std::vector<std::string> names;
    for (const auto& page : allPages())
        names.push_back(page.command.name);
    EXPECT_THAT(names, testing::ElementsAre("kivifc", "schema", "check", "explain", "type", "sets", "find",
                                            "config", "entity", "export", "site"));
}

TEST(ManPages, EachOptionIsThereWithItsDescription) {
    for (const auto& page : allPages()) {
        EXPECT_THAT(page.command.options, Not(IsEmpty()));
        for (const auto& option : page.command.options) {
            for (const auto& name : option.names)
                EXPECT_THAT(page.text, HasSubstr("\\fB" + sRoff(name) + "\\fR"));
            EXPECT_THAT(page.text, HasSubstr(sRoff(option.description)));
        }
        for (const auto& positional : page.command.positionals)
            EXPECT_THAT(page.text, HasSubstr("\\fI" + sRoff(positional.value) + "\\fR"));
    }
}

TEST(ManPages, OptionsAreThoseThatTheHelpShows) {
    for (const auto& page : allPages()) {
        const bool isProgram = page.command.name == "kivifc";
        const auto help = kivifcRun(isProgram ? std::vector<std::string>{"--help"}
                                              : std::vector<std::string>{page.command.name, "--help"});
        std::istringstream words(help.out);
        for (std::string word; words >> word;) {
            const auto name = word.substr(0, word.find(','));
            if (word.starts_with("--") && name.size() > 2) {
                EXPECT_THAT(page.text, HasSubstr(sRoff(name))) << page.command.name;
            }
        }
    }
}

TEST(ManPages, EachSectionThatAReaderExpectsIsThere) {
    for (const auto& page : allPages()) {
        for (const char* section : {"NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "EXIT STATUS",
                                    "ENVIRONMENT", "EXAMPLES", "SEE ALSO"})
            EXPECT_THAT(page.text, HasSubstr(std::string(".SH ") + section + "\n")) << page.command.name;
        EXPECT_EQ(page.command.exitStatus.size(), 3U) << page.command.name;
    }
}

TEST(ManPages, ExitStatusIsTakenFromTheHelp) {
    const auto pages = allPages();
    const auto find = std::ranges::find_if(pages, [](auto& page) { return page.command.name == "find"; });
    EXPECT_THAT(find->command.exitStatus,
                testing::ElementsAre("found", "not found", "a file could not be read"));
}

TEST(ManPages, ExamplesRunOnTheSampleData) {
    const TemporaryFolder folder;
    for (const auto& page : allPages()) {
        EXPECT_THAT(page.command.examples, Not(IsEmpty())) << page.command.name;
        for (const auto& example : page.command.examples) {
            std::istringstream line(example.command);
            std::vector<std::string> words;
            for (std::string word; line >> word;)
                words.push_back(word == "Exported" || word == "Pages" ? folder.sPath(word) : word);
            ASSERT_EQ(words.front(), "kivifc");
            words.erase(words.begin());
            const auto run = kivifcRun(words);
            EXPECT_NE(run.out, "") << example.command;
            // An example that does not end with 0 says so.
            if (run.status != 0) {
                EXPECT_THAT(example.description,
                            HasSubstr("the exit status is " + std::to_string(run.status)))
                    << example.command;
            }
        }
    }
}

TEST(ManPages, WhatRoffInterpretsIsEscaped) {
    struct Row {
        const char* text;
        const char* roff;
    };
    const Row rows[] = {{"--out", "\\-\\-out"},
                        {".xml", "\\&.xml"},
                        {"*.xml", "*.xml"},
                        {"a\\b", "a\\eb"},
                        {"'tis", "\\(aqtis"},
                        {"%~", "%\\(ti"},
                        {"say \"x\"", "say \\(dqx\\(dq"},
                        {"^`", "\\(ha\\(ga"},
                        {"", ""}};
    for (const auto& row : rows)
        EXPECT_EQ(sRoff(row.text), row.roff);
}

TEST(ManPages, GroffHasNothingToSay) {
    if (shellRun("command -v groff").status != 0)
        GTEST_SKIP() << "groff is not installed";
    const TemporaryFolder folder;
    for (const auto& page : allPages()) {
        const auto path = folder.sWrite(page.command.name + ".1", page.text);
        const auto run = shellRun("groff -man -Tutf8 -ww -z '" + path + "' 2>&1");
        EXPECT_EQ(run.status, 0) << page.command.name;
        EXPECT_EQ(run.out, "") << page.command.name;
    }
}

} // namespace

} // namespace kiv::kivifc::test
