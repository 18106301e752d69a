/// The sample data that ships with us, for tests that need more than a few lines. The target that includes it
/// defines KIV_SAMPLES, the folder of the data.
///
///     const auto text = sSampleText("Building.exp");
///     for (const auto& path : sampleSetPaths()) vRead(sSampleText(path));
///
/// Errors: a file that cannot be read is std::runtime_error, which fails the test.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace kiv::test {

/// What a file holds, wherever it is.
inline std::string sFileText(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        throw std::runtime_error("cannot read " + path.string());
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

/// What the file of this path below the folder holds.
inline std::string sSampleText(const std::string& path) {
    return sFileText(std::filesystem::path(KIV_SAMPLES) / path);
}

/// The paths of the documents in a folder of the samples, by name.
inline std::vector<std::string> samplePathsIn(const std::string& folder) {
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::directory_iterator(std::string(KIV_SAMPLES) + '/' + folder))
        paths.push_back(folder + '/' + entry.path().filename().string());
    std::sort(paths.begin(), paths.end());
    return paths;
}

/// The set documents without faults.
inline std::vector<std::string> sampleSetPaths() {
    return samplePathsIn("Sets");
}

/// Those with faults that are records, reports or refusals, or no documents at all.
inline std::vector<std::string> sampleBrokenSetPaths() {
    return samplePathsIn("BrokenSets");
}

/// A configuration of the schema of Building.exp, with a record of each kind and one that takes the place of
/// another.
inline constexpr const char* SampleConfig =
    "<cnf:configuration xmlns:cnf='urn:iso:std:iso:10303:-28:ed-2' id='BUILDING1'>\n"
    "<cnf:option concrete-attribute='attribute-content' entity-attribute='double-tag'/>\n"
    "<cnf:schema targetNamespace='urn:example:building1:namespace'>\n"
    "<cnf:namespace prefix='bld' alias='urn:example:building1:alias'/>\n"
    "</cnf:schema>\n"
    "<cnf:uosElement name='the-building-element'/>\n"
    "<cnf:type select='BldTriple' map='xs:list' keep='true'/>\n"
    "<cnf:entity select='BldWall'>\n"
    "<cnf:attribute select='Length' exp-attribute='attribute-tag'/>\n"
    "<cnf:attribute select='Name' exp-attribute='attribute-tag'/>\n"
    "</cnf:entity>\n"
    "<cnf:entity select='bldroot'>\n"
    "<cnf:attribute select='Name' exp-attribute='double-tag' tagless='true' keep='true'/>\n"
    "</cnf:entity>\n"
    "<cnf:entity select='BldElement'>\n"
    "<cnf:inverse select='OnLayer' exp-attribute='attribute-content'/>\n"
    "</cnf:entity>\n"
    "</cnf:configuration>\n";

} // namespace kiv::test
