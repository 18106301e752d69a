/// What the commands share that look for something in a schema and sets.
///
///     LookUpArguments arguments;
///     arguments.vOptionsAdd(app, "SETS... NAME", "Write the entity as JSON");
///
/// Ownership: the parser fills it in, so it stays where it is as long as that lives.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace kiv::kivifc {

struct LookUpArguments {
    /// Tells the parser a schema, the words behind it by the name that the help shows for them, and "--json".
    void vOptionsAdd(CLI::App& app, const char* wordsName, const char* jsonDescription);

    /// All words but the last one, which is what is looked for.
    std::vector<std::string> getSets() const { return {words.begin(), words.end() - 1}; }

    std::string schemaPath;
    /// One at least.
    std::vector<std::string> words;
    bool isJsonAsked = false;
};

} // namespace kiv::kivifc
