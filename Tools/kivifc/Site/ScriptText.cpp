#include "kivifc/Site/ScriptText.h"

#include "kivifc/Program/CodePoints.h"

#include <fmt/format.h>
#include <iterator>

namespace kiv::kivifc::site {

namespace {

void vPointAppend(std::string& text, const CodePoint& point) {
    if (!point.isValid)
        text += "\xEF\xBF\xBD";
    else if (point.value == '"' || point.value == '\\')
        (text += '\\') += point.bytes;
    // An angle bracket does no harm in a script of its own; so that it does none wherever the text is copied
    // to.
    else if (isUnsafe(point) || point.value == '<')
        fmt::format_to(std::back_inserter(text), "\\u{:04x}", static_cast<unsigned>(point.value));
    else
        text += point.bytes;
}

} // namespace

std::string sScriptString(std::string_view text, std::size_t longest) {
    std::string quoted = "\"";
    std::size_t length = 0;
    for (; !text.empty() && length < longest; ++length)
        vPointAppend(quoted, codePointTake(text));
    if (!text.empty())
        quoted += "\xE2\x80\xA6";
    return quoted += '"';
}

} // namespace kiv::kivifc::site
