#include "kiv/Kit/Documents/SetPaths.h"

#include "Kit/Text/AsciiText.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <unordered_set>
#include <utility>

namespace kiv::kit {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view DocumentExtension = ".xml";

bool isNamedLikeADocument(const fs::path& path) {
    return isEqualIgnoringCase(path.extension().native(), DocumentExtension);
}

bool isFolder(const std::string& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

bool isInnerFolder(const fs::directory_entry& entry) {
    std::error_code error;
    return entry.is_directory(error) && !entry.is_symlink(error);
}

/// What is read only when its own path is given; null for anything else.
const char* pSpecialFile(const fs::directory_entry& entry) {
    std::error_code error;
    switch (entry.status(error).type()) {
    case fs::file_type::fifo:
        return "a pipe";
    case fs::file_type::socket:
        return "a socket";
    case fs::file_type::block:
    case fs::file_type::character:
        return "a device";
    default:
        return nullptr;
    }
}

/// A document in a folder.
struct FoundDocument {
    std::string path;
    std::string key;
};

/// A folder that is to be searched, as it is shown and without links on the way to it.
struct WaitingFolder {
    std::string path;
    fs::path key;
};

class Collector {
public:
    void vPathCollect(const std::string& path) {
        if (isFolder(path))
            vFolderCollect(path);
        else
            vTake({path, sPathKey(path)});
    }

    SetPaths takeFound() {
        std::ranges::sort(found_.documents);
        std::ranges::sort(found_.problems);
        const auto end = std::unique(found_.problems.begin(), found_.problems.end());
        found_.problems.erase(end, found_.problems.end());
        return std::move(found_);
    }

private:
    void vTake(FoundDocument&& document) {
        if (keys_.insert(std::move(document.key)).second)
            found_.documents.push_back(std::move(document.path));
    }

    void vFolderCollect(const std::string& top) {
        const auto problemsBefore = found_.problems.size();
        // The system lists folders in no order.
        std::vector<FoundDocument> documents;
        // A list of what is to do instead of recursion: folders nest as deep as they like.
        std::vector<WaitingFolder> waiting{{top, sPathKey(top)}};
        while (!waiting.empty()) {
            const auto folder = std::move(waiting.back());
            waiting.pop_back();
            vEntriesCollect(folder, waiting, documents);
        }
        if (documents.empty() && found_.problems.size() == problemsBefore)
            found_.problems.push_back({top, "no document (*.xml) in this folder", PathProblemKind::Folder});
        std::ranges::sort(documents, {}, &FoundDocument::path);
        for (auto& document : documents)
            vTake(std::move(document));
    }

    void vEntriesCollect(const WaitingFolder& folder, std::vector<WaitingFolder>& waiting,
                         std::vector<FoundDocument>& documents) {
        std::error_code error;
        fs::directory_iterator entry(folder.path, error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
            if (isInnerFolder(*entry))
                waiting.push_back({entry->path().native(), folder.key / entry->path().filename()});
            else if (isNamedLikeADocument(entry->path()))
                vDocumentTake(*entry, folder, documents);
        }
        if (error)
            found_.problems.push_back({folder.path, error.message(), PathProblemKind::Folder});
    }

    void vDocumentTake(const fs::directory_entry& entry, const WaitingFolder& folder,
                       std::vector<FoundDocument>& documents) {
        std::error_code error;
        const auto& path = entry.path();
        if (const auto* const special = pSpecialFile(entry))
            found_.problems.push_back(
                {path.native(), std::string(special) + " in a folder is not read unless its path is given",
                 PathProblemKind::SpecialFile});
        // A link that leads nowhere counts too: reading it reports what is wrong.
        else if (entry.is_symlink(error))
            vLinkTake(entry, documents);
        else if (entry.is_regular_file(error))
            documents.push_back({path.native(), (folder.key / path.filename()).native()});
    }

    static void vLinkTake(const fs::directory_entry& entry, std::vector<FoundDocument>& documents) {
        std::error_code error;
        if (entry.is_regular_file(error) || !entry.exists(error))
            documents.push_back({entry.path().native(), sPathKey(entry.path().native())});
    }

    SetPaths found_;
    std::unordered_set<std::string> keys_;
};

} // namespace

std::string sPathKey(const std::string& path) {
    std::error_code error;
    auto key = fs::canonical(path, error);
    // Nothing is there, or it is a pipe of the system that no path leads to.
    if (error)
        key = fs::absolute(path, error).lexically_normal();
    return error ? path : key.native();
}

SetPaths setPathsCollect(const std::vector<std::string>& paths) {
    Collector collector;
    for (const auto& path : paths)
        collector.vPathCollect(path);
    return collector.takeFound();
}

} // namespace kiv::kit
