/// The messages that stand in the sources of the library, found by the names of the operations that report.
///
///     const auto found = messagesInSources(KIV_FORMAT_FOLDER);
///     EXPECT_THAT(found.texts, Contains("Entity not found"));
///
/// Errors: a folder that cannot be read throws.
#pragma once

#include <filesystem>
#include <set>
#include <string>

namespace kiv::test {

struct SourceMessages {
    /// The string literals that are messages.
    std::set<std::string> texts;
    /// Those that name the operation that reports, or begin its name.
    std::set<std::string> functions;
    /// Where no literal stands: what does, such as the name of a variable.
    std::set<std::string> indirect;
};

SourceMessages messagesInSources(const std::filesystem::path& folder);

} // namespace kiv::test
