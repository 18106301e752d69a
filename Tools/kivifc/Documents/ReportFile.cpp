#include "kivifc/Documents/ReportFile.h"

#include "kivifc/Documents/Folder.h"
#include "kivifc/Program/Output.h"
#include "kivifc/Program/OutputStream.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <ostream>
#include <system_error>

namespace kiv::kivifc {

namespace {

namespace fs = std::filesystem;

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// Pipes and devices cannot be replaced and may be opened only once.
std::string sStreamWrite(const ContentWriter& vContentWrite, const std::string& path) {
    errno = 0;
    const File file(std::fopen(path.c_str(), "w"), &std::fclose);
    if (!file)
        return errno == 0 ? "it cannot be opened" : std::generic_category().message(errno);
    Output output(file.get());
    vContentWrite(output);
    return output.sFinish();
}

/// Where a link leads to is replaced, not the link.
std::string sFileWrite(const ContentWriter& vContentWrite, const std::string& path) {
    std::error_code error;
    const auto target = fs::canonical(path, error);
    return sFileReplace(error ? fs::path(path) : target, vContentWrite);
}

} // namespace

std::string sReportWrite(const ifc::def::xml::XmlSetsErrors& errors, const std::string& path) {
    std::error_code error;
    const bool isStream = fs::exists(path, error) && !fs::is_regular_file(path, error);
    // Line by line: the text may be many times what the records take.
    const auto vReportWrite = [&errors](Output& output) {
        OutputBuffer buffer(output);
        std::ostream stream(&buffer);
        errors.vFormattedErrorsWrite(stream);
    };
    return isStream ? sStreamWrite(vReportWrite, path) : sFileWrite(vReportWrite, path);
}

} // namespace kiv::kivifc
