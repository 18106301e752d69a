/// @file
/// Findings that were there when a project began to be checked, kept in a file so that only new ones count.
///
///     std::string failure;
///     std::vector<std::string> fixed;
///     if (auto baseline = baselineRead("kivifc-baseline.json", failure))
///         baselineHide(findings, *baseline, {paths, selection}, fixed);
///
/// A finding is known by its file, code, subject and message, so it stays known when its line moves. Paths in
/// the file are relative to its folder; those that are not UTF-8 are there as bytes too.
///
/// Ownership: values.
/// Threads:   one thread at a time.
/// Errors:    the reason in words.
#pragma once

#include "kiv/Kit/Findings/Finding.h"
#include "kivifc/Findings/Selection.h"

#include <compare>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace kiv::kivifc {

/// What makes two findings of two runs the same.
struct BaselineKey {
    /// Relative to the folder of the baseline, with "/".
    std::string path;
    std::string code;
    std::string subject;
    std::string message;

    auto operator<=>(const BaselineKey&) const = default;
};

struct Baseline {
    std::string folder;
    /// How often each is listed.
    std::map<BaselineKey, std::size_t> findings;
};

/// Reads the file; absent when that cannot be done.
std::optional<Baseline> baselineRead(const std::string& path, std::string& failure);

/// These findings, for a file of that path.
Baseline baselineOf(const std::string& path, const std::vector<kit::Finding>& findings);

/// Writes it in place of what the file held. An empty text, or why that could not be done.
std::string sBaselineWrite(const std::string& path, const Baseline& baseline);

/// What a check has looked at: only there is something fixed that it has not found again.
struct BaselineScope {
    /// Files that were read.
    std::vector<std::string> paths;
    /// The codes that were looked for.
    Selection selection;
};

/// Removes the findings that the baseline lists, each as often as it lists it, and says how many they were.
/// What it lists beyond them within the scope has been fixed. A file that cannot be read is never hidden.
std::size_t baselineHide(std::vector<kit::Finding>& findings, Baseline& baseline, const BaselineScope& scope,
                         std::vector<std::string>& fixed);

} // namespace kiv::kivifc
