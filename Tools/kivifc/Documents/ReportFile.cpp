#include "kivifc/Documents/ReportFile.h"

#include "kivifc/Documents/Folder.h"
#include "kivifc/Program/Output.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

namespace kiv::kivifc {

namespace {

namespace fs = std::filesystem;

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// Pipes and devices cannot be replaced and may be opened only once.
std::string sStreamWrite(const std::string& text, const std::string& path) {
    errno = 0;
    const File file(std::fopen(path.c_str(), "w"), &std::fclose);
    if (!file)
        return errno == 0 ? "it cannot be opened" : std::generic_category().message(errno);
    Output output(file.get());
    output.vWrite(text);
    return output.sFinish();
}

/// Where a link leads to is replaced, not the link.
std::string sFileWrite(const std::string& text, const std::string& path) {
    std::error_code error;
    const auto target = fs::canonical(path, error);
    return sFileReplace(error ? fs::path(path) : target, text);
}

} // namespace

std::string sReportWrite(const ifc::def::xml::XmlSetsErrors& errors, const std::string& path) {
    std::error_code error;
    const bool isStream = fs::exists(path, error) && !fs::is_regular_file(path, error);
    const auto text = errors.getFormattedErrors();
    return isStream ? sStreamWrite(text, path) : sFileWrite(text, path);
}

} // namespace kiv::kivifc
