#include "Kit/Findings/Rules/ExampleDocuments.h"

#include <deque>
#include <mutex>
#include <stdexcept>
#include <string>
#include <utility>

namespace kiv::kit {

namespace {

/// The example keeps its text: tables are made once and live as long as the process.
RuleExample kept(std::string text) {
    static std::mutex mutex;
    static std::deque<std::string> texts;
    const std::scoped_lock lock(mutex);
    return {texts.emplace_back(std::move(text))};
}

} // namespace

RuleExample changed(const RuleExample& example, std::initializer_list<ExampleChange> changes) {
    std::string text(example.text);
    for (const auto& [part, instead] : changes) {
        const auto offset = text.find(part);
        if (offset == std::string::npos)
            throw std::logic_error("not in the example: " + std::string(part));
        text.replace(offset, part.size(), instead);
    }
    return kept(std::move(text));
}

RuleExample inFiles(std::initializer_list<ExampleFile> files) {
    std::string text;
    for (const auto& [path, content] : files)
        text.append("---- ").append(path).append("\n").append(content.text);
    return kept(std::move(text));
}

} // namespace kiv::kit
