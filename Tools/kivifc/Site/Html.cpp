#include "kivifc/Site/Html.h"

#include "kivifc/Program/CodePoints.h"

#include <array>
#include <stdexcept>

namespace kiv::kivifc::site {

namespace {

/// Bytes that are copied as they are: most of ASCII.
constexpr std::array<bool, 256> makePlain() {
    std::array<bool, 256> plain{};
    for (std::size_t byte = 0x20; byte < 0x7F; ++byte)
        plain.at(byte) = true;
    for (const char byte : {'\n', '\t'})
        plain.at(static_cast<unsigned char>(byte)) = true;
    for (const char byte : {'<', '>', '&', '"', '\''})
        plain.at(static_cast<unsigned char>(byte)) = false;
    return plain;
}

constexpr auto Plain = makePlain();

std::size_t plainSize(std::string_view text) {
    std::size_t size = 0;
    while (size < text.size() && Plain.at(static_cast<unsigned char>(text[size])))
        ++size;
    return size;
}

/// Empty for a character that has no name of its own.
std::string_view referenceTo(char byte) {
    switch (byte) {
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '&':
        return "&amp;";
    case '"':
        return "&quot;";
    case '\'':
        return "&#39;";
    default:
        return {};
    }
}

/// HTML forbids the code points that Unicode keeps from being characters.
bool isShown(const CodePoint& point) {
    const bool isCharacter =
        (point.value & 0xFFFEU) != 0xFFFEU && !(point.value >= 0xFDD0 && point.value <= 0xFDEF);
    return point.isValid && isCharacter && !isUnsafe(point);
}

} // namespace

std::size_t escapedWidth(std::string_view text) {
    std::size_t width = 0;
    while (!text.empty()) {
        const auto point = codePointTake(text);
        width += isShown(point) ? displayWidth(point) : sEscaped(point).size();
    }
    return width;
}

void Html::vInTagExpect(bool isInTag) const {
    if (isInTag_ != isInTag)
        throw std::logic_error(isInTag ? "an attribute outside of a tag" : "text within a tag");
}

Html& Html::operator<<(Markup markup) {
    if (!markup.isNeutral()) {
        vInTagExpect(markup.beginsInTag());
        isInTag_ = markup.endsInTag();
    }
    text_ += markup.getView();
    return *this;
}

Html& Html::operator<<(Escaped text) {
    vInTagExpect(false);
    vEscapedAppend(text.text);
    return *this;
}

Html& Html::operator<<(Isolated text) {
    return *this << "<bdi>" << escaped(text.text) << "</bdi>";
}

Html& Html::operator<<(const HtmlAttribute& attribute) {
    vInTagExpect(true);
    text_.append(" ").append(attribute.name.getView()).append("=\"");
    vEscapedAppend(attribute.value);
    text_ += '"';
    return *this;
}

Html& Html::operator<<(const NumberAttribute& attribute) {
    vInTagExpect(true);
    text_.append(" ").append(attribute.name.getView()).append("=\"");
    text_.append(std::to_string(attribute.value)) += '"';
    return *this;
}

// Paths and anchors have characters only that need no escaping.
Html& Html::operator<<(const Href& href) {
    vInTagExpect(true);
    text_.append(" href=\"").append(root_.getView()).append(href.address.getPath());
    if (!href.address.getAnchor().empty())
        text_.append("#").append(href.address.getAnchor());
    text_ += '"';
    return *this;
}

Html& Html::operator<<(const RowHref& href) {
    vInTagExpect(true);
    text_.append(" href=\"#").append(sAnchor(href.name)) += '"';
    return *this;
}

Html& Html::operator<<(const IdHref& href) {
    vInTagExpect(true);
    text_.append(" href=\"#");
    vEscapedAppend(href.id);
    text_ += '"';
    return *this;
}

Html& Html::operator<<(const Html& part) {
    vInTagExpect(false);
    part.vInTagExpect(false);
    text_ += part.text_;
    return *this;
}

Html& Html::operator<<(std::size_t number) {
    vInTagExpect(false);
    text_ += std::to_string(number);
    return *this;
}

void Html::vEscapedAppend(std::string_view text) {
    while (!text.empty()) {
        const auto size = plainSize(text);
        text_ += text.substr(0, size);
        text.remove_prefix(size);
        if (!text.empty())
            vUnusualAppend(text);
    }
}

void Html::vUnusualAppend(std::string_view& text) {
    if (const auto reference = referenceTo(text.front()); !reference.empty()) {
        text_ += reference;
        text.remove_prefix(1);
        return;
    }
    // Files have line ends of two bytes, and a reference in XML can be a carriage return alone.
    if (text.front() == '\r') {
        text_ += '\n';
        text.remove_prefix(text.starts_with("\r\n") ? 2 : 1);
        return;
    }
    const auto point = codePointTake(text);
    if (isShown(point))
        text_ += point.bytes;
    else
        text_ += sEscaped(point);
}

} // namespace kiv::kivifc::site
