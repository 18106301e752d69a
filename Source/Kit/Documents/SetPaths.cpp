#include "kiv/Kit/Documents/SetPaths.h"

#include "Kit/Text/AsciiText.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <string_view>
#include <system_error>

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

class Collector {
public:
    void vPathCollect(const std::string& path) {
        if (isFolder(path))
            vFolderCollect(path);
        else
            found_.documents.push_back(path);
    }

    SetPaths takeFound() {
        vOrder(found_.documents);
        vOrder(found_.problems);
        return std::move(found_);
    }

private:
    template <class Value>
    static void vOrder(std::vector<Value>& values) {
        std::ranges::sort(values);
        values.erase(std::unique(values.begin(), values.end()), values.end());
    }

    void vFolderCollect(const std::string& top) {
        const auto foundBefore = found_.documents.size() + found_.problems.size();
        // A list of what is to do instead of recursion: folders nest as deep as they like.
        std::vector<std::string> waiting{top};
        while (!waiting.empty()) {
            const auto folder = waiting.back();
            waiting.pop_back();
            vEntriesCollect(folder, waiting);
        }
        if (found_.documents.size() + found_.problems.size() == foundBefore)
            found_.problems.push_back({top, "no document (*.xml) in this folder"});
    }

    void vEntriesCollect(const std::string& folder, std::vector<std::string>& waiting) {
        std::error_code error;
        fs::directory_iterator entry(folder, error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
            if (isInnerFolder(*entry))
                waiting.push_back(entry->path().native());
            else if (isNamedLikeADocument(entry->path()))
                vDocumentTake(*entry);
        }
        if (error)
            found_.problems.push_back({folder, error.message()});
    }

    void vDocumentTake(const fs::directory_entry& entry) {
        std::error_code error;
        if (const auto* const special = pSpecialFile(entry))
            found_.problems.push_back(
                {entry.path().native(),
                 std::string(special) + " in a folder is not read unless its path is given"});
        // A link that leads nowhere counts too: reading it reports what is wrong.
        else if (entry.is_regular_file(error) || !entry.exists(error))
            found_.documents.push_back(entry.path().native());
    }

    SetPaths found_;
};

} // namespace

SetPaths setPathsCollect(const std::vector<std::string>& paths) {
    Collector collector;
    for (const auto& path : paths)
        collector.vPathCollect(path);
    return collector.takeFound();
}

} // namespace kiv::kit
