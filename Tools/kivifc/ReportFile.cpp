#include "kivifc/ReportFile.h"

#include "kivifc/Output.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

namespace kiv::kivifc {

namespace {

namespace fs = std::filesystem;

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File fileOpen(const std::string& path, const char* mode) {
    errno = 0;
    return {std::fopen(path.c_str(), mode), &std::fclose};
}

std::string sOpenFailure() {
    return errno == 0 ? "it cannot be opened" : std::generic_category().message(errno);
}

/// Pipes and devices cannot be looked at afterwards and may be opened only once.
std::string sStreamWrite(const ifc::def::xml::XmlSetsErrors& errors, const std::string& path) {
    const auto file = fileOpen(path, "w");
    if (!file)
        return sOpenFailure();
    Output output(file.get());
    output.vWrite(errors.getFormattedErrors());
    return output.sFinish();
}

/// The dump is silent about failures, so the file is opened before and measured afterwards.
std::string sFileWrite(const ifc::def::xml::XmlSetsErrors& errors, const std::string& path) {
    if (!fileOpen(path, "a"))
        return sOpenFailure();
    errors.vDump(path.c_str());
    std::error_code error;
    const auto size = fs::file_size(path, error);
    if (error)
        return error.message();
    return size == errors.getFormattedErrors().size() ? std::string() : "it could not be written whole";
}

} // namespace

std::string sReportWrite(const ifc::def::xml::XmlSetsErrors& errors, const std::string& path) {
    std::error_code error;
    const bool isStream = fs::exists(path, error) && !fs::is_regular_file(path, error);
    return isStream ? sStreamWrite(errors, path) : sFileWrite(errors, path);
}

} // namespace kiv::kivifc
