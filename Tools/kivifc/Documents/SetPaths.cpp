#include "kivifc/Documents/SetPaths.h"

#include "kivifc/Program/AsciiText.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <system_error>

namespace kiv::kivifc {

namespace {

namespace fs = std::filesystem;

bool isFolder(const std::string& path) {
    std::error_code error;
    return path != StandardInputPath && fs::is_directory(path, error);
}

/// A link that leads nowhere counts too: reading it reports what is wrong.
bool isDocument(const fs::directory_entry& entry) {
    if (!ascii::isEqualIgnoringCase(entry.path().extension().native(), ".xml"))
        return false;
    std::error_code error;
    return entry.is_regular_file(error) || !entry.exists(error);
}

bool isInnerFolder(const fs::directory_entry& entry) {
    std::error_code error;
    return entry.is_directory(error) && !entry.is_symlink(error);
}

class Collector {
public:
    Collector(std::vector<std::string>& documents, Diagnostics& diagnostics) :
        documents_(documents), diagnostics_(diagnostics) {}

    void vFolderCollect(const std::string& top) {
        const auto documentsBefore = documents_.size();
        const auto failuresBefore = diagnostics_.getFailures().size();
        // A list of what is to do instead of recursion: folders nest as deep as they like.
        std::vector<std::string> waiting{top};
        while (!waiting.empty()) {
            const auto folder = waiting.back();
            waiting.pop_back();
            vEntriesCollect(folder, waiting);
        }
        const bool isNothingSaid = diagnostics_.getFailures().size() == failuresBefore;
        if (documents_.size() == documentsBefore && isNothingSaid)
            diagnostics_.vFail(top, "no document (*.xml) in this folder");
    }

private:
    void vEntriesCollect(const std::string& folder, std::vector<std::string>& waiting) {
        std::error_code error;
        fs::directory_iterator entry(folder, error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
            if (isInnerFolder(*entry))
                waiting.push_back(entry->path().native());
            else if (isDocument(*entry))
                documents_.push_back(entry->path().native());
        }
        if (error)
            diagnostics_.vFail(folder, error.message());
    }

    std::vector<std::string>& documents_;
    Diagnostics& diagnostics_;
};

} // namespace

std::vector<std::string> setPathsCollect(const std::vector<std::string>& paths, Diagnostics& diagnostics) {
    std::vector<std::string> documents;
    Collector collector(documents, diagnostics);
    for (const auto& path : paths) {
        if (isFolder(path))
            collector.vFolderCollect(path);
        else
            documents.push_back(path);
    }
    std::ranges::sort(documents);
    documents.erase(std::unique(documents.begin(), documents.end()), documents.end());
    return documents;
}

} // namespace kiv::kivifc
