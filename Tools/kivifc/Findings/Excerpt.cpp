#include "kivifc/Findings/Excerpt.h"

#include "kiv/Kit/Text/ByteOrderMark.h"
#include "kivifc/Program/CodePoints.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace kiv::kivifc {

namespace {

/// Columns of the terminal that are shown before the caret, and in all.
constexpr std::size_t WidthBefore = 40;
constexpr std::size_t WidthMax = 110;
constexpr std::string_view CutMark = "...";

/// A code point as it is shown.
struct Cell {
    std::string text;
    std::size_t width;
};

Cell cellOf(const CodePoint& point, bool isEscaped) {
    if (point.isValid && point.value == '\t')
        return {"\t", 1};
    if (!point.isValid || isEscaped) {
        auto text = sEscaped(point);
        const auto width = text.size();
        return {std::move(text), width};
    }
    return {std::string(point.bytes), displayWidth(point)};
}

/// A line of millions of letters is not taken apart to its end.
std::vector<Cell> cellsOf(const LinePart& part, std::size_t place) {
    ShownPoints points(part.column == 1 ? kit::withoutByteOrderMark(part.text) : part.text);
    std::vector<Cell> cells;
    while (cells.size() <= place + 2 * WidthMax && points.boNext())
        cells.push_back(cellOf(points.getPoint(), points.isEscaped()));
    return cells;
}

/// The cells that are shown: as many before the place as fit, then those after it.
struct Window {
    std::size_t begin = 0;
    std::size_t end = 0;
};

Window windowOf(const std::vector<Cell>& cells, std::size_t place, bool isWhole) {
    std::size_t all = 0;
    for (const auto& cell : cells)
        all += cell.width;
    if (isWhole && all <= WidthMax)
        return {0, cells.size()};
    Window window{place, place};
    std::size_t width = 0;
    for (; window.begin > 0 && width + cells[window.begin - 1].width <= WidthBefore; --window.begin)
        width += cells[window.begin - 1].width;
    // A mark that combines belongs to the letter before it.
    for (; window.begin > 0 && window.begin < cells.size() && cells[window.begin].width == 0; --window.begin)
        ;
    for (; window.end < cells.size() && width + cells[window.end].width <= WidthMax; ++window.end)
        width += cells[window.end].width;
    return window;
}

std::string sBlanks(const Cell& cell) {
    return cell.text == "\t" ? cell.text : std::string(cell.width, ' ');
}

/// The caret, and a tilde for each further column of the piece.
std::string sUnderline(const std::vector<Cell>& cells, std::size_t begin, std::size_t end) {
    std::size_t width = 0;
    for (auto at = begin; at < end; ++at)
        width += cells[at].width;
    return '^' + std::string(std::max<std::size_t>(width, 1) - 1, '~');
}

} // namespace

Excerpt excerptOf(std::string_view line, const kit::TextPosition& position) {
    return excerptOf(LinePart{line, 1}, position);
}

Excerpt excerptOf(const LinePart& part, const kit::TextPosition& position) {
    const auto place = position.column < part.column ? 0 : position.column - part.column;
    const auto cells = cellsOf(part, place);
    const bool isBegun = part.column > 1;
    // The place just after the end is that of something missing; beyond it the file is not what it was.
    if (cells.empty() || place > cells.size())
        return {};
    const auto window = windowOf(cells, place, !isBegun);
    Excerpt excerpt;
    if (isBegun || window.begin > 0) {
        excerpt.source = CutMark;
        excerpt.caret = std::string(CutMark.size(), ' ');
    }
    for (auto at = window.begin; at < window.end; ++at)
        excerpt.source += cells[at].text;
    if (window.end < cells.size())
        excerpt.source += CutMark;
    if (position.column == 0)
        return {excerpt.source, {}};
    for (auto at = window.begin; at < place; ++at)
        excerpt.caret += sBlanks(cells[at]);
    const auto last = std::min(place + std::max<std::size_t>(position.length, 1), window.end);
    excerpt.caret += sUnderline(cells, place, last);
    return excerpt;
}

} // namespace kiv::kivifc
