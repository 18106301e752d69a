#include "kivifc/Program/OneLine.h"

#include "kivifc/Program/CodePoints.h"

namespace kiv::kivifc {

std::string sOneLine(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (ShownPoints points(text); points.boNext();) {
        if (points.isEscaped())
            line += sEscaped(points.getPoint());
        else
            line += points.getPoint().bytes;
    }
    return line;
}

} // namespace kiv::kivifc
