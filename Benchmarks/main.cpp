/// kiv_bench: measures the library and ends with one table.
#include "Allocations.h"
#include "Require.h"
#include "Sections.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::bench {

namespace {

constexpr const char* Help =
    "kiv_bench [--json] [SECTION...]   SECTION: jobs, growth, memory, threads, check, site\n"
    "\n"
    "Measures these sections, all of them when none is named. See Benchmarks/README.md.\n";

struct Section {
    std::string_view name;
    /// What is being measured, for who waits.
    const char* what;
    Figures (*measure)(const Input&);
};

constexpr Section Sections[] = {{"jobs", "schema jobs", schemaJobs},
                                {"jobs", "set jobs", setJobs},
                                {"jobs", "look-ups", lookupJobs},
                                {"growth", "growth of reading", readingGrowth},
                                {"growth", "growth of look-ups", lookupGrowth},
                                {"memory", "memory", memoryFigures},
                                {"threads", "threads", threadFigures},
                                {"check", "checking by all rules", checkFigures},
                                {"site", "the site", siteFigures}};

struct Request {
    bool isJson = false;
    std::vector<std::string_view> sections;

    bool isAsked(std::string_view section) const {
        return sections.empty() || std::find(sections.begin(), sections.end(), section) != sections.end();
    }
};

bool isSection(std::string_view name) {
    return std::any_of(std::begin(Sections), std::end(Sections),
                       [&](const Section& section) { return section.name == name; });
}

Request requestOf(int count, char** arguments) {
    Request request;
    for (const std::string_view argument : std::vector<std::string_view>(arguments + 1, arguments + count)) {
        if (argument == "--json") {
            request.isJson = true;
            continue;
        }
        vRequire(isSection(argument), Help);
        request.sections.push_back(argument);
    }
    return request;
}

/// The model of the processor; empty where the system does not say.
std::string sProcessor() {
    constexpr std::string_view Label = "model name";
    std::ifstream file("/proc/cpuinfo");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(Label) && line.find(": ") != std::string::npos)
            return line.substr(line.find(": ") + 2);
    }
    return {};
}

Figures measure(const Input& input, const Request& request) {
    Figures figures;
    for (const auto& section : Sections) {
        if (!request.isAsked(section.name))
            continue;
        fmt::print(stderr, "measuring {}\n", section.what);
        const auto more = section.measure(input);
        figures.insert(figures.end(), more.begin(), more.end());
    }
    return figures;
}

void vRun(const Request& request) {
    const auto input = inputRead();
    const auto figures = measure(input, request);
    if (request.isJson) {
        const nlohmann::ordered_json all{
            {"input", input.description}, {"processor", sProcessor()}, {"figures", figuresJson(figures)}};
        fmt::print("{}\n", all.dump(2));
        return;
    }
    fmt::print("{}: schema {} bytes, {} set documents {} bytes; {}\n\n{}", input.description,
               input.schemaText.size(), input.setTexts.size(), input.setBytes(), sProcessor(),
               sTable(figures));
}

} // namespace

} // namespace kiv::bench

int main(int count, char** arguments) {
    kiv::bench::vFreedMemoryKeep();
    kiv::bench::vRun(kiv::bench::requestOf(count, arguments));
}
