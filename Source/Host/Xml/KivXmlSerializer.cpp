#include "Host/Xml/KivXmlSerializer.h"

#include "Host/Xml/KivXmlRecords.h"

#include <ostream>
#include <string>
#include <string_view>

namespace kiv::xml {

namespace {

constexpr std::size_t indentSize = 4;

/// Small enough to stay in the cache, large enough to make calls to the stream rare.
constexpr std::size_t flushSize = std::size_t{16} * 1024;

/// A carriage return is escaped everywhere, and all white space in attributes, because a reader changes them.
constexpr std::string_view escapedInText = "&<>\r";
constexpr std::string_view escapedInAttribute = "&<>\"\t\n\r";

constexpr std::string_view getReference(char c) {
    switch (c) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\t':
        return "&#9;";
    case '\n':
        return "&#10;";
    default:
        return "&#13;";
    }
}

bool hasText(const ElementRecord& element) {
    for (const NodeRecord* child = element.firstChild; child != nullptr; child = child->next)
        if (child->kind == NodeKind::Text)
            return true;
    return false;
}

class Serializer {
public:
    explicit Serializer(std::ostream& stream) : stream_(stream) {}

    void vDocument(const ElementRecord& document, WriteStyle style);
    /// A node whose line, if it has one of its own, is indented by `level` steps.
    void vNode(const NodeRecord& node, WriteStyle style, std::size_t level);
    void vFlush();

private:
    void vElement(const ElementRecord& element, WriteStyle style, std::size_t level);
    void vAttributes(const ElementRecord& element);
    void vChildren(const ElementRecord& element, WriteStyle style, std::size_t level);
    void vEscaped(std::string_view text, std::string_view escaped);
    void vLineStart(std::size_t level);

    std::ostream& stream_;
    std::string pending_;
};

void Serializer::vDocument(const ElementRecord& document, WriteStyle style) {
    if (document.firstChild == nullptr)
        return;
    const std::string_view lineEnd = style == WriteStyle::Indented ? "\n" : "";
    pending_.append(R"(<?xml version="1.0" encoding="UTF-8"?>)").append(lineEnd);
    vNode(*document.firstChild, style, 0);
    pending_.append(lineEnd);
}

void Serializer::vNode(const NodeRecord& node, WriteStyle style, std::size_t level) {
    switch (node.kind) {
    case NodeKind::Document:
        vDocument(static_cast<const ElementRecord&>(node), style);
        return;
    case NodeKind::Element:
        vElement(static_cast<const ElementRecord&>(node), style, level);
        return;
    case NodeKind::Attribute:
        return;
    case NodeKind::Text:
        vEscaped(node.text, escapedInText);
        return;
    case NodeKind::Comment:
        pending_.append("<!--").append(node.text).append("-->");
        return;
    case NodeKind::ProcessingInstruction:
        pending_.append("<?").append(node.text).append("?>");
        return;
    }
}

/// Calls itself for each level of elements, of which no tree has more than `maxElementDepth`.
void Serializer::vElement(const ElementRecord& element, WriteStyle style, std::size_t level) {
    if (pending_.size() >= flushSize)
        vFlush();
    pending_.append("<").append(element.text);
    vAttributes(element);
    if (element.firstChild == nullptr) {
        pending_.append("/>");
        return;
    }
    pending_.append(">");
    vChildren(element, hasText(element) ? WriteStyle::Compact : style, level);
    pending_.append("</").append(element.text).append(">");
}

void Serializer::vAttributes(const ElementRecord& element) {
    for (std::uint32_t i = 0; i != element.attributeCount; ++i) {
        pending_.append(" ").append(element.attributes[i]->text).append("=\"");
        vEscaped(element.attributes[i]->value, escapedInAttribute);
        pending_.append("\"");
    }
}

void Serializer::vChildren(const ElementRecord& element, WriteStyle style, std::size_t level) {
    const bool isIndented = style == WriteStyle::Indented;
    for (const NodeRecord* child = element.firstChild; child != nullptr; child = child->next) {
        if (isIndented)
            vLineStart(level + 1);
        vNode(*child, style, level + 1);
    }
    if (isIndented)
        vLineStart(level);
}

void Serializer::vEscaped(std::string_view text, std::string_view escaped) {
    for (std::size_t at = text.find_first_of(escaped); at != std::string_view::npos;
         at = text.find_first_of(escaped)) {
        pending_.append(text.substr(0, at)).append(getReference(text[at]));
        text.remove_prefix(at + 1);
    }
    pending_.append(text);
}

void Serializer::vLineStart(std::size_t level) {
    pending_.append("\n").append(indentSize * level, ' ');
}

void Serializer::vFlush() {
    stream_.write(pending_.data(), static_cast<std::streamsize>(pending_.size()));
    pending_.clear();
}

} // namespace

void vNodeWrite(std::ostream& stream, const NodeRecord& node, WriteStyle style) {
    Serializer serializer(stream);
    serializer.vNode(node, style, 0);
    serializer.vFlush();
}

} // namespace kiv::xml
