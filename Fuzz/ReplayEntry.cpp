// The entry without libFuzzer: runs the files that are named, and all in the folders that are named.
#include "FuzzTarget.h"

#include <cstddef>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <string>

namespace {

namespace fs = std::filesystem;

std::string sBytes(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        throw std::runtime_error("cannot be read");
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// In an order that does not change from run to run.
std::set<fs::path> filesOf(const fs::path& path) {
    if (!fs::is_directory(path))
        return {path};
    std::set<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(path)) {
        if (entry.is_regular_file())
            files.insert(entry.path());
    }
    return files;
}

bool boRun(const fs::path& path) {
    try {
        kiv::fuzz::vRun(sBytes(path));
        return true;
    } catch (const std::exception& error) {
        std::cerr << path.string() << ": " << error.what() << '\n';
        return false;
    }
}

/// How many files were run, and how many of them are findings.
struct Outcome {
    std::size_t runs = 0;
    std::size_t findings = 0;
};

Outcome outcomeOf(int argumentCount, char** arguments) {
    Outcome outcome;
    for (int index = 1; index < argumentCount; ++index) {
        for (const auto& file : filesOf(arguments[index])) {
            ++outcome.runs;
            outcome.findings += boRun(file) ? 0 : 1;
        }
    }
    return outcome;
}

} // namespace

int main(int argumentCount, char** arguments) {
    try {
        const auto outcome = outcomeOf(argumentCount, arguments);
        std::cout << outcome.runs << " files, " << outcome.findings << " findings\n";
        return outcome.runs == 0 || outcome.findings > 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 2;
    }
}
