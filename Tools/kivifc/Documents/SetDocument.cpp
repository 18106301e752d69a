#include "kivifc/Documents/SetDocument.h"

#include "kivifc/Documents/ReadingLimits.h"

#include <cstdio>

namespace kiv::kivifc {

SetDocument setDocumentRead(const std::string& path) {
    if (path == StandardInputPath)
        return kit::setStreamRead(stdin, std::string(StandardInputName), readingOptions());
    return kit::setDocumentRead(path, readingOptions());
}

SetDocument setDocumentCheck(const std::string& path, const ifc::def::schema::Schema& schema) {
    if (path == StandardInputPath)
        return kit::setStreamCheck(stdin, std::string(StandardInputName), schema, readingOptions());
    return kit::setDocumentCheck(path, schema, readingOptions());
}

} // namespace kiv::kivifc
