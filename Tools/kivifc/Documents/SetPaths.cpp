#include "kivifc/Documents/SetPaths.h"

#include "kiv/Kit/Documents/SetPaths.h"
#include "kivifc/Documents/SetDocument.h"

#include <algorithm>

namespace kiv::kivifc {

std::vector<std::string> setPathsCollect(const std::vector<std::string>& paths, Diagnostics& diagnostics) {
    // There may be a folder of that name, which is not meant.
    auto named = paths;
    const bool isInputAsked = std::erase(named, StandardInputPath) != 0;
    auto found = kit::setPathsCollect(named);
    for (const auto& problem : found.problems)
        diagnostics.vFail(problem.path, problem.reason);
    if (isInputAsked)
        found.documents.insert(std::ranges::lower_bound(found.documents, StandardInputPath),
                               std::string(StandardInputPath));
    return std::move(found.documents);
}

} // namespace kiv::kivifc
