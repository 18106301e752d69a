// kivifc_documents FOLDER: writes the man pages and completions of kivifc into the folder. Part of the build,
// not installed. kivifc_documents --rules FILE: writes the page of the rules.
#include "kivifc/Manual/Completions.h"
#include "kivifc/Manual/ManPages.h"
#include "kivifc/Pictures/RuleText.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace {

namespace fs = std::filesystem;

void vFileWrite(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream stream;
    stream.exceptions(std::ios::failbit | std::ios::badbit);
    stream.open(path, std::ios::binary);
    stream << text;
    stream.close();
}

void vDocumentsWrite(const fs::path& folder) {
    using namespace kiv::kivifc;
    const auto texts = programTexts();
    vFileWrite(folder / "man" / "kivifc.1", sProgramManPage(texts));
    for (const auto& command : texts.commands)
        vFileWrite(folder / "man" / ("kivifc-" + command.name + ".1"), sCommandManPage(texts, command));
    const auto completions = folder / "completions";
    vFileWrite(completions / "bash" / "kivifc", sBashCompletion(texts));
    vFileWrite(completions / "zsh" / "_kivifc", sZshCompletion(texts));
    vFileWrite(completions / "fish" / "kivifc.fish", sFishCompletion(texts));
}

void vRulesWrite(const fs::path& path) {
    vFileWrite(fs::absolute(path), kiv::kivifc::sRulePage(kiv::kit::getRules()));
}

} // namespace

int main(int argc, char** argv) {
    const bool isRules = argc == 3 && std::string_view(argv[1]) == "--rules";
    // An option without its value is no folder.
    const bool isFolder = argc == 2 && !std::string_view(argv[1]).starts_with('-');
    if (!isFolder && !isRules) {
        std::fputs("usage: kivifc_documents FOLDER\n       kivifc_documents --rules FILE\n", stderr);
        return 2;
    }
    try {
        if (isRules)
            vRulesWrite(argv[2]);
        else
            vDocumentsWrite(argv[1]);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "kivifc_documents: %s\n", error.what());
        return 1;
    }
}
