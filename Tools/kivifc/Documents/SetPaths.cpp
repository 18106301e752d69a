#include "kivifc/Documents/SetPaths.h"

#include "kivifc/Documents/SetDocument.h"

#include <algorithm>
#include <utility>

namespace kiv::kivifc {

std::vector<std::string> setPathsCollect(const std::vector<std::string>& paths, Diagnostics& diagnostics) {
    std::vector<kit::PathProblem> specialFiles;
    auto documents = setPathsCollect(paths, diagnostics, specialFiles);
    for (const auto& file : specialFiles)
        diagnostics.vFail(file.path, file.reason);
    return documents;
}

std::vector<std::string> setPathsCollect(const std::vector<std::string>& paths, Diagnostics& diagnostics,
                                         std::vector<kit::PathProblem>& specialFiles) {
    // There may be a folder of that name, which is not meant.
    auto named = paths;
    const bool isInputAsked = std::erase(named, StandardInputPath) != 0;
    auto found = kit::setPathsCollect(named);
    for (auto& problem : found.problems) {
        if (problem.kind == kit::PathProblemKind::SpecialFile)
            specialFiles.push_back(std::move(problem));
        else
            diagnostics.vFail(problem.path, problem.reason);
    }
    if (isInputAsked)
        found.documents.insert(std::ranges::lower_bound(found.documents, StandardInputPath),
                               std::string(StandardInputPath));
    return std::move(found.documents);
}

} // namespace kiv::kivifc
