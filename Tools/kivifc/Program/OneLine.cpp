#include "kivifc/Program/OneLine.h"

#include "kivifc/Program/CodePoints.h"

namespace kiv::kivifc {

std::string sOneLine(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    while (!text.empty()) {
        const auto point = codePointTake(text);
        if (isUnsafe(point))
            line += sEscaped(point);
        else
            line += point.bytes;
    }
    return line;
}

} // namespace kiv::kivifc
