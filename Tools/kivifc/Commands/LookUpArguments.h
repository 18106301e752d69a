/// @file
/// The arguments of commands that look something up in a schema and sets.
///
///     LookUpArguments arguments;
///     arguments.vOptionsAdd(app, "SETS... NAME", "Write the entity as JSON");
///
/// Ownership: the parser keeps references to it, so it must outlive the parser and not move.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace kiv::kivifc {

struct LookUpArguments {
    /// Declares the schema, the words after it by the name that the help shows for them, and "--json".
    void vOptionsAdd(CLI::App& app, const char* wordsName, const char* jsonDescription);

    /// All words but the last one, which is what is looked for.
    std::vector<std::string> getSets() const { return {words.begin(), words.end() - 1}; }

    std::string schemaPath;
    /// One at least.
    std::vector<std::string> words;
    bool isJsonAsked = false;
};

} // namespace kiv::kivifc
