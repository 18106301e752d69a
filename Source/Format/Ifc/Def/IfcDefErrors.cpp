#include "kiv/Format/Ifc/Def/IfcDefErrors.h"

#include <fstream>
#include <ostream>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::ifc::def::xml {

namespace {

/// Enough to be as quick as a write of all at once.
constexpr std::streamsize DumpBufferSize = 64 * 1024;

std::string_view kindField(ErrorKind kind) {
    switch (kind) {
    case ErrorKind::Error:
        return "Error;";
    case ErrorKind::FatalError:
        return "FatalError;";
    }
    return {};
}

/// Hands on the report, in short pieces.
template <class Sets, class Take>
void vTextGive(const Sets& sets, const Take& take) {
    for (const XmlSetErrors& set : sets) {
        for (const ErrorRecord& record : set.getRecords()) {
            take(set.getSetName());
            take(";");
            take(kindField(record.kind));
            take(record.item);
            take(";");
            take(record.message);
            take("\n");
        }
    }
}

} // namespace

void XmlSetErrors::vErrorAdd(ErrorKind kind, std::string item, std::string message, std::size_t line) {
    records_.push_back({kind, std::move(item), std::move(message), line});
}

void XmlSetErrors::vSetNameSet(std::string setName) {
    setName_ = std::move(setName);
}

std::string XmlSetsErrors::getFormattedErrors() const {
    std::string text;
    vTextGive(sets, [&](std::string_view piece) { text += piece; });
    return text;
}

void XmlSetsErrors::vFormattedErrorsWrite(std::ostream& stream) const {
    vTextGive(sets, [&](std::string_view piece) { stream << piece; });
}

void XmlSetsErrors::vDump(const char* path) const {
    // Opening the file empties it, so what needs memory comes first.
    std::vector<char> buffer(DumpBufferSize);
    std::ofstream file;
    file.rdbuf()->pubsetbuf(buffer.data(), DumpBufferSize);
    file.open(path);
    if (file)
        vFormattedErrorsWrite(file);
}

} // namespace kiv::ifc::def::xml
