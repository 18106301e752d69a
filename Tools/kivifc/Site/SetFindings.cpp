#include "kivifc/Site/SetFindings.h"

#include "kivifc/Documents/SetDocument.h"
#include "kivifc/Documents/TextFile.h"
#include "kivifc/Findings/CheckRun.h"
#include "kivifc/Findings/SourceLines.h"

#include <algorithm>
#include <map>
#include <string>
#include <thread>
#include <utility>

namespace kiv::kivifc::site {

namespace {

/// With fewer documents, threads are not worth the time to begin them.
constexpr std::size_t DocumentsForThreads = 200;

std::vector<CheckedPath> documentsOf(const SiteModel& model) {
    std::map<std::string, std::vector<std::string>> documents;
    for (const auto& set : model.getSets()) {
        if (set.path == StandardInputName || set.path == StandardInputPath || !isReadableAgain(set.path))
            continue;
        auto& contexts = documents[set.path];
        if (std::ranges::find(contexts, set.context.name) == contexts.end())
            contexts.push_back(set.context.name);
    }
    std::vector<CheckedPath> list;
    for (auto& [path, contexts] : documents)
        list.push_back({path, std::move(contexts)});
    return list;
}

} // namespace

SetFindings::SetFindings(const SiteModel& model) {
    CheckRequest request(model.getSchemaFile(), {model.getSchema()});
    request.documents = documentsOf(model);
    if (request.documents.empty())
        return;
    if (request.documents.size() >= DocumentsForThreads)
        request.threads = std::max(std::thread::hardware_concurrency(), 1U);
    SourceLines sources;
    findings_ = checkRun(request, sources).findings;
    for (const auto& finding : findings_)
        byPath_[finding.place.path].push_back(&finding);
}

const std::vector<const kit::Finding*>& SetFindings::of(const SiteSet& set) const {
    const auto found = byPath_.find(set.path);
    return found == byPath_.end() ? none_ : found->second;
}

} // namespace kiv::kivifc::site
